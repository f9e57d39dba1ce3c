#pragma once

#include "render/SummaryRendererBase.h"
#include "spec/OrderData.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace tavrel {

class OutputHelpers;
class PageEngine;
class SectionFlow;
struct CustomTemplate;
struct ReportData;

// The cover section: the order's identity (purchase-order and contract data, requested dates,
// the sold-to and ship-to addresses, sales persons and dealers, comments) laid out by a cover
// template (".cov"). Every placed box of the page body is printed.
class CoverRenderer : public BoxSectionRenderer {
public:
    // Errors come back as diagnostics of "Cover Page Preview.".
    CoverRenderer(std::optional<TemplateLayout> layout, const ReportData &data);

    // The label and value lists of the last render, one entry per box slot.
    const OrderFieldLists &fieldLists() const { return m_lists; }

    // The text whose width, plus LabelColumnGap, is the label column of the order fields: the
    // longest of their labels.
    static QString longestLabel() { return QStringLiteral("Requested Install Date: "); }
    static constexpr double LabelColumnGap = 300;
    // What follows an order field's label.
    static QString labelTrail() { return QStringLiteral("   "); }

protected:
    void fillFields() override;
    void drawBody(OutputHelpers &out, SectionFlow &flow) override;

private:
    // A sales-person or dealer box: its entries and the line height of each.
    struct ContactColumn {
        QStringList entries;
        std::vector<double> lineHeights;
    };

    ContactColumn contactColumn(OutputHelpers &out, const CustomTemplate &box) const;
    double drawContacts(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                        double left) const;
    double drawOrderField(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                          double left) const;
    double drawText(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                    const QString &text, double left) const;
    const OrderData &order() const;

    OrderFieldLists m_lists;
    OrderData m_noOrder;
};

} // namespace tavrel

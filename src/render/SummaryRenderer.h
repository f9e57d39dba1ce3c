#pragma once

#include "render/SummaryRendererBase.h"
#include "render/SummaryRendererFields.h"

#include <QString>

namespace tavrel {

class OutputHelpers;
class PageEngine;
class SectionFlow;
struct CustomTemplate;
struct ReportData;

// The summary section: the order totals, the additional charges, the shipping notes and the
// options of the specification, laid out by a summary template (".sum"). The body holds the
// placed boxes marked as body or total boxes; each prints its label and its value.
class SummaryRenderer : public BoxSectionRenderer {
public:
    // Errors come back as diagnostics of "Summary Page Preview.".
    SummaryRenderer(std::optional<TemplateLayout> layout, const ReportData &data);

    // The label and value lists of the last render, one entry per box slot.
    const SummaryFieldLists &fieldLists() const { return m_lists; }

protected:
    void fillFields() override;
    void drawBody(OutputHelpers &out, SectionFlow &flow) override;

private:
    struct Content;

    Content contentOf(PageEngine &engine, const CustomTemplate &box, double left) const;
    void drawLabelAndValue(OutputHelpers &out, const CustomTemplate &box, const Content &content,
                           double left, double top) const;
    double drawCharges(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                       double left, double top) const;
    double drawOptions(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                       const Content &content, double left, double top) const;

    SummaryFieldLists m_lists;
    SummaryTotals m_totals;
    SummaryFields::OptionLists m_options;
};

} // namespace tavrel

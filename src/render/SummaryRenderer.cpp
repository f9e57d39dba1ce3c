#include "render/SummaryRenderer.h"

#include "base/ErrorReport.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "render/SummaryRendererFlow.h"
#include "spec/SpecData.h"
#include "templates/PrintDefinitions.h"

#include <QStringList>

#include <algorithm>

namespace tavrel {

namespace {

const QString AdditionalChargesCaption = QStringLiteral("Additional Charges");
const QString ShippingNotesCaption = QStringLiteral("Shipping Notes");
const QString OptionsCaption = QStringLiteral("Total Option / Description");
const QChar CarriageReturn(13);

// The room between a label and the text that follows it.
constexpr double LabelGap = 300;

bool isBodyBox(const CustomTemplate &box) {
    return box.tPlaced && Container::normalized(box.tContainer) == Container::mainPort() &&
           (box.tBody || box.tTotal);
}

} // namespace

struct SummaryRenderer::Content {
    enum class Kind { Picture, Notes, Charges, ShippingNotes, Options, LabelValue };
    Kind kind = Kind::LabelValue;
    QString label;
    QString value;
    double valueLeft = 0; // page x
    double valueWidth = 0;
    double height = 0;
};

SummaryRenderer::SummaryRenderer(std::optional<TemplateLayout> layout, const ReportData &data)
    : BoxSectionRenderer(std::move(layout), data, QStringLiteral("Summary Page Preview.")) {}

void SummaryRenderer::fillFields() {
    m_lists = {};
    const SpecData noSpec;
    const SpecData &spec = data().spec ? *data().spec : noSpec;
    double charges = 0;
    if (data().cifPresent && data().order) {
        try {
            charges = SummaryFields::chargeSum(*data().order);
        } catch (const RuntimeError &error) {
            // A charge that is not a number is reported once; the page goes on without charges.
            addDiagnostic(error);
        }
    }
    m_totals = SummaryTotals::from(spec, charges, data().cifPresent);
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout().box(slot);
        if (box.placed)
            SummaryFields::fill(m_lists, m_totals, slot, box.caption);
    }
    m_options = SummaryFields::specificationOptions(spec);
}

SummaryRenderer::Content SummaryRenderer::contentOf(PageEngine &engine, const CustomTemplate &box,
                                                    double left) const {
    Content content;
    const double inner = std::max(1.0, box.tWidth - 2 * TextInset);
    const std::size_t slot = std::size_t(box.tIndex);
    const OrderData *order = data().order;
    if (box.tImgPlaced || box.tLogo) {
        content.kind = Content::Kind::Picture;
        content.height = pictureHeight(box);
        if (content.height <= 0)
            content.height = measure(engine, QString(), inner);
        return content;
    }
    if (box.tNotes) {
        content.kind = Content::Kind::Notes;
        content.value = box.tNotesName;
        content.height = measure(engine, content.value, inner);
        return content;
    }
    if (box.tCaption == AdditionalChargesCaption) {
        content.kind = Content::Kind::Charges;
        double height = 0;
        if (order) {
            for (const AdditionalCharge &charge : order->charges) {
                if (SummaryFields::chargeIsPrinted(charge))
                    height += measure(engine, charge.name, 0);
            }
        }
        content.height = height > 0 ? height : measure(engine, QString(), inner);
        return content;
    }
    if (box.tCaption == ShippingNotesCaption) {
        content.kind = Content::Kind::ShippingNotes;
        content.value = order ? order->shippingNotes : QString();
        content.height = measure(engine, content.value, inner);
        return content;
    }
    content.kind =
        box.tCaption == OptionsCaption ? Content::Kind::Options : Content::Kind::LabelValue;
    if (slot < m_lists.labels.size()) {
        content.label = m_lists.labels[slot];
        content.value = m_lists.values[slot];
    }
    const double labelWidth =
        content.label.isEmpty() ? 0 : engine.TextWidth(content.label) + LabelGap;
    content.valueLeft = left + TextInset + labelWidth;
    content.valueWidth = std::max(left + box.tWidth - TextInset - content.valueLeft,
                                  engine.TextWidth(content.value) + TextInset);
    content.height = std::max(content.label.isEmpty() ? 0 : measure(engine, content.label, 0),
                              measure(engine, content.value, content.valueWidth));
    if (content.kind == Content::Kind::Options && !m_options.codes.isEmpty())
        content.height = std::max(content.height, measure(engine, m_options.codes, 0));
    return content;
}

void SummaryRenderer::drawBody(OutputHelpers &out, SectionFlow &flow) {
    PageEngine &engine = out.engine();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        CustomTemplate box = CustomTemplate::fromBox(layout().box(slot));
        if (!isBodyBox(box))
            continue;
        box.tIndex = qint16(slot);
        applyStyle(out, box);
        const double left = boxLeft(engine, box);
        const Content content = contentOf(engine, box, left);
        // A list that does not fit on a page at all flows on line by line from its first line.
        const bool isList =
            content.kind == Content::Kind::Charges || content.kind == Content::Kind::Options;
        const double needed = isList && content.height > flow.bodyBottom() - flow.bodyTop()
                                  ? measure(engine, content.label, 0)
                                  : content.height;
        const double top = flow.place(box.tLevel, box.tTop, box.tTop + box.tHeight, needed);
        drawBoxBackground(out, box, left, top, content.height);
        const double inner = std::max(1.0, box.tWidth - 2 * TextInset);
        double reached = top + content.height;
        switch (content.kind) {
        case Content::Kind::Picture:
            drawPictureBox(out, box, left, top);
            break;
        case Content::Kind::Notes:
            out.PrintAlignedTextBox(engineAlignment(box.tTextAlign), content.value,
                                    left + TextInset, top, inner);
            break;
        case Content::Kind::ShippingNotes:
            engine.setTextAlign(engineAlignment(box.tTextAlign));
            if (!content.value.isEmpty())
                out.PrintTextBox(left + TextInset, top, inner, content.value);
            break;
        case Content::Kind::Charges:
            reached = drawCharges(out, flow, box, left, top);
            break;
        case Content::Kind::Options:
            reached = drawOptions(out, flow, box, content, left, top);
            break;
        case Content::Kind::LabelValue:
            drawLabelAndValue(out, box, content, left, top);
            break;
        }
        flow.reached(reached);
        engine.CurrentY();
    }
}

void SummaryRenderer::drawLabelAndValue(OutputHelpers &out, const CustomTemplate &box,
                                        const Content &content, double left, double top) const {
    PageEngine &engine = out.engine();
    if (!content.label.isEmpty()) {
        engine.setTextAlign(0);
        out.PrintTextBox(left + TextInset, top, content.valueLeft - left - TextInset,
                         content.label);
    }
    if (!content.value.isEmpty())
        out.PrintAlignedTextBox(engineAlignment(box.tTextAlign), content.value, content.valueLeft,
                                top, content.valueWidth);
}

double SummaryRenderer::drawCharges(OutputHelpers &out, SectionFlow &flow,
                                    const CustomTemplate &box, double left, double top) const {
    PageEngine &engine = out.engine();
    engine.setTextAlign(0);
    double y = top;
    bool printed = false;
    if (data().order) {
        for (const AdditionalCharge &charge : data().order->charges) {
            if (!SummaryFields::chargeIsPrinted(charge))
                continue;
            const QString amount = SummaryFields::chargeAmountText(charge);
            const double nameLeft = left + TextInset;
            const double nameWidth = engine.TextWidth(charge.name);
            const double amountLeft = nameLeft + nameWidth + LabelGap;
            const double amountWidth =
                std::max(left + box.tWidth - TextInset - amountLeft, engine.TextWidth(amount) + 1);
            const double height = measure(engine, charge.name, 0);
            y = flow.lineAt(y, height);
            if (!charge.name.isEmpty())
                out.PrintTextBox(nameLeft, y, nameWidth + LabelGap, charge.name);
            out.PrintTextBox(amountLeft, y, amountWidth, amount);
            y += height;
            printed = true;
        }
    }
    return printed ? y : top + measure(engine, QString(), 0);
}

double SummaryRenderer::drawOptions(OutputHelpers &out, SectionFlow &flow,
                                    const CustomTemplate &box, const Content &content, double left,
                                    double top) const {
    PageEngine &engine = out.engine();
    engine.setTextAlign(0);
    const double labelLeft = left + TextInset;
    out.PrintTextBox(labelLeft, top, content.valueLeft - labelLeft, content.label);
    const double labelBottom = top + measure(engine, content.label, 0);
    if (m_options.codes.isEmpty())
        return labelBottom;

    const QStringList codes = m_options.codes.split(CarriageReturn);
    QStringList descriptions = m_options.descriptions.split(CarriageReturn);
    descriptions.resize(std::max(descriptions.size(), codes.size()));
    double codeWidth = layout().other.realONNWidth;
    if (codeWidth <= 0) {
        // A template without an option-code column width: the widest code and a gap.
        for (const QString &code : codes)
            codeWidth = std::max(codeWidth, engine.TextWidth(code));
        codeWidth += LabelGap;
    }
    const double codeLeft = content.valueLeft;
    const double descriptionLeft = codeLeft + codeWidth;
    const double descriptionWidth =
        std::max(left + box.tWidth - TextInset - descriptionLeft, 1440.0);
    // Each code goes on the line of its description, so a description that wraps keeps the
    // codes under it in step.
    double y = top;
    for (qsizetype i = 0; i < codes.size(); ++i) {
        const double height = std::max(measure(engine, codes[i], codeWidth),
                                       measure(engine, descriptions[i], descriptionWidth));
        y = flow.lineAt(y, height);
        out.PrintTextBox(codeLeft, y, codeWidth, codes[i]);
        out.PrintTextBox(descriptionLeft, y, descriptionWidth, descriptions[i]);
        y += height;
    }
    return std::max(labelBottom, y);
}

} // namespace tavrel

#include "render/CoverRenderer.h"

#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "render/SummaryRendererFlow.h"
#include "spec/FieldCatalog.h"
#include "spec/OrderFileReader.h"
#include "templates/PrintDefinitions.h"

#include <algorithm>
#include <optional>

namespace tavrel {

namespace {

enum class Contact { SalesPerson, SalesNumber, Dealer, DealerNumber };

std::optional<Contact> contactOf(const QString &caption) {
    if (caption == QLatin1String("Sales Person"))
        return Contact::SalesPerson;
    if (caption == QLatin1String("Sales Number"))
        return Contact::SalesNumber;
    if (caption == QLatin1String("Dealer"))
        return Contact::Dealer;
    if (caption == QLatin1String("Dealer Number"))
        return Contact::DealerNumber;
    return std::nullopt;
}

// The box a contact column is read beside: a sales person's number, a number's sales person.
QString partnerCaption(Contact contact) {
    switch (contact) {
    case Contact::SalesPerson:
        return QStringLiteral("Sales Number");
    case Contact::SalesNumber:
        return QStringLiteral("Sales Person");
    case Contact::Dealer:
        return QStringLiteral("Dealer Number");
    case Contact::DealerNumber:
        return QStringLiteral("Dealer");
    }
    return {};
}

QStringList contactEntries(const OrderData &order, Contact contact) {
    const bool sales = contact == Contact::SalesPerson || contact == Contact::SalesNumber;
    const bool numbers = contact == Contact::SalesNumber || contact == Contact::DealerNumber;
    QStringList entries;
    for (const OrderContact &entry : sales ? order.salesPersons : order.dealers)
        entries << (numbers ? entry.number : entry.name);
    return entries;
}

bool isBodyBox(const BoxInfo &box) {
    return box.placed && Container::normalized(box.container) == Container::mainPort();
}

// Where the entries of a contact box start (page x) and how wide they may be.
struct EntryColumn {
    double left = 0;
    double width = 0;
};

EntryColumn entryColumn(PageEngine &engine, const CustomTemplate &box, double boxLeft,
                        double inset) {
    EntryColumn column;
    column.left = boxLeft + inset + engine.TextWidth(QStringLiteral("Number: "));
    column.width = std::max(1.0, boxLeft + box.tWidth - inset - column.left);
    return column;
}

} // namespace

CoverRenderer::CoverRenderer(std::optional<TemplateLayout> layout, const ReportData &data)
    : BoxSectionRenderer(std::move(layout), data, QStringLiteral("Cover Page Preview.")) {}

const OrderData &CoverRenderer::order() const {
    return data().order ? *data().order : m_noOrder;
}

void CoverRenderer::fillFields() {
    m_lists = {};
    m_lists.labels.resize(OrderFieldLists::Slots + 1);
    m_lists.values.resize(OrderFieldLists::Slots + 1);
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout().box(slot);
        if (box.placed)
            fillOrderField(m_lists, order(), data().cifPresent, slot, box.caption);
    }
}

void CoverRenderer::drawBody(OutputHelpers &out, SectionFlow &flow) {
    PageEngine &engine = out.engine();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &info = layout().box(slot);
        if (!isBodyBox(info))
            continue;
        CustomTemplate box = CustomTemplate::fromBox(info);
        box.tIndex = qint16(slot);
        applyStyle(out, box);
        const double left = boxLeft(engine, box);
        const QString &label = m_lists.labels[std::size_t(slot)];
        const QString &value = m_lists.values[std::size_t(slot)];
        double reached = 0;
        if (box.tImgPlaced || box.tLogo) {
            double height = pictureHeight(box);
            if (height <= 0)
                height = measure(engine, QString(), 0);
            const double top = flow.place(box.tLevel, box.tTop, box.tTop + box.tHeight, height);
            drawPictureBox(out, box, left, top);
            reached = top + height;
        } else if (box.tNotes) {
            reached = drawText(out, flow, box, box.tNotesName, left);
        } else if (contactOf(box.tCaption)) {
            reached = drawContacts(out, flow, box, left);
        } else if (!label.isEmpty()) {
            reached = drawOrderField(out, flow, box, left);
        } else if (FieldCatalog::isHeaderFooterCaption(box.tCaption)) {
            reached = drawText(
                out, flow, box,
                PageCaptions::value(box.tCaption, data(), engine.PreviewPage(), engine.PageCount()),
                left);
        } else {
            // Multi-line boxes (street addresses, comments) and every other field: one text box
            // of the box's width, as tall as its lines.
            reached = drawText(out, flow, box, value, left);
        }
        flow.reached(reached);
        engine.CurrentY();
    }
}

double CoverRenderer::drawText(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                               const QString &text, double left) const {
    PageEngine &engine = out.engine();
    const double width = std::max(1.0, box.tWidth - 2 * TextInset);
    const double height = measure(engine, text, width);
    const double top = flow.place(box.tLevel, box.tTop, box.tTop + box.tHeight, height);
    drawBoxBackground(out, box, left, top, height);
    if (!text.isEmpty()) {
        const int alignment = engineAlignment(box.tTextAlign);
        if (box.tNotes) {
            out.PrintAlignedTextBox(alignment, text, left + TextInset, top, width);
        } else {
            engine.setTextAlign(alignment);
            out.PrintTextBox(left + TextInset, top, width, text);
        }
    }
    return top + height;
}

double CoverRenderer::drawOrderField(OutputHelpers &out, SectionFlow &flow,
                                     const CustomTemplate &box, double left) const {
    PageEngine &engine = out.engine();
    const std::size_t slot = std::size_t(box.tIndex);
    const QString label = m_lists.labels[slot] + labelTrail();
    const QString &value = m_lists.values[slot];
    // The values of all order fields line up, whatever their label.
    const double column = engine.TextWidth(longestLabel()) + LabelColumnGap;
    const double valueLeft = left + TextInset + column;
    const double valueWidth =
        std::max(left + box.tWidth - TextInset - valueLeft, engine.TextWidth(value) + TextInset);
    const double height =
        std::max(measure(engine, label, column), measure(engine, value, valueWidth));
    const double top = flow.place(box.tLevel, box.tTop, box.tTop + box.tHeight, height);
    drawBoxBackground(out, box, left, top, height);
    engine.setTextAlign(0);
    out.PrintTextBox(left + TextInset, top, column, label);
    if (!value.isEmpty())
        out.PrintAlignedTextBox(engineAlignment(box.tTextAlign), value, valueLeft, top, valueWidth);
    return top + height;
}

CoverRenderer::ContactColumn CoverRenderer::contactColumn(OutputHelpers &out,
                                                          const CustomTemplate &box) const {
    PageEngine &engine = out.engine();
    const Contact contact = *contactOf(box.tCaption);
    ContactColumn column;
    column.entries = contactEntries(order(), contact);
    // An empty list still prints one (empty) line, so the box keeps one line of height.
    if (column.entries.isEmpty())
        column.entries << QString();
    const EntryColumn own = entryColumn(engine, box, boxLeft(engine, box), TextInset);
    for (const QString &entry : column.entries)
        column.lineHeights.push_back(measure(engine, entry, own.width));

    // Side by side, a number stays on the line of its name: each line takes the taller of the
    // two entries.
    const QString partner = partnerCaption(contact);
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &info = layout().box(slot);
        if (!isBodyBox(info) || info.caption != partner)
            continue;
        const CustomTemplate other = CustomTemplate::fromBox(info);
        const QStringList otherEntries = contactEntries(order(), *contactOf(partner));
        applyStyle(out, other);
        const EntryColumn theirs = entryColumn(engine, other, boxLeft(engine, other), TextInset);
        for (qsizetype i = 0; i < otherEntries.size() && i < column.entries.size(); ++i) {
            double &height = column.lineHeights[std::size_t(i)];
            height = std::max(height, measure(engine, otherEntries[i], theirs.width));
        }
        applyStyle(out, box);
        break;
    }
    return column;
}

double CoverRenderer::drawContacts(OutputHelpers &out, SectionFlow &flow, const CustomTemplate &box,
                                   double left) const {
    PageEngine &engine = out.engine();
    const ContactColumn column = contactColumn(out, box);
    const EntryColumn entries = entryColumn(engine, box, left, TextInset);
    double height = 0;
    for (const double line : column.lineHeights)
        height += line;
    const double top = flow.place(box.tLevel, box.tTop, box.tTop + box.tHeight, height);
    drawBoxBackground(out, box, left, top, height);
    engine.setTextAlign(0);
    out.PrintTextBox(left + TextInset, top, entries.left - left - TextInset,
                     m_lists.labels[std::size_t(box.tIndex)]);
    double y = top;
    for (qsizetype i = 0; i < column.entries.size(); ++i) {
        const double line = column.lineHeights[std::size_t(i)];
        y = flow.lineAt(y, line);
        out.PrintTextBox(entries.left, y, entries.width, column.entries[i]);
        y += line;
    }
    return y;
}

} // namespace tavrel

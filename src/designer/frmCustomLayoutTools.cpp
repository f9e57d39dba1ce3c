#include "designer/frmCustomLayout.h"

#include "base/Prompter.h"

#include <QMenu>

namespace tavrel {

namespace {

constexpr qint32 NewLineWidth = 2880;
constexpr qint32 NewLineHeight = 15;
constexpr float NewRectWidth = 2880;
constexpr float NewRectHeight = 1440;

} // namespace

void frmCustomLayout::toolPressed(bool rectangle, Qt::MouseButton button, QPoint globalPos) {
    const TemplateLayout &layout = m_document.layout();
    if (rectangle) {
        if (layout.freeRectSlot() == TemplateLayout::NoFreeRectSlot) {
            m_prompter.message(QStringLiteral("There is no more rectangle."), QString(),
                               MessageIcon::Information);
            return;
        }
        if (button == Qt::RightButton)
            m_popRectangle->popup(globalPos);
        else if (button == Qt::LeftButton)
            addRectangle();
        return;
    }
    if (layout.freeLineSlot() == TemplateLayout::NoFreeLineSlot) {
        m_prompter.message(QStringLiteral("There is no more line left"), QString(),
                           MessageIcon::Information);
        return;
    }
    if (button == Qt::RightButton)
        m_popLine->popup(globalPos);
    else if (button == Qt::LeftButton)
        addLine();
}

void frmCustomLayout::addLine() {
    TemplateLayout layout = m_document.layout();
    const int slot = layout.freeLineSlot();
    if (slot == TemplateLayout::NoFreeLineSlot)
        return;
    LineInfo &line = layout.line(slot);
    line = LineInfo{};
    line.index = qint16(slot);
    line.placed = true;
    line.visible = true;
    line.width = NewLineWidth;
    line.height = NewLineHeight;
    line.backColor = qint32(m_lineColor);
    line.boderStyle = m_lineStyle;
    line.container = Container::mainPort();
    m_document.change(layout, QStringLiteral("Add Line"));
    m_document.setSelection({{}, slot, 0});
    showStatus(QStringLiteral("Drag the new line into place; drag its right end to size it."));
}

void frmCustomLayout::addRectangle() {
    TemplateLayout layout = m_document.layout();
    const int slot = layout.freeRectSlot();
    if (slot == TemplateLayout::NoFreeRectSlot)
        return;
    PrintRect &rect = layout.rect(slot);
    rect = PrintRect{};
    rect.rectIndex = qint16(slot);
    rect.rectVisible = true;
    rect.width = NewRectWidth;
    rect.height = NewRectHeight;
    rect.borderColor = qint32(m_rectColor);
    LayoutEdits::recordRectPlacement(rect);
    m_document.change(layout, QStringLiteral("Add Rectangle"));
    m_document.setSelection({{}, 0, slot});
    showStatus(QStringLiteral("Drag the rectangle by its border; drag its corner to size it."));
}

void frmCustomLayout::chooseRectangleColor() {
    const std::optional<quint32> color = m_prompter.color(m_rectColor);
    if (!color)
        return;
    if (*color == WhiteColor) {
        m_prompter.message(QStringLiteral("Cannot add a white rectangle."), QString(),
                           MessageIcon::Exclamation);
        return;
    }
    m_rectColor = *color;
    remember([color = m_rectColor](JobFile &job) { job.writeRectangleBorderColor(color); });
    const int selected = m_document.selection().rect;
    if (selected != 0) {
        TemplateLayout layout = m_document.layout();
        layout.rect(selected).borderColor = qint32(m_rectColor);
        LayoutEdits::recordRectPlacement(layout.rect(selected));
        m_document.change(layout, QStringLiteral("Rectangle Colour"));
    }
}

void frmCustomLayout::chooseLineColor() {
    const std::optional<quint32> color = m_prompter.color(m_lineColor);
    if (!color)
        return;
    if (*color == WhiteColor) {
        m_prompter.message(QStringLiteral("Cannot add a white line."), QString(),
                           MessageIcon::Exclamation);
        return;
    }
    m_lineColor = *color;
    remember([color = m_lineColor](JobFile &job) { job.writeLineBorderColor(color); });
    const int selected = m_document.selection().line;
    if (selected != 0) {
        TemplateLayout layout = m_document.layout();
        layout.line(selected).backColor = qint32(m_lineColor);
        m_document.change(layout, QStringLiteral("Line Colour"));
    }
}

void frmCustomLayout::setLineStyle(LineStyle style) {
    m_lineStyle = qint16(style);
    remember([style = m_lineStyle](JobFile &job) { job.writeLineBorderStyle(style); });
    const int selected = m_document.selection().line;
    if (selected != 0) {
        TemplateLayout layout = m_document.layout();
        layout.line(selected).boderStyle = m_lineStyle;
        m_document.change(layout, QStringLiteral("Line Style"));
    }
    updateChecks();
}

void frmCustomLayout::deleteRectangle() {
    const int selected = m_document.selection().rect;
    if (selected == 0)
        return;
    if (m_prompter.message(QStringLiteral("Delete Rectangle. Are you sure?"), QString(),
                           MessageIcon::Information, MessageButtons::YesNo,
                           MessageAnswer::Yes) != MessageAnswer::Yes)
        return;
    TemplateLayout layout = m_document.layout();
    LayoutEdits::clearRect(layout, selected);
    m_document.change(layout, QStringLiteral("Delete Rectangle"));
}

void frmCustomLayout::clearAllRectangles() {
    TemplateLayout layout = m_document.layout();
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot)
        LayoutEdits::clearRect(layout, slot);
    m_document.change(layout, QStringLiteral("Clear Rectangles"));
}

void frmCustomLayout::copyRectangle() {
    const int selected = m_document.selection().rect;
    if (selected != 0)
        m_copiedRect = m_document.layout().rect(selected);
}

void frmCustomLayout::pasteRectangle() {
    if (!m_copiedRect)
        return;
    TemplateLayout layout = m_document.layout();
    const int slot = layout.freeRectSlot();
    if (slot == TemplateLayout::NoFreeRectSlot) {
        m_prompter.message(QStringLiteral("There is no more rectangle."), QString(),
                           MessageIcon::Information);
        return;
    }
    PrintRect rect = *m_copiedRect;
    rect.rectIndex = qint16(slot);
    rect.left += 240;
    rect.top += 240;
    LayoutEdits::recordRectPlacement(rect);
    layout.rect(slot) = rect;
    m_document.change(layout, QStringLiteral("Paste Rectangle"));
    m_document.setSelection({{}, 0, slot});
}

void frmCustomLayout::deleteLine() {
    const int selected = m_document.selection().line;
    if (selected == 0)
        return;
    TemplateLayout layout = m_document.layout();
    LayoutEdits::clearLine(layout, selected);
    m_document.change(layout, QStringLiteral("Delete Line"));
}

void frmCustomLayout::clearAllLines() {
    TemplateLayout layout = m_document.layout();
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot)
        LayoutEdits::clearLine(layout, slot);
    m_document.change(layout, QStringLiteral("Clear Lines"));
}

} // namespace tavrel

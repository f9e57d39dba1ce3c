#include "designer/DesignerDocument.h"

#include <QUndoCommand>

namespace tavrel {

namespace {

// One edit of the layout, kept as the whole value before and after: a layout is a few hundred
// kilobytes at most, and a snapshot cannot get out of step with the edit that made it.
class LayoutCommand : public QUndoCommand {
public:
    LayoutCommand(DesignerDocument &document, TemplateLayout before, TemplateLayout after,
                  const QString &text, int mergeId)
        : QUndoCommand(text)
        , m_document(document)
        , m_before(std::move(before))
        , m_after(std::move(after))
        , m_mergeId(mergeId) {}

    void undo() override { m_document.setLayoutFromUndo(m_before); }
    void redo() override { m_document.setLayoutFromUndo(m_after); }
    int id() const override { return m_mergeId == 0 ? -1 : 1; }
    bool mergeWith(const QUndoCommand *other) override {
        const auto *next = static_cast<const LayoutCommand *>(other);
        if (next->m_mergeId != m_mergeId)
            return false;
        m_after = next->m_after;
        return true;
    }

private:
    DesignerDocument &m_document;
    TemplateLayout m_before;
    TemplateLayout m_after;
    int m_mergeId;
};

} // namespace

DesignerDocument::DesignerDocument(TemplateKind kind, QObject *parent)
    : QObject(parent)
    , m_kind(kind) {
    m_undo.setUndoLimit(200);
}

void DesignerDocument::change(const TemplateLayout &after, const QString &text, int mergeId) {
    if (after == m_layout)
        return;
    m_undo.push(new LayoutCommand(*this, m_layout, after, text, mergeId));
}

void DesignerDocument::setLayoutFromUndo(const TemplateLayout &layout) {
    m_layout = layout;
    dropStaleSelection();
    setSaved(false);
    emit layoutChanged();
}

void DesignerDocument::reset(const TemplateLayout &layout, TemplateKind kind, const QString &path) {
    m_undo.clear();
    m_layout = layout;
    m_kind = kind;
    m_path = path;
    m_lastAlignment.clear();
    m_selection = {};
    m_logoFile.clear();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity && m_logoFile.isEmpty(); ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (box.placed && box.logo)
            m_logoFile = box.logoFile;
    }
    setSaved(true);
    emit layoutChanged();
    emit selectionChanged();
}

void DesignerDocument::markSaved(const QString &path) {
    m_path = path;
    setSaved(true);
}

void DesignerDocument::setSaved(bool saved) {
    if (m_saved == saved)
        return;
    m_saved = saved;
    emit savedChanged(saved);
}

void DesignerDocument::setSelection(DesignerSelection selection) {
    if (selection == m_selection)
        return;
    m_selection = std::move(selection);
    dropStaleSelection();
    emit selectionChanged();
}

void DesignerDocument::selectBoxes(const QList<int> &picked) {
    setSelection({picked, 0, 0});
}

void DesignerDocument::dropStaleSelection() {
    const DesignerSelection before = m_selection;
    m_selection.boxes.removeIf([this](int slot) { return !m_layout.box(slot).placed; });
    if (m_selection.line != 0 && !m_layout.line(m_selection.line).placed)
        m_selection.line = 0;
    if (m_selection.rect != 0 && !m_layout.rect(m_selection.rect).rectVisible)
        m_selection.rect = 0;
    if (!(before == m_selection))
        emit selectionChanged();
}

} // namespace tavrel

#pragma once

#include "designer/LayoutEdits.h"
#include "templates/TemplateKind.h"
#include "templates/TemplateLayout.h"

#include <QList>
#include <QObject>
#include <QUndoStack>

namespace tavrel {

// What is selected on the page. Boxes keep the order they were picked in: the first one is the
// reference of the alignment and same-colour commands.
struct DesignerSelection {
    QList<int> boxes;
    int line = 0; // 0: none
    int rect = 0; // 0: none

    bool isEmpty() const { return boxes.isEmpty() && line == 0 && rect == 0; }
    bool operator==(const DesignerSelection &) const = default;
};

// The template being designed: its layout value, kind, file path and saved mark, the selection,
// and the undo stack through which every edit goes.
class DesignerDocument : public QObject {
    Q_OBJECT

public:
    explicit DesignerDocument(TemplateKind kind, QObject *parent = nullptr);

    const TemplateLayout &layout() const { return m_layout; }
    TemplateKind kind() const { return m_kind; }
    QString path() const { return m_path; }
    bool isSaved() const { return m_saved; }
    QUndoStack &undoStack() { return m_undo; }

    // Replaces the layout as one undo step named text. Consecutive changes with the same
    // non-zero mergeId become one step (a mouse drag, a run of arrow keys).
    void change(const TemplateLayout &after, const QString &text, int mergeId = 0);
    // Starts over on a layout (new or opened template): no undo history, marked saved.
    void reset(const TemplateLayout &layout, TemplateKind kind, const QString &path);
    void markSaved(const QString &path);

    const DesignerSelection &selection() const { return m_selection; }
    void setSelection(DesignerSelection selection);
    void selectBoxes(const QList<int> &picked);

    // The geometry before the last alignment, for mnuUndoAlign.
    const QList<BoxGeometry> &lastAlignment() const { return m_lastAlignment; }
    void setLastAlignment(QList<BoxGeometry> before) { m_lastAlignment = std::move(before); }

    // The logo picture last chosen (or the opened template's): a logo box placed later shows it.
    QString logoFile() const { return m_logoFile; }
    void setLogoFile(const QString &path) { m_logoFile = path; }

    // A fresh id for a merged run of changes.
    int newMergeId() { return ++m_mergeCounter; }

    // Used by the undo commands only.
    void setLayoutFromUndo(const TemplateLayout &layout);

signals:
    void layoutChanged();
    void selectionChanged();
    void savedChanged(bool saved);

private:
    void setSaved(bool saved);
    void dropStaleSelection();

    TemplateLayout m_layout;
    TemplateKind m_kind;
    QString m_path;
    bool m_saved = true;
    DesignerSelection m_selection;
    QList<BoxGeometry> m_lastAlignment;
    QString m_logoFile;
    QUndoStack m_undo;
    int m_mergeCounter = 0;
};

} // namespace tavrel

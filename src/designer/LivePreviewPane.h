#pragma once

#include "templates/TemplateKind.h"

#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

class QLabel;
class QScrollArea;
class QToolButton;

namespace tavrel {

class DesignerActions;
class DesignerDocument;
struct TemplatePreview;

// The template being designed, laid out with the current job's data by the report's own
// renderers, shown beside the canvas. It follows every edit after a short pause, so a run of
// arrow keys or a drag costs one layout, and does nothing while it is hidden.
class LivePreviewPane : public QWidget {
    Q_OBJECT

public:
    static constexpr int SettleMilliseconds = 400;

    LivePreviewPane(DesignerDocument &document, DesignerActions &actions,
                    QWidget *parent = nullptr);

    // Lays the template out now instead of after the pause.
    void refresh();
    int shownPage() const { return m_page; }
    int pageCount() const { return int(m_pages.size()); }
    QString statusText() const;
    const QImage *pageImage() const;

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void scheduleRefresh();
    void display(const TemplatePreview &preview);
    void showPage(int page);

    DesignerDocument &m_document;
    DesignerActions &m_actions;
    QTemporaryDir m_scratch;
    QTimer m_settle;
    QList<QImage> m_pages;
    int m_page = 0;
    int m_total = 0; // pages of the whole section; 0 when the layout stopped early
    QString m_note;  // what the picture does not say
    bool m_stale = true;
    QScrollArea *m_scroll = nullptr;
    QLabel *m_picture = nullptr;
    QLabel *m_status = nullptr;
    QToolButton *m_previous = nullptr;
    QToolButton *m_next = nullptr;
};

} // namespace tavrel

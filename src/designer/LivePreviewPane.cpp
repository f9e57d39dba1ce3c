#include "designer/LivePreviewPane.h"

#include "base/RuntimeError.h"
#include "designer/DesignerActions.h"
#include "designer/DesignerDocument.h"
#include "templates/TemplateWriter.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

namespace tavrel {

LivePreviewPane::LivePreviewPane(DesignerDocument &document, DesignerActions &actions,
                                 QWidget *parent)
    : QWidget(parent)
    , m_document(document)
    , m_actions(actions) {
    setObjectName(QStringLiteral("livePreview"));
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleMilliseconds);
    connect(&m_settle, &QTimer::timeout, this, &LivePreviewPane::refresh);
    connect(&m_document, &DesignerDocument::layoutChanged, this, &LivePreviewPane::scheduleRefresh);

    m_picture = new QLabel(this);
    m_picture->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_scroll = new QScrollArea(this);
    m_scroll->setWidget(m_picture);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setBackgroundRole(QPalette::Dark);
    m_status = new QLabel(this);
    m_status->setWordWrap(true);
    m_previous = new QToolButton(this);
    m_previous->setArrowType(Qt::LeftArrow);
    m_previous->setToolTip(QStringLiteral("Previous page"));
    m_next = new QToolButton(this);
    m_next->setArrowType(Qt::RightArrow);
    m_next->setToolTip(QStringLiteral("Next page"));
    connect(m_previous, &QToolButton::clicked, this, [this] { showPage(m_page - 1); });
    connect(m_next, &QToolButton::clicked, this, [this] { showPage(m_page + 1); });

    auto *bar = new QHBoxLayout;
    bar->addWidget(m_previous);
    bar->addWidget(m_next);
    bar->addWidget(m_status, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(bar);
    layout->addWidget(m_scroll, 1);
    showPage(0);
}

void LivePreviewPane::scheduleRefresh() {
    m_stale = true;
    if (isVisible())
        m_settle.start();
}

void LivePreviewPane::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    if (m_stale)
        m_settle.start();
}

void LivePreviewPane::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    showPage(m_page);
}

void LivePreviewPane::refresh() {
    m_settle.stop();
    m_stale = false;
    if (!m_scratch.isValid()) {
        m_note = QStringLiteral("No room for the preview's scratch file.");
        showPage(m_page);
        return;
    }
    // The renderers read templates from files; the edits go to a scratch copy, never to the
    // template itself.
    const TemplateKind kind = m_document.kind();
    const QString path = m_scratch.filePath(QStringLiteral("Preview") + templateExtension(kind));
    try {
        TemplateWriter::write(path, m_document.layout(),
                              TemplateWriter::titleLine(kind, QDateTime::currentDateTime()));
    } catch (const RuntimeError &error) {
        m_note = error.description();
        showPage(m_page);
        return;
    }
    display(m_actions.livePreview(kind, path));
}

void LivePreviewPane::display(const TemplatePreview &preview) {
    m_pages = preview.pages;
    m_total = preview.complete ? preview.pagesLaidOut : 0;
    m_note = preview.problem;
    if (m_note.isEmpty() && m_pages.isEmpty())
        m_note = QStringLiteral("Nothing to show: no job data.");
    showPage(m_page);
}

void LivePreviewPane::showPage(int page) {
    m_page = m_pages.isEmpty() ? 0 : std::clamp(page, 1, int(m_pages.size()));
    m_previous->setEnabled(m_page > 1);
    m_next->setEnabled(m_page < int(m_pages.size()));
    QString text = QStringLiteral("No preview");
    if (m_page == 0) {
        m_picture->clear();
    } else {
        const QImage &image = m_pages[m_page - 1];
        const int width = std::max(50, m_scroll->viewport()->width() - 4);
        m_picture->setPixmap(QPixmap::fromImage(
            image.scaledToWidth(std::min(width, image.width()), Qt::SmoothTransformation)));
        // A layout stopped early knows only the pages it made; its page numbers stay blank.
        text = m_total > 0 ? QStringLiteral("Page %1 of %2").arg(m_page).arg(m_total)
                           : QStringLiteral("Page %1 (first pages only)").arg(m_page);
    }
    if (!m_note.isEmpty())
        text += QStringLiteral(" - ") + m_note;
    m_status->setText(text);
}

QString LivePreviewPane::statusText() const {
    return m_status->text();
}

const QImage *LivePreviewPane::pageImage() const {
    return m_page == 0 ? nullptr : &m_pages[m_page - 1];
}

} // namespace tavrel

#include "preview/frmPrintpreview.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/ui/OutputNotice.h"
#include "preview/PageView.h"
#include "preview/PreviewActions.h"
#include "preview/frmFind.h"
#include "render/CancelToken.h"
#include "render/OffThread.h"
#include "render/PageEngine.h"
#include "render/PdfExportJob.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProgressDialog>

#include <atomic>

#include <cmath>

namespace tavrel {

namespace {

// The hourglass while a command works.
class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

const QString &lastPageText() {
    static const QString text = QStringLiteral("This is the last page");
    return text;
}

const QString &firstPageText() {
    static const QString text = QStringLiteral("This is the first page");
    return text;
}

} // namespace

void frmPrintpreview::navigate(int page, bool forward) {
    if (page < 1 || page > m_view->pageCount()) {
        m_prompter.message(forward ? lastPageText() : firstPageText(),
                           forward ? QStringLiteral("View Next") : QStringLiteral("View Previous"),
                           MessageIcon::Information);
        return;
    }
    m_view->showPage(page);
}

void frmPrintpreview::zoomToMode(ZoomMode mode) {
    if (mode == ZoomMode::Percentage)
        m_zoom.setPercent(m_zoom.shownPercent()); // keep what is on screen
    else
        m_zoom.setMode(mode);
    m_view->setZoom(m_zoom.mode(), m_zoom.percent());
    m_zoom.setShownPercent(int(std::lround(m_view->shownPercent())));
    updateZoomTools(ZoomState::modeName(mode));
}

void frmPrintpreview::zoomToChosenMode() {
    const std::optional<ZoomMode> mode = ZoomState::modeFromName(m_zoomMode->currentText());
    if (!mode) {
        updateZoomTools(m_zoomModeText);
        return;
    }
    zoomToMode(*mode);
}

void frmPrintpreview::zoomToChosenPercent() {
    const std::optional<int> percent = ZoomState::parsePercent(m_zoomPercent->currentText());
    if (!percent) {
        updateZoomTools(m_zoomModeText); // back to what is on screen
        return;
    }
    m_zoom.setPercent(*percent);
    m_view->setZoom(m_zoom.mode(), m_zoom.percent());
    updateZoomTools(ZoomState::modeName(ZoomMode::Percentage));
}

void frmPrintpreview::zoomStep(int direction) {
    if (direction > 0)
        m_zoom.zoomIn();
    else
        m_zoom.zoomOut();
    m_view->setZoom(m_zoom.mode(), m_zoom.percent());
    // The step commands show "Zoom" in the mode tool.
    updateZoomTools(QStringLiteral("Zoom"));
}

void frmPrintpreview::openFind() {
    if (!m_find) {
        m_find = new frmFind(
            [this](const QString &text, bool matchCase) { findText(text, matchCase); }, this);
        m_find->adjustSize();
        // Top right of the preview, where it hides the least of the page.
        const QPoint corner = mapToGlobal(QPoint(width() - m_find->width() - 40, 90));
        m_find->move(corner);
    }
    m_find->show();
    m_find->raise();
    m_find->activateWindow();
    m_find->activate();
}

void frmPrintpreview::findText(const QString &text, bool matchCase) {
    const int from = std::max(1, m_view->currentPage());
    // Find again while the last match is on screen goes on with the match after it, on the same
    // page or a later one; from any other page the search starts at that page's first match.
    int skip = 0;
    if (m_lastMatch && m_lastMatch->text == text && m_lastMatch->matchCase == matchCase &&
        m_lastMatch->page == from)
        skip = m_lastMatch->indexOnPage + 1;
    const std::optional<TextMatch> match = m_engine.FindText(text, from, matchCase, skip);
    if (!match) {
        m_lastMatch.reset();
        m_prompter.message(QStringLiteral("Cannot find the string '") + text +
                               QStringLiteral("' in the document."),
                           QStringLiteral("Not Found"), MessageIcon::Information);
        return;
    }
    m_lastMatch = LastMatch{text, matchCase, match->page, match->indexOnPage};
    m_view->showPage(match->page);
    m_view->setMark(match->page, match->rect);
    keepFindDialogOffMark();
}

void frmPrintpreview::keepFindDialogOffMark() {
    const std::optional<QRect> mark = m_view->markOnScreen();
    if (!m_find || !m_find->isVisible() || !mark)
        return;
    const QRect onScreen(m_view->viewport()->mapToGlobal(mark->topLeft()), mark->size());
    if (!m_find->frameGeometry().intersects(onScreen))
        return;
    // Move the dialog to the other half of the page area, top or bottom.
    const QRect area(m_view->viewport()->mapToGlobal(QPoint(0, 0)), m_view->viewport()->size());
    const int y = onScreen.center().y() < area.center().y()
                      ? area.bottom() - m_find->frameGeometry().height() - 20
                      : area.top() + 20;
    m_find->move(m_find->x(), y);
}

bool frmPrintpreview::viewOnly() const {
    return isViewOnlyRunMode(m_runMode);
}

bool frmPrintpreview::outputAllowed() {
    if (viewOnly()) {
        setStatus(viewOnlyRefusalText());
        return false;
    }
    if (m_layoutRunning) {
        setStatus(QStringLiteral("Please wait until all pages are laid out."));
        return false;
    }
    if (m_engine.pages().empty()) {
        setStatus(QStringLiteral("There are no pages to print or export."));
        return false;
    }
    return true;
}

void frmPrintpreview::printDocument() {
    if (!outputAllowed())
        return;
    m_actions.print();
}

void frmPrintpreview::exportPdf() {
    if (!outputAllowed())
        return;
    FileDialogRequest request;
    request.title = QStringLiteral("   Save as PDF format ");
    request.filter = QStringLiteral("pdf(*.pdf)|*.pdf|All Files  (*.*)|*.*");
    request.defaultExtension = QStringLiteral("pdf");
    request.folder = m_pdfFolder;
    request.fileName = m_pdfFileName;
    const std::optional<QString> path = m_prompter.saveFile(request);
    if (!path || path->isEmpty())
        return;

    setStatus(QStringLiteral("Generating PDF file. Please wait..."));
    // An existing file is replaced only once the new one is complete; one that cannot be
    // replaced is reported before any work.
    if (!pdfPathReplaceable(*path)) {
        setStatus(QString());
        m_prompter.message(QStringLiteral("The file - \"") + *path +
                               QStringLiteral("\" is in using. "),
                           QString(), MessageIcon::Exclamation);
        return;
    }
    PdfExportResult result = PdfExportResult::Written;
    try {
        result = writePdfWithProgress(*path);
    } catch (const RuntimeError &error) {
        setStatus(QString());
        reportError(m_prompter, QStringLiteral("Save As PDF."), error);
        return;
    }
    if (result == PdfExportResult::Cancelled) {
        setStatus(QString());
        return;
    }
    setStatus(QString());
    if (openAndConfirmOutput(m_prompter, QStringLiteral("PDF file"), *path,
                             QStringLiteral("PDF document")) == OpenOutcome::NoApplication) {
        m_prompter.message(QStringLiteral("To view PDF file, You need to install Acrobat "
                                          "Reader.\n") +
                               readerHint(),
                           QString(), MessageIcon::Information);
    }
}

PdfExportResult frmPrintpreview::writePdfWithProgress(const QString &path) {
    // The document is written on a thread of its own; this window shows how far it got and
    // takes no other command meanwhile (the dialog is modal to it), so the engine stays as it is.
    const int pages = int(m_engine.pages().size());
    QProgressDialog progress(QStringLiteral("Writing the PDF file..."), QStringLiteral("Cancel"), 0,
                             std::max(1, pages), this);
    progress.setObjectName(QStringLiteral("pdfProgress"));
    progress.setWindowTitle(QStringLiteral("Save as PDF"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    progress.setAutoClose(false);
    progress.setAutoReset(false);
    progress.setValue(0);
    CancelToken cancel;
    connect(&progress, &QProgressDialog::canceled, &progress, [&cancel] { cancel.cancel(); });
    std::atomic<int> written{0};
    PdfExportResult result = PdfExportResult::Written;
    const WaitCursor wait;
    runOffThread(
        [&] {
            result = exportPdfFile(m_engine, path, &cancel, [&written](int page) {
                written.store(page, std::memory_order_relaxed);
            });
        },
        [&] {
            const int page = written.load(std::memory_order_relaxed);
            progress.setValue(page);
            progress.setLabelText(
                QStringLiteral("Writing page %1 of %2 to the PDF file...").arg(page).arg(pages));
        });
    return result;
}

void frmPrintpreview::exportHtml() {
    if (!outputAllowed())
        return;
    setStatus(QStringLiteral("Generating HTML file. Please wait..."));
    {
        const WaitCursor wait;
        m_actions.rerunHtml();
    }
    resetDocument();
    setStatus(QString());
}

void frmPrintpreview::exportRtf() {
    if (!outputAllowed())
        return;
    QString written;
    {
        const WaitCursor wait;
        written = m_actions.rerunRtf();
    }
    resetDocument();
    if (!written.isEmpty())
        openAndConfirmOutput(m_prompter, QStringLiteral("RTF document"), written,
                             QStringLiteral("RTF document"));
}

} // namespace tavrel

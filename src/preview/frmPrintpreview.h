#pragma once

#include "base/ui/CommandTable.h"
#include "preview/ZoomState.h"
#include "render/PdfExportJob.h"

#include <QMainWindow>
#include <QRectF>

#include <functional>
#include <optional>

class QAction;
class QComboBox;
class QDockWidget;
class QLabel;
class QSpinBox;
class QTimer;
class QToolBar;

namespace tavrel {

class PageEngine;
class PageView;
class PreviewActions;
class Prompter;
class ThumbnailPanel;
class frmFind;

// The preview window: the engine's document on screen with page navigation, zoom, find, print
// and the PDF, HTML and RTF exports. Its commands are one table (frmPrintpreviewCommandTable.cpp)
// that builds the menus and the tool bar; shortcuts, tools and tests all go through dispatch(). The
// document may still be growing when the window opens: the window watches the engine (its new-page
// notification and a short poll) and keeps its page count, scroll range and thumbnails up to date.
// The engine must outlive the window.
class frmPrintpreview : public QMainWindow {
    Q_OBJECT

public:
    // runMode is the job's run mode; in "3" the preview is for viewing only (see
    // the README's window decisions). templateName goes into the caption.
    frmPrintpreview(PageEngine &engine, Prompter &prompter, PreviewActions &actions,
                    const QString &runMode, const QString &templateName, QWidget *parent = nullptr);
    ~frmPrintpreview() override;

    // "mnuPrint", "mnuExit", "mnuAbout", "mnuHelpTopic", "mnuViewPDF", "mnuHTML", "mnuRTF",
    // "mnuViewNext", "mnuViewPrevious", "mnuViewLast", "mnuViewFirst", "mnuFindText",
    // "mnuThumb", "mnuTwopages", "mnuWholePage", "mnuPageWidth", "mnuStretch", "mnuZoomIn",
    // "mnuZoomOut", "mnuZoomPg" (the mode named by its tool), "mnuZoom%" (the percentage in its
    // tool), "mnuPercentage". Returns false for an unknown command.
    bool dispatch(const QString &command);

    // While the job is still laying out pages, the outputs (print, PDF, HTML, RTF) wait.
    void setLayoutRunning(bool running);
    bool layoutRunning() const { return m_layoutRunning; }
    std::optional<int> pendingPage() const { return m_pendingPage; }
    // Reads the engine again now (the poll would within a moment).
    void refreshDocument();
    // The job laid the document out anew (an export re-run): drop every rendered image.
    void resetDocument();

    // Searches from the current page on (from the match after the last one when the same text
    // is searched again while its page is shown); shows and marks the match, or says "Not
    // Found" when no match is left.
    void findText(const QString &text, bool matchCase = false);

    // Where the PDF save dialog starts and the name it proposes.
    void setPdfFolder(const QString &folder) { m_pdfFolder = folder; }
    void setPdfFileName(const QString &name) { m_pdfFileName = name; }

    static QString captionFor(const QString &templateName);
    // The second line of the message shown when no program opens the PDF.
    static QString readerHint();

    QString runMode() const { return m_runMode; }
    bool viewOnly() const;
    int currentPage() const;
    int pageCount() const;
    ZoomState zoom() const { return m_zoom; }
    QString statusText() const;

    PageView *pageView() const { return m_view; }
    ThumbnailPanel *thumbnails() const { return m_thumbnails; }
    QComboBox *zoomModeTool() const { return m_zoomMode; }
    QComboBox *zoomPercentTool() const { return m_zoomPercent; }
    QAction *action(const QString &command) const;
    const CommandTable &commands() const { return m_commands; }
    frmFind *findDialog() const { return m_find; }
    QLabel *timePanel() const { return m_time; }
    QLabel *datePanel() const { return m_date; }

signals:
    // Every text shown in the first status panel, including the empty text that clears it.
    void statusShown(const QString &text);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // frmPrintpreviewCommandTable.cpp: the commands, the menus and the tool bar
    void buildCommands();
    static QStringList modeCommands();
    void buildMenus();
    void buildToolBar();

    // frmPrintpreview.cpp: the window and its tools
    void addPageTools(QToolBar *bar);
    void addZoomPercentTool(QToolBar *bar);
    void addZoomModeTool(QToolBar *bar);
    void buildStatusBar();
    void watchEngine();
    void pollEngine();
    void showPendingPage();
    void updatePageTools();
    void updateZoomTools(const QString &modeText);
    void updateOutputTools();
    void showClock();
    void setStatus(const QString &text);

    // frmPrintpreviewCommands.cpp: what the commands do
    void navigate(int page, bool forward);
    void applyZoom(const QString &modeText);
    void zoomToMode(ZoomMode mode);
    void zoomToChosenMode();
    void zoomToChosenPercent();
    void zoomStep(int direction);
    void openFind();
    void keepFindDialogOffMark();
    bool outputAllowed();
    void printDocument();
    void exportPdf();
    PdfExportResult writePdfWithProgress(const QString &path);
    void exportHtml();
    void exportRtf();

    PageEngine &m_engine;
    Prompter &m_prompter;
    PreviewActions &m_actions;
    const QString m_runMode;
    CommandTable m_commands{this};
    QString m_pdfFolder;
    QString m_pdfFileName;

    PageView *m_view = nullptr;
    ThumbnailPanel *m_thumbnails = nullptr;
    QDockWidget *m_thumbnailDock = nullptr;
    frmFind *m_find = nullptr;
    QComboBox *m_zoomMode = nullptr;
    QComboBox *m_zoomPercent = nullptr;
    QSpinBox *m_pageNumber = nullptr;
    QLabel *m_pageTotal = nullptr;
    QLabel *m_message = nullptr;
    QLabel *m_time = nullptr;
    QLabel *m_date = nullptr;
    QTimer *m_poll = nullptr;
    QTimer *m_clock = nullptr;

    ZoomState m_zoom;
    QString m_zoomModeText; // what the zoom-mode tool shows: a mode name or "Zoom"
    bool m_layoutRunning = false;
    // A page typed into the page box before the layout reached it: shown when it arrives.
    std::optional<int> m_pendingPage;
    bool m_refreshQueued = false;
    int m_listenerId = 0;
    // What the poll compares to notice pages added or drawn on.
    struct Signature {
        qsizetype pages = -1;
        qsizetype items = -1;
        friend bool operator==(const Signature &, const Signature &) = default;
    };
    Signature m_seen;
    struct LastMatch {
        QString text;
        bool matchCase = false;
        int page = 0;
        int indexOnPage = 0;
    };
    std::optional<LastMatch> m_lastMatch;
};

} // namespace tavrel

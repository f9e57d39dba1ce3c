#include "preview/frmPrintpreview.h"

#include "base/Prompter.h"
#include "preview/PageView.h"
#include "preview/ThumbnailPanel.h"
#include "preview/frmFind.h"
#include "render/PageEngine.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDate>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <QToolBar>

#include <cmath>

namespace tavrel {

namespace {

// How often the window looks at the engine for pages added by a job still running.
constexpr int PollInterval = 100; // ms

const char *const GeometryKey = "frmPrintpreview/geometry";
const char *const StateKey = "frmPrintpreview/state";

} // namespace

QString frmPrintpreview::captionFor(const QString &templateName) {
    return QStringLiteral("Print Preview - Template [") + templateName + QLatin1Char(']');
}

QString frmPrintpreview::readerHint() {
    return QStringLiteral("A PDF reader such as Evince or Okular can be installed from your "
                          "distribution's software centre.");
}

frmPrintpreview::frmPrintpreview(PageEngine &engine, Prompter &prompter, PreviewActions &actions,
                                 const QString &runMode, const QString &templateName,
                                 QWidget *parent)
    : QMainWindow(parent)
    , m_engine(engine)
    , m_prompter(prompter)
    , m_actions(actions)
    , m_runMode(runMode) {
    setObjectName(QStringLiteral("frmPrintpreview"));
    setWindowTitle(captionFor(templateName));

    m_view = new PageView(m_engine, this);
    setCentralWidget(m_view);
    m_thumbnails = new ThumbnailPanel(m_engine, this);
    m_thumbnailDock = new QDockWidget(QStringLiteral("Pages"), this);
    m_thumbnailDock->setObjectName(QStringLiteral("dockThumbnails"));
    m_thumbnailDock->setWidget(m_thumbnails);
    m_thumbnailDock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    addDockWidget(Qt::LeftDockWidgetArea, m_thumbnailDock);

    buildCommands();
    buildMenus();
    buildToolBar();
    buildStatusBar();

    connect(m_view, &PageView::currentPageChanged, this, [this](int page) {
        updatePageTools();
        m_thumbnails->setCurrentPage(page);
    });
    connect(m_view, &PageView::layoutChanged, this, [this] {
        m_zoom.setShownPercent(int(std::lround(m_view->shownPercent())));
        updateZoomTools(m_zoomModeText);
    });
    connect(m_view, &PageView::zoomStepRequested, this, [this](int direction) {
        m_commands.trigger(direction > 0 ? QStringLiteral("mnuZoomIn")
                                         : QStringLiteral("mnuZoomOut"));
    });
    connect(m_view, &PageView::pageActivated, this, [this](int page) {
        // A double click in a view of many pages opens that page.
        if (m_zoom.mode() == ZoomMode::Thumbnail || m_zoom.mode() == ZoomMode::TwoPages) {
            m_view->showPage(page);
            m_commands.trigger(QStringLiteral("mnuWholePage"));
        }
    });
    connect(m_view, &PageView::engineOutOfStep, this, &frmPrintpreview::pollEngine);
    connect(m_thumbnails, &ThumbnailPanel::pageChosen, this,
            [this](int page) { m_view->showPage(page); });

    zoomToMode(ZoomMode::WholePage);
    watchEngine();
    updateOutputTools();

    const QSettings settings;
    if (!restoreGeometry(settings.value(QLatin1String(GeometryKey)).toByteArray())) {
        QSize size(1000, 820);
        if (const QScreen *screen = this->screen())
            size = size.boundedTo(screen->availableGeometry().size() * 9 / 10);
        resize(size);
    }
    restoreState(settings.value(QLatin1String(StateKey)).toByteArray());
}

frmPrintpreview::~frmPrintpreview() {
    m_engine.removeNewPageListener(m_listenerId);
}

// "Page [n] of m": type a page number to go there.
void frmPrintpreview::addPageTools(QToolBar *bar) {
    bar->addWidget(new QLabel(QStringLiteral(" Page "), bar));
    m_pageNumber = new QSpinBox(bar);
    m_pageNumber->setObjectName(QStringLiteral("txtPage"));
    m_pageNumber->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_pageNumber->setAlignment(Qt::AlignRight);
    m_pageNumber->setMinimumWidth(56);
    m_pageNumber->setKeyboardTracking(false);
    m_pageNumber->setToolTip(QStringLiteral("Type a page number and press Enter"));
    bar->addWidget(m_pageNumber);
    m_pageTotal = new QLabel(bar);
    m_pageTotal->setObjectName(QStringLiteral("lblPageCount"));
    m_pageTotal->setMinimumWidth(50);
    bar->addWidget(m_pageTotal);
    connect(m_pageNumber, &QSpinBox::valueChanged, this, [this](int page) {
        m_pendingPage.reset();
        if (page > m_view->pageCount() && m_layoutRunning) {
            // A big job is still being laid out behind the preview: the page comes when the
            // layout reaches it.
            m_pendingPage = page;
            m_prompter.status(
                QStringLiteral("Page %1 is shown as soon as it is laid out.").arg(page));
        } else if (page != m_view->currentPage()) {
            m_view->showPage(page);
        }
    });
}

void frmPrintpreview::addZoomPercentTool(QToolBar *bar) {
    m_zoomPercent = new QComboBox(bar);
    m_zoomPercent->setObjectName(QStringLiteral("mnuZoom%"));
    m_zoomPercent->setEditable(true);
    m_zoomPercent->setInsertPolicy(QComboBox::NoInsert);
    m_zoomPercent->addItems(ZoomState::percentChoices());
    m_zoomPercent->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("\\s*\\d{1,3}\\s*%?\\s*")), m_zoomPercent));
    m_zoomPercent->setToolTip(QStringLiteral("Zoom percentage: choose one or type it"));
    m_zoomPercent->setMinimumContentsLength(5);
    bar->addWidget(m_zoomPercent);
    connect(m_zoomPercent, &QComboBox::activated, this,
            [this] { m_commands.trigger(QStringLiteral("mnuZoom%")); });
}

void frmPrintpreview::addZoomModeTool(QToolBar *bar) {
    m_zoomMode = new QComboBox(bar);
    m_zoomMode->setObjectName(QStringLiteral("mnuZoomPg"));
    m_zoomMode->addItems(ZoomState::modeNames());
    m_zoomMode->setPlaceholderText(QStringLiteral("Zoom"));
    m_zoomMode->setToolTip(QStringLiteral("Zoom mode"));
    m_zoomMode->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    bar->addWidget(m_zoomMode);
    connect(m_zoomMode, &QComboBox::activated, this,
            [this] { m_commands.trigger(QStringLiteral("mnuZoomPg")); });
}

void frmPrintpreview::buildStatusBar() {
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("sbrMessage"));
    m_time = new QLabel(this);
    m_time->setObjectName(QStringLiteral("sbrTime"));
    m_date = new QLabel(this);
    m_date->setObjectName(QStringLiteral("sbrDate"));
    statusBar()->addWidget(m_message, 1);
    statusBar()->addPermanentWidget(m_time);
    statusBar()->addPermanentWidget(m_date);
    m_clock = new QTimer(this);
    m_clock->setInterval(1000);
    connect(m_clock, &QTimer::timeout, this, &frmPrintpreview::showClock);
    m_clock->start();
    showClock();
}

void frmPrintpreview::showClock() {
    // "HH:MM:SS AMPM" and the long date of the user's locale.
    m_time->setText(QLocale::c().toString(QTime::currentTime(), QStringLiteral("hh:mm:ss AP")));
    m_date->setText(QLocale().toString(QDate::currentDate(), QLocale::LongFormat));
}

void frmPrintpreview::setStatus(const QString &text) {
    m_message->setText(text);
    // Shown before the long work that usually follows starts.
    m_message->repaint();
    emit statusShown(text);
}

QString frmPrintpreview::statusText() const {
    return m_message->text();
}

void frmPrintpreview::watchEngine() {
    // The notification comes in the middle of laying out a page: only note it, and read the
    // engine when the job next lets events run.
    m_listenerId = m_engine.addNewPageListener([this](int) {
        if (m_refreshQueued)
            return;
        m_refreshQueued = true;
        QTimer::singleShot(0, this, [this] {
            m_refreshQueued = false;
            pollEngine();
        });
    });
    m_poll = new QTimer(this);
    m_poll->setInterval(PollInterval);
    connect(m_poll, &QTimer::timeout, this, &frmPrintpreview::pollEngine);
    m_poll->start();
    pollEngine();
}

void frmPrintpreview::pollEngine() {
    Signature now;
    now.pages = qsizetype(m_engine.pages().size());
    now.items = 0;
    for (const Page &page : m_engine.pages())
        now.items += qsizetype(page.items.size());
    if (now == m_seen)
        return;
    const bool shrunk = now.pages < m_seen.pages;
    m_seen = now;
    if (shrunk) {
        resetDocument();
        return;
    }
    m_view->refresh();
    m_thumbnails->refreshPages();
    showPendingPage();
    updatePageTools();
}

void frmPrintpreview::showPendingPage() {
    if (!m_pendingPage)
        return;
    const int count = m_view->pageCount();
    // A layout that ended, finished or stopped, before the page shows the last page it made.
    if (*m_pendingPage <= count || !m_layoutRunning) {
        const int page = std::min(*m_pendingPage, count);
        m_pendingPage.reset();
        if (page >= 1)
            m_view->showPage(page);
    }
}

void frmPrintpreview::refreshDocument() {
    pollEngine();
}

void frmPrintpreview::resetDocument() {
    m_seen = Signature{qsizetype(m_engine.pages().size()), -1};
    m_lastMatch.reset();
    m_view->reset();
    m_thumbnails->resetPages();
    pollEngine();
    updatePageTools();
}

void frmPrintpreview::setLayoutRunning(bool running) {
    m_layoutRunning = running;
    pollEngine();
    showPendingPage();
    updatePageTools();
    updateOutputTools();
}

int frmPrintpreview::currentPage() const {
    return m_view->currentPage();
}

int frmPrintpreview::pageCount() const {
    return m_view->pageCount();
}

void frmPrintpreview::updatePageTools() {
    const int count = m_view->pageCount();
    const QSignalBlocker blocker(m_pageNumber);
    // While the layout runs, any page can be asked for; it shows when it is laid out.
    m_pageNumber->setRange(count > 0 ? 1 : 0,
                           m_layoutRunning ? PageEngine::MaxPageCount : std::max(count, 0));
    m_pageNumber->setValue(m_pendingPage.value_or(m_view->currentPage()));
    // While the job still runs the count is what is laid out so far.
    m_pageTotal->setText(QStringLiteral(" of %1%2 ")
                             .arg(count)
                             .arg(m_layoutRunning ? QStringLiteral("...") : QString()));
}

void frmPrintpreview::updateZoomTools(const QString &modeText) {
    m_zoomModeText = modeText;
    {
        const QSignalBlocker blocker(m_zoomMode);
        // "Zoom" is not in the list: it shows as the tool's placeholder.
        m_zoomMode->setCurrentIndex(m_zoomMode->findText(modeText));
    }
    {
        const QSignalBlocker blocker(m_zoomPercent);
        m_zoomPercent->setEditText(ZoomState::percentText(m_zoom.shownPercent()));
    }
    m_commands.refresh();
}

void frmPrintpreview::updateOutputTools() {
    m_commands.refresh();
}

void frmPrintpreview::closeEvent(QCloseEvent *event) {
    QSettings settings;
    settings.setValue(QLatin1String(GeometryKey), saveGeometry());
    settings.setValue(QLatin1String(StateKey), saveState());
    if (m_find)
        m_find->close();
    event->accept();
}

} // namespace tavrel

#include "preview/frmPrintpreview.h"

#include "preview/PageView.h"
#include "preview/ThumbnailPanel.h"
#include "preview/frmFind.h"
#include "render/PageEngine.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QDate>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenuBar>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QStyle>
#include <QTime>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

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

    buildActions();
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
        dispatch(direction > 0 ? QStringLiteral("mnuZoomIn") : QStringLiteral("mnuZoomOut"));
    });
    connect(m_view, &PageView::pageActivated, this, [this](int page) {
        // A double click in a view of many pages opens that page.
        if (m_zoom.mode() == ZoomMode::Thumbnail || m_zoom.mode() == ZoomMode::TwoPages) {
            m_view->showPage(page);
            dispatch(QStringLiteral("mnuWholePage"));
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

QAction *frmPrintpreview::addCommand(const QString &command, const QString &text,
                                     const QString &shortcut, const QString &tip) {
    auto *action = new QAction(text, this);
    action->setObjectName(command);
    if (!shortcut.isEmpty())
        action->setShortcut(QKeySequence(shortcut));
    action->setToolTip(shortcut.isEmpty()
                           ? tip
                           : tip + QStringLiteral(" (") +
                                 QKeySequence(shortcut).toString(QKeySequence::NativeText) +
                                 QLatin1Char(')'));
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, [this, command] { dispatch(command); });
    addAction(action);
    return action;
}

void frmPrintpreview::buildActions() {
    const auto icon = [this](QStyle::StandardPixmap pixmap) {
        return style()->standardIcon(pixmap);
    };
    addCommand(QStringLiteral("mnuPrint"), QStringLiteral("&Print"), QStringLiteral("Ctrl+P"),
               QStringLiteral("Print the report"));
    addCommand(QStringLiteral("mnuViewPDF"), QStringLiteral("Save as P&DF..."), QString(),
               QStringLiteral("Save the report as a PDF file"));
    addCommand(QStringLiteral("mnuHTML"), QStringLiteral("Export &HTML"), QString(),
               QStringLiteral("Export the report as HTML pages and open them"));
    addCommand(QStringLiteral("mnuRTF"), QStringLiteral("Export &RTF"), QString(),
               QStringLiteral("Export the report as an RTF document and open it"));
    addCommand(QStringLiteral("mnuExit"), QStringLiteral("&Close Preview"), QStringLiteral("Esc"),
               QStringLiteral("Close the preview"));
    addCommand(QStringLiteral("mnuViewFirst"), QStringLiteral("&First Page"),
               QStringLiteral("Home"), QStringLiteral("First page"))
        ->setIcon(icon(QStyle::SP_MediaSkipBackward));
    addCommand(QStringLiteral("mnuViewPrevious"), QStringLiteral("&Previous Page"),
               QStringLiteral("PgUp"), QStringLiteral("Previous page"))
        ->setIcon(icon(QStyle::SP_MediaSeekBackward));
    addCommand(QStringLiteral("mnuViewNext"), QStringLiteral("&Next Page"),
               QStringLiteral("PgDown"), QStringLiteral("Next page"))
        ->setIcon(icon(QStyle::SP_MediaSeekForward));
    addCommand(QStringLiteral("mnuViewLast"), QStringLiteral("&Last Page"), QStringLiteral("End"),
               QStringLiteral("Last page"))
        ->setIcon(icon(QStyle::SP_MediaSkipForward));
    addCommand(QStringLiteral("mnuFindText"), QStringLiteral("&Find..."), QStringLiteral("Ctrl+F"),
               QStringLiteral("Find text in the report"));
    addCommand(QStringLiteral("mnuWholePage"), QStringLiteral("&Whole Page"), QString(),
               QStringLiteral("Show whole pages"));
    addCommand(QStringLiteral("mnuPageWidth"), QStringLiteral("Page &Width"), QString(),
               QStringLiteral("Fit the page width to the window"));
    addCommand(QStringLiteral("mnuTwopages"), QStringLiteral("&Two Pages"), QString(),
               QStringLiteral("Show two pages side by side"));
    addCommand(QStringLiteral("mnuThumb"), QStringLiteral("T&humbnails"), QString(),
               QStringLiteral("Show many small pages"));
    addCommand(QStringLiteral("mnuStretch"), QStringLiteral("&Stretch"), QString(),
               QStringLiteral("Stretch the page to fill the window"));
    addCommand(QStringLiteral("mnuZoomIn"), QStringLiteral("Zoom &In"), QStringLiteral("Ctrl++"),
               QStringLiteral("Zoom in"));
    addCommand(QStringLiteral("mnuZoomOut"), QStringLiteral("Zoom &Out"), QStringLiteral("Ctrl+-"),
               QStringLiteral("Zoom out"));
    // Ctrl+= is Ctrl++ without Shift on most keyboards.
    action(QStringLiteral("mnuZoomIn"))
        ->setShortcuts(
            {QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))});
    addCommand(QStringLiteral("mnuHelpTopic"), QStringLiteral("&Help Topics"), QStringLiteral("F1"),
               QStringLiteral("Open the help"));
    addCommand(QStringLiteral("mnuAbout"), QStringLiteral("&About Tavrel..."), QString(),
               QStringLiteral("About Tavrel"));

    auto *modes = new QActionGroup(this);
    modes->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const char *name :
         {"mnuWholePage", "mnuPageWidth", "mnuTwopages", "mnuThumb", "mnuStretch"}) {
        QAction *mode = action(QString::fromLatin1(name));
        mode->setCheckable(true);
        modes->addAction(mode);
    }
}

QAction *frmPrintpreview::action(const QString &command) const {
    return findChild<QAction *>(command, Qt::FindDirectChildrenOnly);
}

void frmPrintpreview::buildMenus() {
    const auto add = [this](QMenu *menu, const char *command) {
        menu->addAction(action(QString::fromLatin1(command)));
    };
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    add(file, "mnuPrint");
    add(file, "mnuViewPDF");
    add(file, "mnuHTML");
    add(file, "mnuRTF");
    file->addSeparator();
    add(file, "mnuExit");

    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    add(view, "mnuViewFirst");
    add(view, "mnuViewPrevious");
    add(view, "mnuViewNext");
    add(view, "mnuViewLast");
    view->addSeparator();
    add(view, "mnuFindText");
    view->addSeparator();
    add(view, "mnuWholePage");
    add(view, "mnuPageWidth");
    add(view, "mnuTwopages");
    add(view, "mnuThumb");
    add(view, "mnuStretch");
    add(view, "mnuZoomIn");
    add(view, "mnuZoomOut");
    view->addSeparator();
    QAction *panel = m_thumbnailDock->toggleViewAction();
    panel->setText(QStringLiteral("Page &Thumbnails"));
    panel->setShortcut(QKeySequence(QStringLiteral("F4")));
    view->addAction(panel);

    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    add(help, "mnuHelpTopic");
    add(help, "mnuAbout");
}

void frmPrintpreview::buildToolBar() {
    QToolBar *bar = addToolBar(QStringLiteral("MenuBar"));
    bar->setObjectName(QStringLiteral("MenuBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    // Short tool texts so that every tool fits a window of 800 pixels.
    action(QStringLiteral("mnuViewPDF"))->setIconText(QStringLiteral("PDF"));
    action(QStringLiteral("mnuHTML"))->setIconText(QStringLiteral("HTML"));
    action(QStringLiteral("mnuRTF"))->setIconText(QStringLiteral("RTF"));
    action(QStringLiteral("mnuFindText"))->setIconText(QStringLiteral("Find..."));
    action(QStringLiteral("mnuZoomIn"))->setIconText(QStringLiteral(" + "));
    action(QStringLiteral("mnuZoomOut"))
        ->setIconText(QStringLiteral(" ") + QChar(0x2212) + QLatin1Char(' '));
    action(QStringLiteral("mnuExit"))->setIconText(QStringLiteral("Close"));
    const auto add = [this, bar](const char *command) {
        QAction *tool = action(QString::fromLatin1(command));
        bar->addAction(tool);
        // The page arrows are pictures only; their names are in the tool tips.
        if (!tool->icon().isNull())
            if (auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(tool)))
                button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    };
    add("mnuPrint");
    add("mnuViewPDF");
    add("mnuHTML");
    add("mnuRTF");
    bar->addSeparator();

    add("mnuViewFirst");
    add("mnuViewPrevious");
    addPageTools(bar);
    add("mnuViewNext");
    add("mnuViewLast");
    bar->addSeparator();
    add("mnuFindText");
    bar->addSeparator();

    add("mnuZoomOut");
    addZoomPercentTool(bar);
    add("mnuZoomIn");
    addZoomModeTool(bar);
    bar->addSeparator();
    add("mnuExit");
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
        if (page != m_view->currentPage())
            m_view->showPage(page);
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
            [this] { dispatch(QStringLiteral("mnuZoom%")); });
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
            [this] { dispatch(QStringLiteral("mnuZoomPg")); });
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
    updatePageTools();
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
    m_pageNumber->setRange(count > 0 ? 1 : 0, std::max(count, 0));
    m_pageNumber->setValue(m_view->currentPage());
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
    static const std::array<std::pair<ZoomMode, const char *>, 5> modeCommands = {
        {{ZoomMode::WholePage, "mnuWholePage"},
         {ZoomMode::PageWidth, "mnuPageWidth"},
         {ZoomMode::TwoPages, "mnuTwopages"},
         {ZoomMode::Thumbnail, "mnuThumb"},
         {ZoomMode::Stretch, "mnuStretch"}}};
    for (const auto &[mode, command] : modeCommands)
        action(QString::fromLatin1(command))->setChecked(m_zoom.mode() == mode);
}

void frmPrintpreview::updateOutputTools() {
    const bool allowed = !viewOnly() && !m_layoutRunning;
    for (const char *command : {"mnuPrint", "mnuViewPDF", "mnuHTML", "mnuRTF"}) {
        QAction *output = action(QString::fromLatin1(command));
        output->setEnabled(allowed);
        if (viewOnly())
            output->setToolTip(QStringLiteral("Not available: this preview is for viewing only"));
    }
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

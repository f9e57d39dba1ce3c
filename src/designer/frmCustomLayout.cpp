#include "designer/frmCustomLayout.h"

#include "base/Prompter.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/DesignerTexts.h"
#include "designer/FieldList.h"
#include "designer/LivePreviewPane.h"
#include "designer/PropertyPanel.h"
#include "designer/RulerScrollArea.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QFileInfo>
#include <QFontComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>

namespace tavrel {

frmCustomLayout::frmCustomLayout(DesignerEnvironment environment, Prompter &prompter,
                                 DesignerActions &actions, QWidget *parent)
    : QMainWindow(parent)
    , m_environment(std::move(environment))
    , m_prompter(prompter)
    , m_designerActions(actions)
    , m_document(TemplateKind::Custom) {
    setObjectName(QStringLiteral("frmCustomLayout"));
    buildUi();
    loadRememberedChoices();
    connect(&m_document, &DesignerDocument::layoutChanged, this, [this] {
        updateWarning();
        updateChecks();
    });
    connect(&m_document, &DesignerDocument::selectionChanged, this, &frmCustomLayout::updateChecks);
    // The stack takes a command only after running it, so its own signal says when undo is due.
    connect(&m_document.undoStack(), &QUndoStack::indexChanged, this,
            &frmCustomLayout::updateChecks);
    openOn(DesignerTexts::untitledName(TemplateKind::Custom));
    resize(1400, 900);
    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("frmCustomLayout/geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("frmCustomLayout/state")).toByteArray());
}

frmCustomLayout::~frmCustomLayout() {
    // The document outlives nothing here: its stack clears itself while being destroyed.
    m_document.undoStack().disconnect(this);
    m_document.disconnect(this);
}

void frmCustomLayout::buildUi() {
    m_canvas = new DesignCanvas(m_document, this);
    m_canvas->setMargins(m_environment.marginLeft, m_environment.marginTop,
                         m_environment.marginRight, m_environment.marginBottom);
    m_canvas->setNewBoxFont(m_environment.fontName, m_environment.fontSize);
    m_scroll = new RulerScrollArea(m_canvas, this);
    m_canvas->resize(m_canvas->sizeHint());
    setCentralWidget(m_scroll);
    connect(&m_document, &DesignerDocument::layoutChanged, this,
            [this] { m_canvas->resize(m_canvas->sizeHint()); });

    m_fields = new FieldList(this);
    auto *fieldDock = new QDockWidget(QStringLiteral("Fields"), this);
    fieldDock->setObjectName(QStringLiteral("dockFields"));
    fieldDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    fieldDock->setWidget(m_fields);
    addDockWidget(Qt::LeftDockWidgetArea, fieldDock);
    connect(m_fields, &FieldList::placeRequested, this,
            [this](const NewBoxRequest &request) { m_canvas->placeNewBoxSomewhere(request); });

    m_properties = new PropertyPanel(m_document, this);
    auto *propertyDock = new QDockWidget(QStringLiteral("Properties"), this);
    propertyDock->setObjectName(QStringLiteral("dockProperties"));
    propertyDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    propertyDock->setWidget(m_properties);
    addDockWidget(Qt::RightDockWidgetArea, propertyDock);
    m_livePreview = new LivePreviewPane(m_document, m_designerActions, this);
    m_previewDock = new QDockWidget(QStringLiteral("Live Preview"), this);
    m_previewDock->setObjectName(QStringLiteral("dockLivePreview"));
    m_previewDock->setWidget(m_livePreview);
    addDockWidget(Qt::RightDockWidgetArea, m_previewDock);
    splitDockWidget(propertyDock, m_previewDock, Qt::Vertical);
    // The properties need little height; the page picture wants the rest and some width.
    resizeDocks({propertyDock, m_previewDock}, {330, 560}, Qt::Vertical);
    resizeDocks({propertyDock}, {360}, Qt::Horizontal);
    connect(m_properties, &PropertyPanel::commandWanted, this,
            [this](const QString &command) { dispatch(command); });

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_warning = new QLabel(this);
    m_warning->setObjectName(QStringLiteral("lblWarning"));
    m_warning->setStyleSheet(QStringLiteral("color: #b00000;"));
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_warning);
    connect(m_canvas, &DesignCanvas::statusText, this, &frmCustomLayout::showStatus);
    connect(m_canvas, &DesignCanvas::contextMenuWanted, this, &frmCustomLayout::showContextMenu);
    connect(m_canvas, &DesignCanvas::commandWanted, this,
            [this](const QString &command) { dispatch(command); });
    connect(&m_document, &DesignerDocument::savedChanged, this, &frmCustomLayout::updateCaption);

    buildMenus();
    buildToolBars();
}

QAction *frmCustomLayout::addCommand(QMenu *menu, const QString &command, const QString &text,
                                     const QKeySequence &shortcut) {
    auto *action = new QAction(text, this);
    action->setObjectName(command);
    if (!shortcut.isEmpty())
        action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, [this, command] { dispatch(command); });
    m_actions.insert(command, action);
    if (menu)
        menu->addAction(action);
    return action;
}

void frmCustomLayout::buildMenus() {
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    addCommand(file, QStringLiteral("mnuNew"), QStringLiteral("&New"), QKeySequence::New);
    addCommand(file, QStringLiteral("mnuOpen"), QStringLiteral("&Open..."), QKeySequence::Open);
    addCommand(file, QStringLiteral("mnuSave"), QStringLiteral("&Save"), QKeySequence::Save);
    addCommand(file, QStringLiteral("mnuSaveAs"), QStringLiteral("Save &As..."));
    file->addSeparator();
    addCommand(file, QStringLiteral("mnuCopyHeaderFooter"),
               QStringLiteral("Copy &Header/Footer From..."));
    file->addSeparator();
    addCommand(file, QStringLiteral("mnuPrintPreview"), QStringLiteral("Print Pre&view"));
    addCommand(file, QStringLiteral("mnuPrint"), QStringLiteral("&Print"), QKeySequence::Print);
    file->addSeparator();
    addCommand(file, QStringLiteral("mnuExit"), QStringLiteral("E&xit"));
    connect(file, &QMenu::aboutToShow, this, [this] { dispatch(QStringLiteral("mnuFile")); });

    QMenu *edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    addCommand(edit, QStringLiteral("mnuUndo"), QStringLiteral("&Undo"), QKeySequence::Undo);
    addCommand(edit, QStringLiteral("mnuRedo"), QStringLiteral("&Redo"),
               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    edit->addSeparator();
    addCommand(edit, QStringLiteral("mnuCopy"), QStringLiteral("&Copy"), QKeySequence::Copy);
    addCommand(edit, QStringLiteral("mnuPaste"), QStringLiteral("&Paste"), QKeySequence::Paste);
    addCommand(edit, QStringLiteral("mnuDuplicate"), QStringLiteral("D&uplicate"),
               QKeySequence(Qt::CTRL | Qt::Key_D));
    addCommand(edit, QStringLiteral("mnuDeleteBox"), QStringLiteral("&Delete Field"));
    addCommand(edit, QStringLiteral("mnuSelectAll"), QStringLiteral("Select &All"),
               QKeySequence::SelectAll);
    edit->addSeparator();
    addCommand(edit, QStringLiteral("mnuEditNotes"), QStringLiteral("Edit &Note Text..."));
    addCommand(edit, QStringLiteral("mnuDisplayLabel"), QStringLiteral("Print Field &Label"))
        ->setCheckable(true);

    QMenu *format = menuBar()->addMenu(QStringLiteral("F&ormat"));
    addCommand(format, QStringLiteral("mnuFont"), QStringLiteral("&Font..."));
    addCommand(format, QStringLiteral("mnuFontBold"), QStringLiteral("&Bold"), QKeySequence::Bold);
    addCommand(format, QStringLiteral("mnuFontItalic"), QStringLiteral("&Italic"),
               QKeySequence::Italic);
    addCommand(format, QStringLiteral("mnuFontUnderline"), QStringLiteral("&Underline"),
               QKeySequence::Underline);
    addCommand(format, QStringLiteral("mnuForeColor"), QStringLiteral("&Text Colour..."));
    addCommand(format, QStringLiteral("mnuBackColor"), QStringLiteral("Bac&kground Colour..."));
    format->addSeparator();
    addCommand(format, QStringLiteral("mnuLeftJustify"), QStringLiteral("Align Text &Left"));
    addCommand(format, QStringLiteral("mnuCenterJustify"), QStringLiteral("Align Text &Centre"));
    addCommand(format, QStringLiteral("mnuRightJustify"), QStringLiteral("Align Text &Right"));
    addCommand(format, QStringLiteral("mnuJustify"), QStringLiteral("&Justify Text"));

    QMenu *align = menuBar()->addMenu(QStringLiteral("&Align"));
    addCommand(align, QStringLiteral("mnuLefts"), QStringLiteral("&Lefts"));
    addCommand(align, QStringLiteral("mnuRights"), QStringLiteral("&Rights"));
    addCommand(align, QStringLiteral("mnuTops"), QStringLiteral("&Tops"));
    addCommand(align, QStringLiteral("mnuBottoms"), QStringLiteral("&Bottoms"));
    align->addSeparator();
    addCommand(align, QStringLiteral("mnuWidth"), QStringLiteral("Same &Width"));
    addCommand(align, QStringLiteral("mnuHeight"), QStringLiteral("Same &Height"));
    addCommand(align, QStringLiteral("mnuBoth"), QStringLiteral("Same &Size"));
    addCommand(align, QStringLiteral("mnuSameColor"), QStringLiteral("Same &Colours"));
    align->addSeparator();
    addCommand(align, QStringLiteral("mnuUndoAlign"), QStringLiteral("&Undo Last Alignment"));
    align->setToolTipsVisible(true);
    for (QAction *action : align->actions())
        action->setToolTip(QStringLiteral("Uses the first box you selected as the reference"));

    QMenu *tool = menuBar()->addMenu(QStringLiteral("&Tool"));
    tool->setObjectName(QStringLiteral("mnuTool"));
    connect(tool, &QMenu::aboutToShow, this, [this] { dispatch(QStringLiteral("mnuTool")); });
    addCommand(tool, QStringLiteral("mnuEditLogo"), QStringLiteral("Choose &Logo Picture..."));
    QMenu *logo = tool->addMenu(QStringLiteral("Logo &Size"));
    logo->setObjectName(QStringLiteral("mnuImgSize"));
    connect(logo, &QMenu::aboutToShow, this, [this] { dispatch(QStringLiteral("mnuImgSize")); });
    for (const char *size : {"25", "50", "75", "100"}) {
        addCommand(logo, QStringLiteral("mnuLogo") + QLatin1String(size),
                   QLatin1String(size) + QLatin1Char('%'))
            ->setCheckable(true);
    }
    addCommand(logo, QStringLiteral("mnuUserDefine"), QStringLiteral("User Define..."))
        ->setCheckable(true);
    QMenu *image = tool->addMenu(QStringLiteral("&Image Size"));
    image->setObjectName(QStringLiteral("mnuImageSize"));
    connect(image, &QMenu::aboutToShow, this, [this] { dispatch(QStringLiteral("mnuImageSize")); });
    for (const char *size : {"25", "50", "75", "100"}) {
        addCommand(image, QStringLiteral("mnuImg") + QLatin1String(size),
                   QLatin1String(size) + QLatin1Char('%'))
            ->setCheckable(true);
    }
    addCommand(image, QStringLiteral("mnuUserDefinedImg"), QStringLiteral("User Define..."))
        ->setCheckable(true);
    tool->addSeparator();
    QMenu *lines = tool->addMenu(QStringLiteral("L&ines"));
    addCommand(lines, QStringLiteral("mnuBorderColor"), QStringLiteral("Line &Colour..."));
    lines->addSeparator();
    addCommand(lines, QStringLiteral("mnuSolid"), QStringLiteral("&Solid"))->setCheckable(true);
    addCommand(lines, QStringLiteral("mnuDash"), QStringLiteral("&Dash"))->setCheckable(true);
    addCommand(lines, QStringLiteral("mnuDot"), QStringLiteral("D&ot"))->setCheckable(true);
    addCommand(lines, QStringLiteral("mnuDashDot"), QStringLiteral("Dash-Do&t"))
        ->setCheckable(true);
    addCommand(lines, QStringLiteral("mnuDashDotDot"), QStringLiteral("Dash-Dot-Dot"))
        ->setCheckable(true);
    lines->addSeparator();
    addCommand(lines, QStringLiteral("mnuDeleteLine"), QStringLiteral("Delete Line"));
    addCommand(lines, QStringLiteral("mnuClearAllLine"), QStringLiteral("Clear All Lines"));
    m_popLine = new QMenu(this);
    m_popLine->setObjectName(QStringLiteral("PopEditLine"));
    m_popLine->addAction(m_actions.value(QStringLiteral("mnuDeleteLine")));
    m_popLine->addAction(m_actions.value(QStringLiteral("mnuClearAllLine")));

    QMenu *rects = tool->addMenu(QStringLiteral("&Rectangles"));
    addCommand(rects, QStringLiteral("mnuDeleteRectangle"), QStringLiteral("Delete Rectangle"));
    addCommand(rects, QStringLiteral("mnuClearAllRectangle"),
               QStringLiteral("Clear All Rectangles"));
    addCommand(rects, QStringLiteral("mnuPastRectangle"), QStringLiteral("Paste Rectangle"));
    addCommand(rects, QStringLiteral("mnuCopyRectangle"), QStringLiteral("Copy Rectangle"));
    addCommand(rects, QStringLiteral("mnuRectangleColor"), QStringLiteral("Rectangle Colour..."));
    m_popRectangle = new QMenu(this);
    m_popRectangle->setObjectName(QStringLiteral("PopEditRectangle"));
    m_popRectangle->addActions(rects->actions());
    tool->addSeparator();
    addCommand(tool, QStringLiteral("mnuFieldLength"), QStringLiteral("&Field Lengths..."));

    QMenu *preferences = menuBar()->addMenu(QStringLiteral("&Preferences"));
    preferences->setObjectName(QStringLiteral("mnuPreference"));
    connect(preferences, &QMenu::aboutToShow, this,
            [this] { dispatch(QStringLiteral("mnuPreference")); });
    addCommand(preferences, QStringLiteral("mnuShowLabel"), QStringLiteral("Show &Labels"))
        ->setCheckable(true);
    addCommand(preferences, QStringLiteral("mnuShowColor"), QStringLiteral("Show &Colours"))
        ->setCheckable(true);
    addCommand(preferences, QStringLiteral("mnuSubTotalOptions"),
               QStringLiteral("Show &Subtotal Options"))
        ->setCheckable(true);

    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    addCommand(view, QStringLiteral("mnuViewLivePreview"), QStringLiteral("&Live Preview"),
               QKeySequence(Qt::Key_F5))
        ->setCheckable(true);
    addCommand(view, QStringLiteral("mnuRefreshPreview"), QStringLiteral("&Refresh Preview"),
               QKeySequence(Qt::CTRL | Qt::Key_R));
    connect(view, &QMenu::aboutToShow, this, [this] { dispatch(QStringLiteral("mnuView")); });

    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    addCommand(help, QStringLiteral("mnuHelpTopic"), QStringLiteral("&Help Topics"),
               QKeySequence::HelpContents);
    addCommand(help, QStringLiteral("mnuAbout"), QStringLiteral("&About..."));

    m_popBox = new QMenu(this);
    m_popBox->setObjectName(QStringLiteral("PopEditBox"));
    for (const char *command : {"mnuFont", "mnuForeColor", "mnuBackColor", "mnuEditNotes",
                                "mnuDisplayLabel", "mnuCopy", "mnuDuplicate", "mnuDeleteBox"})
        m_popBox->addAction(m_actions.value(QLatin1String(command)));
    QMenu *alignSub = m_popBox->addMenu(QStringLiteral("Align"));
    alignSub->addActions(align->actions());
}

void frmCustomLayout::buildToolBars() {
    QToolBar *bar = addToolBar(QStringLiteral("Format"));
    bar->setObjectName(QStringLiteral("tbFormat"));
    bar->setMovable(false);
    for (const char *command : {"mnuNew", "mnuOpen", "mnuSave", "mnuPrintPreview"})
        bar->addAction(m_actions.value(QLatin1String(command)));
    bar->addSeparator();
    bar->addAction(m_actions.value(QStringLiteral("mnuUndo")));
    bar->addAction(m_actions.value(QStringLiteral("mnuRedo")));
    bar->addSeparator();
    m_fontName = new QFontComboBox(bar);
    m_fontName->setObjectName(QStringLiteral("cmbFontName"));
    m_fontName->setCurrentFont(QFont(m_environment.fontName));
    m_fontName->setMaximumWidth(170);
    bar->addWidget(m_fontName);
    m_fontSize = new QComboBox(bar);
    m_fontSize->setObjectName(QStringLiteral("cmbFontSize"));
    m_fontSize->setEditable(true);
    for (int size : {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36})
        m_fontSize->addItem(QString::number(size));
    m_fontSize->setCurrentText(QString::number(m_environment.fontSize));
    bar->addWidget(m_fontSize);
    connect(m_fontName, &QFontComboBox::activated, this,
            [this] { dispatch(QStringLiteral("mnuFontName")); });
    connect(m_fontSize, &QComboBox::textActivated, this,
            [this] { dispatch(QStringLiteral("mnuFontSize")); });
    m_actions.value(QStringLiteral("mnuFontBold"))->setIconText(QStringLiteral("B"));
    m_actions.value(QStringLiteral("mnuFontItalic"))->setIconText(QStringLiteral("I"));
    m_actions.value(QStringLiteral("mnuFontUnderline"))->setIconText(QStringLiteral("U"));
    for (const char *command : {"mnuFontBold", "mnuFontItalic", "mnuFontUnderline"})
        bar->addAction(m_actions.value(QLatin1String(command)));
    bar->addSeparator();
    m_actions.value(QStringLiteral("mnuLeftJustify"))->setIconText(QStringLiteral("Left"));
    m_actions.value(QStringLiteral("mnuCenterJustify"))->setIconText(QStringLiteral("Centre"));
    m_actions.value(QStringLiteral("mnuRightJustify"))->setIconText(QStringLiteral("Right"));
    for (const char *command : {"mnuLeftJustify", "mnuCenterJustify", "mnuRightJustify"})
        bar->addAction(m_actions.value(QLatin1String(command)));

    addToolBarBreak();
    QToolBar *arrange = addToolBar(QStringLiteral("Arrange"));
    arrange->setObjectName(QStringLiteral("tbArrange"));
    arrange->setMovable(false);
    for (const char *command : {"mnuLefts", "mnuRights", "mnuTops", "mnuBottoms", "mnuWidth",
                                "mnuHeight", "mnuBoth", "mnuUndoAlign"})
        arrange->addAction(m_actions.value(QLatin1String(command)));
    arrange->addSeparator();
    m_lineTool = new QToolButton(arrange);
    m_lineTool->setObjectName(QStringLiteral("cmdLine"));
    m_lineTool->setText(QStringLiteral("Add Line"));
    m_lineTool->setToolTip(QStringLiteral("Click to add a line; right-click for line commands"));
    m_rectTool = new QToolButton(arrange);
    m_rectTool->setObjectName(QStringLiteral("cmdRectangle"));
    m_rectTool->setText(QStringLiteral("Add Rectangle"));
    m_rectTool->setToolTip(
        QStringLiteral("Click to add a rectangle; right-click for rectangle commands"));
    for (QToolButton *button : {m_lineTool, m_rectTool}) {
        button->setMouseTracking(true);
        button->installEventFilter(this);
        arrange->addWidget(button);
    }
    arrange->addSeparator();
    auto *zoom = new QComboBox(arrange);
    zoom->setObjectName(QStringLiteral("cmbZoom"));
    for (int percent : {50, 75, 100, 125, 150, 200})
        zoom->addItem(QStringLiteral("%1%").arg(percent), percent);
    zoom->setCurrentIndex(2);
    connect(zoom, &QComboBox::activated, this,
            [this, zoom] { m_canvas->setZoom(zoom->currentData().toInt() / 100.0); });
    arrange->addWidget(zoom);
}

void frmCustomLayout::loadRememberedChoices() {
    if (!m_environment.job)
        return;
    const DesignerPreferences prefs = m_environment.job->designerPreferences();
    m_rectColor = prefs.rectangleBorderColor;
    m_lineColor = prefs.lineBorderColor;
    m_lineStyle = prefs.lineBorderStyle;
}

void frmCustomLayout::openOn(const QString &templatePath) {
    TemplateKind kind = templateKindOfPath(templatePath);
    if (kind == TemplateKind::Unknown)
        kind = TemplateKind::Custom;
    if (QFileInfo::exists(templatePath)) {
        m_document.reset(TemplateLayout{}, kind, templatePath);
        loadFile(templatePath);
    } else {
        m_document.reset(TemplateLayout{}, kind, QString());
    }
    m_fields->setKind(kind);
    updateCaption();
    updateChecks();
    updateWarning();
}

void frmCustomLayout::updateCaption() {
    const QString path = m_document.path().isEmpty()
                             ? DesignerTexts::untitledName(m_document.kind())
                             : m_document.path();
    setWindowTitle(
        DesignerTexts::windowCaption(m_document.kind(), m_environment.documentName, path) +
        (m_document.isSaved() ? QString() : QStringLiteral(" *")));
}

void frmCustomLayout::showStatus(const QString &text) {
    m_status->setText(text);
}

QString frmCustomLayout::statusText() const {
    return m_status->text();
}

QString frmCustomLayout::warningText() const {
    return m_warning->text();
}

void frmCustomLayout::updateWarning() {
    const PageArea area = m_canvas->pageArea();
    const qint32 right = LayoutEdits::bodyColumnsRight(m_document.layout());
    if (right > area.printableWidth()) {
        m_warning->setText(QStringLiteral("Body columns run %1 in past the printable width.")
                               .arg(double(right - area.printableWidth()) / 1440.0, 0, 'f', 2));
    } else {
        m_warning->clear();
    }
}

QMenu *frmCustomLayout::popupMenu(const QString &name) const {
    if (name == QLatin1String("PopEditRectangle"))
        return m_popRectangle;
    if (name == QLatin1String("PopEditLine"))
        return m_popLine;
    if (name == QLatin1String("PopEditBox"))
        return m_popBox;
    return nullptr;
}

void frmCustomLayout::showContextMenu(const QString &element, QPoint globalPos) {
    QMenu *menu = element == QLatin1String("box")    ? m_popBox
                  : element == QLatin1String("line") ? m_popLine
                  : element == QLatin1String("rect") ? m_popRectangle
                                                     : nullptr;
    if (menu) {
        updateChecks();
        menu->popup(globalPos);
    }
}

bool frmCustomLayout::eventFilter(QObject *watched, QEvent *event) {
    const bool rectangle = watched == m_rectTool;
    if (watched == m_rectTool || watched == m_lineTool) {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto *mouse = static_cast<QMouseEvent *>(event);
            toolPressed(rectangle, mouse->button(), mouse->globalPosition().toPoint());
            return true;
        }
        if (event->type() == QEvent::MouseMove || event->type() == QEvent::Enter) {
            // The texts as the tools have always shown them.
            showStatus(rectangle ? QStringLiteral("Righ mouse click to change rectangle property.")
                                 : QStringLiteral("Righ mouse click to change line property."));
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmCustomLayout::closeEvent(QCloseEvent *event) {
    if (!m_document.isSaved()) {
        const MessageAnswer answer = m_prompter.message(
            QStringLiteral("Do you want to save the change you made to the template?"), QString(),
            MessageIcon::Exclamation, MessageButtons::YesNoCancel, MessageAnswer::Yes);
        const bool leave =
            answer == MessageAnswer::No ||
            (answer == MessageAnswer::Yes &&
             (m_document.path().isEmpty() ? saveTemplateAs() : writeTo(m_document.path())));
        if (!leave) {
            event->ignore();
            return;
        }
    }
    QSettings settings;
    settings.setValue(QStringLiteral("frmCustomLayout/geometry"), saveGeometry());
    settings.setValue(QStringLiteral("frmCustomLayout/state"), saveState());
    event->accept();
}

} // namespace tavrel

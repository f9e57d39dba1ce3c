#include "designer/frmCustomLayout.h"

#include "base/Prompter.h"
#include "base/ui/WindowPlacement.h"
#include "designer/DesignCanvas.h"
#include "designer/DesignerActions.h"
#include "designer/DesignerTexts.h"
#include "designer/FieldList.h"
#include "designer/LivePreviewPane.h"
#include "designer/PropertyPanel.h"
#include "designer/RulerScrollArea.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
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
    // The size above, or one remembered on a larger screen or at a smaller scale, is cut to
    // the screen the window opens on, so that the property panel stays reachable.
    fitWindowToScreen(this);
}

void frmCustomLayout::showEvent(QShowEvent *event) {
    QMainWindow::showEvent(event);
    // The window manager frames the window a moment after it is shown (and it may have come up
    // on another screen): fit it once more when the frame is known.
    fitWindowToScreen(this);
    keepRoomForThePage();
    QTimer::singleShot(250, this, [this] {
        fitWindowToScreen(this);
        keepRoomForThePage();
    });
}

void frmCustomLayout::keepRoomForThePage() {
    // On a small screen, or at a large scale, the side panels give up width until the page
    // has two fifths of the window.
    const int total = width();
    if (m_scroll->width() >= total * 2 / 5)
        return;
    auto *fields = findChild<QDockWidget *>(QStringLiteral("dockFields"));
    auto *properties = findChild<QDockWidget *>(QStringLiteral("dockProperties"));
    if (fields && properties)
        resizeDocks({fields, properties}, {total / 5, total * 3 / 10}, Qt::Horizontal);
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
    // On a small screen (or at a large scale) the panel scrolls rather than pushing the window
    // past the screen.
    auto *propertyScroll = new QScrollArea(propertyDock);
    propertyScroll->setObjectName(QStringLiteral("scrollProperties"));
    propertyScroll->setWidgetResizable(true);
    propertyScroll->setFrameShape(QFrame::NoFrame);
    propertyScroll->setWidget(m_properties);
    propertyDock->setWidget(propertyScroll);
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
            [this](const QString &command) { m_commands.trigger(command); });

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
            [this](const QString &command) { m_commands.trigger(command); });
    connect(&m_document, &DesignerDocument::savedChanged, this, &frmCustomLayout::updateCaption);

    buildCommands();
    buildMenus();
    buildToolBars();
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

#include "designer/frmCustomLayout.h"

#include "designer/DesignCanvas.h"
#include "designer/RulerScrollArea.h"

#include <QComboBox>
#include <QFontComboBox>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QToolBar>
#include <QToolButton>

#include <cmath>

// The designer's menus, pop-up menus and tool bars, built from its command table by name.

namespace tavrel {

namespace {

const QStringList &alignCommands() {
    static const QStringList names{QStringLiteral("mnuLefts"),
                                   QStringLiteral("mnuRights"),
                                   QStringLiteral("mnuTops"),
                                   QStringLiteral("mnuBottoms"),
                                   QString(),
                                   QStringLiteral("mnuWidth"),
                                   QStringLiteral("mnuHeight"),
                                   QStringLiteral("mnuBoth"),
                                   QStringLiteral("mnuSameColor"),
                                   QString(),
                                   QStringLiteral("mnuUndoAlign")};
    return names;
}

} // namespace

// A menu whose opening runs the command of the same name (which brings its checks up to date).
QMenu *frmCustomLayout::addMenu(QMenu *parent, const QString &title, const QString &command) {
    QMenu *menu = parent ? parent->addMenu(title) : menuBar()->addMenu(title);
    if (!command.isEmpty()) {
        menu->setObjectName(command);
        connect(menu, &QMenu::aboutToShow, this, [this, command] { m_commands.trigger(command); });
    }
    return menu;
}

void frmCustomLayout::buildMenus() {
    m_commands.fill(addMenu(nullptr, QStringLiteral("&File"), QStringLiteral("mnuFile")),
                    {QStringLiteral("mnuNew"), QStringLiteral("mnuOpen"), QStringLiteral("mnuSave"),
                     QStringLiteral("mnuSaveAs"), QString(), QStringLiteral("mnuCopyHeaderFooter"),
                     QString(), QStringLiteral("mnuPrintPreview"), QStringLiteral("mnuPrint"),
                     QString(), QStringLiteral("mnuExit")});
    m_commands.fill(menuBar()->addMenu(QStringLiteral("&Edit")),
                    {QStringLiteral("mnuUndo"), QStringLiteral("mnuRedo"), QString(),
                     QStringLiteral("mnuCopy"), QStringLiteral("mnuPaste"),
                     QStringLiteral("mnuDuplicate"), QStringLiteral("mnuDeleteBox"),
                     QStringLiteral("mnuSelectAll"), QString(), QStringLiteral("mnuEditNotes"),
                     QStringLiteral("mnuDisplayLabel")});
    m_commands.fill(menuBar()->addMenu(QStringLiteral("F&ormat")),
                    {QStringLiteral("mnuFont"), QStringLiteral("mnuFontBold"),
                     QStringLiteral("mnuFontItalic"), QStringLiteral("mnuFontUnderline"),
                     QStringLiteral("mnuForeColor"), QStringLiteral("mnuBackColor"), QString(),
                     QStringLiteral("mnuLeftJustify"), QStringLiteral("mnuCenterJustify"),
                     QStringLiteral("mnuRightJustify"), QStringLiteral("mnuJustify")});
    QMenu *align = menuBar()->addMenu(QStringLiteral("&Align"));
    m_commands.fill(align, alignCommands());
    align->setToolTipsVisible(true);

    QMenu *tool = addMenu(nullptr, QStringLiteral("&Tool"), QStringLiteral("mnuTool"));
    m_commands.fill(tool, {QStringLiteral("mnuEditLogo")});
    m_commands.fill(addMenu(tool, QStringLiteral("Logo &Size"), QStringLiteral("mnuImgSize")),
                    {QStringLiteral("mnuLogo25"), QStringLiteral("mnuLogo50"),
                     QStringLiteral("mnuLogo75"), QStringLiteral("mnuLogo100"),
                     QStringLiteral("mnuUserDefine")});
    m_commands.fill(addMenu(tool, QStringLiteral("&Image Size"), QStringLiteral("mnuImageSize")),
                    {QStringLiteral("mnuImg25"), QStringLiteral("mnuImg50"),
                     QStringLiteral("mnuImg75"), QStringLiteral("mnuImg100"),
                     QStringLiteral("mnuUserDefinedImg")});
    tool->addSeparator();
    const QStringList lineCommands{QStringLiteral("mnuDeleteLine"),
                                   QStringLiteral("mnuClearAllLine")};
    m_commands.fill(tool->addMenu(QStringLiteral("L&ines")),
                    QStringList{QStringLiteral("mnuBorderColor"), QString(),
                                QStringLiteral("mnuSolid"), QStringLiteral("mnuDash"),
                                QStringLiteral("mnuDot"), QStringLiteral("mnuDashDot"),
                                QStringLiteral("mnuDashDotDot"), QString()} +
                        lineCommands);
    const QStringList rectangleCommands{
        QStringLiteral("mnuDeleteRectangle"), QStringLiteral("mnuClearAllRectangle"),
        QStringLiteral("mnuPastRectangle"), QStringLiteral("mnuCopyRectangle"),
        QStringLiteral("mnuRectangleColor")};
    m_commands.fill(tool->addMenu(QStringLiteral("&Rectangles")), rectangleCommands);
    tool->addSeparator();
    m_commands.fill(tool, {QStringLiteral("mnuFieldLength")});

    m_commands.fill(
        addMenu(nullptr, QStringLiteral("&Preferences"), QStringLiteral("mnuPreference")),
        {QStringLiteral("mnuShowLabel"), QStringLiteral("mnuShowColor"),
         QStringLiteral("mnuSubTotalOptions")});
    m_commands.fill(addMenu(nullptr, QStringLiteral("&View"), QStringLiteral("mnuView")),
                    {QStringLiteral("mnuViewLivePreview"), QStringLiteral("mnuRefreshPreview"),
                     QString(), QStringLiteral("mnuZoomIn"), QStringLiteral("mnuZoomOut"),
                     QStringLiteral("mnuZoom100"), QStringLiteral("mnuZoomFitPage"),
                     QStringLiteral("mnuZoomFitWidth")});
    m_commands.fill(menuBar()->addMenu(QStringLiteral("&Help")),
                    {QStringLiteral("mnuHelpTopic"), QStringLiteral("mnuAbout")});

    m_popLine = new QMenu(this);
    m_popLine->setObjectName(QStringLiteral("PopEditLine"));
    m_commands.fill(m_popLine, lineCommands);
    m_popRectangle = new QMenu(this);
    m_popRectangle->setObjectName(QStringLiteral("PopEditRectangle"));
    m_commands.fill(m_popRectangle, rectangleCommands);
    m_popBox = new QMenu(this);
    m_popBox->setObjectName(QStringLiteral("PopEditBox"));
    m_commands.fill(m_popBox, {QStringLiteral("mnuFont"), QStringLiteral("mnuForeColor"),
                               QStringLiteral("mnuBackColor"), QStringLiteral("mnuEditNotes"),
                               QStringLiteral("mnuDisplayLabel"), QStringLiteral("mnuCopy"),
                               QStringLiteral("mnuDuplicate"), QStringLiteral("mnuDeleteBox")});
    m_commands.fill(m_popBox->addMenu(QStringLiteral("Align")), alignCommands());
}

void frmCustomLayout::buildToolBars() {
    QToolBar *bar = addToolBar(QStringLiteral("Format"));
    bar->setObjectName(QStringLiteral("tbFormat"));
    bar->setMovable(false);
    m_commands.fill(bar, {QStringLiteral("mnuNew"), QStringLiteral("mnuOpen"),
                          QStringLiteral("mnuSave"), QStringLiteral("mnuPrintPreview"), QString(),
                          QStringLiteral("mnuUndo"), QStringLiteral("mnuRedo"), QString()});
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
            [this] { m_commands.trigger(QStringLiteral("mnuFontName")); });
    connect(m_fontSize, &QComboBox::textActivated, this,
            [this] { m_commands.trigger(QStringLiteral("mnuFontSize")); });
    m_commands.fill(bar, {QStringLiteral("mnuFontBold"), QStringLiteral("mnuFontItalic"),
                          QStringLiteral("mnuFontUnderline"), QString(),
                          QStringLiteral("mnuLeftJustify"), QStringLiteral("mnuCenterJustify"),
                          QStringLiteral("mnuRightJustify")});

    addToolBarBreak();
    QToolBar *arrange = addToolBar(QStringLiteral("Arrange"));
    arrange->setObjectName(QStringLiteral("tbArrange"));
    arrange->setMovable(false);
    m_commands.fill(arrange,
                    {QStringLiteral("mnuLefts"), QStringLiteral("mnuRights"),
                     QStringLiteral("mnuTops"), QStringLiteral("mnuBottoms"),
                     QStringLiteral("mnuWidth"), QStringLiteral("mnuHeight"),
                     QStringLiteral("mnuBoth"), QStringLiteral("mnuUndoAlign"), QString()});
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
    zoom->setEditable(true);
    zoom->setInsertPolicy(QComboBox::NoInsert);
    for (int percent : {25, 50, 75, 100, 125, 150, 200, 400})
        zoom->addItem(QStringLiteral("%1%").arg(percent), percent);
    zoom->setCurrentIndex(zoom->findData(100));
    // A percentage chosen or typed ("130", "130%").
    connect(zoom, &QComboBox::textActivated, this, [this](const QString &text) {
        bool number = false;
        const double percent = QString(text).remove(QLatin1Char('%')).trimmed().toDouble(&number);
        if (number && percent > 0)
            m_scroll->zoomKeepingCentre(percent / 100.0);
    });
    connect(m_scroll, &RulerScrollArea::zoomChanged, zoom, [zoom](double value) {
        const QSignalBlocker blocker(zoom);
        const int percent = int(std::lround(value * 100));
        const int index = zoom->findData(percent);
        zoom->setCurrentIndex(index);
        zoom->setEditText(QStringLiteral("%1%").arg(percent));
    });
    arrange->addWidget(zoom);
    m_commands.fill(arrange, {QStringLiteral("mnuZoomFitPage"), QStringLiteral("mnuZoomFitWidth")});
}

QMenu *frmCustomLayout::popupMenu(const QString &name) const {
    for (QMenu *menu : {m_popRectangle, m_popLine, m_popBox}) {
        if (menu->objectName() == name)
            return menu;
    }
    return nullptr;
}

} // namespace tavrel

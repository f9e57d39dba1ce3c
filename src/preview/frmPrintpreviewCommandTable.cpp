#include "preview/frmPrintpreview.h"

#include "base/ui/UserGuide.h"
#include "preview/PageView.h"
#include "preview/PreviewActions.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

namespace tavrel {

namespace {

using Command = CommandTable::Command;

// The tool tip names the shortcut; the status bar shows the bare tip.
Command command(const QString &name, const QString &text, const QString &shortcut,
                const QString &tip, std::function<void()> run) {
    Command c;
    c.name = name;
    c.text = text;
    c.toolTip = tip;
    if (!shortcut.isEmpty()) {
        c.shortcuts = {QKeySequence(shortcut)};
        c.toolTip += QStringLiteral(" (") +
                     QKeySequence(shortcut).toString(QKeySequence::NativeText) + QLatin1Char(')');
    }
    c.statusTip = tip;
    c.run = std::move(run);
    return c;
}

} // namespace

bool frmPrintpreview::dispatch(const QString &command) {
    return m_commands.dispatch(command);
}

QAction *frmPrintpreview::action(const QString &command) const {
    return std::as_const(m_commands).action(command);
}

void frmPrintpreview::buildCommands() {
    // Printing and the exports: greyed while pages are still laid out and in a view-only
    // preview, where the commands themselves say why they do nothing.
    const auto output = [this](Command c) {
        c.enabled = [this] { return !viewOnly() && !m_layoutRunning; };
        if (viewOnly())
            c.toolTip = QStringLiteral("Not available: this preview is for viewing only");
        return c;
    };
    const auto withIcon = [this](Command c, QStyle::StandardPixmap pixmap) {
        c.icon = style()->standardIcon(pixmap);
        return c;
    };
    const auto mode = [this](const QString &name, const QString &text, const QString &tip,
                             ZoomMode zoomMode) {
        Command c = command(name, text, QString(), tip, [this, zoomMode] { zoomToMode(zoomMode); });
        c.checked = [this, zoomMode] { return m_zoom.mode() == zoomMode; };
        return c;
    };

    m_commands.add(output(command(QStringLiteral("mnuPrint"), QStringLiteral("&Print"),
                                  QStringLiteral("Ctrl+P"), QStringLiteral("Print the report"),
                                  [this] { printDocument(); })));
    m_commands.add(
        output(command(QStringLiteral("mnuViewPDF"), QStringLiteral("Save as P&DF..."), QString(),
                       QStringLiteral("Save the report as a PDF file"), [this] { exportPdf(); })
                   .withIconText(QStringLiteral("PDF"))));
    m_commands.add(
        output(command(QStringLiteral("mnuHTML"), QStringLiteral("Export &HTML"), QString(),
                       QStringLiteral("Export the report as HTML pages and open them"),
                       [this] { exportHtml(); })
                   .withIconText(QStringLiteral("HTML"))));
    m_commands.add(
        output(command(QStringLiteral("mnuRTF"), QStringLiteral("Export &RTF"), QString(),
                       QStringLiteral("Export the report as an RTF document and open it"),
                       [this] { exportRtf(); })
                   .withIconText(QStringLiteral("RTF"))));
    m_commands.add(
        output(command(QStringLiteral("mnuSpreadsheet"), QStringLiteral("Export &Spreadsheet..."),
                       QString(), QStringLiteral("Save the item list as a spreadsheet and open it"),
                       [this] {
                           if (outputAllowed())
                               m_actions.exportSpreadsheet();
                       })
                   .withIconText(QStringLiteral("XLSX"))));
    m_commands.add(command(QStringLiteral("mnuExit"), QStringLiteral("&Close Preview"),
                           QStringLiteral("Esc"), QStringLiteral("Close the preview"),
                           [this] { close(); })
                       .withIconText(QStringLiteral("Close")));

    // At the ends of the document navigation only informs; it never wraps around.
    m_commands.add(
        withIcon(command(QStringLiteral("mnuViewFirst"), QStringLiteral("&First Page"),
                         QStringLiteral("Home"), QStringLiteral("First page"),
                         [this] { navigate(m_view->currentPage() <= 1 ? 0 : 1, false); }),
                 QStyle::SP_MediaSkipBackward));
    m_commands.add(
        withIcon(command(QStringLiteral("mnuViewPrevious"), QStringLiteral("&Previous Page"),
                         QStringLiteral("PgUp"), QStringLiteral("Previous page"),
                         [this] { navigate(m_view->currentPage() - 1, false); }),
                 QStyle::SP_MediaSeekBackward));
    m_commands.add(withIcon(command(QStringLiteral("mnuViewNext"), QStringLiteral("&Next Page"),
                                    QStringLiteral("PgDown"), QStringLiteral("Next page"),
                                    [this] { navigate(m_view->currentPage() + 1, true); }),
                            QStyle::SP_MediaSeekForward));
    m_commands.add(withIcon(command(QStringLiteral("mnuViewLast"), QStringLiteral("&Last Page"),
                                    QStringLiteral("End"), QStringLiteral("Last page"),
                                    [this] {
                                        const int count = m_view->pageCount();
                                        navigate(m_view->currentPage() >= count ? count + 1 : count,
                                                 true);
                                    }),
                            QStyle::SP_MediaSkipForward));
    m_commands.add(command(QStringLiteral("mnuFindText"), QStringLiteral("&Find..."),
                           QStringLiteral("Ctrl+F"), QStringLiteral("Find text in the report"),
                           [this] { openFind(); })
                       .withIconText(QStringLiteral("Find...")));

    m_commands.add(mode(QStringLiteral("mnuWholePage"), QStringLiteral("&Whole Page"),
                        QStringLiteral("Show whole pages"), ZoomMode::WholePage));
    m_commands.add(mode(QStringLiteral("mnuPageWidth"), QStringLiteral("Page &Width"),
                        QStringLiteral("Fit the page width to the window"), ZoomMode::PageWidth));
    m_commands.add(mode(QStringLiteral("mnuTwopages"), QStringLiteral("&Two Pages"),
                        QStringLiteral("Show two pages side by side"), ZoomMode::TwoPages));
    m_commands.add(mode(QStringLiteral("mnuThumb"), QStringLiteral("T&humbnails"),
                        QStringLiteral("Show many small pages"), ZoomMode::Thumbnail));
    m_commands.add(mode(QStringLiteral("mnuStretch"), QStringLiteral("&Stretch"),
                        QStringLiteral("Stretch the page to fill the window"), ZoomMode::Stretch));
    // Not in the menus: the percentage tool shows the zoom on screen as a percentage.
    m_commands.add(CommandTable::withoutAction(QStringLiteral("mnuPercentage"),
                                               [this] { zoomToMode(ZoomMode::Percentage); }));

    Command zoomIn =
        command(QStringLiteral("mnuZoomIn"), QStringLiteral("Zoom &In"), QStringLiteral("Ctrl++"),
                QStringLiteral("Zoom in"), [this] { zoomStep(1); })
            .withIconText(QStringLiteral(" + "));
    // Ctrl+= is Ctrl++ without Shift on most keyboards.
    zoomIn.shortcuts.append(QKeySequence(QStringLiteral("Ctrl+=")));
    m_commands.add(zoomIn);
    m_commands.add(command(QStringLiteral("mnuZoomOut"), QStringLiteral("Zoom &Out"),
                           QStringLiteral("Ctrl+-"), QStringLiteral("Zoom out"),
                           [this] { zoomStep(-1); })
                       .withIconText(QStringLiteral(" ") + QChar(0x2212) + QLatin1Char(' ')));
    // The zoom tools: the mode named by the mode tool, the percentage typed in the other.
    m_commands.add(
        CommandTable::withoutAction(QStringLiteral("mnuZoomPg"), [this] { zoomToChosenMode(); }));
    m_commands.add(
        CommandTable::withoutAction(QStringLiteral("mnuZoom%"), [this] { zoomToChosenPercent(); }));

    m_commands.add(UserGuide::command([this] { m_actions.help(); }));
    m_commands.add(command(QStringLiteral("mnuAbout"), QStringLiteral("&About Tavrel..."),
                           QString(), QStringLiteral("About Tavrel"),
                           [this] { m_actions.about(); }));

    auto *modes = new QActionGroup(this);
    modes->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const QString &name : modeCommands())
        modes->addAction(m_commands.action(name));
}

QStringList frmPrintpreview::modeCommands() {
    return {QStringLiteral("mnuWholePage"), QStringLiteral("mnuPageWidth"),
            QStringLiteral("mnuTwopages"), QStringLiteral("mnuThumb"),
            QStringLiteral("mnuStretch")};
}

void frmPrintpreview::buildMenus() {
    m_commands.fill(menuBar()->addMenu(QStringLiteral("&File")),
                    {QStringLiteral("mnuPrint"), QStringLiteral("mnuViewPDF"),
                     QStringLiteral("mnuHTML"), QStringLiteral("mnuRTF"),
                     QStringLiteral("mnuSpreadsheet"), QString(), QStringLiteral("mnuExit")});

    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    m_commands.fill(view, {QStringLiteral("mnuViewFirst"), QStringLiteral("mnuViewPrevious"),
                           QStringLiteral("mnuViewNext"), QStringLiteral("mnuViewLast"), QString(),
                           QStringLiteral("mnuFindText"), QString()});
    m_commands.fill(view, modeCommands());
    m_commands.fill(view, {QStringLiteral("mnuZoomIn"), QStringLiteral("mnuZoomOut"), QString()});
    QAction *panel = m_thumbnailDock->toggleViewAction();
    panel->setText(QStringLiteral("Page &Thumbnails"));
    panel->setShortcut(QKeySequence(QStringLiteral("F4")));
    view->addAction(panel);

    m_commands.fill(menuBar()->addMenu(QStringLiteral("&Help")),
                    {QStringLiteral("mnuHelpTopic"), QStringLiteral("mnuAbout")});
}

void frmPrintpreview::buildToolBar() {
    QToolBar *bar = addToolBar(QStringLiteral("MenuBar"));
    bar->setObjectName(QStringLiteral("MenuBar"));
    bar->setMovable(false);
    // Short tool texts (the entries' icon texts) so that every tool fits 800 pixels.
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_commands.fill(bar, {QStringLiteral("mnuPrint"), QStringLiteral("mnuViewPDF"),
                          QStringLiteral("mnuHTML"), QStringLiteral("mnuRTF"), QString(),
                          QStringLiteral("mnuViewFirst"), QStringLiteral("mnuViewPrevious")});
    addPageTools(bar);
    m_commands.fill(bar, {QStringLiteral("mnuViewNext"), QStringLiteral("mnuViewLast"), QString(),
                          QStringLiteral("mnuFindText"), QString(), QStringLiteral("mnuZoomOut")});
    addZoomPercentTool(bar);
    m_commands.fill(bar, {QStringLiteral("mnuZoomIn")});
    addZoomModeTool(bar);
    m_commands.fill(bar, {QString(), QStringLiteral("mnuExit")});

    // The page arrows are pictures only; their names are in the tool tips.
    for (QAction *tool : bar->actions()) {
        if (tool->icon().isNull())
            continue;
        if (auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(tool)))
            button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
}

} // namespace tavrel

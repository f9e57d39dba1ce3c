#include "base/ScriptedPrompter.h"
#include "base/ui/CommandTable.h"
#include "common/DesignerWindow.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/DesignerActions.h"
#include "designer/frmCustomLayout.h"
#include "designer/frmFieldLength.h"
#include "preview/PreviewActions.h"
#include "preview/frmPrintpreview.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/JobFile.h"
#include "shell/ui/ReportActions.h"
#include "shell/ui/frmMenu.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

using namespace tavrel;

namespace {

// Every command item of a window's menu bar, tool bars and the given pop-up menus: no
// separators, sub-menu titles or tool widgets.
QList<QAction *> commandItems(QMainWindow &window, const QList<QMenu *> &popups = {}) {
    QList<QAction *> items;
    std::function<void(const QList<QAction *> &)> collect = [&](const QList<QAction *> &actions) {
        for (QAction *action : actions) {
            if (action->isSeparator() || qobject_cast<QWidgetAction *>(action))
                continue;
            if (action->menu())
                collect(action->menu()->actions());
            else
                items << action;
        }
    };
    collect(window.menuBar()->actions());
    for (QToolBar *bar : window.findChildren<QToolBar *>())
        collect(bar->actions());
    for (QMenu *popup : popups)
        collect(popup->actions());
    return items;
}

// Every item is the action of a table entry of its own name (except the given items that are
// no commands, such as a dock's own toggle); the table met no misspelt name building them.
void checkItemsAreEntries(QMainWindow &window, const CommandTable &table,
                          const QList<QAction *> &notCommands, const QList<QMenu *> &popups = {}) {
    const QList<QAction *> items = commandItems(window, popups);
    QVERIFY(!items.isEmpty());
    for (QAction *item : items) {
        if (notCommands.contains(item))
            continue;
        QVERIFY2(table.contains(item->objectName()), qPrintable(item->text()));
        QCOMPARE(table.action(item->objectName()), item);
    }
    QVERIFY2(table.unknownNames().isEmpty(), qPrintable(table.unknownNames().join(", ")));
}

// Every command the preview's dispatcher has ever known, as menus, tools and tests spell them.
const QStringList previewCommands = {
    "mnuPrint",   "mnuExit",     "mnuAbout",        "mnuHelpTopic",  "mnuViewPDF",    "mnuHTML",
    "mnuRTF",     "mnuViewNext", "mnuViewPrevious", "mnuViewLast",   "mnuViewFirst",  "mnuFindText",
    "mnuThumb",   "mnuTwopages", "mnuWholePage",    "mnuPageWidth",  "mnuStretch",    "mnuZoomIn",
    "mnuZoomOut", "mnuZoomPg",   "mnuZoom%",        "mnuPercentage", "mnuSpreadsheet"};

// Every command the designer's dispatchers have ever known.
const QStringList designerCommands = {
    // File, Edit, View, Help and the menus whose opening updates their checks
    "mnuAbout", "mnuHelpTopic", "mnuPrintPreview", "mnuPrint", "mnuOpen", "mnuNew", "mnuFile",
    "mnuTool", "mnuPreference", "mnuView", "mnuViewLivePreview", "mnuRefreshPreview", "mnuSave",
    "mnuSaveAs", "mnuExit", "mnuShowLabel", "mnuShowColor", "mnuSubTotalOptions",
    "mnuCopyHeaderFooter", "mnuFieldLength", "mnuUndo", "mnuRedo", "mnuCopy", "mnuPaste",
    "mnuDuplicate",
    // Format
    "mnuFont", "mnuFontName", "mnuFontSize", "mnuFontBold", "mnuFontItalic", "mnuFontUnderline",
    "mnuForeColor", "mnuBackColor", "mnuSelectAll", "mnuLeftJustify", "mnuCenterJustify",
    "mnuRightJustify", "mnuJustify",
    // Align, lines, rectangles and boxes
    "mnuLefts", "mnuRights", "mnuTops", "mnuBottoms", "mnuWidth", "mnuHeight", "mnuBoth",
    "mnuSameColor", "mnuSolid", "mnuDash", "mnuDot", "mnuDashDot", "mnuDashDotDot", "mnuUndoAlign",
    "mnuDeleteBox", "mnuDisplayLabel", "mnuEditNotes", "mnuEditLogo", "mnuRectangleColor",
    "mnuCopyRectangle", "mnuPastRectangle", "mnuDeleteRectangle", "mnuClearAllRectangle",
    "mnuBorderColor", "mnuDeleteLine", "mnuClearAllLine",
    // Logo and image sizes
    "mnuLogo25", "mnuLogo50", "mnuLogo75", "mnuLogo100", "mnuImg25", "mnuImg50", "mnuImg75",
    "mnuImg100", "mnuUserDefine", "mnuUserDefinedImg", "mnuImgSize", "mnuImageSize",
    // Zoom
    "mnuZoomIn", "mnuZoomOut", "mnuZoom100", "mnuZoomFitPage", "mnuZoomFitWidth"};

// Every command of the main window: its buttons, the designer's menu and the shortcuts.
const QStringList mainWindowCommands = {
    "cmdPrint",         "cmdPrintPreview",  "cmdPDF",        "cmdLoadGroup",
    "cmdSaveGroup",     "cmdSaveAsDefault", "cmdProperties", "cmdCancel",
    "cmdOpen(0)",       "cmdOpen(1)",       "cmdOpen(2)",    "imgPagelayout(0)",
    "imgPagelayout(1)", "imgPagelayout(2)", "mnuHelpTopic",  "cmdSpreadsheet"};

QStringList sorted(QStringList names) {
    names.sort();
    return names;
}

} // namespace

// Each window's command table against its menus, tool bars and pop-up menus, and against the
// command names its dispatcher has always taken.
class WindowCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void previewItemsAreEntries();
    void previewDispatchesEveryCommand_data();
    void previewDispatchesEveryCommand();
    void fieldLengthButtonsAreEntries();
    void designerItemsAreEntries();
    void designerDispatchesEveryCommand();
    void mainWindowItemsAreEntries();
};

void WindowCommandsTest::previewItemsAreEntries() {
    PageEngine engine;
    ScriptedPrompter prompter;
    NoPreviewActions actions;
    frmPrintpreview window(engine, prompter, actions, "1", "Classic Customer.cst");
    const QDockWidget *dock = window.findChild<QDockWidget *>("dockThumbnails");
    QVERIFY(dock);
    checkItemsAreEntries(window, window.commands(), {dock->toggleViewAction()});
    QStringList names = window.commands().names();
    QStringList expected = previewCommands;
    names.sort();
    expected.sort();
    QCOMPARE(names, expected);
}

void WindowCommandsTest::previewDispatchesEveryCommand_data() {
    QTest::addColumn<QString>("command");
    for (const QString &command : previewCommands)
        QTest::newRow(qPrintable(command)) << command;
    QTest::newRow("misspelt") << "mnuZoomin";
    QTest::newRow("menu text") << "&Print";
    QTest::newRow("empty") << "";
}

void WindowCommandsTest::previewDispatchesEveryCommand() {
    QFETCH(QString, command);
    PageEngine engine;
    engine.StartDoc();
    engine.TextBox("Page one", 1440, 1440, 4000, 0);
    engine.NewPage();
    engine.TextBox("Page two", 1440, 1440, 4000, 0);
    engine.EndDoc();
    ScriptedPrompter prompter;
    NoPreviewActions actions;
    frmPrintpreview window(engine, prompter, actions, "1", "Classic Customer.cst");
    QCOMPARE(window.dispatch(command), previewCommands.contains(command));
    QVERIFY(window.commands().unknownNames().isEmpty());
}

void WindowCommandsTest::fieldLengthButtonsAreEntries() {
    QTemporaryDir dir;
    const QString job = dir.filePath("job.ini");
    testsupport::writeBytes(job, "[Printer]\r\nPN=20,Part No.\r\n");
    JobFile model = JobFile::load(job);
    FieldLengths lengths = model.fieldLengths(FieldLengths::builtIn());
    ScriptedPrompter prompter;
    frmFieldLength editor(model, lengths, prompter);
    QCOMPARE(editor.commands().names(),
             (QStringList{"cmdOK", "cmdCancel", "cmdDefault", "mnuHelpTopic"}));
    // The user guide is every window's F1 command; its button here is cmdHelp.
    for (const char *name : {"cmdOK", "cmdCancel", "cmdDefault", "cmdHelp"})
        QVERIFY2(editor.findChild<QPushButton *>(name), qPrintable(name));
    QVERIFY(!editor.dispatch("cmdOk"));
    // The Default button reaches its command through the table.
    editor.lengthBox("PN")->setText("99");
    QTest::mouseClick(editor.findChild<QPushButton *>("cmdDefault"), Qt::LeftButton);
    QCOMPARE(editor.lengthBox("PN")->text(), QString::number(FieldLengths::builtIn().length("PN")));
    QVERIFY(editor.commands().unknownNames().isEmpty());
}

// A designer on a job in dir; the job model must outlive it.
static std::unique_ptr<frmCustomLayout> makeDesigner(const QTemporaryDir &dir, JobFile &job,
                                                     ScriptedPrompter &prompter,
                                                     DesignerActions &actions) {
    testsupport::writeBytes(dir.filePath("job.ini"), "[Printer]\r\nFunction=1\r\n");
    return testsupport::openDesigner(dir.filePath("job.ini"), job, dir.path(), prompter, actions);
}

void WindowCommandsTest::designerItemsAreEntries() {
    QTemporaryDir dir;
    JobFile job;
    ScriptedPrompter prompter;
    NoDesignerActions actions;
    const auto window = makeDesigner(dir, job, prompter, actions);
    QList<QMenu *> popups;
    for (const char *name : {"PopEditBox", "PopEditLine", "PopEditRectangle"}) {
        popups << window->popupMenu(name);
        QVERIFY2(popups.last(), name);
    }
    checkItemsAreEntries(*window, window->commands(), {}, popups);
    QCOMPARE(sorted(window->commands().names()), sorted(designerCommands));
}

// Every name runs its command (with every question answered by its default: nothing is
// chosen, nothing is saved) and a misspelt one is refused.
void WindowCommandsTest::designerDispatchesEveryCommand() {
    QTemporaryDir dir;
    JobFile job;
    ScriptedPrompter prompter;
    NoDesignerActions actions;
    const auto window = makeDesigner(dir, job, prompter, actions);
    for (const QString &command : designerCommands)
        QVERIFY2(window->dispatch(command), qPrintable(command));
    for (const char *wrong : {"mnuSaveas", "mnuLogo30", "mnuImg", "&Save", ""})
        QVERIFY2(!window->dispatch(wrong), wrong);
    QVERIFY(window->commands().unknownNames().isEmpty());
}

void WindowCommandsTest::mainWindowItemsAreEntries() {
    QTemporaryDir dir;
    AppContext context;
    context.paths.jobFile = dir.filePath("job.ini");
    context.paths.templateFolder = dir.path();
    testsupport::writeBytes(context.paths.jobFile, "[Printer]\r\n");
    context.job = JobFile::load(context.paths.jobFile);
    ScriptedPrompter prompter;
    testsupport::RecordingReportActions actions;
    frmMenu window(context, prompter, actions);
    QCOMPARE(sorted(window.commands().names()), sorted(mainWindowCommands));
    // Every button and the designer's menu items are commands of the table; the user guide is
    // a key only (F1).
    for (const QString &name : mainWindowCommands) {
        if (name.startsWith("imgPagelayout") || name == "mnuHelpTopic")
            continue;
        QVERIFY2(window.findChild<QAbstractButton *>(name), qPrintable(name));
    }
    const auto *design = window.findChild<QToolButton *>("imgPagelayout");
    QVERIFY(design && design->menu());
    QStringList designItems;
    for (const QAction *item : design->menu()->actions())
        designItems << item->objectName() + " " + item->text();
    QCOMPARE(designItems,
             (QStringList{"imgPagelayout(0) Cover page...", "imgPagelayout(1) Custom page...",
                          "imgPagelayout(2) Summary page..."}));
    QCOMPARE(window.commands().action("cmdPrint")->shortcut(), QKeySequence("Ctrl+P"));
    QCOMPARE(window.commands().action("cmdPrintPreview")->shortcut(), QKeySequence("Ctrl+Shift+P"));
    QCOMPARE(window.commands().action("mnuHelpTopic")->shortcut(),
             QKeySequence(QKeySequence::HelpContents));
    QVERIFY(!window.dispatch("cmdOpen(3)"));
    QVERIFY(!window.dispatch("cmdprint"));
    QVERIFY(window.dispatch("cmdProperties"));
    QCOMPARE(actions.calls, QStringList{"properties"});
    QVERIFY(window.commands().unknownNames().isEmpty());
}

TAVREL_TEST(WindowCommandsTest)
#include "WindowCommandsTest.moc"

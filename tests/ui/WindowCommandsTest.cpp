#include "base/ScriptedPrompter.h"
#include "base/ui/CommandTable.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "designer/frmFieldLength.h"
#include "preview/PreviewActions.h"
#include "preview/frmPrintpreview.h"
#include "render/PageEngine.h"

#include <QAction>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
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

struct NoPreviewActions : PreviewActions {
    void print() override {}
    void rerunHtml() override {}
    QString rerunRtf() override { return {}; }
    void about() override {}
    void help() override {}
};

// Every command the preview's dispatcher has ever known, as menus, tools and tests spell them.
const QStringList previewCommands = {
    "mnuPrint",   "mnuExit",     "mnuAbout",        "mnuHelpTopic", "mnuViewPDF",   "mnuHTML",
    "mnuRTF",     "mnuViewNext", "mnuViewPrevious", "mnuViewLast",  "mnuViewFirst", "mnuFindText",
    "mnuThumb",   "mnuTwopages", "mnuWholePage",    "mnuPageWidth", "mnuStretch",   "mnuZoomIn",
    "mnuZoomOut", "mnuZoomPg",   "mnuZoom%",        "mnuPercentage"};

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
    FieldLengths lengths = FieldLengths::builtIn();
    lengths.readFromJobFile(job);
    ScriptedPrompter prompter;
    frmFieldLength editor(job, lengths, prompter);
    QCOMPARE(editor.commands().names(), (QStringList{"cmdOK", "cmdCancel", "cmdDefault"}));
    for (const QString &name : editor.commands().names())
        QVERIFY2(editor.findChild<QPushButton *>(name), qPrintable(name));
    QVERIFY(!editor.dispatch("cmdOk"));
    // The Default button reaches its command through the table.
    editor.lengthBox("PN")->setText("99");
    QTest::mouseClick(editor.findChild<QPushButton *>("cmdDefault"), Qt::LeftButton);
    QCOMPARE(editor.lengthBox("PN")->text(), QString::number(FieldLengths::builtIn().length("PN")));
    QVERIFY(editor.commands().unknownNames().isEmpty());
}

TAVREL_TEST(WindowCommandsTest)
#include "WindowCommandsTest.moc"

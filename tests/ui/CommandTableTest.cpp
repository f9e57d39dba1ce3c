#include "base/ui/CommandTable.h"
#include "common/TestRegistry.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QToolBar>

using namespace tavrel;

// The command table itself: what it makes of an entry, how it refuses names it does not hold
// and how it keeps items in step with the window's state. The windows' own tables are checked
// in WindowCommandsTest.
class CommandTableTest : public QObject {
    Q_OBJECT

private slots:
    void entryMakesItsAction();
    void menusAndToolBarsFromNames();
    void unknownNamesAreRefused_data();
    void unknownNamesAreRefused();
    void dispatchRunsWhateverTheEnabledState();
    void refreshFollowsThePredicates();
    void commandWithoutActionOnlyDispatches();
};

void CommandTableTest::entryMakesItsAction() {
    QWidget owner;
    CommandTable table(&owner);
    CommandTable::Command save;
    save.name = "mnuSave";
    save.text = "&Save";
    save.shortcuts = {QKeySequence("Ctrl+S"), QKeySequence("F2")};
    save.iconText = "Save it";
    save.toolTip = "Save the file (Ctrl+S)";
    save.statusTip = "Save the file";
    table.add(save);
    QAction *action = table.action("mnuSave");
    QVERIFY(action);
    QCOMPARE(action->objectName(), QString("mnuSave"));
    QCOMPARE(action->text(), QString("&Save"));
    QCOMPARE(action->shortcuts(),
             (QList<QKeySequence>{QKeySequence("Ctrl+S"), QKeySequence("F2")}));
    QCOMPARE(action->iconText(), QString("Save it"));
    QCOMPARE(action->toolTip(), QString("Save the file (Ctrl+S)"));
    QCOMPARE(action->statusTip(), QString("Save the file"));
    QVERIFY(!action->isCheckable());
    // Added to the owner so that the shortcut works without a menu.
    QVERIFY(owner.actions().contains(action));
    QCOMPARE(table.names(), QStringList{"mnuSave"});
    QVERIFY(table.unknownNames().isEmpty());
}

void CommandTableTest::menusAndToolBarsFromNames() {
    QMainWindow window;
    CommandTable table(&window);
    QStringList ran;
    for (const char *name : {"mnuOne", "mnuTwo", "mnuThree"}) {
        CommandTable::Command c;
        c.name = name;
        c.text = name;
        c.run = [&ran, name] { ran << name; };
        table.add(c);
    }
    QMenu menu;
    table.fill(&menu, {"mnuOne", "", "mnuTwo", "mnuThree"});
    const QList<QAction *> items = menu.actions();
    QCOMPARE(items.size(), 4);
    QCOMPARE(items[0], table.action("mnuOne"));
    QVERIFY(items[1]->isSeparator());
    QCOMPARE(items[3], table.action("mnuThree"));
    QToolBar bar;
    table.fill(&bar, {"mnuTwo", ""});
    QCOMPARE(bar.actions().size(), 2);
    QVERIFY(bar.actions()[1]->isSeparator());
    // Choosing an item goes through the table.
    items[2]->trigger();
    QCOMPARE(ran, QStringList{"mnuTwo"});
    QVERIFY(table.unknownNames().isEmpty());
}

void CommandTableTest::unknownNamesAreRefused_data() {
    QTest::addColumn<QString>("how");
    QTest::newRow("menu built from a misspelt name") << "fill";
    QTest::newRow("action looked up") << "action";
    QTest::newRow("triggered by the window's wiring") << "trigger";
    QTest::newRow("named twice") << "add";
}

void CommandTableTest::unknownNamesAreRefused() {
    QFETCH(QString, how);
    QWidget owner;
    CommandTable table(&owner);
    int runs = 0;
    CommandTable::Command zoom;
    zoom.name = "mnuZoomIn";
    zoom.run = [&runs] { ++runs; };
    table.add(zoom);

    QVERIFY(!table.dispatch("mnuZoomin")); // a test asking is no misspelling of the program's
    QVERIFY(!table.dispatch(QString()));
    QVERIFY(table.unknownNames().isEmpty());

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("mnuZoomin|mnuZoomIn"));
    if (how == "fill") {
        QMenu menu;
        table.fill(&menu, {"mnuZoomin"});
        QVERIFY(menu.actions().isEmpty());
    } else if (how == "action") {
        QCOMPARE(table.action("mnuZoomin"), nullptr);
    } else if (how == "trigger") {
        table.trigger("mnuZoomin");
    } else {
        table.add(zoom);
    }
    QCOMPARE(table.unknownNames().size(), 1);
    QCOMPARE(runs, 0);
    QCOMPARE(table.names(), QStringList{"mnuZoomIn"});
    QVERIFY(table.dispatch("mnuZoomIn"));
    QCOMPARE(runs, 1);
}

void CommandTableTest::dispatchRunsWhateverTheEnabledState() {
    QWidget owner;
    CommandTable table(&owner);
    int runs = 0;
    CommandTable::Command print;
    print.name = "mnuPrint";
    print.run = [&runs] { ++runs; };
    print.enabled = [] { return false; };
    table.add(print);
    table.refresh();
    QVERIFY(!table.action("mnuPrint")->isEnabled());
    table.action("mnuPrint")->trigger(); // a greyed item does nothing
    QCOMPARE(runs, 0);
    QVERIFY(table.dispatch("mnuPrint")); // the command makes its own checks
    QCOMPARE(runs, 1);
}

void CommandTableTest::refreshFollowsThePredicates() {
    QWidget owner;
    CommandTable table(&owner);
    bool on = false;
    bool allowed = true;
    CommandTable::Command label;
    label.name = "mnuShowLabel";
    label.checked = [&on] { return on; };
    label.enabled = [&allowed] { return allowed; };
    table.add(label);
    CommandTable::Command plain;
    plain.name = "mnuPlain";
    table.add(plain);
    QAction *action = table.action("mnuShowLabel");
    QVERIFY(action->isCheckable());
    QVERIFY(!table.action("mnuPlain")->isCheckable());
    on = true;
    allowed = false;
    QVERIFY(!action->isChecked()); // only refresh() reads the state
    table.refresh();
    QVERIFY(action->isChecked());
    QVERIFY(!action->isEnabled());
    QVERIFY(table.action("mnuPlain")->isEnabled());
    on = false;
    allowed = true;
    table.refresh();
    QVERIFY(!action->isChecked());
    QVERIFY(action->isEnabled());
}

void CommandTableTest::commandWithoutActionOnlyDispatches() {
    QWidget owner;
    CommandTable table(&owner);
    int runs = 0;
    CommandTable::Command tool;
    tool.name = "mnuZoom%";
    tool.run = [&runs] { ++runs; };
    tool.hasAction = false;
    table.add(tool);
    QVERIFY(owner.actions().isEmpty());
    QVERIFY(table.contains("mnuZoom%"));
    QVERIFY(table.dispatch("mnuZoom%"));
    table.trigger("mnuZoom%");
    QCOMPARE(runs, 2);
    QVERIFY(table.unknownNames().isEmpty());
}

TAVREL_TEST(CommandTableTest)
#include "CommandTableTest.moc"

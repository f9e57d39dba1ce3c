#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "preview/PageView.h"
#include "preview/PreviewActions.h"
#include "preview/frmFind.h"
#include "preview/frmPrintpreview.h"
#include "render/PageEngine.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>

using namespace tavrel;

namespace {} // namespace

class FindDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanupTestCase() { QStandardPaths::setTestModeEnabled(false); }
    void findButtonWantsText();
    void enterAndButtonSearch();
    void closeButtonCloses();
    void openedFromThePreview();
};

void FindDialogTest::findButtonWantsText() {
    QStringList searched;
    frmFind dialog([&](const QString &text, bool) { searched << text; });
    QVERIFY(!dialog.cmdFind()->isEnabled());
    QTest::mouseClick(dialog.cmdFind(), Qt::LeftButton);
    QVERIFY(searched.isEmpty());
    QTest::keyClicks(dialog.txtFind(), "oak");
    QVERIFY(dialog.cmdFind()->isEnabled());
    dialog.txtFind()->clear();
    QVERIFY(!dialog.cmdFind()->isEnabled());
}

void FindDialogTest::enterAndButtonSearch() {
    QList<QPair<QString, bool>> searched;
    frmFind dialog([&](const QString &text, bool matchCase) {
        searched.append({text, matchCase});
    });
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::keyClicks(dialog.txtFind(), "Oak ");
    QTest::mouseClick(dialog.cmdFind(), Qt::LeftButton);
    dialog.chkMatchCase()->setChecked(true);
    QTest::keyClick(dialog.txtFind(), Qt::Key_Return); // Find is the default button
    QCOMPARE(searched.size(), 2);
    QCOMPARE(searched[0], qMakePair(QString("Oak "), false)); // the text as typed
    QCOMPARE(searched[1], qMakePair(QString("Oak "), true));
    QVERIFY(dialog.isVisible()); // stays open for the next search
}

void FindDialogTest::closeButtonCloses() {
    frmFind dialog([](const QString &, bool) {});
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::mouseClick(dialog.cmdExit(), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
}

void FindDialogTest::openedFromThePreview() {
    PageEngine engine;
    engine.StartDoc();
    engine.TextBox("Reception desk", 1440, 1440, 6000, 0);
    engine.NewPage();
    engine.TextBox("Conference table, cherry", 1440, 1440, 6000, 0);
    engine.EndDoc();
    ScriptedPrompter prompter;
    NoPreviewActions actions;
    frmPrintpreview window(engine, prompter, actions, "1", "Find");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.dispatch("mnuFindText"));
    frmFind *dialog = window.findDialog();
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    QTest::keyClicks(dialog->txtFind(), "cherry");
    QTest::mouseClick(dialog->cmdFind(), Qt::LeftButton);
    QCOMPARE(window.currentPage(), 2);
    QCOMPARE(window.pageView()->mark()->first, 2);
    QVERIFY(prompter.calls("message").isEmpty());

    // Opened again, the dialog keeps its text, selected for typing over.
    QTest::mouseClick(dialog->cmdExit(), Qt::LeftButton);
    window.dispatch("mnuFindText");
    QCOMPARE(window.findDialog(), dialog);
    QCOMPARE(dialog->txtFind()->selectedText(), QString("cherry"));

    dialog->txtFind()->setText("walnut");
    QTest::mouseClick(dialog->cmdFind(), Qt::LeftButton);
    QCOMPARE(prompter.messages(), QStringList{"Cannot find the string 'walnut' in the document."});
    QCOMPARE(prompter.calls("message")[0].title, QString("Not Found"));
    QCOMPARE(window.currentPage(), 2);
}

TAVREL_TEST(FindDialogTest)
#include "FindDialogTest.moc"

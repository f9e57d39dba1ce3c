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

namespace {

// Five pages: "Halyard" three times on page 2 (twice on one line, once in a box below) and
// once on page 5.
void layOut(PageEngine &engine) {
    engine.StartDoc();
    engine.TextBox("Reception desk", 1440, 1440, 8000, 0);
    engine.NewPage();
    engine.TextBox("Halyard Sofa, Halyard Lounge", 1440, 1440, 8000, 0);
    engine.TextBox("Ottoman: Halyard", 1440, 3000, 8000, 0);
    engine.NewPage();
    engine.TextBox("Conference table", 1440, 1440, 8000, 0);
    engine.NewPage();
    engine.TextBox("Task chair", 1440, 1440, 8000, 0);
    engine.NewPage();
    engine.TextBox("halyard side table", 1440, 1440, 8000, 0);
    engine.EndDoc();
}

} // namespace

// The Find dialog on its own, and Find in the preview: it steps through every match in page
// order, the mark on each, and says "Not Found" only when none is left.
class PreviewFindTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanupTestCase() { QStandardPaths::setTestModeEnabled(false); }
    void findButtonWantsText();
    void enterAndButtonSearch();
    void closeButtonCloses();
    void engineCountsEveryOccurrence_data();
    void engineCountsEveryOccurrence();
    void findStepsThroughEveryMatch();
    void findFromAnotherPageStartsThere();
};

void PreviewFindTest::findButtonWantsText() {
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

void PreviewFindTest::enterAndButtonSearch() {
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

void PreviewFindTest::closeButtonCloses() {
    frmFind dialog([](const QString &, bool) {});
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::mouseClick(dialog.cmdExit(), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
}

void PreviewFindTest::engineCountsEveryOccurrence_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("skip");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("index");
    QTest::newRow("first") << 1 << 0 << 2 << 0;
    QTest::newRow("second on the same line") << 2 << 1 << 2 << 1;
    QTest::newRow("third in another box") << 2 << 2 << 2 << 2;
    QTest::newRow("past the page") << 2 << 3 << 5 << 0;
    QTest::newRow("skip counts on the first page only") << 3 << 5 << 5 << 0;
}

void PreviewFindTest::engineCountsEveryOccurrence() {
    QFETCH(int, from);
    QFETCH(int, skip);
    QFETCH(int, page);
    QFETCH(int, index);
    PageEngine engine;
    layOut(engine);
    const std::optional<TextMatch> match = engine.FindText("Halyard", from, false, skip);
    QVERIFY(match);
    QCOMPARE(match->page, page);
    QCOMPARE(match->indexOnPage, index);
}

void PreviewFindTest::findStepsThroughEveryMatch() {
    PageEngine engine;
    layOut(engine);
    ScriptedPrompter prompter;
    NoPreviewActions actions;
    frmPrintpreview window(engine, prompter, actions, "1", "Find");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.dispatch("mnuFindText"));
    frmFind *dialog = window.findDialog();
    QVERIFY(dialog && dialog->isVisible());
    QTest::keyClicks(dialog->txtFind(), "Halyard");

    QList<std::pair<int, QRectF>> marks;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(dialog->txtFind(), Qt::Key_Return);
        QVERIFY2(prompter.messages().isEmpty(), qPrintable(QString::number(i)));
        QVERIFY(window.pageView()->mark());
        marks << *window.pageView()->mark();
        QCOMPARE(window.currentPage(), marks.last().first);
    }
    QCOMPARE(marks[0].first, 2);
    QCOMPARE(marks[1].first, 2);
    QCOMPARE(marks[2].first, 2);
    QCOMPARE(marks[3].first, 5);
    // The two on one line side by side, the third on a line below.
    QCOMPARE(marks[0].second.top(), marks[1].second.top());
    QVERIFY(marks[1].second.left() > marks[0].second.right());
    QVERIFY(marks[2].second.top() > marks[1].second.bottom());

    QTest::mouseClick(dialog->cmdFind(), Qt::LeftButton);
    QCOMPARE(prompter.messages(), QStringList{"Cannot find the string 'Halyard' in the document."});
    QCOMPARE(prompter.calls("message")[0].title, QString("Not Found"));
    QCOMPARE(window.currentPage(), 5);

    // Opened again, the dialog keeps its text, selected for typing over.
    QTest::mouseClick(dialog->cmdExit(), Qt::LeftButton);
    QVERIFY(!dialog->isVisible());
    QVERIFY(window.dispatch("mnuFindText"));
    QCOMPARE(window.findDialog(), dialog);
    QCOMPARE(dialog->txtFind()->selectedText(), QString("Halyard"));
}

void PreviewFindTest::findFromAnotherPageStartsThere() {
    PageEngine engine;
    layOut(engine);
    ScriptedPrompter prompter;
    NoPreviewActions actions;
    frmPrintpreview window(engine, prompter, actions, "1", "Find");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.findText("Halyard");
    window.findText("Halyard");
    QCOMPARE(window.pageView()->mark()->first, 2);
    // The user goes back to page 1 and finds again: the first match of page 2 once more.
    QVERIFY(window.dispatch("mnuViewFirst"));
    const QRectF first = engine.FindText("Halyard", 1)->rect;
    window.findText("Halyard");
    QCOMPARE(window.pageView()->mark()->first, 2);
    QCOMPARE(window.pageView()->mark()->second, first);
}

TAVREL_TEST(PreviewFindTest)
#include "PreviewFindTest.moc"

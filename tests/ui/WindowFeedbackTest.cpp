#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "base/ui/OutputNotice.h"
#include "base/ui/QtPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "designer/frmCustomLayout.h"
#include "preview/PreviewActions.h"
#include "preview/frmPrintpreview.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/Startup.h"
#include "shell/ui/ApplicationReportActions.h"
#include "shell/ui/PreviewSession.h"
#include "shell/ui/ReportActions.h"
#include "shell/ui/frmMenu.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;
using testsupport::DemoJob;
using testsupport::DemoTemplates;
using testsupport::RecordingReportActions;

namespace {

QStringList statusTexts(const ScriptedPrompter &prompter) {
    QStringList texts;
    for (const ScriptedPrompter::Call &call : prompter.calls("status"))
        texts << call.text;
    return texts;
}

QPushButton *button(QWidget &window, const char *name) {
    return window.findChild<QPushButton *>(name);
}

} // namespace

// The windows tell the user what they did (findings on stale state and silence): every save
// and export confirms with its path, refusals come before dialogs, lists and captions follow the
// choice, and run mode "3" is view-only (the preview's side of it is in PreviewWindowTest).
class WindowFeedbackTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanupTestCase() { QStandardPaths::setTestModeEnabled(false); }
    void confirmationText_data();
    void confirmationText();
    void saveAsDefaultConfirmsWithPath();
    void pdfRefusesBeforeAskingForAFile();
    void previewExportsConfirm_data();
    void previewExportsConfirm();
    void captionFollowsTheChoice();
    void runModeThreeIsViewOnly();
    void designerSaveShowsInTheLists();
    void exportsOfTheJobConfirm();
    void statusGoesToTheWindowInFront();
};

void WindowFeedbackTest::confirmationText_data() {
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("expected");
    QTest::newRow("not opened") << int(OpenOutcome::NotAsked) << "PDF file saved: /tmp/a b.pdf";
    QTest::newRow("opened") << int(OpenOutcome::Opened) << "PDF file saved: /tmp/a b.pdf";
    QTest::newRow("no application")
        << int(OpenOutcome::NoApplication)
        << "PDF file saved: /tmp/a b.pdf - no application could open it";
}

void WindowFeedbackTest::confirmationText() {
    QFETCH(int, outcome);
    QFETCH(QString, expected);
    QCOMPARE(outputConfirmationText("PDF file", "/tmp/a b.pdf", OpenOutcome(outcome)), expected);
}

void WindowFeedbackTest::saveAsDefaultConfirmsWithPath() {
    DemoJob demo(DemoTemplates::OwnFolder);
    RecordingReportActions actions;
    frmMenu window(demo.context, demo.prompter, actions);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    demo.prompter.clear();
    QTest::mouseClick(button(window, "cmdSaveAsDefault"), Qt::LeftButton);
    QCOMPARE(statusTexts(demo.prompter),
             QStringList{"Default template choice saved: " + demo.context.job.path()});
    QVERIFY(demo.prompter.messages().isEmpty());
}

void WindowFeedbackTest::pdfRefusesBeforeAskingForAFile() {
    DemoJob demo(DemoTemplates::OwnFolder);
    RecordingReportActions actions;
    frmMenu window(demo.context, demo.prompter, actions);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (int row = 0; row < 3; ++row) {
        if (window.printableBox(row)->isChecked())
            QTest::mouseClick(window.printableBox(row), Qt::LeftButton);
    }
    demo.prompter.clear();
    demo.prompter.queueFile(demo.dir.filePath("never.pdf"));
    QTest::mouseClick(button(window, "cmdPDF"), Qt::LeftButton);
    QVERIFY(demo.prompter.calls("saveFile").isEmpty());
    QCOMPARE(demo.prompter.messages().size(), 1);
    QVERIFY(actions.calls.isEmpty());
}

void WindowFeedbackTest::previewExportsConfirm_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("viewerFound");
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("messages");
    QTest::newRow("PDF opened") << "mnuViewPDF" << true << "PDF file" << 0;
    // The classic reader message, and the status line says so too.
    QTest::newRow("PDF, no viewer") << "mnuViewPDF" << false << "PDF file" << 1;
    QTest::newRow("RTF opened") << "mnuRTF" << true << "RTF document" << 0;
    QTest::newRow("RTF, no viewer") << "mnuRTF" << false << "RTF document" << 0;
}

void WindowFeedbackTest::previewExportsConfirm() {
    QFETCH(QString, command);
    QFETCH(bool, viewerFound);
    QFETCH(QString, what);
    QFETCH(int, messages);
    QTemporaryDir dir;
    PageEngine engine;
    engine.StartDoc();
    engine.TextBox("Reception desk", 1440, 1440, 6000, 0);
    engine.EndDoc();
    ScriptedPrompter prompter;
    prompter.setOpenDocumentResult(viewerFound);
    testsupport::RecordingPreviewActions actions;
    const QString path = dir.filePath(command == "mnuRTF" ? "ReportCst.rtf" : "Report.pdf");
    actions.rtfPath = path;
    prompter.queueFile(path);
    frmPrintpreview window(engine, prompter, actions, "1", "Classic Customer.cst");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.dispatch(command));
    QCOMPARE(prompter.messages().size(), messages);
    QCOMPARE(statusTexts(prompter),
             QStringList{outputConfirmationText(
                 what, path, viewerFound ? OpenOutcome::Opened : OpenOutcome::NoApplication)});
}

void WindowFeedbackTest::captionFollowsTheChoice() {
    DemoJob demo(DemoTemplates::OwnFolder);
    RecordingReportActions actions;
    frmMenu window(demo.context, demo.prompter, actions);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QString group = demo.dir.filePath("My Group.grp");
    demo.prompter.clear();
    demo.prompter.queueFile(group);
    QTest::mouseClick(button(window, "cmdSaveGroup"), Qt::LeftButton);
    QVERIFY(QFileInfo::exists(group));
    QCOMPARE(statusTexts(demo.prompter), QStringList{"Template group saved: " + group});
    demo.prompter.queueFile(group);
    QVERIFY(window.dispatch("cmdLoadGroup"));
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(actions.calls.value(0), QString("preview:My Group.grp"));

    // Only the body now: the caption names the template that prints, not the group.
    QTest::mouseClick(window.printableBox(0), Qt::LeftButton);
    QTest::mouseClick(window.printableBox(2), Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(actions.calls.value(1), QString("preview:Classic Customer.cst"));
}

void WindowFeedbackTest::runModeThreeIsViewOnly() {
    DemoJob demo(DemoTemplates::OwnFolder, "3");
    QCOMPARE(demo.context.runMode, QString("3"));
    RecordingReportActions actions;
    frmMenu window(demo.context, demo.prompter, actions);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!button(window, "cmdPrint")->isEnabled());
    QVERIFY(!button(window, "cmdPDF")->isEnabled());
    QVERIFY(!button(window, "cmdSpreadsheet")->isEnabled());
    QVERIFY(button(window, "cmdPrintPreview")->isEnabled());
    demo.prompter.clear();
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier); // greyed: the shortcut is off
    QVERIFY(demo.prompter.calls().isEmpty());
    QVERIFY(window.dispatch("cmdPrint"));
    QVERIFY(window.dispatch("cmdPDF"));
    QVERIFY(window.dispatch("cmdSpreadsheet"));
    QVERIFY(actions.calls.isEmpty());
    QVERIFY(demo.prompter.calls("saveFile").isEmpty());
    QCOMPARE(statusTexts(demo.prompter), QStringList(3, viewOnlyRefusalText()));
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(actions.calls, QStringList{"preview:Classic.cov, Classic Customer.cst, "
                                        "Classic Customer.sum"});
}

// A template saved in the designer opened from the main window is in the main window's list at
// once, and the choice shown there stays.
void WindowFeedbackTest::designerSaveShowsInTheLists() {
    DemoJob demo(DemoTemplates::OwnFolder);
    ApplicationReportActions actions(demo.context, demo.prompter);
    frmMenu window(demo.context, demo.prompter, actions);
    actions.setWindow(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QString chosen = window.templateList(1)->currentData().toString();
    QCOMPARE(QFileInfo(chosen).fileName(), QString("Classic Customer.cst"));
    const int before = window.templateList(1)->count();

    QVERIFY(window.dispatch("imgPagelayout(1)"));
    QPointer<frmCustomLayout> designer;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<frmCustomLayout *>(widget); found && found->isVisible())
            designer = found;
    }
    QVERIFY(designer);
    const QString saved = demo.templatePath("Showroom Body.cst");
    demo.prompter.queueFile(saved);
    QVERIFY(designer->dispatch("mnuSaveAs"));
    QVERIFY(QFileInfo::exists(saved));

    QCOMPARE(window.templateList(1)->count(), before + 1);
    QVERIFY(window.templateList(1)->findData(saved) >= 0);
    QCOMPARE(window.templateList(1)->currentData().toString(), chosen);
    designer->close();
    QTRY_VERIFY(designer.isNull() || !designer->isVisible());
    delete designer;
}

// The main window's PDF and the preview's HTML, run on the demo job, confirm with the file
// written, and say so when no application opened it.
void WindowFeedbackTest::exportsOfTheJobConfirm() {
    DemoJob demo(DemoTemplates::OwnFolder);
    demo.prompter.setOpenDocumentResult(false);
    ApplicationReportActions actions(demo.context, demo.prompter);
    frmMenu window(demo.context, demo.prompter, actions);
    actions.setWindow(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    demo.prompter.clear();
    const QString pdf = demo.dir.filePath("Report.pdf");
    demo.prompter.queueFile(pdf);
    QTest::mouseClick(button(window, "cmdPDF"), Qt::LeftButton);
    QVERIFY(testsupport::readBytes(pdf).startsWith("%PDF"));
    QCOMPARE(statusTexts(demo.prompter),
             (QStringList{"Creating " + pdf,
                          outputConfirmationText("PDF file", pdf, OpenOutcome::NoApplication)}));
    QCOMPARE(demo.prompter.messages().size(), 1); // the classic reader message as well

    demo.prompter.clear();
    QTest::mouseClick(button(window, "cmdPrintPreview"), Qt::LeftButton);
    frmPrintpreview *preview = nullptr;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<frmPrintpreview *>(widget); found && found->isVisible())
            preview = found;
    }
    QVERIFY(preview);
    demo.prompter.clear();
    QVERIFY(preview->dispatch("mnuHTML"));
    const QList<ScriptedPrompter::Call> opened = demo.prompter.calls("openDocument");
    QCOMPARE(opened.size(), 1);
    QVERIFY(opened[0].text.endsWith(".htm"));
    QCOMPARE(statusTexts(demo.prompter),
             QStringList{
                 outputConfirmationText("HTML pages", opened[0].text, OpenOutcome::NoApplication)});
    preview->close();
}

// The real prompter shows status texts in the status bar of the main window in front.
void WindowFeedbackTest::statusGoesToTheWindowInFront() {
    QMainWindow window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QtPrompter prompter("Tavrel");
    confirmOutput(prompter, "Template group", "/tmp/My Group.grp");
    QCOMPARE(window.statusBar()->currentMessage(),
             QString("Template group saved: /tmp/My Group.grp"));
}

TAVREL_TEST(WindowFeedbackTest)
#include "WindowFeedbackTest.moc"

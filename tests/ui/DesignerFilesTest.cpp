#include "base/ScriptedPrompter.h"
#include "common/DesignerWindow.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "designer/DesignerActions.h"
#include "designer/frmCustomLayout.h"
#include "shell/JobFile.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace tavrel;

namespace {

// Records what the designer asked the rest of the program to do.
class RecordingActions : public DesignerActions {
public:
    QStringList calls;
    void preview(TemplateKind kind, const QString &path) override {
        calls << "preview " + templateKindName(kind) + " " + QFileInfo(path).fileName();
        previewedLayout = TemplateReader::load(path, prompter);
    }
    void print(TemplateKind kind, const QString &path) override {
        calls << "print " + templateKindName(kind) + " " + QFileInfo(path).fileName();
    }
    void about() override { calls << "about"; }
    void help() override { calls << "help"; }
    ScriptedPrompter prompter;
    TemplateLayout previewedLayout;
};

QString classic(const QString &name) {
    return testsupport::sourcePath("resources/Print Templates/" + name);
}

} // namespace

// New, open, save, save-as and close flows of the designer, copying header and footer from
// another template, preview by kind, and a save and reload that keeps every property.
class DesignerFilesTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void captionFollowsTemplate();
    void newAsksOnlyWhenChanged();
    void fileDialogsByKind_data();
    void fileDialogsByKind();
    void openingTheOpenTemplateIsRefused();
    void closeFlows_data();
    void closeFlows();
    void copyHeaderFooter();
    void copyHeaderFooterRefusesOtherFiles();
    void previewRunsTheKindsJob();
    void saveAndReloadKeepsEveryProperty_data();
    void saveAndReloadKeepsEveryProperty();

private:
    std::unique_ptr<frmCustomLayout> makeWindow(const QString &path);
    void makeChange(frmCustomLayout &window);

    QTemporaryDir m_dir;
    JobFile m_jobModel;
    QString m_job;
    ScriptedPrompter m_prompter;
    RecordingActions m_actions;
};

void DesignerFilesTest::init() {
    m_job = m_dir.filePath("job.ini");
    testsupport::writeBytes(m_job, "[Printer]\r\nFunction=1\r\n");
    m_prompter = ScriptedPrompter();
    m_actions.calls.clear();
}

std::unique_ptr<frmCustomLayout> DesignerFilesTest::makeWindow(const QString &path) {
    auto window = testsupport::openDesigner(m_job, m_jobModel, m_dir.path(), m_prompter, m_actions);
    window->openOn(path);
    return window;
}

void DesignerFilesTest::makeChange(frmCustomLayout &window) {
    TemplateLayout layout = window.document().layout();
    layout.other.logoSize = layout.other.logoSize == "25%" ? "50%" : "25%";
    window.document().change(layout, "change");
}

void DesignerFilesTest::captionFollowsTemplate() {
    auto window = makeWindow("Untitled.sum");
    QCOMPARE(window->windowTitle(),
             QString("Summary Page Design View - Demo.spec - Template [Untitled.sum]"));
    window->openOn(classic("Classic.cov"));
    QCOMPARE(window->windowTitle(),
             QString("Cover Page Design View - Demo.spec - Template [Classic.cov]"));
    QCOMPARE(window->document().layout().placedBoxCount(), 56);
    QVERIFY(window->document().isSaved());
}

void DesignerFilesTest::newAsksOnlyWhenChanged() {
    auto window = makeWindow(classic("Classic Customer.cst"));
    QVERIFY(window->dispatch("mnuNew"));
    QVERIFY(m_prompter.calls().isEmpty());
    QCOMPARE(window->document().layout().placedBoxCount(), 0);

    makeChange(*window);
    m_prompter.queueAnswer(MessageAnswer::No);
    QVERIFY(window->dispatch("mnuNew"));
    const ScriptedPrompter::Call call = m_prompter.calls("message").first();
    QCOMPARE(call.text, QString("Would you liked to save the template?"));
    QCOMPARE(call.icon, MessageIcon::Information);
    QCOMPARE(call.buttons, MessageButtons::YesNo);
    QVERIFY(window->document().layout() == TemplateLayout{});
    QCOMPARE(window->windowTitle(),
             QString("Custom Page Design View - Demo.spec - Template [Untitled.cst]"));
}

// Open and Save As ask for the window's kind of template; Open refuses a file of another kind.
void DesignerFilesTest::fileDialogsByKind_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("kind"); // as the dialog titles spell it
    QTest::addColumn<QString>("refusal");
    QTest::newRow("custom") << "Untitled.cst"
                            << "Custom"
                            << "This is not a valid custom template file.";
    QTest::newRow("summary") << "Untitled.sum"
                             << "Summary"
                             << "This is not a valid summary template file.";
    QTest::newRow("cover") << "Untitled.cov"
                           << "Cover"
                           << "This is not a valid cover page template file.";
}

void DesignerFilesTest::fileDialogsByKind() {
    QFETCH(QString, start);
    QFETCH(QString, kind);
    QFETCH(QString, refusal);
    const QString extension = start.right(4);
    const QString pattern = QString("(*%1)|*%1|All Files  (*.*)|*.*").arg(extension);
    auto window = makeWindow(start);
    m_prompter.queueFile(m_dir.filePath("other.grp"));
    QVERIFY(window->dispatch("mnuOpen"));
    const ScriptedPrompter::Call open = m_prompter.calls("openFile").first();
    QCOMPARE(open.file.title, QString("Open %1 Pagelayout Template...").arg(kind));
    QCOMPARE(open.file.filter, "Tavrel Page Layout File " + pattern);
    QCOMPARE(m_prompter.messages(), QStringList{refusal});
    QCOMPARE(m_prompter.calls("message").first().icon, MessageIcon::Exclamation);
    QCOMPARE(window->document().path(), QString());

    m_prompter.clear();
    QVERIFY(window->dispatch("mnuOpen")); // cancelled: silent
    QVERIFY(m_prompter.messages().isEmpty());

    makeChange(*window);
    const QString target = m_dir.filePath("Mine" + extension);
    m_prompter.queueFile(target);
    QVERIFY(window->dispatch("mnuSaveAs"));
    const ScriptedPrompter::Call save = m_prompter.calls("saveFile").first();
    QCOMPARE(save.file.title, QString("Save %1 Pagelayout Template As...").arg(kind));
    QCOMPARE(save.file.filter, "Tavrel Pagelayout File " + pattern);
    QVERIFY(QFile::exists(target));
    QVERIFY(window->document().isSaved());
    QCOMPARE(window->document().path(), target);
    QVERIFY(window->windowTitle().endsWith("Template [Mine" + extension + "]"));
    QCOMPARE(m_prompter.calls("status").first().text, QString("Save Template. Please wait..."));
}

void DesignerFilesTest::openingTheOpenTemplateIsRefused() {
    const QString path = classic("Classic Customer.cst");
    auto window = makeWindow(path);
    makeChange(*window);
    m_prompter.queueFile(path);
    QVERIFY(window->dispatch("mnuOpen"));
    QCOMPARE(m_prompter.messages(), QStringList{"Template already open."});
    QVERIFY(!window->document().isSaved()); // nothing was reloaded
}

void DesignerFilesTest::closeFlows_data() {
    QTest::addColumn<bool>("hasPath");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("saveAsChosen");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("written");
    QTest::newRow("yes, saved to its path")
        << true << int(MessageAnswer::Yes) << false << true << true;
    QTest::newRow("yes, new, save as chosen")
        << false << int(MessageAnswer::Yes) << true << true << true;
    QTest::newRow("yes, new, save as cancelled")
        << false << int(MessageAnswer::Yes) << false << false << false;
    QTest::newRow("no") << true << int(MessageAnswer::No) << false << true << false;
    QTest::newRow("cancel") << true << int(MessageAnswer::Cancel) << false << false << false;
}

void DesignerFilesTest::closeFlows() {
    QFETCH(bool, hasPath);
    QFETCH(int, answer);
    QFETCH(bool, saveAsChosen);
    QFETCH(bool, closes);
    QFETCH(bool, written);
    const QString path = m_dir.filePath("Close.cst");
    QFile::remove(path);
    QFile::remove(m_dir.filePath("Chosen.cst"));
    if (hasPath)
        QVERIFY(QFile::copy(classic("Classic Customer.cst"), path));
    auto window = makeWindow(hasPath ? path : "Untitled.cst");
    const QByteArray before = hasPath ? testsupport::readBytes(path) : QByteArray();
    window->show();
    makeChange(*window);
    m_prompter.queueAnswer(MessageAnswer(answer));
    m_prompter.queueFile(saveAsChosen ? std::optional<QString>(m_dir.filePath("Chosen.cst"))
                                      : std::nullopt);
    QCOMPARE(window->close(), closes);
    QCOMPARE(window->isVisible(), !closes);
    const ScriptedPrompter::Call question = m_prompter.calls("message").first();
    QCOMPARE(question.text, QString("Do you want to save the change you made to the template?"));
    QCOMPARE(question.buttons, MessageButtons::YesNoCancel);
    QCOMPARE(question.icon, MessageIcon::Exclamation);
    const QString target = hasPath ? path : m_dir.filePath("Chosen.cst");
    const bool changedOnDisk = QFile::exists(target) && testsupport::readBytes(target) != before;
    QCOMPARE(changedOnDisk, written);
    QCOMPARE(m_prompter.calls("saveFile").size(), !hasPath && answer == int(MessageAnswer::Yes));

    m_prompter.clear();
    if (!closes) {
        window->document().markSaved(window->document().path());
        QVERIFY(window->close()); // nothing to save: no question
        QVERIFY(m_prompter.calls("message").isEmpty());
    }
}

void DesignerFilesTest::copyHeaderFooter() {
    // A copy: the flow below answers the save question of "New", which must never write over
    // the shipped template.
    const QString summary = m_dir.filePath("Summary Copy.sum");
    QVERIFY(QFile::copy(classic("Classic Customer.sum"), summary));
    QFile::setPermissions(summary, QFile::ReadOwner | QFile::WriteOwner);
    auto window = makeWindow(summary);
    const TemplateLayout source = TemplateReader::load(classic("Classic Customer.cst"), m_prompter);
    const int sourceBand = LayoutEdits::bandBoxSlots(source).size();
    const int ownBody = window->document().layout().placedBoxCount() -
                        LayoutEdits::bandBoxSlots(window->document().layout()).size();
    QVERIFY(!LayoutEdits::bandBoxSlots(window->document().layout()).isEmpty());

    m_prompter.queueAnswer(MessageAnswer::No);
    QVERIFY(window->dispatch("mnuCopyHeaderFooter"));
    QCOMPARE(m_prompter.messages(),
             QStringList{"This template currently has header/footer fields.\r\n"
                         "You will clear these fields and will insert new fields.\r\n"
                         "Are you sure you wish to continue?"});
    QVERIFY(m_prompter.calls("openFile").isEmpty());

    m_prompter.clear();
    m_prompter.queueAnswer(MessageAnswer::Yes);
    m_prompter.queueFile(classic("Classic Customer.cst"));
    QVERIFY(window->dispatch("mnuCopyHeaderFooter"));
    const ScriptedPrompter::Call dialog = m_prompter.calls("openFile").first();
    QCOMPARE(dialog.file.title, QString("Inserte a copy of header/footer from..."));
    QCOMPARE(dialog.file.filter,
             QString("All Template Files (*.cov;*.cst; *.sum)|*.cov; *.cst; *.sum|Cover "
                     "(*.cov)|*.cov|Custom (*.cst)|*.cst|Summery (*.sum)|*.sum|AllFiles ( "
                     "*.*)|*.*"));
    const TemplateLayout &layout = window->document().layout();
    QCOMPARE(LayoutEdits::bandBoxSlots(layout).size(), sourceBand);
    QCOMPARE(layout.placedBoxCount(), ownBody + sourceBand);

    // An empty band: the other question.
    window->dispatch("mnuNew");
    m_prompter.clear();
    QVERIFY(window->dispatch("mnuCopyHeaderFooter"));
    QCOMPARE(m_prompter.messages(), QStringList{"Copy header/footer from a selected template?"});
    QCOMPARE(m_prompter.calls("message").first().icon, MessageIcon::Question);
}

void DesignerFilesTest::copyHeaderFooterRefusesOtherFiles() {
    auto window = makeWindow("Untitled.cov");
    m_prompter.queueAnswer(MessageAnswer::Yes);
    m_prompter.queueFile(m_dir.filePath("group.grp"));
    QVERIFY(window->dispatch("mnuCopyHeaderFooter"));
    QCOMPARE(m_prompter.messages().last(), QString("This is not a valid template file."));
    QCOMPARE(m_prompter.calls("message").last().icon, MessageIcon::Exclamation);
    QCOMPARE(window->document().layout().placedBoxCount(), 0);
}

void DesignerFilesTest::previewRunsTheKindsJob() {
    auto window = makeWindow("Untitled.sum");
    m_prompter.queueInput("Quote");
    QVERIFY(window->dispatch("mnuPrintPreview"));
    const ScriptedPrompter::Call ask = m_prompter.calls("input").first();
    QCOMPARE(ask.text, QString("Please name the new template."));
    QCOMPARE(ask.title, QString("Template name"));
    QCOMPARE(m_actions.calls, QStringList{"preview summary Quote.sum"});
    QVERIFY(QFile::exists(m_dir.filePath("Quote.sum")));

    // Unsaved edits are previewed without touching the saved file.
    const QByteArray saved = testsupport::readBytes(m_dir.filePath("Quote.sum"));
    makeChange(*window);
    QVERIFY(window->dispatch("mnuPrint"));
    QVERIFY(window->dispatch("mnuPrintPreview"));
    QCOMPARE(m_actions.previewedLayout.other.logoSize, window->document().layout().other.logoSize);
    QCOMPARE(testsupport::readBytes(m_dir.filePath("Quote.sum")), saved);
    QCOMPARE(m_actions.calls.mid(1),
             QStringList({"print summary Quote.sum", "preview summary Quote.sum"}));
    QVERIFY(window->dispatch("mnuAbout"));
    QVERIFY(window->dispatch("mnuHelpTopic"));
    QCOMPARE(m_actions.calls.mid(3), QStringList({"about", "help"}));
}

void DesignerFilesTest::saveAndReloadKeepsEveryProperty_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("cover") << "Classic.cov";
    QTest::newRow("custom") << "Classic Customer.cst";
    QTest::newRow("summary") << "Classic Customer.sum";
}

void DesignerFilesTest::saveAndReloadKeepsEveryProperty() {
    QFETCH(QString, name);
    auto window = makeWindow(classic(name));
    // Edit a bit of everything the file keeps.
    window->dispatch("mnuSelectAll");
    QList<int> picked = window->document().selection().boxes;
    window->document().selectBoxes(picked.mid(0, 3));
    m_prompter.queueColor(0x00ff00u);
    window->dispatch("mnuForeColor");
    m_prompter.queueColor(0xccccccu);
    window->dispatch("mnuBackColor");
    window->dispatch("mnuRightJustify");
    window->dispatch("mnuDisplayLabel");
    window->dispatch("mnuFontUnderline");
    m_prompter.queueInput("33");
    window->dispatch("mnuUserDefinedImg");
    window->dispatch("mnuLogo25");
    QTest::mousePress(window->rectangleTool(), Qt::LeftButton);
    QTest::mousePress(window->lineTool(), Qt::LeftButton);
    const TemplateLayout edited = window->document().layout();

    const QString target = m_dir.filePath("RoundTrip" + name.right(4));
    m_prompter.queueFile(target);
    QVERIFY(window->dispatch("mnuSaveAs"));
    window->openOn(target);
    // Every box, line, rectangle and setting comes back as it was.
    const TemplateLayout &reloaded = window->document().layout();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot)
        QVERIFY2(reloaded.box(slot) == edited.box(slot), qPrintable(edited.box(slot).caption));
    QVERIFY2(reloaded == edited, "a line, rectangle or template setting changed");
    // Saving what was loaded gives the same file again, apart from the dated title line.
    const QByteArray first = testsupport::readBytes(target);
    m_prompter.queueFile(target + ".again" + name.right(4));
    window->dispatch("mnuSaveAs");
    const QByteArray second = testsupport::readBytes(target + ".again" + name.right(4));
    QCOMPARE(second.mid(second.indexOf('\n')), first.mid(first.indexOf('\n')));
}

TAVREL_TEST(DesignerFilesTest)
#include "DesignerFilesTest.moc"

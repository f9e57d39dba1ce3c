#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "shell/AppContext.h"
#include "shell/ui/ReportActions.h"
#include "shell/ui/frmMenu.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace tavrel;
using testsupport::RecordingReportActions;

namespace {

// A job with a template folder holding the three Classic templates and one extra body template.
struct Fixture {
    QTemporaryDir dir;
    AppContext context;
    ScriptedPrompter prompter;
    RecordingReportActions actions;

    Fixture() {
        const QString folder = dir.filePath("Templates");
        QDir().mkpath(folder);
        for (const char *name :
             {"Classic.cov", "Classic Customer.cst", "Classic Customer.sum", "Wide.cst"})
            testsupport::writeBytes(QDir(folder).filePath(name), "\r\n");
        context.paths.jobFile = dir.filePath("job.ini");
        context.paths.templateFolder = folder;
        context.paths.pdfFolder = folder + "/PDF";
        testsupport::writeBytes(context.paths.jobFile,
                                "[Printer]\r\nTemplate Directory=" + folder.toUtf8() + "\r\n");
        context.job = JobFile::load(context.paths.jobFile);
    }
    QString templatePath(const char *name) const {
        return QDir(context.paths.templateFolder).filePath(name);
    }
};

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void startsWithDefaultsWrittenBack();
    void commandChecks_data();
    void commandChecks();
    void openTemplateChecksKind_data();
    void openTemplateChecksKind();
    void groupRoundTrip();
    void saveGroupWithoutTemplates();
    void saveAsDefault();
    void designerNamesUntitled();
    void helpOpensTheGuide();
    void spreadsheetAsksThenWritesAndOpens();
};

void MainWindowTest::startsWithDefaultsWrittenBack() {
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    QCOMPARE(window.templateList(1)->count(), 2);
    QCOMPARE(window.templateList(1)->currentText(), QString("Classic Customer"));
    QCOMPARE(window.selection().templates[0], f.templatePath("Classic.cov"));
    for (int row = 0; row < 3; ++row)
        QVERIFY(window.printableBox(row)->isChecked());
    const IniFile ini = IniFile::load(f.context.paths.jobFile);
    QCOMPARE(ini.value("Printer", "Body Template"), f.templatePath("Classic Customer.cst"));
    QCOMPARE(ini.value("Printer", "Summary Printable"), QString("1"));
}

// Each row: which rows have a template (c, b, s or -), which are printable, which files exist.
static void addSelectionColumns() {
    QTest::addColumn<QString>("templates");
    QTest::addColumn<QString>("printable");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("message");
}

static void applySelection(Fixture &f, frmMenu &window, const QString &templates,
                           const QString &printable, const QString &missing) {
    const char *names[3] = {"Classic.cov", "Classic Customer.cst", "Classic Customer.sum"};
    for (int row = 0; row < 3; ++row) {
        if (templates[row] == '-')
            window.templateList(row)->setCurrentIndex(-1);
        window.printableBox(row)->setChecked(printable[row] == '1');
        if (missing[row] == 'x')
            QFile::remove(f.templatePath(names[row]));
    }
}

void MainWindowTest::commandChecks_data() {
    QTest::addColumn<QString>("command");
    addSelectionColumns();
    QTest::newRow("preview: no template") << "cmdPrintPreview"
                                          << "---"
                                          << "111"
                                          << "..."
                                          << "At least select one template to be print preview.";
    QTest::newRow("preview: none printable") << "cmdPrintPreview"
                                             << "cbs"
                                             << "000"
                                             << "..."
                                             << "At least select one template to be printable.";
    QTest::newRow("preview: printable rows empty") << "cmdPrintPreview"
                                                   << "-b-"
                                                   << "101"
                                                   << "..."
                                                   << "No valid printable template selected.";
    QTest::newRow("preview: cover missing") << "cmdPrintPreview"
                                            << "cbs"
                                            << "111"
                                            << "x.."
                                            << "Cover page template not found.";
    QTest::newRow("preview: body missing") << "cmdPrintPreview"
                                           << "cbs"
                                           << "011"
                                           << ".x."
                                           << "Custom page template not found.";
    QTest::newRow("preview: summary missing") << "cmdPrintPreview"
                                              << "cbs"
                                              << "001"
                                              << "..x"
                                              << "Summary page template not found.";
    QTest::newRow("preview: missing but not printable") << "cmdPrintPreview"
                                                        << "cbs"
                                                        << "010"
                                                        << "x.x"
                                                        << "";
    QTest::newRow("preview: fine") << "cmdPrintPreview"
                                   << "cbs"
                                   << "111"
                                   << "..."
                                   << "";

    QTest::newRow("print: no template") << "cmdPrint"
                                        << "---"
                                        << "111"
                                        << "..."
                                        << "At least select one template to print.";
    QTest::newRow("print: none printable") << "cmdPrint"
                                           << "cbs"
                                           << "000"
                                           << "..."
                                           << "At least select one item to be printable.";
    QTest::newRow("print: no valid") << "cmdPrint"
                                     << "c--"
                                     << "011"
                                     << "..."
                                     << "No valid printable template selected.";
    QTest::newRow("print: no cover") << "cmdPrint"
                                     << "-b-"
                                     << "110"
                                     << "..."
                                     << "No cover page template selected.";
    QTest::newRow("print: no custom") << "cmdPrint"
                                      << "c-s"
                                      << "111"
                                      << "..."
                                      << "No custom template selected.";
    QTest::newRow("print: no summary") << "cmdPrint"
                                       << "cb-"
                                       << "111"
                                       << "..."
                                       << "No summary template selected.";
    QTest::newRow("print: cover gone") << "cmdPrint"
                                       << "cbs"
                                       << "111"
                                       << "x.."
                                       << "Cover Page Template Not Found.";
    QTest::newRow("print: custom gone") << "cmdPrint"
                                        << "cbs"
                                        << "111"
                                        << ".x."
                                        << "Custom Template Not Found.";
    QTest::newRow("print: summary gone") << "cmdPrint"
                                         << "cbs"
                                         << "111"
                                         << "..x"
                                         << "Summary Template Not Found.";
    QTest::newRow("print: fine") << "cmdPrint"
                                 << "cbs"
                                 << "101"
                                 << ".x."
                                 << "";
}

// Print Preview and Print refuse an incomplete selection with their own message each, and
// otherwise pass the job on.
void MainWindowTest::commandChecks() {
    QFETCH(QString, command);
    QFETCH(QString, templates);
    QFETCH(QString, printable);
    QFETCH(QString, missing);
    QFETCH(QString, message);
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    applySelection(f, window, templates, printable, missing);
    QVERIFY(window.dispatch(command));
    if (message.isEmpty()) {
        QVERIFY(f.prompter.messages().isEmpty());
        QCOMPARE(f.actions.calls.size(), 1);
        QVERIFY(f.actions.calls.first().startsWith(command == "cmdPrint" ? "print" : "preview:"));
    } else {
        QCOMPARE(f.prompter.messages(), QStringList{message});
        QCOMPARE(f.prompter.calls().first().icon, MessageIcon::Exclamation);
        QVERIFY(f.actions.calls.isEmpty());
    }
}

void MainWindowTest::openTemplateChecksKind_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("title");
    QTest::newRow("cover wrong") << 0 << "x.cst"
                                 << "This is not a valid cover page template file."
                                 << "   Load Cover PageLayout Template...";
    QTest::newRow("custom wrong") << 1 << "x.sum"
                                  << "This is not a valid custom template file."
                                  << "   Load Custom PageLayout Template...";
    QTest::newRow("summary wrong") << 2 << "x.SUM"
                                   << "This is not a valid summery page template file."
                                   << "   Load Summary PageLayout Template...";
    QTest::newRow("custom right") << 1 << "Other.cst"
                                  << ""
                                  << "   Load Custom PageLayout Template...";
}

void MainWindowTest::openTemplateChecksKind() {
    QFETCH(int, row);
    QFETCH(QString, file);
    QFETCH(QString, message);
    QFETCH(QString, title);
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    const QString path = f.dir.filePath(file);
    f.prompter.queueFile(path);
    window.dispatch(QString("cmdOpen(%1)").arg(row));
    const auto dialog = f.prompter.calls("openFile").first().file;
    QCOMPARE(dialog.title, title);
    QVERIFY(dialog.filter.startsWith("Tavrel Page Layout File (*."));
    QVERIFY(dialog.filter.endsWith("|All Files  (*.*)|*.*"));
    if (message.isEmpty()) {
        QCOMPARE(window.selection().templates[std::size_t(row)], path);
    } else {
        QCOMPARE(f.prompter.messages(), QStringList{message});
        QVERIFY(window.selection().templates[std::size_t(row)] != path);
    }
}

void MainWindowTest::groupRoundTrip() {
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    window.templateList(1)->setCurrentIndex(window.templateList(1)->findText("Wide"));
    window.printableBox(0)->setChecked(false);
    const QString group = f.dir.filePath("Mine.grp");
    f.prompter.queueFile(group);
    window.dispatch("cmdSaveGroup");
    QCOMPARE(f.prompter.calls("saveFile").first().file.title,
             QString(" Save Group Templates As..."));
    QVERIFY(QFile::exists(group));

    // A group naming a template that no longer exists loads without complaint.
    QFile::remove(f.templatePath("Wide.cst"));
    frmMenu second(f.context, f.prompter, f.actions);
    f.prompter.clear();
    f.prompter.queueFile(group);
    second.dispatch("cmdLoadGroup");
    QVERIFY(f.prompter.messages().isEmpty());
    QCOMPARE(second.selection().templates[1], f.templatePath("Wide.cst"));
    QVERIFY(!second.printableBox(0)->isChecked());
    QVERIFY(second.printableBox(1)->isChecked());
    QCOMPARE(second.loadGroupButton()->toolTip(),
             QString("\"Mine.grp\" is currently loaded. Load another?"));

    // Loading again asks first; No keeps the group, and a non-group file is refused.
    f.prompter.clear();
    f.prompter.queueAnswer(MessageAnswer::No);
    second.dispatch("cmdLoadGroup");
    QCOMPARE(f.prompter.messages(), QStringList{"\"Mine.grp\" is currently loaded. Load another?"});
    QVERIFY(f.prompter.calls("openFile").isEmpty());
    f.prompter.clear();
    f.prompter.queueAnswer(MessageAnswer::Yes);
    f.prompter.queueFile(f.dir.filePath("notes.txt"));
    second.dispatch("cmdLoadGroup");
    QCOMPARE(f.prompter.messages().last(), QString("This is not a valid Group File."));
}

void MainWindowTest::saveGroupWithoutTemplates() {
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    for (int row = 0; row < 3; ++row)
        window.templateList(row)->setCurrentIndex(-1);
    window.dispatch("cmdSaveGroup");
    QCOMPARE(f.prompter.messages(), QStringList{"Please select the template to be grouped."});
    QVERIFY(f.prompter.calls("saveFile").isEmpty());
}

void MainWindowTest::saveAsDefault() {
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    window.templateList(1)->setCurrentIndex(window.templateList(1)->findText("Wide"));
    window.printableBox(2)->setChecked(false);
    QFile::remove(f.templatePath("Classic.cov"));
    window.dispatch("cmdSaveAsDefault");
    QCOMPARE(f.prompter.messages(),
             QStringList{"Connot save 'Classic.cov', because it does not exist."});
    QCOMPARE(f.prompter.calls().first().buttons, MessageButtons::OkCancel);
    const IniFile ini = IniFile::load(f.context.paths.jobFile);
    QCOMPARE(ini.value("Printer", "Body Template"), f.templatePath("Wide.cst"));
    QCOMPARE(ini.value("Printer", "Summary Printable"), QString("0"));
    QCOMPARE(ini.value("Printer", "Cover Printable"), QString("1"));
    // The missing cover keeps the key as it was.
    QCOMPARE(ini.value("Printer", "Cover Template"), f.templatePath("Classic.cov"));
}

void MainWindowTest::designerNamesUntitled() {
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    window.templateList(2)->setCurrentIndex(-1);
    window.dispatch("imgPagelayout(2)");
    window.dispatch("imgPagelayout(1)");
    QCOMPARE(f.actions.calls,
             (QStringList{"design:2:Untitled.sum", "design:1:Classic Customer.cst"}));
    QCOMPARE(IniFile::load(f.context.paths.jobFile).value("Printer", "PageLayout"), QString("2"));
    QFile::remove(f.templatePath("Classic.cov"));
    window.dispatch("imgPagelayout(0)");
    QCOMPARE(f.prompter.messages(), QStringList{"Cover Page Template Not Found."});
}

// F1 in the main window opens the user guide; in a development build the copy the build made
// beside bin/ (an installed program finds <prefix>/share/doc/tavrel/guide first).
void MainWindowTest::helpOpensTheGuide() {
    Fixture f;
    frmMenu window(f.context, f.prompter, f.actions);
    QVERIFY(window.dispatch("mnuHelpTopic"));
    const QList<ScriptedPrompter::Call> opened = f.prompter.calls("openDocument");
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().text,
             QFileInfo(QString(TAVREL_BIN_DIR "/../doc/guide/index.html")).canonicalFilePath());
}

// Spreadsheet... asks where to save (the body template's name proposed), writes the format the
// chosen name ends in, and hands the file to the desktop.
void MainWindowTest::spreadsheetAsksThenWritesAndOpens() {
    Fixture f;
    QFile::remove(f.templatePath("Classic Customer.cst"));
    QVERIFY(QFile::copy(testsupport::sourcePath("resources/Print Templates/Classic Customer.cst"),
                        f.templatePath("Classic Customer.cst")));
    frmMenu window(f.context, f.prompter, f.actions);
    const QString csv = f.dir.filePath("items.csv");
    f.prompter.queueFile(csv);
    QVERIFY(window.dispatch("cmdSpreadsheet"));
    QCOMPARE(f.prompter.calls("saveFile").first().file.fileName,
             QString("Classic CustomerCst.xlsx"));
    QVERIFY(f.prompter.messages().isEmpty());
    const QByteArray bytes = testsupport::readBytes(csv);
    QCOMPARE(bytes.left(bytes.indexOf("\r\n")),
             QByteArray("\xEF\xBB\xBFPart Number,Part Description,Option,Option "
                        "Description,Note,Note Description,Mfg,Qty,"
                        "List$,EXT List$,Cust$,EXT Cust$"));
    const QList<ScriptedPrompter::Call> opened = f.prompter.calls("openDocument");
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().text, csv);
    QVERIFY(f.actions.calls.isEmpty());
}

TAVREL_TEST(MainWindowTest)
#include "MainWindowTest.moc"

#include "shell/JobFile.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "shell/PrintCheck.h"
#include "spec/FieldCatalog.h"
#include "templates/PrintSelection.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// The job model: each key's reading rule, the print selection with its written-back defaults,
// and writes that update both the file and the model.
class JobFileTest : public QObject {
    Q_OBJECT

private slots:
    void fieldLengths_data();
    void fieldLengths();
    void writeFieldLengths();
    void labelForCaption_data();
    void labelForCaption();
    void defaultsAreWrittenBack();
    void storedValuesAreKept();
    void failedWriteBackTurnsFlagsOff();
    void checkShowsExclamation();
    void templateFolder_data();
    void templateFolder();
    void writesUpdateTheModel();
};

void JobFileTest::fieldLengths_data() {
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("label");

    QTest::newRow("length and label")
        << QByteArray("[Printer]\nPN=12,Part No.\n") << "PN" << 12 << "Part No.";
    QTest::newRow("zero accepted") << QByteArray("[Printer]\nPN=0\n") << "PN" << 0 << "";
    QTest::newRow("empty keeps built-in") << QByteArray("[Printer]\nPN=\n") << "PN" << 16 << "";
    QTest::newRow("missing keeps built-in") << QByteArray("[Printer]\n") << "PN" << 16 << "";
    QTest::newRow("not a number keeps built-in")
        << QByteArray("[Printer]\nPN=abc,Lbl\n") << "PN" << 16 << "Lbl";
    QTest::newRow("beyond 16 bits keeps built-in")
        << QByteArray("[Printer]\nPN=99999,x\n") << "PN" << 16 << "x";
    QTest::newRow("several commas")
        << QByteArray("[Printer]\nPN= 20 , Part , No. \n") << "PN" << 20 << "Part , No.";
    QTest::newRow("other section ignored") << QByteArray("[Other]\nPN=3\n") << "PN" << 16 << "";
    QTest::newRow("order type length from quantity key")
        << QByteArray("[Printer]\nQT=7,Qty\nOT=30,Order\n") << "OT" << 7 << "Order";
    QTest::newRow("order type without quantity key")
        << QByteArray("[Printer]\nOT=30,Order\n") << "OT" << 50 << "Order";
    QTest::newRow("quantity itself") << QByteArray("[Printer]\nQT=7,Qty\n") << "QT" << 7 << "Qty";
    QTest::newRow("label trimmed")
        << QByteArray("[Printer]\nPN=12, Part No. \n") << "PN" << 12 << "Part No.";
    QTest::newRow("no comma, no label") << QByteArray("[Printer]\nPD=34\n") << "PD" << 34 << "";
    QTest::newRow("key not in the job, no label")
        << QByteArray("[Printer]\nPN=12,Part No.\n") << "ED" << 60 << "";
}

void JobFileTest::fieldLengths() {
    QFETCH(QByteArray, ini);
    QFETCH(QString, code);
    QFETCH(int, length);
    QFETCH(QString, label);
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, ini);
    const FieldLengths lengths = JobFile::load(jobFile).fieldLengths(FieldLengths::builtIn());
    QCOMPARE(lengths.length(code), length);
    QCOMPARE(lengths.label(code), label);
}

void JobFileTest::writeFieldLengths() {
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, "[Printer]\r\nTempPrintDocument=job.sif\r\nPN=5,Old\r\n"
                                     "[User Preferences]\r\nCompany Name=Orvanta\r\n");
    FieldLengths lengths = FieldLengths::builtIn();
    lengths.setLength(QStringLiteral("PN"), 18);
    lengths.setLabel(QStringLiteral("PN"), QStringLiteral("Part No."));
    lengths.setLength(QStringLiteral("OT"), 40);
    JobFile job = JobFile::load(jobFile);
    job.writeFieldLengths(lengths);
    const QString message = testsupport::compareWithGolden(
        testsupport::readBytes(jobFile), QStringLiteral("spec/field-lengths-written.ini"));
    QVERIFY2(message.isEmpty(), qPrintable(message));

    // The model follows the write, and reads the file as a fresh start would.
    for (const JobFile &model : {job, JobFile::load(jobFile)}) {
        const FieldLengths reread = model.fieldLengths(FieldLengths::builtIn());
        QCOMPARE(reread.length(QStringLiteral("PN")), 18);
        QCOMPARE(reread.label(QStringLiteral("PN")), QStringLiteral("Part No."));
        // The order type is written under its own key but read from the quantity key.
        QCOMPARE(reread.length(QStringLiteral("OT")), 5);
    }
}

void JobFileTest::labelForCaption_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("label");
    QTest::newRow("item caption") << QStringLiteral("Part Number") << QStringLiteral("Part No.");
    QTest::newRow("generic code reads CG")
        << QStringLiteral("Generic Code") << QStringLiteral("Generic");
    QTest::newRow("catalog spelling")
        << QStringLiteral("Table of Contensts") << QStringLiteral("TOC");
    QTest::newRow("correct spelling is no caption")
        << QStringLiteral("Table of Contents") << QString();
    QTest::newRow("total caption has no label") << QStringLiteral("Total Weight") << QString();
    QTest::newRow("value without comma") << QStringLiteral("Part Description") << QString();
}

void JobFileTest::labelForCaption() {
    QFETCH(QString, caption);
    QFETCH(QString, label);
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, "[Printer]\nPN=12,Part No.\nCG=8, Generic\nTC=10,TOC\n"
                                     "GC=5,Wrong\nPD=34\nTW=9,Weight\n");
    const FieldLengths lengths = JobFile::load(jobFile).fieldLengths(FieldLengths::builtIn());
    QCOMPARE(lengths.label(FieldCatalog::codeForCaption(caption)), label);
}

void JobFileTest::defaultsAreWrittenBack() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[User Preferences]\r\nCompany Name=Acme\r\n");
    JobFile model = JobFile::load(job);
    const ReportSelection state = model.reportSelection(QStringLiteral("/opt/t"));
    QCOMPARE(state.templates[0], QStringLiteral("/opt/t/Classic.cov"));
    QCOMPARE(state.templates[1], QStringLiteral("/opt/t/Classic Customer.cst"));
    QCOMPARE(state.templates[2], QStringLiteral("/opt/t/Classic Customer.sum"));
    QCOMPARE(state.printable[0], QStringLiteral("1"));
    QCOMPARE(state.printable[1], QStringLiteral("1"));
    QCOMPARE(state.printable[2], QStringLiteral("1"));
    // Read again, the selection is what was written, and nothing more is written.
    const QByteArray written = testsupport::readBytes(job);
    QCOMPARE(model.reportSelection(QStringLiteral("/elsewhere")), state);
    QCOMPARE(testsupport::readBytes(job), written);
    const QString mismatch = testsupport::compareWithGolden(
        testsupport::readBytes(job), QStringLiteral("templates/defaults-written.ini"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void JobFileTest::storedValuesAreKept() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    const QByteArray before = "[Printer]\r\nCover Template=a.cov\r\nBody Template=b.cst\r\n"
                              "Summary Template=c.sum\r\nCover Printable=0\r\n"
                              "Body Printable=False\r\nSummary Printable=1\r\n";
    testsupport::writeBytes(job, before);
    JobFile model = JobFile::load(job);
    const ReportSelection state = model.reportSelection(dir.path());
    QCOMPARE(state.templates[0], QStringLiteral("a.cov"));
    QCOMPARE(state.printable[1], QStringLiteral("False")); // taken as it stands
    QCOMPARE(model.storedSelection(dir.path()), state);
    QCOMPARE(testsupport::readBytes(job), before); // nothing written
}

void JobFileTest::failedWriteBackTurnsFlagsOff() {
    // A job file in a folder that does not exist: nothing can be written back, so the second
    // read finds the flags still empty and turns them to "0".
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("gone/job.ini"));
    JobFile model = JobFile::load(job);
    const ReportSelection state = model.reportSelection(QStringLiteral("/t"));
    QCOMPARE(state.templates[0], QStringLiteral("/t/Classic.cov"));
    QCOMPARE(state.printable[0], QStringLiteral("0"));
    QCOMPARE(state.printable[1], QStringLiteral("0"));
    QCOMPARE(state.printable[2], QStringLiteral("0"));
    QCOMPARE(PrintSelection::checkMessage(state),
             QStringLiteral("At least select one item to be printable."));
    QVERIFY(!QDir(dir.filePath(QStringLiteral("gone"))).exists());
}

void JobFileTest::checkShowsExclamation() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[Printer]\r\nBody Template=missing.cst\r\n");
    ScriptedPrompter prompter;
    JobFile model = JobFile::load(job);
    QVERIFY(!checkPrintState(model, dir.path(), prompter));
    QCOMPARE(prompter.calls().size(), 1);
    const ScriptedPrompter::Call &call = prompter.calls().first();
    QCOMPARE(call.text, QStringLiteral("Cover Page Template Not Found."));
    QCOMPARE(call.title, QString());
    QCOMPARE(call.icon, MessageIcon::Exclamation);
    QCOMPARE(call.buttons, MessageButtons::Ok);
    // The defaults stay written even though the check failed.
    QCOMPARE(ReadIniValue(QStringLiteral("Printer"), QStringLiteral("Summary Printable"), job),
             QStringLiteral("1"));
    QCOMPARE(ReadIniValue(QStringLiteral("Printer"), QStringLiteral("Body Template"), job),
             QStringLiteral("missing.cst"));

    // With the Classic templates beside the executables the defaults print.
    const QString classic =
        QStringLiteral(TAVREL_SOURCE_DIR) + QStringLiteral("/resources/Print Templates");
    const QString fresh = dir.filePath(QStringLiteral("fresh.ini"));
    prompter.clear();
    JobFile freshModel = JobFile::load(fresh);
    QVERIFY(checkPrintState(freshModel, classic, prompter));
    QVERIFY(prompter.calls().isEmpty());
}

void JobFileTest::templateFolder_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected"); // "@" stands for the job's folder, "!" for the exe's
    QTest::newRow("empty") << QByteArray("") << "!/Print Templates";
    QTest::newRow("missing") << QByteArray() << "!/Print Templates";
    QTest::newRow("absolute") << QByteArray("/srv/t/") << "/srv/t";
    QTest::newRow("relative with backslashes")
        << QByteArray("sub\\Print Templates") << "@/sub/Print Templates";
    QTest::newRow("dot dot") << QByteArray("../t") << "@/../t";
}

void JobFileTest::templateFolder() {
    QFETCH(QByteArray, value);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("jobs"));
    QDir().mkpath(folder);
    const QString job = folder + QStringLiteral("/job.ini");
    testsupport::writeBytes(job, value.isNull()
                                     ? QByteArray("[Printer]\r\n")
                                     : "[Printer]\r\nTemplate Directory=" + value + "\r\n");
    expected.replace(QLatin1Char('@'), folder);
    expected.replace(QLatin1Char('!'), QStringLiteral("/exe"));
    QCOMPARE(JobFile::load(job).templateFolder(QStringLiteral("/exe")), QDir::cleanPath(expected));
}

void JobFileTest::writesUpdateTheModel() {
    // What the windows write is what every later reader of the model sees, without the file
    // being read again, and a failed write leaves the model as it was.
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(path, "[Printer]\r\nShowLabel=\r\nLine BorderStyle=9\r\n");
    JobFile job = JobFile::load(path);
    QCOMPARE(job.designerPreferences().showLabel, true); // present but empty: true
    QCOMPARE(job.designerPreferences().lineBorderStyle, qint16(4));
    job.writeDesignerSwitch(DesignerSwitch::ShowLabel, false);
    job.writeLineBorderColor(255);
    job.writePageLayout(2);
    QCOMPARE(job.designerPreferences().showLabel, false);
    QCOMPARE(job.designerPreferences().lineBorderColor, 255u);
    QCOMPARE(IniFile::load(path).value(QStringLiteral("Printer"), QStringLiteral("PageLayout")),
             QStringLiteral("2"));

    QVERIFY(QFile::remove(path));
    QVERIFY(QDir().mkdir(path)); // a folder in the file's place: the write must fail
    QVERIFY_THROWS_EXCEPTION(RuntimeError,
                             job.writeDesignerSwitch(DesignerSwitch::ShowLabel, true));
    QCOMPARE(job.designerPreferences().showLabel, false);
}

TAVREL_TEST(JobFileTest)
#include "JobFileTest.moc"

#include "base/IniFile.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/ExportTestFiles.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace tavrel;

namespace {

constexpr int CliTimeout = 120000;

struct Run {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

Run runCli(const QStringList &args) {
    QProcess process;
    process.start(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"), args);
    Run run;
    if (!process.waitForFinished(CliTimeout)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

// A job of its own in folder: items numbered prefix + "-1", ..., so that a page tells which job
// it came from; the body is printed alone, so the export's base name is the same for all.
QString writeMarkedJob(const QString &folder, const QByteArray &prefix, int items) {
    QDir().mkpath(folder);
    const QString job = exporttest::writeJob(folder, 1, {false, true, false});
    QByteArray sif = "SF=Harbor Point Offices.sp4\r\nST=Concurrent\r\n";
    for (int i = 1; i <= items; ++i)
        sif += "PN=" + prefix + "-" + QByteArray::number(i) +
               "\r\nPD=Desk\r\nMC=LWS\r\nQT=1\r\n"
               "PL=10.00\r\nSP=6.00\r\n";
    testsupport::writeBytes(QDir(folder).filePath(QStringLiteral("job.sif")), sif);
    return job;
}

// Starts the renders at once and waits for all; answers the exit codes.
QList<int> runTogether(const QList<QStringList> &renders) {
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QStringList &args : renders) {
        auto process = std::make_unique<QProcess>();
        process->start(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"), args);
        processes.push_back(std::move(process));
    }
    QList<int> codes;
    for (auto &process : processes) {
        if (!process->waitForFinished(CliTimeout)) {
            process->kill();
            process->waitForFinished();
            codes << -1;
            continue;
        }
        if (process->exitCode() != 0)
            qWarning("%s", process->readAllStandardError().constData());
        codes << process->exitCode();
    }
    return codes;
}

} // namespace

// The command line as scripts use it: it refuses what a direct print run refuses, with the same
// texts as check-print, and renders into one target from several processes at once without
// mixing their results.
class ExportCliTest : public QObject {
    Q_OBJECT

private slots:
    void refusals_data();
    void refusals();
    void concurrentPdfRenders();
    void concurrentHtmlExports();
};

void ExportCliTest::refusals_data() {
    QTest::addColumn<QStringList>("keys"); // key=value pairs of section "Printer"
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("message");

    const QStringList none;
    QTest::newRow("all templates left out")
        << none << QStringList{"--cover", "none", "--body", "none", "--summary", "none"}
        << QByteArray("No valid templates selected.\nGo to \"Custom Layout Setup\"  to select a "
                      "valid template.\n");
    QTest::newRow("nothing printable")
        << QStringList{"Cover Printable=0", "Body Printable=0", "Summary Printable=0"} << none
        << QByteArray("At least select one item to be printable.\n");
    QTest::newRow("templates folder gone")
        << QStringList{"Template Directory=@DIR@/gone",
                       "Cover Template=", "Body Template=", "Summary Template="}
        << none << QByteArray("Cover Page Template Not Found.\n");
    QTest::newRow("cover missing") << QStringList{"Cover Template=@DIR@/nowhere.cov"} << none
                                   << QByteArray("Cover Page Template Not Found.\n");
    QTest::newRow("cover missing, not printable")
        << QStringList{"Cover Template=@DIR@/nowhere.cov", "Cover Printable=0"} << none
        << QByteArray("Cover Page Template Not Found.\n");
    QTest::newRow("body missing") << QStringList{"Body Template=@DIR@/nowhere.cst"} << none
                                  << QByteArray("Custom Template Not Found.\n");
    QTest::newRow("summary missing") << QStringList{"Summary Template=@DIR@/nowhere.sum"} << none
                                     << QByteArray("Summary Template Not Found.\n");
    QTest::newRow("fine") << none << none << QByteArray();
}

void ExportCliTest::refusals() {
    QFETCH(QStringList, keys);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, message);
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 3, {true, true, true});
    for (const QString &pair : keys) {
        const qsizetype equals = pair.indexOf(QLatin1Char('='));
        QString value = pair.mid(equals + 1);
        value.replace(QStringLiteral("@DIR@"), dir.path());
        IniFile::write(jobFile, QStringLiteral("Printer"), {{pair.left(equals), value}});
    }
    // check-print writes its defaults back; render gets the job file as it was.
    const QString checkJob = dir.filePath(QStringLiteral("check.ini"));
    QVERIFY(QFile::copy(jobFile, checkJob));

    const QString dump = dir.filePath(QStringLiteral("layout.json"));
    const Run render = runCli(
        QStringList{QStringLiteral("render"), jobFile, QStringLiteral("--dump"), dump} + options);
    if (message.isEmpty()) {
        QVERIFY2(render.status == 0, render.err.constData());
        QVERIFY(QFile::exists(dump));
    } else {
        QCOMPARE(render.err, message);
        QCOMPARE(render.status, 1);
        QVERIFY(render.out.isEmpty());
        QVERIFY(!QFile::exists(dump)); // nothing laid out
    }
    if (!options.isEmpty())
        return; // check-print knows only the job file's selection
    const Run check = runCli({QStringLiteral("check-print"), checkJob});
    QCOMPARE(check.out, message.isEmpty() ? QByteArray("OK\n") : message);
    QCOMPARE(check.status, render.status);
}

// Renders of two jobs into one PDF at once: each process writes its own file beside the target
// and renames it over, so the PDF is always one job's whole document.
void ExportCliTest::concurrentPdfRenders() {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("poppler-utils (pdftotext) not installed");
    QTemporaryDir dir;
    const QString small = writeMarkedJob(dir.filePath(QStringLiteral("a")), "AAA", 3);
    const QString large = writeMarkedJob(dir.filePath(QStringLiteral("b")), "BBB", 60);
    const QString pdf = dir.filePath(QStringLiteral("out/report.pdf"));
    QDir().mkpath(dir.filePath(QStringLiteral("out")));
    for (int round = 0; round < 3; ++round) {
        QList<QStringList> renders;
        for (int i = 0; i < 4; ++i)
            renders << QStringList{QStringLiteral("render"), i % 2 ? large : small,
                                   QStringLiteral("--pdf"), pdf};
        QCOMPARE(runTogether(renders), (QList<int>{0, 0, 0, 0}));
        QProcess text;
        text.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
        QVERIFY(text.waitForFinished(CliTimeout));
        QCOMPARE(text.exitCode(), 0);
        const QByteArray content = text.readAllStandardOutput();
        const bool a = content.contains("AAA-");
        const bool b = content.contains("BBB-");
        QVERIFY2(a != b, "the PDF holds pages of both jobs");
        if (b)
            QVERIFY(content.contains("BBB-60"));
        else
            QVERIFY(content.contains("AAA-3"));
        QCOMPARE(QDir(dir.filePath(QStringLiteral("out"))).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("report.pdf")});
    }
}

// HTML exports of two jobs (1 page and several) into one folder at once: the folder is left
// with one job's whole page set, every page of the same count and job, and nothing else.
void ExportCliTest::concurrentHtmlExports() {
    QTemporaryDir dir;
    const QString small = writeMarkedJob(dir.filePath(QStringLiteral("a")), "AAA", 3);
    const QString large = writeMarkedJob(dir.filePath(QStringLiteral("b")), "BBB", 60);
    const QDir out(dir.filePath(QStringLiteral("html")));
    const QRegularExpression pageOf(QStringLiteral("Page (\\d+) of (\\d+)"));
    for (int round = 0; round < 3; ++round) {
        QList<QStringList> renders;
        for (int i = 0; i < 4; ++i)
            renders << QStringList{QStringLiteral("render"), (i + round) % 2 ? large : small,
                                   QStringLiteral("--html"), out.path(),
                                   QStringLiteral("--no-open")};
        QCOMPARE(runTogether(renders), (QList<int>{0, 0, 0, 0}));
        const QStringList files =
            out.entryList(QDir::Files | QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot);
        QVERIFY(!files.isEmpty());
        QSet<QByteArray> jobs;
        for (const QString &name : files) {
            QVERIFY2(name.endsWith(QLatin1String(".htm")), qPrintable(name));
            const QByteArray page = testsupport::readBytes(out.filePath(name));
            const QRegularExpressionMatch counter = pageOf.match(QString::fromLatin1(page));
            QVERIFY2(counter.hasMatch(), qPrintable(name));
            QCOMPARE(counter.captured(2).toInt(), int(files.size()));
            const QString expected =
                files.size() == 1
                    ? QStringLiteral("Classic CustomerCst.htm")
                    : QStringLiteral("Classic CustomerCst%1.htm").arg(counter.captured(1));
            QCOMPARE(name, expected);
            if (page.contains("AAA-"))
                jobs.insert("AAA");
            if (page.contains("BBB-"))
                jobs.insert("BBB");
        }
        QCOMPARE(jobs.size(), 1);
    }
}

TAVREL_TEST(ExportCliTest)
#include "ExportCliTest.moc"

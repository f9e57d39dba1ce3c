#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// Inputs nobody should send, run through the whole command-line pipeline (start-up, readers,
// renderers, PDF). Each must end in a report or a clear message, never in a crash. Sizes are
// scaled for a Debug build where noted; bench_million runs the full million items.

namespace {

constexpr qint32 Inch = 1440;

struct RunResult {
    QProcess::ExitStatus status = QProcess::CrashExit;
    int exitCode = -1;
    QString errors;
    QByteArray pdf;
};

class HostileJob {
public:
    HostileJob() { m_sif = m_dir.filePath(QStringLiteral("spec.sif")); }

    QString path(const QString &name) const { return m_dir.filePath(name); }

    void writeSif(const QByteArray &bytes) const { testsupport::writeBytes(m_sif, bytes); }

    // Runs "render" with only the named sections printed (others "none").
    RunResult render(const QString &cover, const QString &body, const QString &summary) const {
        writeJobFile();
        const QString pdf = path(QStringLiteral("out.pdf"));
        QFile::remove(pdf);
        QProcess process;
        process.setProgram(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"));
        process.setArguments({QStringLiteral("render"), path(QStringLiteral("job.ini")),
                              QStringLiteral("--cover"), orNone(cover), QStringLiteral("--body"),
                              orNone(body), QStringLiteral("--summary"), orNone(summary),
                              QStringLiteral("--pdf"), pdf, QStringLiteral("--no-open")});
        process.start();
        RunResult result;
        if (!process.waitForFinished(120000)) {
            process.kill();
            process.waitForFinished();
            result.errors = QStringLiteral("timed out");
            return result;
        }
        result.status = process.exitStatus();
        result.exitCode = process.exitCode();
        result.errors = QString::fromUtf8(process.readAllStandardError());
        if (QFile::exists(pdf))
            result.pdf = testsupport::readBytes(pdf);
        return result;
    }

private:
    QTemporaryDir m_dir;
    QString m_sif;

    static QString orNone(const QString &templatePath) {
        return templatePath.isEmpty() ? QStringLiteral("none") : templatePath;
    }

    void writeJobFile() const {
        const QString templates =
            testsupport::sourcePath(QStringLiteral("resources/Print Templates"));
        const QByteArray text = QStringLiteral("[Printer]\r\nTempPrintDocument=%1\r\n"
                                               "ActiveDocument=Hostile.sp4\r\n"
                                               "Template Directory=%2\r\nFunction=1\r\n"
                                               "MarginLeft=500\r\nMarginRight=500\r\n"
                                               "MarginTop=500\r\nMarginBottom=500\r\n")
                                    .arg(m_sif, templates)
                                    .toUtf8();
        testsupport::writeBytes(path(QStringLiteral("job.ini")), text);
    }
};

QString classic(const QString &name) {
    return testsupport::sourcePath(QStringLiteral("resources/Print Templates/") + name);
}

QByteArray items(int count, int optionsEach = 0, int descriptionLength = 0) {
    QByteArray sif = "ST=Hostile\r\nDT=01/15/2025\r\n";
    sif.reserve(count * (80 + optionsEach * 24) + descriptionLength);
    for (int i = 1; i <= count; ++i) {
        sif += "PN=P" + QByteArray::number(i) + "\r\nPD=";
        sif += descriptionLength > 0 ? QByteArray(descriptionLength, 'w').replace(7, 1, " ")
                                     : "Desk " + QByteArray::number(i);
        sif += "\r\nMC=ACM\r\nQT=2\r\nPL=100.50\r\nSP=60.25\r\n";
        for (int o = 1; o <= optionsEach; ++o)
            sif +=
                "ON=O" + QByteArray::number(o) + "\r\nOD=Option " + QByteArray::number(o) + "\r\n";
    }
    return sif;
}

// Every box, line and rectangle slot in use, spread from far left/above the page to far beyond
// its right and bottom edges.
TemplateLayout everySlotFilled() {
    TemplateLayout layout;
    const char *captions[] = {"Part Number", "Part Description", "Qty",         "List$",
                              "Title",       "Report Date",      "Total List$", "Page n of  m"};
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        BoxInfo &box = layout.box(slot);
        box.index = qint16(slot);
        box.placed = box.visible = true;
        box.caption = QLatin1String(captions[slot % 8]);
        box.container = slot % 3 == 0 ? QStringLiteral("Header") : QStringLiteral("MainPort");
        box.body = slot % 3 != 0;
        box.fontName = QStringLiteral("Arial");
        box.fontSize = qint16(slot % 40);
        box.left = (slot % 7 - 3) * 400 * Inch;
        box.top = (slot % 5 - 2) * 300 * Inch;
        box.width = slot * Inch;
        box.height = (slot % 4) * Inch;
        box.level = qint16(slot % 6);
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        LineInfo &line = layout.line(slot);
        line.placed = line.visible = true;
        line.left = -slot * 1000 * Inch;
        line.width = slot * 2000 * Inch;
        line.top = line.lineY = slot * 50 * Inch;
        line.height = 15;
    }
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        PrintRect &rect = layout.rect(slot);
        rect.rectPlaced = rect.rectVisible = true;
        rect.rectIndex = qint16(slot);
        rect.rectLeft = float(-slot * 100 * Inch);
        rect.rectTop = float(slot * 200 * Inch);
        rect.rectWidth = rect.rectHeight = float(slot * 300 * Inch);
        rect.rectRight = rect.rectLeft + rect.rectWidth;
        rect.rectBottom = rect.rectTop + rect.rectHeight;
    }
    return layout;
}

// Every hostile run ends normally with a PDF; a failure on the way shows as one error report.
void expectReportAndPdf(const RunResult &result, const QString &report) {
    QCOMPARE(result.status, QProcess::NormalExit);
    QVERIFY2(result.exitCode == 0, qPrintable(result.errors));
    QVERIFY2(result.pdf.startsWith("%PDF"), qPrintable(result.errors));
    const qsizetype reports = result.errors.count(QStringLiteral("Tavrel - Error: "));
    if (report.isEmpty()) {
        QVERIFY2(reports == 0, qPrintable(result.errors));
    } else {
        QVERIFY2(reports == 1, qPrintable(result.errors));
        QVERIFY2(result.errors.contains(QStringLiteral("Tavrel - Error: ") + report),
                 qPrintable(result.errors));
    }
}

QString writeTemplate(const HostileJob &job, const QString &name, const TemplateLayout &layout) {
    const QString path = job.path(name);
    TemplateWriter::write(path, layout, QStringLiteral("Hostile template"));
    return path;
}

} // namespace

class HostileInputTest : public QObject {
    Q_OBJECT

private slots:
    void largeSpecificationsRender_data();
    void largeSpecificationsRender();
    void templateWithEverySlotFilled();
    void badPicturesStillRender_data();
    void badPicturesStillRender();
    void nonNumericChargeIsReported();
};

void HostileInputTest::largeSpecificationsRender_data() {
    QTest::addColumn<QByteArray>("sif");
    QTest::addColumn<QString>("report"); // the start of the error report, or empty for none
    // A million items runs in bench_million; 20,000 keeps a Debug run within seconds.
    QTest::newRow("20,000 items") << items(20000) << QString();
    QTest::newRow("one 200 KB description") << items(1, 0, 200 * 1024) << QString();
    QTest::newRow("10,000 options under one item") << items(1, 10000) << QString();
    QTest::newRow("item lines before any part number")
        << QByteArray("PD=orphan\r\nPN=A\r\n")
        << QStringLiteral("An Error Occured at - Load Sif.\n\nError Number: 9\n");
    QTest::newRow("binary noise, overflowing quantity")
        << QByteArray("PN=\x00\xff\x80\r\nQT=1e400\r\n",
                      sizeof("PN=\x00\xff\x80\r\nQT=1e400\r\n") - 1)
        << QStringLiteral("An Error Occured at - Load Sif.\n\nError Number: 6\n");
}

void HostileInputTest::largeSpecificationsRender() {
    QFETCH(QByteArray, sif);
    HostileJob job;
    job.writeSif(sif);
    const RunResult result = job.render({}, classic(QStringLiteral("Classic Customer.cst")), {});
    QCOMPARE(result.status, QProcess::NormalExit);
    // Either a PDF, or a refusal that names what failed through the error report.
    if (result.exitCode == 0)
        QVERIFY2(result.pdf.startsWith("%PDF"), qPrintable(result.errors));
    else
        QVERIFY2(result.errors.contains(QStringLiteral("Error Number:")),
                 qPrintable(result.errors));
}

void HostileInputTest::templateWithEverySlotFilled() {
    HostileJob job;
    job.writeSif(items(50, 2));
    const QString body = writeTemplate(job, QStringLiteral("full.cst"), everySlotFilled());
    const QString cover = writeTemplate(job, QStringLiteral("full.cov"), everySlotFilled());
    const QString summary = writeTemplate(job, QStringLiteral("full.sum"), everySlotFilled());
    expectReportAndPdf(job.render(cover, body, summary), {});
}

void HostileInputTest::badPicturesStillRender_data() {
    QTest::addColumn<QString>("logo");
    QTest::addColumn<QString>("report");
    // A picture that is not there (or is a folder) is skipped silently; one that is there but
    // cannot be loaded is reported by the page's procedure and the page goes on without it.
    QTest::newRow("a folder") << QStringLiteral("folder") << QString();
    QTest::newRow("a missing file") << QStringLiteral("missing.png") << QString();
    QTest::newRow("a 1-byte PNG") << QStringLiteral("tiny.png")
                                  << QStringLiteral("An Error Occured at - Cover Page Preview.\n\n"
                                                    "Error Number: 481\n");
}

void HostileInputTest::badPicturesStillRender() {
    QFETCH(QString, logo);
    QFETCH(QString, report);
    HostileJob job;
    job.writeSif(items(3));
    QVERIFY(QDir().mkpath(job.path(QStringLiteral("folder"))));
    testsupport::writeBytes(job.path(QStringLiteral("tiny.png")), QByteArray("\x89", 1));
    TemplateLayout layout;
    BoxInfo &box = layout.box(1);
    box.index = 1;
    box.placed = box.visible = true;
    box.caption = QStringLiteral("Logo");
    box.logo = true;
    box.logoFile = job.path(logo);
    box.width = box.height = 2 * Inch;
    const QString cover = writeTemplate(job, QStringLiteral("logo.cov"), layout);
    expectReportAndPdf(job.render(cover, {}, {}), report);
}

void HostileInputTest::nonNumericChargeIsReported() {
    HostileJob job;
    job.writeSif(items(3));
    testsupport::writeBytes(job.path(QStringLiteral("Hostile.cif")),
                            "[CIF V4]\r\nA1=twelve\r\nA1N=Freight\r\nDE=lots\r\n");
    // The sum meets a type mismatch; the summary page reports it and the job still ends in a PDF.
    expectReportAndPdf(job.render({}, {}, classic(QStringLiteral("Classic Customer.sum"))),
                       QStringLiteral("An Error Occured at - Summary Page Preview.\n\n"
                                      "Error Number: 13\n"));
}

TAVREL_TEST(HostileInputTest)
#include "HostileInputTest.moc"

#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// Inputs far beyond anything a page can show, rendered by the command-line tool under a limit
// on its address space (as a small machine would impose): the run ends normally, and what can
// print is in the PDF.

namespace {

constexpr qint32 Inch = 1440;
// The address space the renders below may use. The tool itself (Qt, fonts, libraries) maps
// about half of it; the inputs need far more than the rest when held or laid out whole.
constexpr int AddressSpaceLimitKb = 1000 * 1024;

struct Run {
    QProcess::ExitStatus status = QProcess::CrashExit;
    int exitCode = -1;
    QString errors;
};

class LimitedJob {
public:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    // "render JOB --body BODY --pdf out.pdf", under `ulimit -v`.
    Run render(const QString &body) const {
        const QString templates =
            testsupport::sourcePath(QStringLiteral("resources/Print Templates"));
        testsupport::writeBytes(path(QStringLiteral("job.ini")),
                                QStringLiteral("[Printer]\r\nTempPrintDocument=%1\r\n"
                                               "ActiveDocument=Huge.sp4\r\n"
                                               "Template Directory=%2\r\nFunction=1\r\n")
                                    .arg(path(QStringLiteral("spec.sif")), templates)
                                    .toUtf8());
        QProcess process;
        process.setProgram(QStringLiteral("/bin/sh"));
        process.setArguments(
            {QStringLiteral("-c"),
             QStringLiteral("ulimit -v %1 && exec \"$0\" \"$@\"").arg(AddressSpaceLimitKb),
             QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"), QStringLiteral("render"),
             path(QStringLiteral("job.ini")), QStringLiteral("--cover"), QStringLiteral("none"),
             QStringLiteral("--body"), body, QStringLiteral("--summary"), QStringLiteral("none"),
             QStringLiteral("--pdf"), path(QStringLiteral("out.pdf")),
             QStringLiteral("--no-open")});
        process.start();
        Run run;
        if (!process.waitForFinished(300000)) {
            process.kill();
            process.waitForFinished();
            run.errors = QStringLiteral("timed out");
            return run;
        }
        run.status = process.exitStatus();
        run.exitCode = process.exitCode();
        run.errors = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    // pdftotext's text or pdfimages' list of the images drawn.
    QString pdfTool(const QString &tool) const {
        const QString pdf = path(QStringLiteral("out.pdf"));
        QProcess process;
        process.start(tool, tool == QLatin1String("pdfimages")
                                ? QStringList{QStringLiteral("-list"), pdf}
                                : QStringList{pdf, QStringLiteral("-")});
        process.waitForFinished(60000);
        return QString::fromUtf8(process.readAllStandardOutput());
    }

private:
    QTemporaryDir m_dir;
};

quint32 crc32(const QByteArray &bytes) {
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320 & (0 - (crc & 1)));
    }
    return ~crc;
}

QByteArray bigEndian(quint32 value) {
    const char bytes[] = {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
    return QByteArray(bytes, 4);
}

QByteArray chunk(const char *type, const QByteArray &data) {
    const QByteArray typed = QByteArray(type) + data;
    return bigEndian(quint32(data.size())) + typed + bigEndian(crc32(typed));
}

// A one-colour RGB PNG of side x side pixels, written directly: Qt's own writer takes seconds
// for a picture this large, deflating the rows a fraction of one.
QByteArray solidPng(int side, QRgb colour) {
    QByteArray row(1 + 3 * side, '\0');
    for (int x = 0; x < side; ++x) {
        row[1 + 3 * x] = char(qRed(colour));
        row[2 + 3 * x] = char(qGreen(colour));
        row[3 + 3 * x] = char(qBlue(colour));
    }
    const QByteArray zlib = qCompress(row.repeated(side)).mid(4); // less Qt's length prefix
    const QByteArray header =
        bigEndian(quint32(side)) + bigEndian(quint32(side)) + QByteArray("\x08\x02\0\0\0", 5);
    return QByteArray("\x89PNG\r\n\x1a\n") + chunk("IHDR", header) + chunk("IDAT", zlib) +
           chunk("IEND", {});
}

QString writeBodyTemplate(const LimitedJob &job, const QStringList &captions,
                          const QString &imageSize) {
    TemplateLayout layout;
    int slot = 1;
    for (const QString &caption : captions) {
        BoxInfo &box = layout.box(slot);
        box.index = qint16(slot);
        box.placed = box.visible = true;
        box.body = true;
        box.container = QStringLiteral("MainPort");
        box.caption = caption;
        box.fontName = QStringLiteral("Arial");
        box.fontSize = 8;
        box.left = (slot - 1) * 3 * Inch;
        box.top = Inch;
        box.width = 3 * Inch;
        box.height = Inch / 4;
        ++slot;
    }
    layout.other.imageSize = imageSize;
    const QString path = job.path(QStringLiteral("body.cst"));
    TemplateWriter::write(path, layout, QStringLiteral("Huge input"));
    return path;
}

} // namespace

class HugeInputTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void twoHundredMegabyteLineRendersItsVisibleText();
    void bigPicturesAllPrintWithinTheLimit();
    void brokenItemPictureIsReportedOnceByName();
};

void HugeInputTest::initTestCase() {
#if defined(__SANITIZE_ADDRESS__)
    // The address sanitizer reserves terabytes of address space for its shadow memory, so no
    // program built with it can start under an address-space limit; the plain build runs these.
    QSKIP("address-space limits cannot apply to a sanitizer build");
#endif
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("poppler-utils not installed");
}

// One SIF line of 200 MB: the description's start prints; the rest of it cannot show on any
// page, and laying it out whole once crashed the tool.
void HugeInputTest::twoHundredMegabyteLineRendersItsVisibleText() {
    LimitedJob job;
    {
        QFile sif(job.path(QStringLiteral("spec.sif")));
        QVERIFY(sif.open(QIODevice::WriteOnly));
        sif.write("PN=HUGE-1\r\nPD=Opening words of a very long description ");
        const QByteArray block = QByteArray("lateral file cabinet ").repeated(50000);
        for (qint64 written = 0; written < 200 * 1000 * 1000; written += block.size())
            sif.write(block);
        sif.write("\r\nPN=AFTER-2\r\nPD=The item after it\r\n");
    }
    const Run run = job.render(writeBodyTemplate(
        job, {QStringLiteral("Part Number"), QStringLiteral("Part Description")}, {}));
    QCOMPARE(run.status, QProcess::NormalExit);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    const QString text = job.pdfTool(QStringLiteral("pdftotext"));
    for (const char *visible : {"HUGE-1", "Opening words of a very long description",
                                "lateral file cabinet", "AFTER-2", "The item after it"})
        QVERIFY2(text.contains(QLatin1String(visible)), visible);
}

// Five different 5600 x 5600 pictures (125 MB each when decoded whole) print at 10%: each is
// decoded at the size it prints, and every one of them is in the PDF.
void HugeInputTest::bigPicturesAllPrintWithinTheLimit() {
    if (QStandardPaths::findExecutable(QStringLiteral("pdfimages")).isEmpty())
        QSKIP("pdfimages not installed");
    LimitedJob job;
    constexpr int Pictures = 5;
    QByteArray sif;
    for (int i = 0; i < Pictures; ++i) {
        const QString name = QStringLiteral("picture%1.png").arg(i);
        const QRgb colour = QColor::fromHsv(i * 60, 200, 200).rgb();
        testsupport::writeBytes(job.path(name), solidPng(5600, colour));
        sif += "PN=PIC-" + QByteArray::number(i) + "\r\nIM=" + name.toUtf8() + "\r\n";
    }
    testsupport::writeBytes(job.path(QStringLiteral("spec.sif")), sif);
    const Run run = job.render(writeBodyTemplate(
        job, {QStringLiteral("Part Number"), QStringLiteral("Image")}, QStringLiteral("10%")));
    QCOMPARE(run.status, QProcess::NormalExit);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    QVERIFY2(!run.errors.contains(QStringLiteral("Error")), qPrintable(run.errors));
    // "pdfimages -list" prints two heading lines, then one line per image drawn.
    const QStringList images = job.pdfTool(QStringLiteral("pdfimages"))
                                   .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                                   .mid(2);
    QCOMPARE(images.size(), Pictures);
    const QString text = job.pdfTool(QStringLiteral("pdftotext"));
    for (int i = 0; i < Pictures; ++i)
        QVERIFY(text.contains(QStringLiteral("PIC-%1").arg(i)));
}

// Three items name the same damaged picture: the report comes once and names the file; the
// rows still print.
void HugeInputTest::brokenItemPictureIsReportedOnceByName() {
    LimitedJob job;
    testsupport::writeBytes(job.path(QStringLiteral("broken.png")), QByteArray("\x89PNG", 4));
    testsupport::writeBytes(job.path(QStringLiteral("spec.sif")),
                            "PN=A\r\nIM=broken.png\r\nPN=B\r\nIM=broken.png\r\n"
                            "PN=C\r\nIM=broken.png\r\n");
    const Run run = job.render(writeBodyTemplate(
        job, {QStringLiteral("Part Number"), QStringLiteral("Image")}, QStringLiteral("10%")));
    QCOMPARE(run.status, QProcess::NormalExit);
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    QCOMPARE(run.errors.count(QStringLiteral("Tavrel - Error: ")), 1);
    QVERIFY2(run.errors.contains(QStringLiteral("Tavrel - Error: An Error Occured at - Custom "
                                                "Preview.\n\nError Number: 481\nError "
                                                "Description: Invalid picture (") +
                                 job.path(QStringLiteral("broken.png")) + QLatin1Char(')')),
             qPrintable(run.errors));
    const QString text = job.pdfTool(QStringLiteral("pdftotext"));
    for (const char *row : {"A", "B", "C"})
        QVERIFY(text.contains(QLatin1String(row)));
}

TAVREL_TEST(HugeInputTest)
#include "HugeInputTest.moc"

#include "SampleDocument.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "print/PrinterOutput.h"
#include "render/ImageOutput.h"
#include "render/PdfOutput.h"

#include <QDir>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// Pages are also written here for a look by eye.
QString lookFolder() {
    const QString folder = QStringLiteral(TAVREL_BIN_DIR "/../render-look");
    QDir().mkpath(folder);
    return folder;
}

QString runTool(const QString &tool, const QStringList &args) {
    QProcess process;
    process.start(tool, args);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return QStringLiteral("<failed: %1>")
            .arg(QString::fromUtf8(process.readAllStandardError()));
    return QString::fromUtf8(process.readAllStandardOutput());
}

// pdfinfo's report on a PDF of the sample, once its two pages are checked: letter upright, then
// letter across.
QString checkedPdfInfo(const QString &pdf) {
    const QString info =
        runTool(QStringLiteral("pdfinfo"), {QStringLiteral("-f"), QStringLiteral("1"),
                                            QStringLiteral("-l"), QStringLiteral("2"), pdf});
    [&] {
        QVERIFY2(info.contains(QStringLiteral("Pages:           2")), qPrintable(info));
        QVERIFY2(info.contains(QStringLiteral("Page    1 size:  612 x 792 pts")), qPrintable(info));
        QVERIFY2(info.contains(QStringLiteral("Page    2 size:  792 x 612 pts")), qPrintable(info));
    }();
    return info;
}

} // namespace

class BackendTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void pdfHasPagesSizesAndText();
    void pngPagesAtAResolution();
    void printerReplaysThePages();

private:
    QTemporaryDir m_dir;
    PageEngine m_engine;
};

void BackendTest::initTestCase() {
    drawSampleDocument(m_engine, writeSamplePicture(m_dir.filePath(QStringLiteral("logo.png"))));
}

void BackendTest::pdfHasPagesSizesAndText() {
    const QString pdf = m_dir.filePath(QStringLiteral("sample.pdf"));
    QList<int> progress;
    writePdf(m_engine, pdf, [&](int page) { progress << page; });
    QCOMPARE(progress, (QList<int>{1, 2}));
    QFile::remove(lookFolder() + QStringLiteral("/sample.pdf"));
    QFile::copy(pdf, lookFolder() + QStringLiteral("/sample.pdf"));
    if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty() ||
        QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("poppler-utils (pdfinfo, pdftotext) not installed");

    const QString info = checkedPdfInfo(pdf);
    if (QTest::currentTestFailed())
        return;
    QVERIFY2(info.contains(QStringLiteral("Title:           Kestrium - OrvantaPrint")),
             qPrintable(info));

    // Selectable, searchable text, in the lines the engine broke it into.
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    QVERIFY2(text.contains(QStringLiteral("Harbor Point Offices")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("HMI-DESK-7230")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("$12,345.60")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("Option LCK: Keyed alike")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("Landscape page in Times New Roman")), qPrintable(text));
    // pdftotext rebuilds blanks from glyph positions, so the two blanks may read as one.
    QVERIFY2(text.contains(QRegularExpression(QStringLiteral("Page 2 of +2"))), qPrintable(text));

    const QString fonts = runTool(QStringLiteral("pdffonts"), {pdf});
    if (!fonts.startsWith(QLatin1String("<failed"))) {
        QVERIFY2(fonts.contains(QStringLiteral("LiberationSans")) &&
                     fonts.contains(QStringLiteral("LiberationSerif")),
                 qPrintable(fonts));
        // Every font is embedded: the "emb" column, fifth from the end, says "yes".
        const QStringList lines = fonts.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(2);
        for (const QString &line : lines) {
            const QStringList fields = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            QVERIFY2(fields.size() > 5 && fields.at(fields.size() - 5) == QLatin1String("yes"),
                     qPrintable(line));
        }
    }
}

void BackendTest::pngPagesAtAResolution() {
    const QStringList written = writePngPages(m_engine, lookFolder() + QStringLiteral("/png"), 96);
    QCOMPARE(written.size(), 2);
    const QImage first(written.at(0));
    QCOMPARE(first.size(), QSize(816, 1056));
    QCOMPARE(QImage(written.at(1)).size(), QSize(1056, 816));
    // The rectangle's fill (colour number 0xF0E0C0: red C0, green E0, blue F0).
    QCOMPARE(QColor(first.pixel(100, 460)), QColor(0xC0, 0xE0, 0xF0));
    // The picture: 192 x 96 pixels at 96 dpi drawn at 75% from (6000, 6000) twips.
    QCOMPARE(first.pixel(400 + 5, 400 + 5), qRgb(0, 102, 204));
    QCOMPARE(first.pixel(400 + 140, 400 + 68), qRgb(0, 102, 204));
    QCOMPARE(first.pixel(400 + 146, 400 + 5), qRgb(255, 255, 255));
    // Some ink in the title.
    const QImage title = first.copy(200, 48, 416, 24);
    bool ink = false;
    for (int y = 0; y < title.height() && !ink; ++y)
        for (int x = 0; x < title.width() && !ink; ++x)
            ink = qGray(title.pixel(x, y)) < 64;
    QVERIFY(ink);
}

void BackendTest::printerReplaysThePages() {
    // Qt's own PDF output stands in for a printer: the same QPrinter path, no CUPS needed.
    const QString pdf = lookFolder() + QStringLiteral("/printer.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    printPages(m_engine, printer);
    if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty())
        QSKIP("pdfinfo not installed");
    checkedPdfInfo(pdf);
    if (QTest::currentTestFailed())
        return;
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    QVERIFY2(text.contains(QStringLiteral("HMI-DESK-7230")), qPrintable(text));
}

TAVREL_TEST(BackendTest)
#include "BackendTest.moc"

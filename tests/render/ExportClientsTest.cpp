#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include "render/ExportTestFiles.h"

#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace tavrel;

namespace {

constexpr int ClientTimeout = 120000;

// Runs a client program to its end; returns its standard output, or an error text in problem.
QByteArray runClient(const QString &program, const QStringList &arguments, QString &problem) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.start();
    if (!process.waitForFinished(ClientTimeout)) {
        process.kill();
        process.waitForFinished();
        problem = program + QStringLiteral(" did not finish");
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        problem = program + QStringLiteral(" failed: ") +
                  QString::fromLocal8Bit(process.readAllStandardError());
    return process.readAllStandardOutput();
}

QStringList chromiumArguments(const QString &profile) {
    return {QStringLiteral("--headless"),
            QStringLiteral("--no-sandbox"),
            QStringLiteral("--disable-gpu"),
            QStringLiteral("--disable-quic"),
            QStringLiteral("--no-first-run"),
            QStringLiteral("--disable-background-networking"),
            QStringLiteral("--disable-component-update"),
            QStringLiteral("--disable-sync"),
            QStringLiteral("--user-data-dir=") + profile};
}

// How much of the picture is not white: a blank render has none.
double inkShare(const QImage &image) {
    const QImage small = image.scaled(200, 260).convertToFormat(QImage::Format_RGB32);
    int ink = 0;
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            ink += qGray(small.pixel(x, y)) < 200 ? 1 : 0;
    return double(ink) / double(small.width() * small.height());
}

// Exports the job through the command-line tool, as a user would, without opening the result.
QString exportWithCli(const QString &jobFile, const QString &option, const QString &folder) {
    QString problem;
    runClient(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"),
              {QStringLiteral("render"), jobFile, option, folder, QStringLiteral("--no-open")},
              problem);
    return problem;
}

} // namespace

// The exported files opened by the programs people use: HTML pages in Chromium, the RTF document
// in LibreOffice. Skipped where the program is not installed.
class ExportClientsTest : public QObject {
    Q_OBJECT

private slots:
    void chromiumShowsPagesAndFollowsLinks();
    void libreOfficeReadsRtf();
};

void ExportClientsTest::chromiumShowsPagesAndFollowsLinks() {
    const QString chromium = QStandardPaths::findExecutable(QStringLiteral("chromium"));
    if (chromium.isEmpty())
        QSKIP("chromium is not installed");
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 40, {true, true, true});
    const QDir out(dir.filePath(QStringLiteral("html")));
    const QString failure = exportWithCli(jobFile, QStringLiteral("--html"), out.path());
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    const QString first = out.filePath(QStringLiteral("Harbor Point Offices1.htm"));
    int pages = 0;
    while (out.exists(QStringLiteral("Harbor Point Offices%1.htm").arg(pages + 1)))
        ++pages;
    QVERIFY2(pages >= 3, qPrintable(QString::number(pages)));
    QVERIFY(!out.exists(QStringLiteral("Harbor Point Offices.htm")));

    // The browser's own reading of the pages: page 1's "next" arrow names page 2, which exists;
    // page 2 holds the first items, the hostile one as text, not as a script element.
    QString problem;
    const auto dumpDom = [&](int page) {
        QStringList dump =
            chromiumArguments(dir.filePath(QStringLiteral("profile-dom%1").arg(page)));
        dump << QStringLiteral("--dump-dom")
             << QUrl::fromLocalFile(
                    out.filePath(QStringLiteral("Harbor Point Offices%1.htm").arg(page)))
                    .toString();
        return QString::fromUtf8(runClient(chromium, dump, problem));
    };
    const QString dom = dumpDom(1);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QRegularExpression next(QStringLiteral("<a href=\"([^\"]*)\"[^>]*>\u00e8</a>"));
    const QRegularExpressionMatch link = next.match(dom);
    QVERIFY2(link.hasMatch(), qPrintable(dom.left(2000)));
    const QString target = QUrl::fromPercentEncoding(link.captured(1).toUtf8());
    QCOMPARE(target, QStringLiteral("Harbor Point Offices2.htm"));
    QVERIFY(out.exists(target));
    QVERIFY(dom.contains(QStringLiteral("Page 1 of %1").arg(pages)));
    const QString body = dumpDom(2);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QVERIFY(body.contains(QStringLiteral("PART-1")));
    QVERIFY(body.contains(QStringLiteral("&lt;script&gt;alert(\"x\")&lt;/script&gt;")));
    QVERIFY(!body.contains(QStringLiteral("<script")));

    // Screenshots of the first and a middle page; TAVREL_EXPORT_SHOTS keeps them for a look.
    const QString keep = qEnvironmentVariable("TAVREL_EXPORT_SHOTS");
    for (const int page : {1, (pages + 1) / 2}) {
        const QString png = dir.filePath(QStringLiteral("page%1.png").arg(page));
        QStringList shot = chromiumArguments(dir.filePath(QStringLiteral("profile%1").arg(page)));
        shot << QStringLiteral("--screenshot=") + png << QStringLiteral("--window-size=1000,1300")
             << QUrl::fromLocalFile(
                    out.filePath(QStringLiteral("Harbor Point Offices%1.htm").arg(page)))
                    .toString();
        runClient(chromium, shot, problem);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        const QImage image(png);
        QCOMPARE(image.size(), QSize(1000, 1300));
        QVERIFY2(inkShare(image) > 0.01, "the page renders blank");
        if (!keep.isEmpty()) {
            QDir().mkpath(keep);
            QFile::remove(QDir(keep).filePath(QFileInfo(png).fileName()));
            QFile::copy(png, QDir(keep).filePath(QFileInfo(png).fileName()));
        }
    }
}

void ExportClientsTest::libreOfficeReadsRtf() {
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (soffice.isEmpty())
        QSKIP("soffice (libreoffice-writer-nogui) is not installed");
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 12, {true, true, true});
    const QString failure =
        exportWithCli(jobFile, QStringLiteral("--rtf"), dir.filePath(QStringLiteral("rtf")));
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    const QString rtf = dir.filePath(QStringLiteral("rtf/Classic CustomerCst.rtf"));
    QVERIFY(QFile::exists(rtf));
    const QString converted = dir.filePath(QStringLiteral("converted"));
    const QString profile =
        QUrl::fromLocalFile(dir.filePath(QStringLiteral("lo-profile"))).toString();
    QString problem;
    for (const QString &format :
         {QStringLiteral("txt:Text (encoded):UTF8"), QStringLiteral("pdf")}) {
        runClient(soffice,
                  {QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"),
                   QStringLiteral("--convert-to"), format, QStringLiteral("--outdir"), converted,
                   rtf},
                  problem);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
    }
    const QString base = QDir(converted).filePath(QFileInfo(rtf).completeBaseName());
    QVERIFY(testsupport::readBytes(base + QStringLiteral(".pdf")).startsWith("%PDF"));
    const QString text = QString::fromUtf8(testsupport::readBytes(base + QStringLiteral(".txt")));
    for (int item = 1; item <= 12; ++item) {
        QVERIFY2(text.contains(QStringLiteral("PART-%1").arg(item)), qPrintable(text));
        QVERIFY2(text.contains(exporttest::itemDescription(item)), qPrintable(text));
    }
}

TAVREL_TEST(ExportClientsTest)
#include "ExportClientsTest.moc"

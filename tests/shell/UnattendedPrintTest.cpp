#include "base/IniFile.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

// Printing end to end against a real CUPS server with the virtual PDF printer "PDF"
// (scripts/cups-setup.sh starts one): tavrel in run mode "2" (Qt's print support) and
// tavrel-cli render --print (a PDF handed to lp) print the demo job without a window, and the
// printed PDF has the report's page count and looks like Tavrel's own PDF of the same job.
class UnattendedPrintTest : public QObject {
    Q_OBJECT

private slots:
    void printsDemoJobOnCupsPdfPrinter_data();
    void printsDemoJobOnCupsPdfPrinter();

private:
    static QString run(const QString &program, const QStringList &args, int *exitCode = nullptr);
    static int pdfPages(const QString &pdf);
    static QImage firstPage(const QString &pdf, const QString &folder, const QString &name);
};

QString UnattendedPrintTest::run(const QString &program, const QStringList &args, int *exitCode) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    process.setProcessEnvironment(env);
    process.start(program, args);
    process.waitForFinished(120000);
    if (exitCode)
        *exitCode = process.exitCode();
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

int UnattendedPrintTest::pdfPages(const QString &pdf) {
    const QString info = run("pdfinfo", {pdf});
    const QRegularExpressionMatch match = QRegularExpression("Pages:\\s+(\\d+)").match(info);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

QImage UnattendedPrintTest::firstPage(const QString &pdf, const QString &folder,
                                      const QString &name) {
    run("pdftoppm", {"-r", "40", "-f", "1", "-l", "1", "-png", "-singlefile", pdf,
                     QDir(folder).filePath(name)});
    return QImage(QDir(folder).filePath(name + ".png")).convertToFormat(QImage::Format_Grayscale8);
}

void UnattendedPrintTest::printsDemoJobOnCupsPdfPrinter_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("renderCommand");
    QTest::newRow("run mode 2") << "tavrel" << false;
    QTest::newRow("tavrel-cli render --print") << "tavrel-cli" << true;
}

void UnattendedPrintTest::printsDemoJobOnCupsPdfPrinter() {
    QFETCH(QString, program);
    QFETCH(bool, renderCommand);
    if (run("lpstat", {"-p", "PDF"}).indexOf("printer PDF") < 0)
        QSKIP("no CUPS PDF printer (run scripts/cups-setup.sh as root)");
    if (QStandardPaths::findExecutable("pdfinfo").isEmpty())
        QSKIP("poppler-utils not installed");

    QTemporaryDir dir;
    const QString job = testsupport::copyDemoJob(dir.path());
    QVERIFY(!job.isEmpty());
    tavrel::IniFile::write(job, "Printer", {{"Function", "2"}, {"PrinterDeviceName", "PDF"}});

    const QString outFolder =
        QDir(QString::fromLocal8Bit(getpwuid(getuid())->pw_dir)).filePath("PDF");
    const QStringList before = QDir(outFolder).entryList({"*.pdf"}, QDir::Files);

    int exitCode = -1;
    const QStringList args =
        renderCommand ? QStringList{"render", job, "--print"} : QStringList{job};
    const QString output = run(QStringLiteral(TAVREL_BIN_DIR) + "/" + program, args, &exitCode);
    QVERIFY2(exitCode == 0, qPrintable(output));

    QString printed;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            for (const QString &name : QDir(outFolder).entryList({"*.pdf"}, QDir::Files)) {
                if (!before.contains(name))
                    printed = QDir(outFolder).filePath(name);
            }
            return !printed.isEmpty() && run("lpstat", {"-p", "PDF"}).contains("idle");
        }(),
        60000);
    QTest::qWait(500); // cups-pdf closes the file after the queue turns idle

    const QString own = dir.filePath("own.pdf");
    QString renderOutput = run(QStringLiteral(TAVREL_BIN_DIR) + "/tavrel-cli",
                               {"render", job, "--pdf", own}, &exitCode);
    QVERIFY2(exitCode == 0, qPrintable(renderOutput));
    const int pages = pdfPages(own);
    QVERIFY(pages > 0);
    QCOMPARE(pdfPages(printed), pages);

    const QImage mine = firstPage(own, dir.path(), "own");
    const QImage theirs = firstPage(printed, dir.path(), "printed");
    QVERIFY(!mine.isNull() && !theirs.isNull());
    QCOMPARE(theirs.size(), mine.size());
    qint64 differing = 0;
    for (int y = 0; y < mine.height(); ++y) {
        const uchar *a = mine.constScanLine(y);
        const uchar *b = theirs.constScanLine(y);
        for (int x = 0; x < mine.width(); ++x)
            differing += std::abs(int(a[x]) - int(b[x])) > 96 ? 1 : 0;
    }
    const double share = double(differing) / double(mine.width() * mine.height());
    QVERIFY2(share < 0.02, qPrintable(QString("%1% of the pixels differ").arg(share * 100)));
    QFile::remove(printed);
}

TAVREL_TEST(UnattendedPrintTest)
#include "UnattendedPrintTest.moc"

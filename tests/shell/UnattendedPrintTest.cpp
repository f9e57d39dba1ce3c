#include "base/IniFile.h"
#include "common/CupsPdfPrinter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace cups = testsupport::cups;

// Printing end to end against a real CUPS server with the virtual PDF printer "PDF"
// (scripts/cups-setup.sh starts one): tavrel in run mode "2" (Qt's print support) and
// tavrel-cli render --print (a PDF handed to lp) print the demo job without a window, and the
// printed PDF has the report's page count and looks like Tavrel's own PDF of the same job.
class UnattendedPrintTest : public QObject {
    Q_OBJECT

private slots:
    void printsDemoJobOnCupsPdfPrinter_data();
    void printsDemoJobOnCupsPdfPrinter();
};

void UnattendedPrintTest::printsDemoJobOnCupsPdfPrinter_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("renderCommand");
    QTest::newRow("run mode 2") << "tavrel" << false;
    QTest::newRow("tavrel-cli render --print") << "tavrel-cli" << true;
}

void UnattendedPrintTest::printsDemoJobOnCupsPdfPrinter() {
    QFETCH(QString, program);
    QFETCH(bool, renderCommand);
    if (!cups::pdfPrinterReady())
        QSKIP("no CUPS PDF printer (run scripts/cups-setup.sh as root)");
    if (QStandardPaths::findExecutable("pdfinfo").isEmpty())
        QSKIP("poppler-utils not installed");

    QTemporaryDir dir;
    const QString job = testsupport::copyDemoJob(dir.path());
    QVERIFY(!job.isEmpty());
    tavrel::IniFile::write(job, "Printer", {{"Function", "2"}, {"PrinterDeviceName", "PDF"}});

    const QStringList before = cups::printedFiles();

    int exitCode = -1;
    const QStringList args =
        renderCommand ? QStringList{"render", job, "--print"} : QStringList{job};
    const QString output =
        cups::run(QStringLiteral(TAVREL_BIN_DIR) + "/" + program, args, &exitCode);
    QVERIFY2(exitCode == 0, qPrintable(output));

    const QString printed = cups::waitForPrinted(before, 60000);
    QVERIFY(!printed.isEmpty());

    const QString own = dir.filePath("own.pdf");
    QString renderOutput = cups::run(QStringLiteral(TAVREL_BIN_DIR) + "/tavrel-cli",
                                     {"render", job, "--pdf", own}, &exitCode);
    QVERIFY2(exitCode == 0, qPrintable(renderOutput));
    const int pages = cups::pdfPages(own);
    QVERIFY(pages > 0);
    QCOMPARE(cups::pdfPages(printed), pages);

    const QImage mine = cups::firstPage(own, dir.path(), "own");
    const QImage theirs = cups::firstPage(printed, dir.path(), "printed");
    QVERIFY(!mine.isNull() && !theirs.isNull());
    QCOMPARE(theirs.size(), mine.size());
    const double share = cups::differingShare(mine, theirs);
    QVERIFY2(share < 0.02, qPrintable(QString("%1% of the pixels differ").arg(share * 100)));
    QFile::remove(printed);
}

TAVREL_TEST(UnattendedPrintTest)
#include "UnattendedPrintTest.moc"

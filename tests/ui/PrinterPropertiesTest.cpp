#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "base/ui/PrinterPropertiesDialog.h"
#include "common/CupsPdfPrinter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "common/WindowFixtures.h"
#include "render/ImageOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/Startup.h"
#include "shell/ui/ApplicationReportActions.h"
#include "shell/ui/frmMenu.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;
using testsupport::DemoJob;
namespace cups = testsupport::cups;

namespace {

PrinterSetup setup(const QString &printer, int copies, OrientationChoice orientation) {
    PrinterSetup s;
    s.printer = printer;
    s.copies = copies;
    s.orientation = orientation;
    return s;
}

} // namespace

// Printer Properties chooses printer, copies and orientation; the choice reaches the job file,
// every later layout (preview, print, PDF) and the printer.
class PrinterPropertiesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanupTestCase() { QStandardPaths::setTestModeEnabled(false); }
    void dialogShowsAndReturnsTheChoice();
    void choiceIsKeptAndUsed_data();
    void choiceIsKeptAndUsed();
    void cancelChangesNothing();
    void printsLandscapeCopiesOnCupsPdfPrinter();
};

void PrinterPropertiesTest::dialogShowsAndReturnsTheChoice() {
    PrinterSetup initial = setup("Office", 2, OrientationChoice::Landscape);
    initial.printers = {"PDF", "Office"};
    PrinterPropertiesDialog dialog(initial);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.printerList()->currentText(), QString("Office"));
    QCOMPARE(dialog.copiesBox()->value(), 2);
    QVERIFY(dialog.orientationButton(OrientationChoice::Landscape)->isChecked());
    QCOMPARE(dialog.setup(), initial);

    dialog.printerList()->setFocus();
    QTest::keyClick(dialog.printerList(), Qt::Key_Up);
    dialog.copiesBox()->selectAll();
    QTest::keyClicks(dialog.copiesBox(), "4");
    QRadioButton *portrait = dialog.orientationButton(OrientationChoice::Portrait);
    // On the button's circle: a radio button takes clicks on its circle and its text only.
    QTest::mouseClick(portrait, Qt::LeftButton, {}, QPoint(8, portrait->height() / 2));
    const PrinterSetup chosen = dialog.setup();
    QCOMPARE(chosen.printer, QString("PDF"));
    QCOMPARE(chosen.copies, 4);
    QCOMPARE(chosen.orientation, OrientationChoice::Portrait);
    QCOMPARE(chosen.printers, initial.printers);
}

void PrinterPropertiesTest::choiceIsKeptAndUsed_data() {
    QTest::addColumn<int>("orientation");
    QTest::addColumn<bool>("landscape"); // of the demo's body pages
    QTest::addColumn<QString>("status");
    QTest::newRow("landscape") << int(OrientationChoice::Landscape) << true
                               << "Printer: PDF, 3 copies, landscape";
    QTest::newRow("portrait") << int(OrientationChoice::Portrait) << false
                              << "Printer: PDF, 3 copies, portrait";
    QTest::newRow("templates") << int(OrientationChoice::FromTemplates) << false
                               << "Printer: PDF, 3 copies, orientation as the templates are "
                                  "designed";
}

void PrinterPropertiesTest::choiceIsKeptAndUsed() {
    QFETCH(int, orientation);
    QFETCH(bool, landscape);
    QFETCH(QString, status);
    DemoJob demo;
    demo.context.printer.printerDeviceName = "Office";
    ApplicationReportActions actions(demo.context, demo.prompter);
    frmMenu window(demo.context, demo.prompter, actions);
    actions.setWindow(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    demo.prompter.clear();
    demo.prompter.queuePrinterSetup(setup("PDF", 3, OrientationChoice(orientation)));
    QTest::mouseClick(window.findChild<QPushButton *>("cmdProperties"), Qt::LeftButton);

    QCOMPARE(demo.prompter.printerSetupsShown().size(), 1);
    const PrinterSetup shown = demo.prompter.printerSetupsShown()[0];
    QCOMPARE(shown.printer, QString("Office"));
    QCOMPARE(shown.copies, 1);
    QCOMPARE(shown.orientation, OrientationChoice::FromTemplates);
    QCOMPARE(demo.prompter.calls("status").value(0).text, status);

    const IniFile ini = IniFile::load(demo.job);
    QCOMPARE(ini.value("Printer", "PrinterDeviceName"), QString("PDF"));
    QCOMPARE(ini.value("Printer", "PrintCopies"), QString("3"));
    QCOMPARE(demo.context.printer.printerDeviceName, QString("PDF"));
    QCOMPARE(demo.context.printer.printCopies, 3);

    // The next layout (preview, print and PDF all lay out through the report job) takes it.
    ReportJob report(demo.context, ReportJob::selectionFromJobFile(demo.context), demo.prompter);
    PageEngine engine;
    report.run(engine);
    QVERIFY(engine.pages().size() > 1);
    for (const Page &page : engine.pages())
        QCOMPARE(page.landscape, landscape);

    // Opened again, the dialog starts from the choice.
    demo.prompter.clear();
    QVERIFY(window.dispatch("cmdProperties"));
    QCOMPARE(demo.prompter.printerSetupsShown().size(), 2);
    QCOMPARE(demo.prompter.printerSetupsShown()[1].printer, QString("PDF"));
    QCOMPARE(demo.prompter.printerSetupsShown()[1].copies, 3);
    QCOMPARE(int(demo.prompter.printerSetupsShown()[1].orientation), orientation);
}

void PrinterPropertiesTest::cancelChangesNothing() {
    DemoJob demo;
    const QByteArray before = testsupport::readBytes(demo.job);
    const PrinterSettings printer = demo.context.printer;
    ApplicationReportActions actions(demo.context, demo.prompter);
    actions.printerProperties();
    QCOMPARE(demo.prompter.calls("printerSetup").size(), 1);
    QCOMPARE(testsupport::readBytes(demo.job), before);
    QCOMPARE(demo.context.printer.printerDeviceName, printer.printerDeviceName);
    QVERIFY(!demo.context.landscapeOverride);
}

// Against the real CUPS server and its virtual PDF printer (scripts/cups-setup.sh): landscape
// and the copies chosen in Printer Properties reach the printed job.
void PrinterPropertiesTest::printsLandscapeCopiesOnCupsPdfPrinter() {
    if (!cups::pdfPrinterReady())
        QSKIP("no CUPS PDF printer (run scripts/cups-setup.sh as root)");
    DemoJob demo;
    ApplicationReportActions actions(demo.context, demo.prompter);
    frmMenu window(demo.context, demo.prompter, actions);
    actions.setWindow(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    demo.prompter.queuePrinterSetup(setup("PDF", 2, OrientationChoice::Landscape));
    QVERIFY(window.dispatch("cmdProperties"));

    const QStringList before = cups::printedFiles();
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
    QVERIFY(demo.prompter.messages().isEmpty());

    const QString printed = cups::waitForPrinted(before, 30000);
    QVERIFY(!printed.isEmpty());
    const int pages = cups::pdfPages(printed);
    ReportJob report(demo.context, ReportJob::selectionFromJobFile(demo.context), demo.prompter);
    PageEngine engine;
    report.run(engine);
    QVERIFY(engine.page(1).landscape);
    // Two copies: Qt puts them into the document it hands to the spooler.
    QCOMPARE(pages, 2 * int(engine.pages().size()));

    // The printer turns a landscape job onto its Letter sheet: the printed page is the
    // landscape page as laid out, rotated a quarter turn.
    QTemporaryDir dir;
    const QImage theirs = cups::firstPage(printed, dir.path(), "printed");
    const QImage mine = renderPageImage(engine, 1, 40).convertToFormat(QImage::Format_Grayscale8);
    QVERIFY(!theirs.isNull() && !mine.isNull());
    QVERIFY(mine.width() > mine.height());
    QVERIFY(theirs.width() < theirs.height());
    double best = 1;
    for (const int angle : {90, 270}) {
        const QImage turned = mine.transformed(QTransform().rotate(angle));
        if (turned.size() != theirs.size())
            continue;
        best = std::min(best, cups::differingShare(turned, theirs));
    }
    QVERIFY2(best < 0.03, qPrintable(QString("%1% of the pixels differ").arg(best * 100)));
    QVERIFY(demo.prompter.calls("status").last().text.startsWith(
        QString("%1 page(s) sent to the printer. Printer: PDF, 2 copies, landscape")
            .arg(engine.pages().size())));
    QFile::remove(printed);
}

TAVREL_TEST(PrinterPropertiesTest)
#include "PrinterPropertiesTest.moc"

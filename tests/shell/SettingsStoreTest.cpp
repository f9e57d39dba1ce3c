#include "shell/SettingsStore.h"
#include "base/IniFile.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "shell/AppContext.h"
#include "shell/Startup.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// The reading rules of section "Printer" and "User Preferences": defaults, conversions and the
// printer selection with its write-back.
class SettingsStoreTest : public QObject {
    Q_OBJECT

private slots:
    void printerKeys_data();
    void printerKeys();
    void preferences_data();
    void preferences();
    void printerSelection_data();
    void printerSelection();
    void missingPrinterIsWrittenBack();
    void pageArea();

private:
    QString writeJob(const QByteArray &printerLines);
    QTemporaryDir m_dir;
};

// The printer settings as start-up reads them, the printer's write-back included.
PrinterSettings readPrinter(const QString &path, const PrinterList &printers) {
    AppContext context;
    context.job = JobFile::load(path);
    ScriptedPrompter prompter;
    Startup::readPrinterSettings(context, printers, prompter);
    return context.printer;
}

QString SettingsStoreTest::writeJob(const QByteArray &printerLines) {
    const QString path = m_dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(path, "[Printer]\r\n" + printerLines);
    return path;
}

void SettingsStoreTest::printerKeys_data() {
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("expected");

    QTest::newRow("font default") << QByteArray() << "FontName"
                                  << "Arial";
    QTest::newRow("font upper-cased") << QByteArray("FontName=times new roman\r\n") << "FontName"
                                      << "TIMES NEW ROMAN";
    QTest::newRow("font size default") << QByteArray("FontSize=\r\n") << "FontSize"
                                       << "8";
    QTest::newRow("font size not a number stays 0") << QByteArray("FontSize=big\r\n") << "FontSize"
                                                    << "0";
    QTest::newRow("font size rounds half to even") << QByteArray("FontSize=10.5\r\n") << "FontSize"
                                                   << "10";
    QTest::newRow("copies default") << QByteArray() << "PrintCopies"
                                    << "1";
    QTest::newRow("copies overflow skipped") << QByteArray("PrintCopies=99999\r\n") << "PrintCopies"
                                             << "0";
    QTest::newRow("margin default") << QByteArray() << "MarginLeft"
                                    << "0";
    QTest::newRow("margin kept as thousandths") << QByteArray("MarginLeft=500\r\n") << "MarginLeft"
                                                << "500";
    QTest::newRow("margin junk") << QByteArray("MarginTop=1in\r\n") << "MarginTop"
                                 << "0";
    QTest::newRow("bold 1") << QByteArray("FontBold=1\r\n") << "FontBold"
                            << "1";
    QTest::newRow("bold True") << QByteArray("FontBold=True\r\n") << "FontBold"
                               << "1";
    QTest::newRow("bold true is false") << QByteArray("FontBold=true\r\n") << "FontBold"
                                        << "0";
    QTest::newRow("show label missing") << QByteArray() << "ShowLabel"
                                        << "1";
    QTest::newRow("show label empty") << QByteArray("ShowLabel=\r\n") << "ShowLabel"
                                      << "1";
    QTest::newRow("show label yes") << QByteArray("ShowLabel=yes\r\n") << "ShowLabel"
                                    << "0";
    QTest::newRow("show label 0") << QByteArray("ShowLabel=0\r\n") << "ShowLabel"
                                  << "0";
    QTest::newRow("show color default") << QByteArray() << "ShowColor"
                                        << "0";
    QTest::newRow("box default") << QByteArray("Box=\r\n") << "Box"
                                 << "0";
    QTest::newRow("box text kept") << QByteArray("Box=abc\r\n") << "Box"
                                   << "abc";
    QTest::newRow("function exact") << QByteArray("Function= 1\r\n") << "Function"
                                    << "1";
}

static QString fieldText(const PrinterSettings &s, const QString &field) {
    const auto flag = [](bool b) { return b ? QStringLiteral("1") : QStringLiteral("0"); };
    if (field == QLatin1String("FontName"))
        return s.fontName;
    if (field == QLatin1String("FontSize"))
        return QString::number(s.fontSize);
    if (field == QLatin1String("PrintCopies"))
        return QString::number(s.printCopies);
    if (field == QLatin1String("MarginLeft"))
        return QString::number(s.marginLeft);
    if (field == QLatin1String("MarginTop"))
        return QString::number(s.marginTop);
    if (field == QLatin1String("FontBold"))
        return flag(s.fontBold);
    if (field == QLatin1String("ShowLabel"))
        return flag(s.showLabel);
    if (field == QLatin1String("ShowColor"))
        return flag(s.showColor);
    if (field == QLatin1String("Box"))
        return s.box;
    if (field == QLatin1String("Function"))
        return s.function;
    return QStringLiteral("<unknown field>");
}

void SettingsStoreTest::printerKeys() {
    QFETCH(QByteArray, lines);
    QFETCH(QString, field);
    QFETCH(QString, expected);
    const PrinterSettings settings = readPrinter(writeJob(lines), PrinterList{});
    QCOMPARE(fieldText(settings, field), expected);
}

void SettingsStoreTest::preferences_data() {
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("company");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("level");
    QTest::newRow("missing section") << QByteArray() << "" << 0 << 0;
    QTest::newRow("values") << QByteArray(
                                   "Company Name=Acme Interiors\r\nRounding Direction= 1 \r\n"
                                   "Rounding Level=2\r\n")
                            << "Acme Interiors" << 1 << 2;
    QTest::newRow("junk rounding")
        << QByteArray("Rounding Direction=up\r\nRounding Level=70000\r\n") << "" << 0 << 0;
}

void SettingsStoreTest::preferences() {
    QFETCH(QByteArray, lines);
    QFETCH(QString, company);
    QFETCH(int, direction);
    QFETCH(int, level);
    const QString path = m_dir.filePath(QStringLiteral("prefs.ini"));
    testsupport::writeBytes(path, "[User Preferences]\r\n" + lines);
    const UserPreferences prefs = JobFile::load(path).userPreferences();
    QCOMPARE(prefs.companyName, company);
    QCOMPARE(int(prefs.roundingDirection), direction);
    QCOMPARE(int(prefs.roundingLevel), level);
}

void SettingsStoreTest::printerSelection_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<bool>("writeBack");
    const QStringList printers{QStringLiteral("Office"), QStringLiteral("PDF")};
    QTest::newRow("current") << "PDF"
                             << "PDF" << printers << "PDF" << false;
    QTest::newRow("installed") << "Office"
                               << "PDF" << printers << "Office" << false;
    QTest::newRow("case differs") << "office"
                                  << "PDF" << printers << "PDF" << true;
    QTest::newRow("gone") << "Plotter"
                          << "PDF" << printers << "PDF" << true;
    QTest::newRow("no printers") << "Plotter"
                                 << "" << QStringList() << "" << true;
}

void SettingsStoreTest::printerSelection() {
    QFETCH(QString, stored);
    QFETCH(QString, current);
    QFETCH(QStringList, installed);
    QFETCH(QString, chosen);
    QFETCH(bool, writeBack);
    bool written = false;
    QCOMPARE(SettingsStore::selectPrinter(stored, PrinterList{current, installed}, &written),
             chosen);
    QCOMPARE(written, writeBack);
}

void SettingsStoreTest::missingPrinterIsWrittenBack() {
    const QString path = writeJob("PrinterDeviceName=Old Plotter\r\nFunction=1\r\n");
    const PrinterSettings settings =
        readPrinter(path, PrinterList{QStringLiteral("PDF"), {QStringLiteral("PDF")}});
    QCOMPARE(settings.printerDeviceName, QStringLiteral("PDF"));
    QCOMPARE(testsupport::readBytes(path),
             QByteArray("[Printer]\r\nPrinterDeviceName=PDF\r\nFunction=1\r\n"));

    // An empty name means the current printer and writes nothing.
    const QString quiet = writeJob("PrinterDeviceName=\r\n");
    QCOMPARE(readPrinter(quiet, PrinterList{QStringLiteral("PDF"), {}}).printerDeviceName,
             QStringLiteral("PDF"));
    QCOMPARE(testsupport::readBytes(quiet), QByteArray("[Printer]\r\nPrinterDeviceName=\r\n"));
}

void SettingsStoreTest::pageArea() {
    PrinterSettings printer;
    printer.marginLeft = 500;
    printer.marginRight = 250;
    printer.marginTop = 1000;
    printer.marginBottom = 333;
    const Margins m = SettingsRules::marginsInTwips(printer);
    QCOMPARE(m.left, 720);
    QCOMPARE(m.right, 360);
    QCOMPARE(m.top, 1440);
    QCOMPARE(m.bottom, 480); // 479.52 rounds to 480
    const UsablePageArea area = SettingsRules::pageArea(m);
    QCOMPARE(area.usableWidthPortrait, 12240 - 720 - 360);
    QCOMPARE(area.usableWidthLandscape, 15840 - 720 - 360);
    QCOMPARE(area.usableHeightPortrait, 15840 - 1440 - 480 - 1500);
    QCOMPARE(area.usableHeightLandscape, 12240 - 1440 - 480 - 1500);
}

TAVREL_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"

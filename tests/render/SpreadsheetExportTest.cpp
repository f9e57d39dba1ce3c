#include "render/SpreadsheetExport.h"
#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <functional>

using namespace tavrel;

Q_DECLARE_METATYPE(tavrel::SheetCell)

namespace {

constexpr int ProcessTimeout = 180000;

// Runs a program; answers its standard output and puts what went wrong into problem.
QByteArray run(const QString &program, const QStringList &arguments, QString &problem) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(ProcessTimeout)) {
        process.kill();
        process.waitForFinished();
        problem = program + QStringLiteral(" did not finish");
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        problem = program + QStringLiteral(" failed (%1): ").arg(process.exitCode()) +
                  QString::fromLocal8Bit(process.readAllStandardError());
    return process.readAllStandardOutput();
}

QString cli() {
    return QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli");
}

// The demo job's spreadsheet or PDF export into folder (option "--xlsx", "--csv" or "--pdf").
QString exportDemo(const QString &folder, const QString &option, const QString &name,
                   QString &problem) {
    const QString job = testsupport::copyDemoJob(folder);
    if (job.isEmpty()) {
        problem = QStringLiteral("the demo job could not be copied");
        return {};
    }
    const QString out = QDir(folder).filePath(name);
    run(cli(), {QStringLiteral("render"), job, option, out, QStringLiteral("--no-open")}, problem);
    return out;
}

// One file of an xlsx (a zip): the workbook's parts are read back without libxlsxwriter.
QByteArray zipPart(const QString &zip, const QString &part, QString &problem) {
    return run(QStringLiteral("unzip"), {QStringLiteral("-p"), zip, part}, problem);
}

// A job of three items whose descriptions are the given texts (item 1 also its part number's
// special number, a text column the body does not show).
QString writeHostileJob(const QString &folder, const QStringList &descriptions) {
    QByteArray sif = "SF=Hostile.sp4\r\nST=Hostile\r\n";
    int i = 0;
    for (const QString &description : descriptions) {
        sif += "PN=P" + QByteArray::number(++i) + "\r\nPD=" + description.toLatin1() +
               "\r\nMC=LWS\r\nQT=1\r\nPL=10.00\r\nSP=6.00\r\nON=" + description.toLatin1() +
               "\r\nOD=" + description.toLatin1() + "\r\n";
    }
    const QDir dir(folder);
    testsupport::writeBytes(dir.filePath(QStringLiteral("job.sif")), sif);
    const QString templates = testsupport::sourcePath(QStringLiteral("resources/Print Templates"));
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(
        job, "[Printer]\r\nFunction=1\r\nTempPrintDocument=job.sif\r\nBody Template=" +
                 templates.toUtf8() +
                 "/Classic Customer.cst\r\nBody Printable=1\r\nCover Printable=0\r\n"
                 "Summary Printable=0\r\n");
    return job;
}

SheetCell text(const QString &value) {
    return {value, std::nullopt, {}, false};
}

SheetCell number(double value, const QString &pattern, bool isSigned = false) {
    return {QString(), value, pattern, isSigned};
}

} // namespace

class SpreadsheetExportTest : public QObject {
    Q_OBJECT

private slots:
    void csvFields_data();
    void csvFields();
    void numberFormats_data();
    void numberFormats();
    void demoCsvMatchesExpected();
    void demoSheetsMatchExpected();
    void libreOfficeSumsToTheTotal();
    void hostileTextStaysText_data();
    void hostileTextStaysText();
    void failedWriteKeepsTheOldFile();
    void optionTotalListsEveryOptionOnce();
    void demoPdfNavigates();
};

void SpreadsheetExportTest::csvFields_data() {
    QTest::addColumn<SheetCell>("cell");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("plain") << text("Desk") << QByteArray("Desk");
    QTest::newRow("comma") << text("Desk, L") << QByteArray("\"Desk, L\"");
    QTest::newRow("quote") << text("36\"W") << QByteArray("\"36\"\"W\"");
    QTest::newRow("line break") << text("a\rb") << QByteArray("\"a\nb\"");
    QTest::newRow("utf-8") << text(QStringLiteral("Caf\u00e9")) << QByteArray("Caf\xc3\xa9");
    // OWASP: a leading quote makes the spreadsheet take the field as text.
    QTest::newRow("equals") << text("=1+2") << QByteArray("\"'=1+2\"");
    QTest::newRow("plus") << text("+1+2") << QByteArray("\"'+1+2\"");
    QTest::newRow("minus") << text("-2+3+cmd|' /C calc'!A0")
                           << QByteArray("\"'-2+3+cmd|' /C calc'!A0\"");
    QTest::newRow("at") << text("@SUM(1+1)") << QByteArray("\"'@SUM(1+1)\"");
    QTest::newRow("tab") << text("\t=1") << QByteArray("\"'\t=1\"");
    QTest::newRow("inner equals") << text("a=b") << QByteArray("a=b");
    // Numbers are numbers: a negative amount is not guarded.
    QTest::newRow("amount") << number(1234.5, "##0.00") << QByteArray("1234.50");
    QTest::newRow("negative") << number(-12.5, "##0.00") << QByteArray("-12.50");
    QTest::newRow("money") << number(202022.73, "$#,##0.00") << QByteArray("202022.73");
    QTest::newRow("percent") << number(-0.4, "%##0.00000", true) << QByteArray("-40.00000");
    QTest::newRow("spaced") << number(12.5, "##0. 00000") << QByteArray("12.50000");
    QTest::newRow("quantity") << number(24, QString()) << QByteArray("24");
}

void SpreadsheetExportTest::csvFields() {
    QFETCH(SheetCell, cell);
    QFETCH(QByteArray, field);
    SheetTable table;
    table.columnCount = 2;
    table.rows.push_back({SheetRowKind::Item, {cell, text("x")}});
    QCOMPARE(SpreadsheetExport::csvText(table), "\xEF\xBB\xBF" + field + ",x\r\n");
}

void SpreadsheetExportTest::numberFormats_data() {
    QTest::addColumn<SheetCell>("cell");
    QTest::addColumn<QString>("format");
    QTest::newRow("amount") << number(1, "##0.00") << "##0.00";
    QTest::newRow("money") << number(1, "$#,##0.00") << "$#,##0.00";
    QTest::newRow("quantity") << number(1, QString()) << "General";
    QTest::newRow("inverted percent")
        << number(1, "%##0.00000", true) << "+%##0.00000;-%##0.00000;%##0.00000";
}

void SpreadsheetExportTest::numberFormats() {
    QFETCH(SheetCell, cell);
    QFETCH(QString, format);
    QCOMPARE(SpreadsheetExport::numberFormat(cell), format);
}

void SpreadsheetExportTest::demoCsvMatchesExpected() {
    QTemporaryDir dir;
    QString problem;
    const QString csv =
        exportDemo(dir.path(), QStringLiteral("--csv"), QStringLiteral("demo.csv"), problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QString mismatch = testsupport::compareWithGolden(
        testsupport::readBytes(csv), QStringLiteral("render/spreadsheet/demo.csv"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void SpreadsheetExportTest::demoSheetsMatchExpected() {
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty())
        QSKIP("unzip is not installed");
    QTemporaryDir dir;
    QString problem;
    const QString xlsx =
        exportDemo(dir.path(), QStringLiteral("--xlsx"), QStringLiteral("demo.xlsx"), problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    // The zip and the document properties carry the time of writing; the sheets do not.
    for (const QString &part :
         {QStringLiteral("xl/worksheets/sheet1.xml"), QStringLiteral("xl/worksheets/sheet2.xml"),
          QStringLiteral("xl/styles.xml")}) {
        const QByteArray xml = zipPart(xlsx, part, problem);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        const QString mismatch = testsupport::compareWithGolden(
            xml, QStringLiteral("render/spreadsheet/demo-") + QFileInfo(part).fileName());
        QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
    }
    const QByteArray core = zipPart(xlsx, QStringLiteral("docProps/core.xml"), problem);
    QVERIFY(core.contains("<dc:creator>Harbor Point Office Interiors</dc:creator>"));
    QFileDevice::Permissions permissions = QFileInfo(xlsx).permissions();
    QVERIFY2(permissions.testFlag(QFileDevice::ReadOther), "the export is an ordinary file");
}

// The quality bar of the spreadsheet: LibreOffice opens the workbook, every item and option
// line is there, and the extended-sell column of the items adds up to the report's total.
void SpreadsheetExportTest::libreOfficeSumsToTheTotal() {
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (soffice.isEmpty())
        QSKIP("soffice (libreoffice-calc-nogui) is not installed");
    QTemporaryDir dir;
    QString problem;
    const QString xlsx =
        exportDemo(dir.path(), QStringLiteral("--xlsx"), QStringLiteral("demo.xlsx"), problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QString profile =
        QUrl::fromLocalFile(dir.filePath(QStringLiteral("lo-profile"))).toString();
    // Comma separated, quoted, UTF-8, the cells as formatted.
    run(soffice,
        {QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"),
         QStringLiteral("--convert-to"),
         QStringLiteral("csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true"),
         QStringLiteral("--outdir"), dir.filePath(QStringLiteral("lo")), xlsx},
        problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QString converted =
        QString::fromUtf8(testsupport::readBytes(dir.filePath(QStringLiteral("lo/demo.csv"))));
    QVERIFY(!converted.isEmpty());
    // The demo's fields hold no line breaks; commas only inside quotes.
    const QRegularExpression field(QStringLiteral("(\"(?:[^\"]|\"\")*\"|[^,]*)(,|$)"));
    QList<QStringList> rows;
    for (const QString &line : converted.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        QStringList cells;
        qsizetype at = 0;
        const QString trimmed = line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line;
        while (at <= trimmed.size()) {
            const QRegularExpressionMatch match = field.match(trimmed, at);
            QString cell = match.captured(1);
            if (cell.startsWith(QLatin1Char('"')))
                cell = cell.mid(1, cell.size() - 2)
                           .replace(QLatin1String("\"\""), QLatin1String("\""));
            cells << cell;
            at = match.capturedEnd();
            if (match.captured(2).isEmpty())
                break;
        }
        rows << cells;
    }
    QVERIFY(rows.size() > 1);
    const QStringList captions = rows.front();
    const qsizetype extSell = captions.indexOf(QStringLiteral("Ext Sell"));
    QVERIFY2(extSell >= 0, qPrintable(captions.join(QLatin1Char('|'))));
    const auto amount = [](QString cell) {
        return cell.remove(QLatin1Char('$')).remove(QLatin1Char(',')).toDouble();
    };
    const QByteArray sif =
        testsupport::readBytes(testsupport::sourcePath(QStringLiteral("examples/demo/demo.sif")));
    int items = 0;
    int optionLines = 0;
    double sum = 0;
    double total = -1;
    for (const QStringList &row : rows.mid(1)) {
        if (!row.value(0).isEmpty() && row.value(0) != QLatin1String("SUBTOTAL")) {
            ++items;
            QVERIFY2(sif.contains("PN=" + row.value(0).toLatin1() + "\r\n"), qPrintable(row[0]));
            sum += amount(row.value(extSell));
        } else if (row.value(0).isEmpty() && !row.value(2).isEmpty()) {
            ++optionLines;
        }
        if (row.value(extSell - 1) == QLatin1String("Total Customer:"))
            total = amount(row.value(extSell));
    }
    QCOMPARE(items, int(sif.count("PN=") - sif.count("PN=SUBTOTAL")));
    QCOMPARE(optionLines, int(sif.count("\nON=")));
    QCOMPARE(qRound64(sum * 100), qRound64(202022.73 * 100));
    QCOMPARE(qRound64(total * 100), qRound64(202022.73 * 100));
}

void SpreadsheetExportTest::hostileTextStaysText_data() {
    QTest::addColumn<QString>("hostile");
    QTest::newRow("formula") << "=1+2";
    QTest::newRow("hyperlink") << "=HYPERLINK(\"http://x.invalid\",\"y\")";
    QTest::newRow("plus") << "+SUM(1,2)";
    QTest::newRow("minus") << "-2+3+cmd|' /C calc'!A0";
    QTest::newRow("at") << "@SUM(1+1)*cmd";
}

void SpreadsheetExportTest::hostileTextStaysText() {
    QFETCH(QString, hostile);
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty())
        QSKIP("unzip is not installed");
    QTemporaryDir dir;
    const QString job = writeHostileJob(dir.path(), {hostile, QStringLiteral("Desk"), hostile});
    QString problem;
    const QString xlsx = dir.filePath(QStringLiteral("out.xlsx"));
    const QString csv = dir.filePath(QStringLiteral("out.csv"));
    run(cli(),
        {QStringLiteral("render"), job, QStringLiteral("--xlsx"), xlsx, QStringLiteral("--csv"),
         csv, QStringLiteral("--no-open")},
        problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));

    const QByteArray sheet = zipPart(xlsx, QStringLiteral("xl/worksheets/sheet1.xml"), problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QVERIFY2(!sheet.contains("<f>") && !sheet.contains("<f "), sheet.constData());
    QString escaped = hostile.toHtmlEscaped();
    escaped.replace(QLatin1String("&quot;"), QLatin1String("\""));
    // Description and option code and description of items 1 and 3, each an inline string.
    QCOMPARE(int(sheet.count("<is><t>" + escaped.toUtf8() + "</t></is>")), 6);

    const QByteArray csvBytes = testsupport::readBytes(csv);
    QString quoted = hostile;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    QCOMPARE(int(csvBytes.count(",\"'" + quoted.toUtf8() + "\"")), 6);
    for (const QByteArray &line : csvBytes.split('\n'))
        QVERIFY2(!line.contains(",=") && !line.contains(",+") && !line.contains(",@") &&
                     !line.startsWith("=") && !line.startsWith("\xEF\xBB\xBF="),
                 line.constData());
}

void SpreadsheetExportTest::failedWriteKeepsTheOldFile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("old.xlsx"));
    testsupport::writeBytes(path, "old");
    SheetTable bad;
    bad.name = QStringLiteral("bad[name]"); // a sheet name Excel refuses
    bad.columnCount = 1;
    QVERIFY_THROWS_EXCEPTION(RuntimeError,
                             SpreadsheetExport::writeXlsx(path, {bad}, SpreadsheetProperties{}));
    QCOMPARE(testsupport::readBytes(path), QByteArray("old"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("old.xlsx")});
}

// The demo PDF's outline, page labels and document information, read back with qpdf.
// A body whose totals hold the "Total Option / Description" box: the sheet ends with the list the
// body prints, each option once, sorted by code.
void SpreadsheetExportTest::optionTotalListsEveryOptionOnce() {
    QTemporaryDir dir;
    const QString job = testsupport::copyDemoJob(dir.path());
    QVERIFY(!job.isEmpty());
    QByteArray cst = testsupport::readBytes(
        testsupport::sourcePath(QStringLiteral("resources/Print Templates/Classic Customer.cst")));
    QVERIFY(cst.contains("Box_18_Caption=Total List$\r\n"));
    cst.replace("Box_18_Caption=Total List$\r\n", "Box_18_Caption=Total Option / Description\r\n");
    const QString body = QDir(dir.path()).filePath(QStringLiteral("Options.cst"));
    testsupport::writeBytes(body, cst);
    const QString out = QDir(dir.path()).filePath(QStringLiteral("options.csv"));
    QString problem;
    run(cli(),
        {QStringLiteral("render"), job, QStringLiteral("--body"), body, QStringLiteral("--csv"),
         out, QStringLiteral("--no-open")},
        problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QStringList lines = QString::fromUtf8(testsupport::readBytes(out))
                                  .split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    const qsizetype label =
        lines.indexOf(QRegularExpression(QStringLiteral("^Options / Descriptions:,*$")));
    QVERIFY2(label > 0, "the option total's label row");
    QStringList codes;
    for (qsizetype i = label + 1; i < lines.size(); ++i) {
        const QString code = lines.at(i).section(QLatin1Char(','), 0, 0);
        if (code.isEmpty() || lines.at(i).contains(QStringLiteral("Total")))
            break;
        codes << code;
    }
    QVERIFY2(codes.contains(QStringLiteral("VN-WAL")), qPrintable(codes.join(QLatin1Char(' '))));
    QStringList sorted = codes;
    sorted.sort();
    sorted.removeDuplicates();
    QCOMPARE(codes, sorted);
}

void SpreadsheetExportTest::demoPdfNavigates() {
    const QString qpdf = QStandardPaths::findExecutable(QStringLiteral("qpdf"));
    if (qpdf.isEmpty())
        QSKIP("qpdf is not installed");
    QTemporaryDir dir;
    QString problem;
    const QString pdf =
        exportDemo(dir.path(), QStringLiteral("--pdf"), QStringLiteral("demo.pdf"), problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    run(qpdf, {QStringLiteral("--check"), pdf}, problem);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QJsonObject json =
        QJsonDocument::fromJson(
            run(qpdf,
                {QStringLiteral("--json"), QStringLiteral("--json-key=outlines"),
                 QStringLiteral("--json-key=pagelabels"), QStringLiteral("--json-key=pages"), pdf},
                problem))
            .object();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    // Title, page (from 1) and children of each entry, as a line each.
    QStringList outline;
    const std::function<void(const QJsonArray &, int)> list = [&](const QJsonArray &items,
                                                                  int depth) {
        for (const QJsonValue &value : items) {
            const QJsonObject item = value.toObject();
            outline << QString(depth * 2, QLatin1Char(' ')) +
                           item[QStringLiteral("title")].toString() +
                           QStringLiteral(" p%1").arg(
                               item[QStringLiteral("destpageposfrom1")].toInt());
            list(item[QStringLiteral("kids")].toArray(), depth + 1);
        }
    };
    list(json[QStringLiteral("outlines")].toArray(), 0);
    QCOMPARE(outline, (QStringList{"Cover p1", "Specification p2", "  Subtotal - Reception p2",
                                   "  Subtotal - Open Office L2 p3", "Summary p7"}));
    const QJsonArray pages = json[QStringLiteral("pages")].toArray();
    QCOMPARE(pages.size(), 7);
    const QJsonArray labels = json[QStringLiteral("pagelabels")].toArray();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(
        labels[0].toObject()[QStringLiteral("label")].toObject()[QStringLiteral("/S")].toString(),
        QStringLiteral("/D"));

    const QString pdfinfo = QStandardPaths::findExecutable(QStringLiteral("pdfinfo"));
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdfinfo.isEmpty() || pdftotext.isEmpty())
        QSKIP("poppler-utils is not installed");
    const QString info = QString::fromUtf8(run(pdfinfo, {pdf}, problem));
    QVERIFY2(info.contains(QStringLiteral("Author:          Harbor Point Office Interiors")),
             qPrintable(info));
    QVERIFY2(info.contains(QStringLiteral("Subject:         Harbor Point Offices")),
             qPrintable(info));
    QVERIFY2(info.contains(QStringLiteral("Title:           Kestrium - OrvantaPrint")),
             qPrintable(info));
    const QString text = QString::fromUtf8(run(pdftotext, {pdf, QStringLiteral("-")}, problem));
    QVERIFY2(text.contains(QStringLiteral("Subtotal - Reception")), qPrintable(text));
}

TAVREL_TEST(SpreadsheetExportTest)
#include "SpreadsheetExportTest.moc"

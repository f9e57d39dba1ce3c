#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "templates/TemplateKeys.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QDateTime>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

const QString &fixedTitle() {
    static const QString title = TemplateWriter::titleLine(
        TemplateKind::Custom, QDateTime(QDate(2024, 3, 15), QTime(14, 5, 7)));
    return title;
}

// A small layout that touches every value encoding.
TemplateLayout sampleLayout() {
    TemplateLayout layout;
    layout.other.logoSize = QStringLiteral("50%");
    layout.other.imageSize = QStringLiteral("33%");
    layout.other.landscape = true;
    layout.other.realONNWidth = 1200.5f;
    layout.other.realANNWidth = 0.1f; // one of the pair non-zero: both written

    BoxInfo &part = layout.box(1);
    part.index = 1;
    part.placed = part.visible = true;
    part.nameIndex = 6;
    part.container = QStringLiteral("MainPort");
    part.caption = QStringLiteral("Part Number");
    part.headerText = QStringLiteral("PN");
    part.fontName = QStringLiteral("Arial");
    part.fontBold = true;
    part.fontSize = 8;
    part.left = -15;
    part.top = 60;
    part.width = 1500;
    part.height = 260;
    part.backColor = 16777215;
    part.foreColor = 6567967;
    part.level = 1;
    part.body = true;
    part.textAlign = TextAlign::Right;

    // Slot 5 holds a shown but unplaced box: written with _Placed=0. Slots 2 to 4 are empty.
    BoxInfo &shown = layout.box(5);
    shown.index = 5;
    shown.visible = true;
    shown.caption = QStringLiteral("Caf\u00e9 note");
    shown.notes = true;
    shown.notesName = QStringLiteral("Caf\u00e9 note");
    shown.container = Container::footer();
    shown.changeBackcolor = true;
    shown.custBkColor = 255;

    LineInfo &line = layout.line(3);
    line.index = 3;
    line.placed = line.visible = true;
    line.left = 0;
    line.top = 980;
    line.width = 10800;
    line.height = 30;
    line.backColor = 8421504;
    line.boderStyle = qint16(LineStyle::DashDot);
    line.container = Container::header();
    layout.line(4).visible = true; // visible but not placed: not written

    PrintRect &upper = layout.rect(2);
    upper.rectVisible = true;
    upper.left = 10.25f;
    upper.top = 3499.5f;
    upper.width = 100;
    upper.height = 50;
    upper.borderColor = 255;
    upper.rectColor = 255;
    upper.rectLeft = 10.25f;
    upper.rectTop = 3499.5f;
    upper.rectWidth = 100;
    upper.rectHeight = 50;
    PrintRect &lower = layout.rect(7);
    lower = upper;
    lower.top = 3500;                 // exactly 3500: location 2
    layout.rect(9).rectPlaced = true; // placed but not visible: not written
    return layout;
}

} // namespace

class TemplateFileTest : public QObject {
    Q_OBJECT

private slots:
    void writerGolden();
    void writerEdgeCases();
    void titleLines_data();
    void titleLines();
    void singleFormat_data();
    void singleFormat();
    void readerRules();
    void handWrittenTemplate();
    void roundTripSample();
    void ranOutOfIndexKeepsWhatWasRead();
    void ranOutOfLineIndex();
    void missingFileReadsNothing();
    void saveShowsStatus();
    void randomBytesNeverCrash();
    void truncatedFilesNeverCrash();
};

void TemplateFileTest::writerGolden() {
    const QByteArray bytes = TemplateWriter::bytes(sampleLayout(), fixedTitle());
    const QString mismatch =
        testsupport::compareWithGolden(bytes, QStringLiteral("templates/sample.cst"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void TemplateFileTest::writerEdgeCases() {
    TemplateLayout layout;
    layout.box(137).visible = true;
    const QStringList lines = TemplateWriter::lines(layout, QString());
    QCOMPARE(lines.value(0), QString()); // unknown kind: an empty title line
    QCOMPARE(lines.value(1), QString());
    QCOMPARE(lines.value(2), QStringLiteral("[Other Info]"));
    QCOMPARE(lines.value(3), QStringLiteral("LogoSize="));
    QCOMPARE(lines.value(4), QStringLiteral("ImageSize=100%"));
    QCOMPARE(lines.value(5), QStringLiteral("Landscape=0"));
    QCOMPARE(lines.value(6), QString()); // both Real* pairs zero: not written
    QCOMPARE(lines.value(7), QStringLiteral("[Box Info]"));
    QCOMPARE(lines.value(8), QStringLiteral("Box_137_Placed=0"));
    QCOMPARE(lines.value(9), QStringLiteral("Box_137_Visible=1"));
    QCOMPARE(lines.count(QStringLiteral("Box_137_CustBkColor=16777215")), 1);
    QCOMPARE(lines.mid(8 + 32), (QStringList{QString(), QStringLiteral("[Line Info]"), QString(),
                                             QStringLiteral("[Rectangle Info]")}));
    QVERIFY(TemplateWriter::bytes(layout, QString()).endsWith("[Rectangle Info]\r\n"));
}

void TemplateFileTest::titleLines_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    QTest::newRow("cover, two blanks") << "a.cov"
                                       << "Cover  pagelayout template 3/5/2024 9:05:07 AM";
    QTest::newRow("custom") << "a.cst"
                            << "Custom pagelayout template 3/5/2024 9:05:07 AM";
    QTest::newRow("summary") << "a.sum"
                             << "Summary pagelayout template 3/5/2024 9:05:07 AM";
    QTest::newRow("unknown") << "a.txt"
                             << "";
}

void TemplateFileTest::titleLines() {
    QFETCH(QString, path);
    QFETCH(QString, title);
    const QDateTime when(QDate(2024, 3, 5), QTime(9, 5, 7));
    QCOMPARE(TemplateWriter::titleLine(templateKindOfPath(path), when), title);
}

void TemplateFileTest::singleFormat_data() {
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0f << "0";
    QTest::newRow("negative zero") << -0.0f << "0";
    QTest::newRow("whole") << 3500.0f << "3500";
    QTest::newRow("negative") << -12.5f << "-12.5";
    QTest::newRow("tenth") << 0.1f << "0.1";
    QTest::newRow("third") << float(1.0 / 3.0) << "0.33333334";
    QTest::newRow("large whole") << 16777216.0f << "16777216";
    QTest::newRow("ten million") << 1e7f << "10000000";
    QTest::newRow("tiny") << 1e-7f << "1e-07";
}

void TemplateFileTest::singleFormat() {
    QFETCH(float, value);
    QFETCH(QString, text);
    QCOMPARE(TemplateKeys::formatSingle(value), text);
    QCOMPARE(TemplateKeys::parseSingle(text).value_or(-1.0f), value == 0.0f ? 0.0f : value);
}

void TemplateFileTest::readerRules() {
    // Keys in odd order and case, "True"/"False", a repeated key (first wins), a value that
    // does not convert (kept as it was), an overflowing one, blanks and quotes around values.
    const QByteArray text = "[box info]\r\n"
                            "BOX_4_top=12\r\n"
                            "box_4_PLACED=True\r\n"
                            "Box_4_Left=abc\r\n"
                            "Box_4_Width=1e400\r\n"
                            "Box_4_Height=99999999999\r\n"
                            "Box_4_FontSize=8.5\r\n"
                            "Box_4_Caption=  \"Qty\"  \r\n"
                            "Box_4_Caption=Mfg\r\n"
                            "Box_4_FontBold=True\r\n"
                            "Box_4_FontItalic=true\r\n"
                            "Box_4_Container=shpheaderfooter(1)\r\n"
                            "Box_4_CustBkColor=\r\n";
    TemplateLayout layout;
    layout.box(1).left = 77; // the slot the box lands in keeps what does not convert
    layout.box(1).width = 88;
    layout.box(1).height = 99;
    ScriptedPrompter prompter;
    QCOMPARE(TemplateReader::readBytes(text, layout, prompter), TemplateReader::Result::Complete);
    QVERIFY(prompter.calls().isEmpty());
    const BoxInfo &box = layout.box(1);
    QCOMPARE(box.index, qint16(1));
    QVERIFY(box.placed && box.visible);
    QCOMPARE(box.top, 12);
    QCOMPARE(box.left, 77);
    QCOMPARE(box.width, 88);
    QCOMPARE(box.height, 99);
    QCOMPARE(box.fontSize, qint16(8)); // 8.5 rounds half to even
    QCOMPARE(box.caption, QStringLiteral("Qty"));
    QCOMPARE(box.headerText, QStringLiteral("QT"));
    QVERIFY(box.fontBold);
    QVERIFY(!box.fontItalic); // only "1" and "True" are true
    QCOMPARE(box.container, Container::footer());
    QCOMPARE(box.custBkColor, 16777215);
    QCOMPARE(layout.placedBoxCount(), 1);
}

void TemplateFileTest::handWrittenTemplate() {
    ScriptedPrompter prompter;
    const QString path = testsupport::dataPath(QStringLiteral("templates/handwritten.cst"));
    TemplateLayout layout;
    QCOMPARE(TemplateReader::read(path, layout, prompter), TemplateReader::Result::Complete);
    QVERIFY(prompter.calls().isEmpty());

    QCOMPARE(layout.other.logoSize, QStringLiteral("42%"));
    QVERIFY(layout.other.landscape);
    QCOMPARE(layout.other.realONNWidth, 1000.0f);
    QCOMPARE(layout.other.realODWidth, 0.0f); // "wide": conversion failure keeps zero
    QCOMPARE(layout.placedBoxCount(), 4);
    // Boxes 3, 10, 136 and 137 of the file fill slots 1 to 4; box 12 is not placed, box 20 is
    // "False".
    QCOMPARE(layout.box(1).caption, QStringLiteral("Part Number"));
    QCOMPARE(layout.box(1).left, 100);
    QCOMPARE(layout.box(1).top, 0);                           // "twelve" does not convert
    QCOMPARE(layout.box(1).container, Container::mainPort()); // unknown container name
    QCOMPARE(layout.box(2).caption, QStringLiteral("Image"));
    QCOMPARE(layout.box(2).headerText, QString());
    QCOMPARE(layout.box(2).container, Container::header());
    QCOMPARE(layout.box(3).caption, QStringLiteral("Table of Contents"));
    QCOMPARE(layout.box(3).headerText, QString()); // correctly spelled: no field code
    QCOMPARE(layout.box(4).notesName.size(), 259); // a 300-character note is cut
    QCOMPARE(layout.box(4).caption, QStringLiteral("Generic Code"));
    QCOMPARE(layout.box(4).headerText, QStringLiteral("CG"));
    QCOMPARE(layout.box(4).index, qint16(4));
    QCOMPARE(layout.placedLineCount(), 2);
    QCOMPARE(layout.line(1).boderStyle, qint16(2));
    QCOMPARE(layout.line(2).container, QStringLiteral("shpheaderfooter(0)"));
    QCOMPARE(layout.visibleRectCount(), 1);
    QVERIFY(layout.rect(20).rectVisible); // rectangles keep their numbers
    QCOMPARE(layout.rect(20).rectIndex, qint16(20));
    QCOMPARE(layout.rect(20).rectRight, 1100.5f);

    // Everything read, as the writer puts it back.
    const QByteArray resaved = TemplateWriter::bytes(layout, fixedTitle());
    const QString mismatch = testsupport::compareWithGolden(
        resaved, QStringLiteral("templates/handwritten.resaved.cst"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
    TemplateLayout again;
    TemplateReader::readBytes(resaved, again, prompter);
    QCOMPARE(again, layout);
}

void TemplateFileTest::roundTripSample() {
    ScriptedPrompter prompter;
    TemplateLayout first;
    TemplateReader::readBytes(TemplateWriter::bytes(sampleLayout(), fixedTitle()), first, prompter);
    // The shown-but-unplaced box is skipped; the rest comes back.
    QCOMPARE(first.placedBoxCount(), 1);
    QCOMPARE(first.box(1), sampleLayout().box(1));
    QCOMPARE(first.line(1).top, 980);
    QCOMPARE(first.line(1).index, qint16(1));
    QVERIFY(first.rect(2).rectVisible && first.rect(7).rectVisible);
    QCOMPARE(first.rect(2).rectLocation, qint16(1));
    QCOMPARE(first.rect(7).rectLocation, qint16(2));
    QCOMPARE(first.other, sampleLayout().other);

    TemplateLayout second;
    TemplateReader::readBytes(TemplateWriter::bytes(first, fixedTitle()), second, prompter);
    QCOMPARE(second, first);
}

void TemplateFileTest::ranOutOfIndexKeepsWhatWasRead() {
    // 130 slots already hold boxes; the file brings 10 more: 7 fit, then the load ends and
    // neither lines nor rectangles are read.
    TemplateLayout layout;
    for (int slot = 1; slot <= 130; ++slot)
        layout.box(slot).placed = true;
    QByteArray text = "[Box Info]\r\n";
    for (int n = 1; n <= 10; ++n)
        text +=
            QStringLiteral("Box_%1_Placed=1\r\nBox_%1_Caption=Box %1\r\n").arg(n * 13).toLatin1();
    text += "[Line Info]\r\nLine_1_Placed=1\r\n[Rectangle Info]\r\nRect_1_Visible=1\r\n";
    ScriptedPrompter prompter;
    QCOMPARE(TemplateReader::readBytes(text, layout, prompter),
             TemplateReader::Result::RanOutOfIndex);
    QCOMPARE(prompter.calls().size(), 1);
    const ScriptedPrompter::Call &call = prompter.calls().first();
    QCOMPARE(call.kind, QStringLiteral("message"));
    QCOMPARE(call.text, QStringLiteral("Ran out of index"));
    QCOMPARE(call.title, QString());
    QCOMPARE(call.icon, MessageIcon::Critical);
    QCOMPARE(layout.placedBoxCount(), 137);
    QCOMPARE(layout.box(131).caption, QStringLiteral("Box 13"));
    QCOMPARE(layout.box(137).caption, QStringLiteral("Box 91"));
    QCOMPARE(layout.placedLineCount(), 0);
    QCOMPARE(layout.visibleRectCount(), 0);
}

void TemplateFileTest::ranOutOfLineIndex() {
    TemplateLayout layout;
    for (int slot = 1; slot <= 46; ++slot)
        layout.line(slot).placed = true;
    const QByteArray text = "[Line Info]\r\nLine_2_Placed=1\r\nLine_2_Top=5\r\nLine_9_Placed=1\r\n"
                            "[Rectangle Info]\r\nRect_1_Visible=1\r\n";
    ScriptedPrompter prompter;
    QCOMPARE(TemplateReader::readBytes(text, layout, prompter),
             TemplateReader::Result::RanOutOfIndex);
    QCOMPARE(prompter.messages(), QStringList{QStringLiteral("Ran out of index")});
    QCOMPARE(layout.line(47).top, 5);
    QCOMPARE(layout.visibleRectCount(), 0);
}

void TemplateFileTest::missingFileReadsNothing() {
    TemplateLayout layout = sampleLayout();
    ScriptedPrompter prompter;
    QCOMPARE(TemplateReader::read(QStringLiteral("/nonexistent/x.cst"), layout, prompter),
             TemplateReader::Result::Missing);
    QCOMPARE(layout, sampleLayout());
    QVERIFY(prompter.calls().isEmpty());
}

void TemplateFileTest::saveShowsStatus() {
    QTemporaryDir dir;
    ScriptedPrompter prompter;
    const QString path = dir.filePath(QStringLiteral("new.sum"));
    TemplateWriter::save(path, sampleLayout(), prompter);
    QCOMPARE(prompter.calls(QStringLiteral("status")).size(), 2);
    QCOMPARE(prompter.calls().at(0).text, QStringLiteral("Save Template. Please wait..."));
    QCOMPARE(prompter.calls().at(1).text, QString());
    QVERIFY(testsupport::readBytes(path).startsWith("Summary pagelayout template "));

    prompter.clear();
    QVERIFY_THROWS_EXCEPTION(RuntimeError,
                             TemplateWriter::save(dir.path(), sampleLayout(), prompter));
    QCOMPARE(prompter.calls().size(), 2);
    QCOMPARE(prompter.calls().last().text, QString());
}

void TemplateFileTest::randomBytesNeverCrash() {
    QRandomGenerator random(20240315);
    const QByteArray alphabet = "[]=_\r\n \"'01TrueFalse;BoxLineRectInfo_Placed_Visible1234567890"
                                "eE+-.,&H$%\x80\x81\xff\t\0";
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes(int(random.bounded(4000)), '\0');
        const bool structured = round % 2 == 0;
        for (char &c : bytes)
            c = structured ? alphabet.at(int(random.bounded(int(alphabet.size()))))
                           : char(random.bounded(256));
        if (structured)
            bytes.prepend("[Box Info]\r\nBox_1_Placed=1\r\n");
        TemplateLayout layout;
        ScriptedPrompter prompter;
        QCOMPARE(TemplateReader::readBytes(bytes, layout, prompter),
                 TemplateReader::Result::Complete);
    }
}

void TemplateFileTest::truncatedFilesNeverCrash() {
    const QByteArray full = TemplateWriter::bytes(sampleLayout(), fixedTitle());
    ScriptedPrompter prompter;
    for (qsizetype length = 0; length <= full.size(); length += 3) {
        TemplateLayout layout;
        TemplateReader::readBytes(full.left(length), layout, prompter);
        QVERIFY(layout.placedBoxCount() <= 1);
        // Flip one byte as well: still read without a crash.
        QByteArray damaged = full;
        damaged[length % full.size()] = char(damaged.at(length % full.size()) ^ 0x5a);
        TemplateLayout other;
        TemplateReader::readBytes(damaged, other, prompter);
    }
    QVERIFY(prompter.calls().isEmpty());
}

TAVREL_TEST(TemplateFileTest)
#include "TemplateFileTest.moc"

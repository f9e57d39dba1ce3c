#include "render/HtmlFragments.h"
#include "render/HtmlPageSet.h"

#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QTest>

using namespace tavrel;

namespace {

// Fragments are compared as the bytes an export file would hold.
QString golden(const QString &fragment, const QString &name) {
    return testsupport::compareWithGolden(HtmlPageSet::encode(fragment),
                                          "render/export/fragments/" + name);
}

HtmlTextFormat arial10() {
    HtmlTextFormat format;
    format.fontSize = 10;
    format.fontName = "Arial";
    return format;
}

} // namespace

class HtmlFragmentsTest : public QObject {
    Q_OBJECT

private slots:
    void inches_data();
    void inches();
    void colorHex_data();
    void colorHex();
    void fontSizeNumber_data();
    void fontSizeNumber();
    void alignmentWord_data();
    void alignmentWord();
    void alignedText_data();
    void alignedText();
    void joinedDataKeepsSeparators();
    void textParagraphSpelledOut();
    void fragmentsMatchGoldenFiles();
    void hostileValuesStayText_data();
    void hostileValuesStayText();
    void fontFamily_data();
    void fontFamily();
    void injectedFontNameMatchesGolden();
};

void HtmlFragmentsTest::inches_data() {
    QTest::addColumn<double>("twips");
    QTest::addColumn<QString>("expected");
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("negative zero") << -0.0 << "0";
    QTest::newRow("half") << 720.0 << "0.5";
    QTest::newRow("three quarters") << 1080.0 << "0.75";
    QTest::newRow("one") << 1440.0 << "1";
    QTest::newRow("ten") << 14400.0 << "10";
    QTest::newRow("15 digits") << 500.0 << "0.347222222222222";
    QTest::newRow("one twip") << 1.0 << "0.000694444444444444";
    QTest::newRow("negative") << -720.0 << "-0.5";
    QTest::newRow("fraction of a twip") << 0.01 << "6.94444444444444E-06";
    QTest::newRow("page top") << 15840.0 << "11";
}

void HtmlFragmentsTest::inches() {
    QFETCH(double, twips);
    QFETCH(QString, expected);
    QCOMPARE(HtmlFragments::inches(twips), expected);
}

void HtmlFragmentsTest::colorHex_data() {
    QTest::addColumn<quint32>("color");
    QTest::addColumn<QString>("expected");
    QTest::newRow("black") << 0u << "0";
    QTest::newRow("white") << 16777215u << "FFFFFF";
    QTest::newRow("red is the low byte") << 255u << "FF";
    QTest::newRow("blue is the high byte") << 0xFF0000u << "FF0000";
    QTest::newRow("no leading zeros") << 0x00A0B0u << "A0B0";
    QTest::newRow("system colour") << 0x80000005u << "80000005";
}

void HtmlFragmentsTest::colorHex() {
    QFETCH(quint32, color);
    QFETCH(QString, expected);
    QCOMPARE(HtmlFragments::colorHex(color), expected);
}

void HtmlFragmentsTest::fontSizeNumber_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("expected");
    const int table[][2] = {{8, 10},  {9, 11},  {10, 12}, {11, 13}, {12, 14}, {14, 15},
                            {16, 16}, {18, 17}, {20, 18}, {22, 19}, {24, 20}};
    for (const auto &entry : table)
        QTest::addRow("%d pt", entry[0]) << entry[0] << entry[1];
    for (const int other : {0, 7, 13, 15, 23, 25, 72, -10})
        QTest::addRow("%d pt not in the table", other) << other << 0;
}

void HtmlFragmentsTest::fontSizeNumber() {
    QFETCH(int, points);
    QFETCH(int, expected);
    QCOMPARE(HtmlFragments::fontSizeNumber(points), expected);
}

void HtmlFragmentsTest::alignmentWord_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");
    const char *words[] = {"left", "center", "right"};
    for (int code = 0; code <= 8; ++code)
        QTest::addRow("%d", code) << code << QString::fromLatin1(words[code % 3]);
    QTest::newRow("negative") << -1 << "";
    QTest::newRow("nine") << 9 << "";
}

void HtmlFragmentsTest::alignmentWord() {
    QFETCH(int, code);
    QFETCH(QString, expected);
    QCOMPARE(HtmlFragments::alignmentWord(code), expected);
}

void HtmlFragmentsTest::alignedText_data() {
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("expected");
    QTest::newRow("two blanks keep the CR") << "A  B\r"
                                            << "A &nbsp &nbspB\r";
    QTest::newRow("three blanks") << "A   B"
                                  << "A &nbsp &nbsp B";
    QTest::newRow("four blanks") << "A    B"
                                 << "A &nbsp &nbsp &nbsp &nbspB";
    QTest::newRow("CR becomes Br") << "A\rB\r"
                                   << "A<Br>B<Br>";
    QTest::newRow("line feeds untouched") << "A\r\nB\n"
                                          << "A<Br>\nB\n";
    QTest::newRow("single blanks untouched") << "A B C"
                                             << "A B C";
    QTest::newRow("data escaped before the rewriting") << "a<b  c&d\r"
                                                       << "a&lt;b &nbsp &nbspc&amp;d\r";
    QTest::newRow("empty") << ""
                           << "";
}

void HtmlFragmentsTest::alignedText() {
    QFETCH(QString, data);
    QFETCH(QString, expected);
    QCOMPARE(htmlAlignedText(QStringView(data)).text(), expected);
}

void HtmlFragmentsTest::joinedDataKeepsSeparators() {
    const QString noteCodes = "[=Notes:=] <BR> <b>bold</b> <BR>  <BR> A&B";
    QCOMPARE(HtmlMarkup::fromJoinedData(noteCodes, QStringLiteral(" <BR> ")).text(),
             QString("[=Notes:=] <BR> &lt;b&gt;bold&lt;/b&gt; <BR>  <BR> A&amp;B"));
    QCOMPARE(HtmlMarkup::fromJoinedData(QStringLiteral("<x>"), QString()).text(),
             QString("&lt;x&gt;"));
}

void HtmlFragmentsTest::textParagraphSpelledOut() {
    // Black text on a white box, underlined through PrintTextBox: the weight follows underline.
    HtmlTextFormat format = arial10();
    format.underline = true;
    format.weight = format.underline;
    format.textAlign = 4;
    const QString expected =
        "\r\n<P STYLE=\"Position: Absolute; text-align: center; left:0.5in; top:1in; Width: "
        "0.75in; font-size: 12; font-family: Arial; font-weight: bolder; font-style: normal; "
        "text-decoration: underline; background-color: FFFFFF\" >\r\n<font style = \"color: "
        "0\" >Chair</font> </P>";
    QCOMPARE(HtmlFragments::textParagraph(format, 720, 1440, 1080, HtmlMarkup::fromData(u"Chair")),
             expected);
}

void HtmlFragmentsTest::fragmentsMatchGoldenFiles() {
    HtmlTextFormat plain = arial10();
    QString failure = golden(
        HtmlFragments::textParagraph(plain, 720, 1440, 2880, HtmlMarkup::fromData(u"Task Chair")),
        "paragraph_plain.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));

    // PrintAlignedTextBox: bold sets the weight; 13 pt has no size number; colours read BGR.
    HtmlTextFormat aligned;
    aligned.fontSize = 13;
    aligned.fontName = "Times New Roman";
    aligned.weight = true;
    aligned.italic = true;
    aligned.textColor = 255;
    aligned.brushColor = 0xFF0000;
    aligned.textAlign = 8;
    failure = golden(
        HtmlFragments::textParagraph(aligned, 100, 500, 1000, htmlAlignedText(u"Qty  12\rEach")),
        "paragraph_aligned.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));

    const QString logo = "/home/user/Print Templates/logo.bmp";
    failure = golden(HtmlFragments::picture(logo, 1440, 360), "picture_item.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    failure =
        golden(HtmlFragments::picture(logo, 1440, 360, HtmlPictureForm::Band), "picture_band.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));

    failure = golden(HtmlFragments::statusIcon("status112.png", 9000, 2160), "icon_compact.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    failure = golden(HtmlFragments::statusIcon("status112.png", 9000, 2160, HtmlIconForm::Spaced),
                     "icon_spaced.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));

    failure = golden(HtmlFragments::horizontalRule(720, 2000), "rule.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));

    failure = golden(HtmlFragments::topNavigationBar(), "navbar_top.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    failure = golden(HtmlFragments::bottomNavigationBar(13480), "navbar_bottom.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
}

void HtmlFragmentsTest::hostileValuesStayText_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("asText");
    QTest::addColumn<QString>("asAttribute");
    // A font family holds a name and nothing else: it ends where the name does.
    QTest::addColumn<QString>("asFontFamily");
    QTest::newRow("script") << "<script>alert(1)</script>"
                            << "&lt;script&gt;alert(1)&lt;/script&gt;"
                            << "&lt;script&gt;alert(1)&lt;/script&gt;"
                            << "";
    QTest::newRow("ampersand") << "a & b"
                               << "a &amp; b"
                               << "a &amp; b"
                               << "a";
    QTest::newRow("quotes") << "\"quoted\""
                            << "\"quoted\""
                            << "&quot;quoted&quot;"
                            << "";
    QTest::newRow("rtf braces") << "{\\rtf}"
                                << "{\\rtf}"
                                << "{\\rtf}"
                                << "";
    QTest::newRow("accent") << "\u00E9"
                            << "\u00E9"
                            << "\u00E9"
                            << "\u00E9";
}

void HtmlFragmentsTest::hostileValuesStayText() {
    QFETCH(QString, value);
    QFETCH(QString, asText);
    QFETCH(QString, asAttribute);
    QFETCH(QString, asFontFamily);

    QString paragraph =
        HtmlFragments::textParagraph(arial10(), 0, 0, 1440, HtmlMarkup::fromData(value));
    QVERIFY(paragraph.endsWith("\" >" + asText + "</font> </P>"));

    HtmlTextFormat namedFont = arial10();
    namedFont.fontName = value;
    paragraph = HtmlFragments::textParagraph(namedFont, 0, 0, 1440, {});
    QVERIFY2(paragraph.contains("; font-family: " + asFontFamily + "; font-weight: "),
             qPrintable(paragraph));

    QVERIFY(HtmlFragments::picture(value, 0, 0).contains(" SRC=\"" + asAttribute + "\" WIDTH"));
    QVERIFY(HtmlFragments::statusIcon(value, 0, 0).contains("SRC=\"" + asAttribute + "\" WIDTH"));
}

void HtmlFragmentsTest::fontFamily_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("family");
    QTest::newRow("plain") << "Arial"
                           << "Arial";
    QTest::newRow("blanks inside") << "Times New Roman"
                                   << "Times New Roman";
    QTest::newRow("dash and dot") << "Liberation Sans-Bold 2.1"
                                  << "Liberation Sans-Bold 2.1";
    QTest::newRow("blanks around") << "  Courier New  "
                                   << "Courier New";
    QTest::newRow("new declaration") << "Arial; background-image: url(http://127.0.0.1:8765/x)"
                                     << "Arial";
    QTest::newRow("colon") << "Arial:x"
                           << "Arial";
    QTest::newRow("quote ends the attribute") << "Arial\" onmouseover=\"x"
                                              << "Arial";
    QTest::newRow("css escape") << "Arial\\3b color: red"
                                << "Arial";
    QTest::newRow("comment") << "Arial/**/;color:red"
                             << "Arial";
    QTest::newRow("brace") << "Arial}body{color:red"
                           << "Arial";
    QTest::newRow("line break") << "Arial\ncolor: red"
                                << "Arial";
    QTest::newRow("nothing left") << ";color:red"
                                  << "";
}

void HtmlFragmentsTest::fontFamily() {
    QFETCH(QString, name);
    QFETCH(QString, family);
    QCOMPARE(HtmlFragments::fontFamily(name), family);
}

// The paragraph of a box whose template names a font that tries to add a declaration of its own.
void HtmlFragmentsTest::injectedFontNameMatchesGolden() {
    HtmlTextFormat format = arial10();
    format.fontName = "Arial; background-image: url(http://127.0.0.1:8765/x)";
    const QString failure =
        golden(HtmlFragments::textParagraph(format, 720, 1440, 2880, HtmlMarkup::fromData(u"Desk")),
               "paragraph_font_injection.txt");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
}

TAVREL_TEST(HtmlFragmentsTest)
#include "HtmlFragmentsTest.moc"

#include "render/TextLayout.h"
#include "TestSection.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/PageEngine.h"

#include <QTest>

using namespace tavrel;

namespace {

TextItem lastText(const PageEngine &engine) {
    const Page &page = engine.page(engine.PageCount());
    return std::get<TextItem>(page.items.back());
}

QStringList linesOf(const TextItem &item) {
    QStringList lines;
    for (const TextLine &line : item.lines)
        lines << item.text.mid(line.start, line.length);
    return lines;
}

} // namespace

class TextLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void breaking_data();
    void breaking();
    void longWordBreaksInsideTheWord();
    void measureEqualsDraw_data();
    void measureEqualsDraw();
    void alignment_data();
    void alignment();
    void lineHeightIsTheFontsLineSpacing();
    void emptyTextTakesNoSpace();
    void textBeyondThePaperIsCut_data();
    void textBeyondThePaperIsCut();
    void textThatFitsIsKeptWhole();

private:
    std::unique_ptr<PageEngine> m_engine;
};

void TextLayoutTest::init() {
    m_engine = std::make_unique<PageEngine>();
    m_engine->setFontName(QStringLiteral("Arial"));
    m_engine->setFontSize(8);
    m_engine->StartDoc();
}

void TextLayoutTest::breaking_data() {
    // The box is as wide as "fits" plus a little, so the expected breaks follow from the font.
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fits");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("one line") << "alpha beta"
                              << "alpha beta gamma delta" << strings({"alpha beta"});
    QTest::newRow("wrap at blank") << "alpha beta gamma"
                                   << "alpha beta" << strings({"alpha beta", "gamma"});
    QTest::newRow("blanks at the break vanish") << "alpha   beta"
                                                << "alpha" << strings({"alpha", "beta"});
    QTest::newRow("three lines") << "alpha beta alpha beta alpha"
                                 << "alpha beta" << strings({"alpha beta", "alpha beta", "alpha"});
    QTest::newRow("carriage return") << "A\rB"
                                     << "AAAA" << strings({"A", "B"});
    QTest::newRow("crlf is one break") << "A\r\nB"
                                       << "AAAA" << strings({"A", "B"});
    QTest::newRow("line feed") << "A\nB"
                               << "AAAA" << strings({"A", "B"});
    QTest::newRow("empty line kept") << "A\r\n\r\nB"
                                     << "AAAA" << strings({"A", "", "B"});
    QTest::newRow("leading break") << "\rB"
                                   << "AAAA" << strings({"", "B"});
    QTest::newRow("trailing break") << "A\r"
                                    << "AAAA" << strings({"A", ""});
    QTest::newRow("break then wrap") << "x\ralpha beta gamma"
                                     << "alpha beta" << strings({"x", "alpha beta", "gamma"});
}

void TextLayoutTest::breaking() {
    QFETCH(QString, text);
    QFETCH(QString, fits);
    QFETCH(QStringList, expected);
    const double width = m_engine->TextWidth(fits) + 1;
    m_engine->TextBox(text, 1440, 1440, width, 0);
    QCOMPARE(linesOf(lastText(*m_engine)), expected);
}

void TextLayoutTest::longWordBreaksInsideTheWord() {
    const QString word = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    const double width = m_engine->TextWidth(QStringLiteral("ABCDEF")) + 1;
    m_engine->TextBox(QStringLiteral("to ") + word, 0, 0, width, 0);
    const TextItem item = lastText(*m_engine);
    const QStringList lines = linesOf(item);
    QVERIFY2(lines.size() >= 5, qPrintable(lines.join(QLatin1Char('|'))));
    QCOMPARE(lines.first(), QStringLiteral("to"));
    QCOMPARE(lines.mid(1).join(QString()), word);
    for (const TextLine &line : item.lines)
        QVERIFY(line.width <= width);
}

void TextLayoutTest::measureEqualsDraw_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("size");
    QTest::newRow("short") << "Qty" << 600.0 << 8;
    QTest::newRow("wrapped") << "Height-adjustable desk with 2 box drawers, grommets, levelers"
                             << 1500.0 << 8;
    QTest::newRow("big font") << "Executive lounge chair with arms" << 2000.0 << 14;
    QTest::newRow("returns") << "Line 1\r\nLine 2\rLine 3 is a rather long line" << 1200.0 << 10;
}

void TextLayoutTest::measureEqualsDraw() {
    QFETCH(QString, text);
    QFETCH(double, width);
    QFETCH(int, size);
    m_engine->setFontSize(size);
    m_engine->CalcParagraph(text, width);
    const double measured = m_engine->TextHeight();
    QVERIFY(measured > 0);
    // Measuring draws nothing.
    QCOMPARE(m_engine->page(1).items.size(), std::size_t(0));

    const double top = 2000;
    m_engine->TextBox(text, 720, top, width, 0);
    QCOMPARE(m_engine->CurrentY(), top + measured);
    const TextItem item = lastText(*m_engine);
    QCOMPARE(item.height, measured);

    // A box drawn without measuring first lays out the same lines.
    PageEngine fresh;
    fresh.setFontSize(size);
    fresh.StartDoc();
    fresh.TextBox(text, 720, top, width, 0);
    QCOMPARE(linesOf(lastText(fresh)), linesOf(item));
    QCOMPARE(fresh.CurrentY(), top + measured);
}

void TextLayoutTest::alignment_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("horizontal"); // 0 left, 1 centre, 2 right
    QTest::addColumn<int>("vertical");   // 0 top, 1 bottom, 2 middle
    for (int code = 0; code <= 8; ++code)
        QTest::addRow("code %d", code) << code << code % 3 << code / 3;
    QTest::newRow("code 9 is left top") << 9 << 0 << 0;
    QTest::newRow("negative is left top") << -1 << 0 << 0;
}

void TextLayoutTest::alignment() {
    QFETCH(int, code);
    QFETCH(int, horizontal);
    QFETCH(int, vertical);
    const QString text = QStringLiteral("Total");
    const double textWidth = m_engine->TextWidth(text);
    m_engine->setTextAlign(code);
    const double left = 1000, top = 3000, width = 4000, height = 1000;
    m_engine->TextBox(text, left, top, width, height);
    const TextItem item = lastText(*m_engine);
    const double textHeight =
        double(item.lines.size()) * m_engine->fonts().at(item.font).lineSpacing;

    const std::optional<TextMatch> match = m_engine->FindText(text, 1);
    QVERIFY(match);
    const double expectedLeft = left + horizontal * (width - textWidth) / 2;
    QVERIFY2(qAbs(match->rect.left() - expectedLeft) < 0.01,
             qPrintable(QString::number(match->rect.left())));
    const double expectedTop = top + (vertical == 0   ? 0
                                      : vertical == 1 ? height - textHeight
                                                      : (height - textHeight) / 2);
    QCOMPARE(item.textTop, expectedTop);
    QCOMPARE(m_engine->CurrentY(), expectedTop + textHeight);
}

void TextLayoutTest::lineHeightIsTheFontsLineSpacing() {
    // Liberation Sans (Arial) 8 pt: 9.2 pt from line to line, 184 twips.
    m_engine->CalcParagraph(QStringLiteral("A\rB\rC"), 5000);
    QVERIFY2(qAbs(m_engine->TextHeight() - 3 * 184) < 3,
             qPrintable(QString::number(m_engine->TextHeight())));
}

void TextLayoutTest::emptyTextTakesNoSpace() {
    m_engine->CalcParagraph(QString(), 2000);
    QCOMPARE(m_engine->TextHeight(), 0.0);
    m_engine->TextBox(QString(), 100, 500, 2000, 0, true, false, false);
    QCOMPARE(m_engine->CurrentY(), 500.0);
    QCOMPARE(m_engine->page(1).items.size(), std::size_t(0));
}

void TextLayoutTest::textBeyondThePaperIsCut_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("width");
    QTest::addColumn<bool>("wrap");
    const QString words = QStringLiteral("Executive desk with return ").repeated(150000);
    QTest::newRow("4 M characters of words, wrapped") << words << 3000.0 << true;
    QTest::newRow("4 M characters of words, one line") << words << 3000.0 << false;
    QTest::newRow("one word of 4 M characters")
        << QString(4000000, QLatin1Char('w')) << 3000.0 << true;
    QTest::newRow("a million short lines")
        << QStringLiteral("Desk\r\n").repeated(1000000) << 3000.0 << true;
    QTest::newRow("wrapped wider than the paper") << words << 40000.0 << true;
}

// A text far longer than any page keeps and lays out only its start, bounded, and the lines
// that fall on the paper are exactly those of the whole text.
void TextLayoutTest::textBeyondThePaperIsCut() {
    QFETCH(QString, text);
    QFETCH(double, width);
    QFETCH(bool, wrap);
    m_engine->TextBox(text, 720, 720, width, 0, wrap, false, false);
    const TextItem item = lastText(*m_engine);
    QVERIFY(text.startsWith(item.text));
    QVERIFY2(item.text.size() < 200000, qPrintable(QString::number(item.text.size())));
    const FontEntry &font = m_engine->fonts().at(item.font);
    // Still more than the paper shows, below it or to its right.
    QVERIFY(item.textTop + double(item.lines.size()) * font.lineSpacing > m_engine->PageHeight() ||
            item.x + item.lines.back().width > m_engine->PageWidth());

    const LaidOutText whole = layoutText(text.left(item.text.size() * 2), font, width, wrap);
    for (std::size_t i = 0; i < item.lines.size(); ++i) {
        if (item.textTop + double(i) * font.lineSpacing > m_engine->PageHeight())
            break;
        QCOMPARE(item.lines[i].start, whole.lines[i].start);
        if (i + 1 < item.lines.size())
            QCOMPARE(item.lines[i].length, whole.lines[i].length);
        else // a line cut short still runs past the paper's edge
            QVERIFY(item.x + item.lines[i].width > m_engine->PageWidth());
    }
}

// Texts as they come in real specifications are never touched, in any font size.
void TextLayoutTest::textThatFitsIsKeptWhole() {
    const QString description =
        QStringLiteral("Lateral file, 3 drawers, locking core, 36W x 18D x 40H, ").repeated(40);
    for (int size : {1, 8, 24, 72}) {
        m_engine->setFontSize(size);
        const double longer = std::max(m_engine->PageWidth(), m_engine->PageHeight());
        for (double width : {200.0, 3000.0, 11000.0}) {
            m_engine->TextBox(description, 720, 720, width, 0, true, false, false);
            const TextItem item = lastText(*m_engine);
            const FontEntry &used = m_engine->fonts().at(item.font);
            const double shown = double(item.lines.size()) * used.lineSpacing;
            // Cut only when what is kept already runs past the paper.
            if (item.text.size() < description.size())
                QVERIFY(shown > longer);
            else
                QCOMPARE(item.text, description);
            QCOMPARE(visiblePart(description, used, width, true, longer).size(), item.text.size());
        }
    }
}

TAVREL_TEST(TextLayoutTest)
#include "TextLayoutTest.moc"

#include "common/TestRegistry.h"
#include "render/DisplayList.h"

#include <QTest>

#include <bit>
#include <limits>

using namespace tavrel;

namespace {

// Exact comparison: a float that rounds a coordinate is a fault even where fuzzy comparison
// would pass.
quint64 bits(double value) {
    return std::bit_cast<quint64>(value);
}

QString describe(const TextItem &item) {
    QStringList lines;
    for (const TextLine &line : item.lines)
        lines << QStringLiteral("%1+%2:%3").arg(line.start).arg(line.length).arg(line.width);
    return QStringLiteral("%1 %2 %3 %4 %5 \"%6\" [%7] font %8 align %9 color %10 background %11")
        .arg(item.x, 0, 'g', 17)
        .arg(item.y, 0, 'g', 17)
        .arg(item.width, 0, 'g', 17)
        .arg(item.height, 0, 'g', 17)
        .arg(item.textTop, 0, 'g', 17)
        .arg(item.text, lines.join(QLatin1Char(' ')))
        .arg(item.font)
        .arg(item.align)
        .arg(item.color)
        .arg(item.background);
}

bool same(const TextItem &a, const TextItem &b) {
    if (bits(a.x) != bits(b.x) || bits(a.y) != bits(b.y) || bits(a.width) != bits(b.width) ||
        bits(a.height) != bits(b.height) || bits(a.textTop) != bits(b.textTop) ||
        a.text != b.text || a.font != b.font || a.align != b.align || a.color != b.color ||
        a.background != b.background || a.lines.size() != b.lines.size())
        return false;
    for (std::size_t i = 0; i < a.lines.size(); ++i) {
        if (a.lines[i].start != b.lines[i].start || a.lines[i].length != b.lines[i].length ||
            std::bit_cast<quint32>(a.lines[i].width) != std::bit_cast<quint32>(b.lines[i].width))
            return false;
    }
    return true;
}

bool same(const LineItem &a, const LineItem &b) {
    return bits(a.x1) == bits(b.x1) && bits(a.y1) == bits(b.y1) && bits(a.x2) == bits(b.x2) &&
           bits(a.y2) == bits(b.y2) && a.color == b.color && a.style == b.style &&
           bits(a.penWidth) == bits(b.penWidth);
}

// A cell as the body draws it: one line that is the whole text.
TextItem cell(const QString &text = QStringLiteral("Desk")) {
    TextItem item;
    item.x = 720;
    item.y = 1440.5;
    item.width = 2000;
    item.height = 207.0625;
    item.textTop = 1440.5;
    item.text = text;
    if (!text.isEmpty())
        item.lines = TextLines{{0, qint32(text.size()), 310.453125f}};
    item.font = 3;
    item.align = 2;
    item.color = 0x123456;
    return item;
}

LineItem rule(double x1 = 720) {
    return LineItem{x1, 2000.25, 11520, 2000.25, 0xFF, PenStyles::Dash, 15};
}

} // namespace

class DisplayItemsTest : public QObject {
    Q_OBJECT

private slots:
    void textComesBackAsAdded_data();
    void textComesBackAsAdded();
    void lineComesBackAsAdded_data();
    void lineComesBackAsAdded();
    void itemsKeepTheirOrder();
    void fontsAreRenumbered_data();
    void fontsAreRenumbered();
};

void DisplayItemsTest::textComesBackAsAdded_data() {
    QTest::addColumn<TextItem>("item");
    QTest::newRow("one line, the whole text") << cell();
    QTest::newRow("all but the colour at zero") << [] {
        TextItem item = cell(QStringLiteral("x"));
        item.x = item.y = item.width = item.height = item.textTop = 0;
        item.lines = TextLines{{0, 1, 0.0f}};
        item.font = item.align = 0;
        return item;
    }();
    QTest::newRow("an empty shaded box") << [] {
        TextItem item = cell(QString());
        item.background = 0xC0C0C0;
        return item;
    }();
    QTest::newRow("three lines") << [] {
        TextItem item = cell(QStringLiteral("one\r\ntwo\rthree"));
        item.lines = TextLines{{0, 3, 20.5f}, {5, 3, 21.25f}, {9, 5, 40}};
        return item;
    }();
    QTest::newRow("one line short of its text") << [] {
        TextItem item = cell(QStringLiteral("wrapped   "));
        item.lines = TextLines{{0, 7, 99.5f}};
        return item;
    }();
    QTest::newRow("one line starting late") << [] {
        TextItem item = cell(QStringLiteral("\rB"));
        item.lines = TextLines{{1, 1, 9}};
        return item;
    }();
    QTest::newRow("a text without lines") << [] {
        TextItem item = cell();
        item.lines = TextLines();
        return item;
    }();
    QTest::newRow("an empty text with an empty line") << [] {
        TextItem item = cell(QString());
        item.lines = TextLines{{0, 0, 0}};
        return item;
    }();
    QTest::newRow("300 lines") << [] {
        TextItem item = cell(QString(300, QLatin1Char('\r')));
        std::vector<TextLine> lines;
        for (int i = 0; i < 300; ++i)
            lines.push_back({i, 0, 0});
        item.lines = lines;
        return item;
    }();
    QTest::newRow("a third of a twip") << [] {
        TextItem item = cell();
        item.y = item.textTop = 1000.0 / 3.0;
        return item;
    }();
    QTest::newRow("too many digits for a float") << [] {
        TextItem item = cell();
        item.height = 539810.15625;
        return item;
    }();
    QTest::newRow("beyond a float's range") << [] {
        TextItem item = cell();
        item.width = 1e300;
        return item;
    }();
    QTest::newRow("infinite") << [] {
        TextItem item = cell();
        item.x = -std::numeric_limits<double>::infinity();
        return item;
    }();
    QTest::newRow("negative zero") << [] {
        TextItem item = cell();
        item.textTop = -0.0;
        return item;
    }();
    QTest::newRow("font 255") << [] {
        TextItem item = cell();
        item.font = 255;
        return item;
    }();
    QTest::newRow("font 256") << [] {
        TextItem item = cell();
        item.font = 256;
        return item;
    }();
    QTest::newRow("alignment -1") << [] {
        TextItem item = cell();
        item.align = -1;
        return item;
    }();
    QTest::newRow("alignment 1000") << [] {
        TextItem item = cell();
        item.align = 1000;
        return item;
    }();
    QTest::newRow("white on white") << [] {
        TextItem item = cell();
        item.color = item.background = WhiteColor;
        return item;
    }();
    QTest::newRow("a colour beyond 24 bits") << [] {
        TextItem item = cell();
        item.color = 0x80000005;
        return item;
    }();
    QTest::newRow("a background beyond 24 bits") << [] {
        TextItem item = cell();
        item.background = 0x1000000;
        return item;
    }();
    QTest::newRow("a background of -2") << [] {
        TextItem item = cell();
        item.background = -2;
        return item;
    }();
}

// Whatever a text holds, it comes back bit for bit, between other items of the page.
void DisplayItemsTest::textComesBackAsAdded() {
    QFETCH(TextItem, item);
    DisplayItems items;
    items.push_back(cell(QStringLiteral("before")));
    items.push_back(rule());
    items.push_back(item);
    items.push_back(cell(QStringLiteral("after")));
    QCOMPARE(items.size(), std::size_t(4));
    const PageItem third = items[2];
    const auto *got = std::get_if<TextItem>(&third);
    QVERIFY(got);
    QVERIFY2(same(*got, item),
             qPrintable(describe(*got) + QStringLiteral("\nwanted ") + describe(item)));
    std::size_t at = 0;
    for (const PageItem &read : items) {
        if (at == 2)
            QVERIFY(same(std::get<TextItem>(read), item));
        ++at;
    }
    QVERIFY(same(std::get<TextItem>(items.back()), cell(QStringLiteral("after"))));
    QVERIFY(same(std::get<TextItem>(items[0]), cell(QStringLiteral("before"))));
    // A copy of the page, as the preview gets it, and a page given back its spare room.
    DisplayItems copy = items;
    copy.trim(0);
    QVERIFY(same(std::get<TextItem>(copy[2]), item));
    QVERIFY(same(std::get<TextItem>(copy.back()), cell(QStringLiteral("after"))));
}

void DisplayItemsTest::lineComesBackAsAdded_data() {
    QTest::addColumn<LineItem>("item");
    QTest::newRow("a rule") << rule();
    QTest::newRow("a tenth of a twip") << rule(0.1);
    QTest::newRow("too many digits for a float")
        << LineItem{16777217, 0, 0, 0, BlackColor, PenStyles::Solid, 0};
    QTest::newRow("a pen style beyond 255") << LineItem{0, 0, 100, 0, BlackColor, 256, 0};
    QTest::newRow("a negative pen style") << LineItem{0, 0, 100, 0, BlackColor, -1, 0};
    QTest::newRow("a colour beyond 24 bits")
        << LineItem{0, 0, 100, 0, 0xFF000000, PenStyles::Solid, 0};
    QTest::newRow("a pen a float cannot hold")
        << LineItem{0, 0, 100, 0, BlackColor, PenStyles::Solid, 0.3};
}

void DisplayItemsTest::lineComesBackAsAdded() {
    QFETCH(LineItem, item);
    DisplayItems items;
    items.push_back(rule(1));
    items.push_back(cell());
    items.push_back(item);
    items.push_back(rule(2));
    const PageItem third = items[2];
    const auto *got = std::get_if<LineItem>(&third);
    QVERIFY(got);
    QVERIFY(same(*got, item));
    QVERIFY(same(std::get<LineItem>(items.back()), rule(2)));
    QVERIFY(same(std::get<LineItem>(items[0]), rule(1)));
}

// Texts, lines and the items kept whole lie apart; reading must interleave them as drawn.
void DisplayItemsTest::itemsKeepTheirOrder() {
    DisplayItems items;
    QVERIFY(items.empty());
    QVERIFY(items.begin() == items.end());
    std::vector<PageItem> added;
    const auto add = [&](PageItem item) {
        added.push_back(item);
        items.push_back(std::move(item));
    };
    for (int i = 0; i < 40; ++i) {
        TextItem text = cell(QStringLiteral("text %1").arg(i));
        if (i % 7 == 3)
            text.x += 0.1; // kept whole
        if (i % 5 == 1)
            text.lines = TextLines{{0, 4, 10}, {5, 1, 5}};
        add(text);
        if (i % 3 == 0)
            add(rule(i % 9 == 0 ? 0.1 : i));
        if (i % 4 == 0)
            add(RectItem{1, 2, 3.5, 4.25, 5, PenStyles::Dot, 0.5, 6, BrushStyles::Cross});
        if (i % 11 == 0)
            add(PictureItem{QStringLiteral("logo%1.png").arg(i), 1, 2, 3, 4});
    }
    DisplayItems reserved;
    reserved.reserveLike(items, 4);
    for (const PageItem &item : items)
        reserved.push_back(item);
    for (const DisplayItems *page : {&items, &reserved}) {
        QCOMPARE(page->size(), added.size());
        std::size_t at = 0;
        for (auto it = page->begin(); it != page->end(); ++it, ++at) {
            const PageItem got = *it;
            QCOMPARE(got.index(), added[at].index());
            QCOMPARE((*page)[at].index(), added[at].index());
            if (const auto *text = std::get_if<TextItem>(&got))
                QVERIFY2(same(*text, std::get<TextItem>(added[at])), qPrintable(text->text));
            else if (const auto *line = std::get_if<LineItem>(&got))
                QVERIFY(same(*line, std::get<LineItem>(added[at])));
            else if (const auto *rect = std::get_if<RectItem>(&got))
                QCOMPARE(rect->brushStyle, BrushStyles::Cross);
            else
                QCOMPARE(std::get<PictureItem>(got).path, std::get<PictureItem>(added[at]).path);
        }
        QCOMPARE(at, added.size());
    }
}

void DisplayItemsTest::fontsAreRenumbered_data() {
    QTest::addColumn<int>("renumbered");
    QTest::newRow("to a small number") << 7;
    QTest::newRow("to a number a compact text cannot hold") << 400;
}

// Pages handed over from another engine take this engine's font numbers; a font number the
// other engine does not know stays.
void DisplayItemsTest::fontsAreRenumbered() {
    QFETCH(int, renumbered);
    std::vector<TextItem> added;
    DisplayItems items;
    for (int i = 0; i < 6; ++i) {
        TextItem text = cell(QStringLiteral("text %1").arg(i));
        text.font = i % 3; // font 2 is not in the index
        if (i == 4)
            text.x = 0.1; // kept whole
        if (i == 5)
            text.lines = TextLines{{0, 4, 10}, {5, 1, 5}};
        added.push_back(text);
        items.push_back(text);
        items.push_back(rule(i));
    }
    items.remapFonts({renumbered, 0});
    QCOMPARE(items.size(), added.size() * 2);
    for (std::size_t i = 0; i < added.size(); ++i) {
        TextItem want = added[i];
        want.font = want.font == 0 ? renumbered : want.font == 1 ? 0 : 2;
        const TextItem got = std::get<TextItem>(items[2 * i]);
        QVERIFY2(same(got, want), qPrintable(describe(got)));
        QVERIFY(same(std::get<LineItem>(items[2 * i + 1]), rule(double(i))));
    }
}

TAVREL_TEST(DisplayItemsTest)
#include "DisplayItemsTest.moc"

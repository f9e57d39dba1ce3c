#include "render/PageEngine.h"
#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/ImageOutput.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

int errorNumberOf(const std::function<void()> &call) {
    try {
        call();
    } catch (const RuntimeError &error) {
        return error.number();
    }
    return 0;
}

QString writeImage(const QString &folder, const QString &name, int width, int height,
                   int dotsPerInch) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::blue);
    if (dotsPerInch > 0) {
        image.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
        image.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
    }
    const QString path = folder + QLatin1Char('/') + name;
    image.save(path);
    return path;
}

} // namespace

class PageEngineTest : public QObject {
    Q_OBJECT

private slots:
    void pagesAndOrientation();
    void overlayAppendsToAFinishedPage();
    void overlayAndPageErrors();
    void newPageNotification();
    void pictureSizes_data();
    void pictureSizes();
    void pictureErrors();
    void picturesDecodeAtTheSizeTheyPrint_data();
    void picturesDecodeAtTheSizeTheyPrint();
    void decodedPicturesKeepToTheByteBudget();
    void pageLimitStopsAtTheFirstPagePastIt();
    void findTextFromAPageOn();
    void colourNumbersHaveRedInTheLowByte();
    void textLinesSurviveCopyAndMove_data();
    void textLinesSurviveCopyAndMove();
};

void PageEngineTest::pagesAndOrientation() {
    PageEngine engine;
    QCOMPARE(engine.PageWidth(), 12240.0);
    QCOMPARE(engine.PageHeight(), 15840.0);
    engine.setOrientation(1);
    QCOMPARE(engine.PageWidth(), 15840.0);
    QCOMPARE(engine.PageHeight(), 12240.0);
    engine.setMarginTop(720);
    engine.StartDoc();
    QCOMPARE(engine.CurrentY(), 720.0);
    engine.setCurrentY(5000);
    engine.NewPage();
    QCOMPARE(engine.CurrentY(), 720.0); // a new page starts at the top margin
    QCOMPARE(engine.PageCount(), 2);
    QCOMPARE(engine.PreviewPage(), 2);
    QVERIFY(engine.page(2).landscape);
    QCOMPARE(engine.page(2).width, 15840.0);
    engine.EndDoc();
    engine.Clear();
    QCOMPARE(engine.PageCount(), 0);
}

void PageEngineTest::overlayAppendsToAFinishedPage() {
    PageEngine engine;
    engine.StartDoc();
    engine.TextBox(QStringLiteral("first"), 0, 0, 2000, 0);
    engine.NewPage();
    engine.TextBox(QStringLiteral("second"), 0, 0, 2000, 0);
    engine.NewPage();
    engine.EndDoc();
    QCOMPARE(engine.page(2).items.size(), std::size_t(1));

    engine.StartOverlay(2);
    engine.TextBox(QStringLiteral("on top"), 0, 14000, 2000, 0);
    engine.DrawLine(0, 13900, 12240, 13900);
    engine.EndOverlay();
    QCOMPARE(engine.page(1).items.size(), std::size_t(1));
    QCOMPARE(engine.page(2).items.size(), std::size_t(3));
    QCOMPARE(std::get<TextItem>(engine.page(2).items[1]).text, QStringLiteral("on top"));
    QCOMPARE(engine.page(3).items.size(), std::size_t(0));
    QCOMPARE(engine.PageCount(), 3);
}

void PageEngineTest::overlayAndPageErrors() {
    PageEngine engine;
    // Nothing to draw on before StartDoc or after EndDoc.
    QCOMPARE(errorNumberOf([&] { engine.TextBox(QStringLiteral("x"), 0, 0, 100, 0); }), 5);
    engine.StartDoc();
    engine.NewPage();
    QCOMPARE(errorNumberOf([&] { engine.StartOverlay(0); }), 5);
    QCOMPARE(errorNumberOf([&] { engine.StartOverlay(3); }), 5);
    QCOMPARE(errorNumberOf([&] { engine.EndOverlay(); }), 5);
    engine.StartOverlay(1);
    QCOMPARE(errorNumberOf([&] { engine.NewPage(); }), 5);
    engine.EndOverlay();
    engine.EndDoc();
    QCOMPARE(errorNumberOf([&] { engine.DrawLine(0, 0, 1, 1); }), 5);
    QCOMPARE(errorNumberOf([&] { engine.setOrientation(2); }), 5);
}

void PageEngineTest::newPageNotification() {
    PageEngine engine;
    QList<int> heard;
    const int id = engine.addNewPageListener([&](int page) {
        heard << page;
        // A listener draws on the page that has just begun.
        engine.TextBox(QStringLiteral("header"), 0, 0, 3000, 0);
    });
    engine.StartDoc();
    QVERIFY(heard.isEmpty()); // StartDoc's first page is not a NewPage
    engine.NewPage();
    engine.NewPage();
    QCOMPARE(heard, (QList<int>{2, 3}));
    QCOMPARE(engine.page(3).items.size(), std::size_t(1));
    engine.removeNewPageListener(id);
    engine.NewPage();
    QCOMPARE(heard.size(), 2);
}

void PageEngineTest::pictureSizes_data() {
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("size");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");
    // 96 x 48 pixels.
    QTest::newRow("no resolution is 96 dpi") << 0 << "100%" << 1440.0 << 720.0;
    QTest::newRow("75%") << 0 << "75%" << 1080.0 << 540.0;
    QTest::newRow("own resolution") << 48 << "100%" << 2880.0 << 1440.0;
    QTest::newRow("own resolution 50%") << 192 << "50%" << 360.0 << 180.0;
    QTest::newRow("empty is natural") << 0 << "" << 1440.0 << 720.0;
    QTest::newRow("twips") << 0 << "500" << 500.0 << 500.0;
}

void PageEngineTest::pictureSizes() {
    QFETCH(int, dpi);
    QFETCH(QString, size);
    QFETCH(double, width);
    QFETCH(double, height);
    QTemporaryDir dir;
    const QString path = writeImage(dir.path(), QStringLiteral("logo.png"), 96, 48, dpi);
    PageEngine engine;
    engine.StartDoc();
    engine.DrawPicture(path, 100, 200, size, size);
    const auto picture = std::get<PictureItem>(engine.page(1).items.back());
    QCOMPARE(picture.x, 100.0);
    QCOMPARE(picture.y, 200.0);
    QVERIFY2(qAbs(picture.width - width) < 0.5, qPrintable(QString::number(picture.width)));
    QVERIFY2(qAbs(picture.height - height) < 0.5, qPrintable(QString::number(picture.height)));
}

void PageEngineTest::pictureErrors() {
    QTemporaryDir dir;
    PageEngine engine;
    engine.StartDoc();
    QCOMPARE(errorNumberOf([&] {
                 engine.DrawPicture(dir.filePath(QStringLiteral("missing.png")), 0, 0,
                                    QStringLiteral("100%"), QStringLiteral("100%"));
             }),
             53);
    const QString text = dir.filePath(QStringLiteral("not-a-picture.png"));
    testsupport::writeBytes(text, "hello");
    QCOMPARE(errorNumberOf([&] {
                 engine.DrawPicture(text, 0, 0, QStringLiteral("100%"), QStringLiteral("100%"));
             }),
             481);
    // The report says which picture.
    try {
        engine.DrawPicture(text, 0, 0, QStringLiteral("100%"), QStringLiteral("100%"));
    } catch (const RuntimeError &error) {
        QCOMPARE(error.description(), QStringLiteral("Invalid picture (") + text + ")");
    }
    QCOMPARE(engine.page(1).items.size(), std::size_t(0));

    // Decoded once: the same picture drawn twice shares one image.
    const QString path = writeImage(dir.path(), QStringLiteral("a.png"), 10, 10, 0);
    engine.DrawPicture(path, 0, 0, QStringLiteral("100%"), QStringLiteral("100%"));
    const QSizeF size(150, 150);
    const qint64 key = engine.pictures().image(path, size).cacheKey();
    engine.DrawPicture(path, 0, 500, QStringLiteral("50%"), QStringLiteral("50%"));
    QCOMPARE(engine.pictures().image(path, size).cacheKey(), key);
}

void PageEngineTest::picturesDecodeAtTheSizeTheyPrint_data() {
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QSize>("decoded");
    // 3000 x 1500 pixels.
    QTest::newRow("96 dpi at 100% keeps every pixel") << 0 << "100%" << QSize(3000, 1500);
    QTest::newRow("96 dpi at 10% prints 3.125 in: 300 dpi") << 0 << "10%" << QSize(938, 469);
    QTest::newRow("600 dpi at 100%: 300 dpi") << 600 << "100%" << QSize(1500, 750);
    // Drawn one inch square: 300 pixels down, and the proportions of the file kept.
    QTest::newRow("twips: one inch square") << 0 << "1440" << QSize(600, 300);
    QTest::newRow("a tiny print keeps one pixel") << 0 << "1" << QSize(1, 1);
}

// A picture is never decoded at more pixels than print needs: the natural size still comes
// from the file's own pixels and resolution.
void PageEngineTest::picturesDecodeAtTheSizeTheyPrint() {
    QFETCH(int, dpi);
    QFETCH(QString, size);
    QFETCH(QSize, decoded);
    QTemporaryDir dir;
    const QString path = writeImage(dir.path(), QStringLiteral("big.png"), 3000, 1500, dpi);
    PageEngine engine;
    engine.StartDoc();
    engine.DrawPicture(path, 0, 0, size, size);
    const auto item = std::get<PictureItem>(engine.page(1).items.back());
    const QImage image = engine.pictures().image(path, QSizeF(item.width, item.height));
    // A picture this large is sized from a smaller decode: its resolution, and so the pixels
    // wanted, may be a hair off.
    QVERIFY2(qAbs(image.width() - decoded.width()) <= 1 &&
                 qAbs(image.height() - decoded.height()) <= 1,
             qPrintable(QStringLiteral("%1 x %2").arg(image.width()).arg(image.height())));
    QCOMPARE(image.pixel(image.width() / 2, image.height() / 2), QColor(Qt::blue).rgb());
}

void PageEngineTest::decodedPicturesKeepToTheByteBudget() {
    QTemporaryDir dir;
    // Each decoded picture is 400 x 400 x 4 bytes = 640,000 bytes; the budget holds two.
    PictureCache cache(1400000);
    QStringList paths;
    for (int i = 0; i < 5; ++i)
        paths << writeImage(dir.path(), QStringLiteral("p%1.png").arg(i), 400, 400, 0);
    const QSizeF printed(6000, 6000);
    for (const QString &path : paths) {
        cache.load(path);
        QCOMPARE(cache.image(path, printed).size(), QSize(400, 400));
        QVERIFY(cache.cachedBytes() <= 1400000);
    }
    QCOMPARE(cache.cachedBytes(), qint64(2 * 640000));
    // The first one was dropped and comes back from its file when drawn again.
    QCOMPARE(cache.image(paths.first(), printed).size(), QSize(400, 400));
    // A picture bigger than the whole budget is drawn but not kept.
    PictureCache small(1000);
    QCOMPARE(small.image(paths.first(), printed).size(), QSize(400, 400));
    QCOMPARE(small.cachedBytes(), qint64(0));
}

void PageEngineTest::pageLimitStopsAtTheFirstPagePastIt() {
    PageEngine engine;
    engine.StartDoc();
    for (int page = 2; page <= PageEngine::MaxPageCount; ++page)
        engine.NewPage();
    QCOMPARE(engine.PageCount(), 32767);
    QCOMPARE(errorNumberOf([&] { engine.NewPage(); }), 6);
    QCOMPARE(engine.PageCount(), 32767);
}

void PageEngineTest::findTextFromAPageOn() {
    PageEngine engine;
    engine.StartDoc();
    engine.TextBox(QStringLiteral("Executive desk"), 1000, 1000, 4000, 0);
    engine.NewPage();
    engine.TextBox(QStringLiteral("Lounge chair\rExecutive chair"), 1000, 2000, 4000, 0);
    engine.EndDoc();

    auto match = engine.FindText(QStringLiteral("executive"), 1);
    QVERIFY(match);
    QCOMPARE(match->page, 1);
    QCOMPARE(match->rect.left(), 1000.0);
    QCOMPARE(match->rect.top(), 1000.0);

    match = engine.FindText(QStringLiteral("Executive"), 2);
    QVERIFY(match);
    QCOMPARE(match->page, 2);
    const double lineSpacing = engine.fonts().at(0).lineSpacing;
    QCOMPARE(match->rect.top(), 2000 + lineSpacing); // on the second line
    QVERIFY(qAbs(match->rect.width() - engine.TextWidth(QStringLiteral("Executive"))) < 0.01);

    QVERIFY(!engine.FindText(QStringLiteral("executive"), 1, true));
    QVERIFY(!engine.FindText(QStringLiteral("sofa"), 1));
    QVERIFY(!engine.FindText(QStringLiteral("desk"), 2));
}

void PageEngineTest::colourNumbersHaveRedInTheLowByte() {
    PageEngine engine;
    engine.StartDoc();
    engine.setPenStyle(PenStyles::Transparent);
    engine.setBrushColor(255); // red
    engine.DrawRectangle(1440, 1440, 2880, 2880);
    engine.setBrushColor(0xFF0000); // blue
    engine.DrawRectangle(4320, 1440, 5760, 2880);
    engine.EndDoc();
    const QImage image = renderPageImage(engine, 1, 72);
    QCOMPARE(image.size(), QSize(612, 792));
    QCOMPARE(QColor(image.pixel(108, 108)), QColor(Qt::red));
    QCOMPARE(QColor(image.pixel(252, 108)), QColor(Qt::blue));
    QCOMPARE(QColor(image.pixel(20, 20)), QColor(Qt::white));
}

void PageEngineTest::textLinesSurviveCopyAndMove_data() {
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one, held in the item") << 1;
    QTest::newRow("three, in a block") << 3;
}

// Pages are copied to the preview and moved when a page's item array is refitted; the lines
// of a text must come through both, whether held in the item or in a block of their own.
void PageEngineTest::textLinesSurviveCopyAndMove() {
    QFETCH(int, count);
    std::vector<TextLine> lines;
    for (int i = 0; i < count; ++i)
        lines.push_back({i * 10, 10 - i, float(100 + i)});
    const auto same = [&lines](const TextLines &got) {
        if (got.size() != lines.size())
            return false;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (got[i].start != lines[i].start || got[i].length != lines[i].length ||
                got[i].width != lines[i].width)
                return false;
        }
        return std::equal(got.begin(), got.end(), lines.begin(), [](auto &a, auto &b) {
            return a.start == b.start && a.length == b.length && a.width == b.width;
        });
    };
    TextLines original(lines);
    QVERIFY(same(original));
    TextLines copy(original);
    QVERIFY(same(copy));
    QVERIFY(same(original));
    TextLines moved(std::move(copy));
    QVERIFY(same(moved));
    QVERIFY(copy.empty()); // NOLINT(bugprone-use-after-move): a moved-from text has no lines
    TextLines assigned{{7, 1, 1.0f}, {8, 1, 1.0f}};
    assigned = original;
    QVERIFY(same(assigned));
    TextLines single{{9, 2, 3.0f}};
    single = std::move(assigned);
    QVERIFY(same(single));
    QCOMPARE(original.empty(), count == 0);
}

TAVREL_TEST(PageEngineTest)
#include "PageEngineTest.moc"

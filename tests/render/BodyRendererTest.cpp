#include "render/BodyRenderer.h"
#include "base/ScriptedPrompter.h"
#include "common/PlacedBox.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/ImageOutput.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/SectionRun.h"
#include "shell/JobFile.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "spec/SifReader.h"
#include "spec/SpecData.h"
#include "templates/TemplateReader.h"

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

#include <optional>

using namespace tavrel;

namespace {

BoxInfo &placeNote(TemplateLayout &layout, const QString &text, const QString &container,
                   QRect geometry) {
    BoxInfo &box = placeBox(layout, text, container, geometry);
    box.nameIndex = FieldCatalog::NoNameIndex;
    box.notes = true;
    box.body = false;
    box.notesName = text;
    return box;
}

BoxInfo &placeTotal(TemplateLayout &layout, const QString &caption, QRect geometry) {
    BoxInfo &box = placeBox(layout, caption, Container::mainPort(), geometry, TextAlign::Right);
    box.body = false;
    box.total = true;
    return box;
}

// Part number and quantity columns; options and notes under the part number.
TemplateLayout listTemplate() {
    TemplateLayout layout;
    placeBox(layout, QStringLiteral("Part Number"), Container::mainPort(), {0, 0, 3000, 240});
    placeBox(layout, QStringLiteral("Part Description"), Container::mainPort(),
             {3000, 0, 4000, 240});
    placeBox(layout, QStringLiteral("Qty"), Container::mainPort(), {7000, 0, 800, 240},
             TextAlign::Right);
    placeBox(layout, QStringLiteral("List$"), Container::mainPort(), {7800, 0, 1400, 240},
             TextAlign::Right);
    placeBox(layout, QStringLiteral("EXT List$"), Container::mainPort(), {9200, 0, 1600, 240},
             TextAlign::Right);
    placeBox(layout, QStringLiteral("Option Code / Description"), Container::mainPort(),
             {500, 260, 6000, 240});
    placeBox(layout, QStringLiteral("Option Note Code / Description"), Container::mainPort(),
             {500, 520, 6000, 240});
    layout.other.realONNWidth = 1200;
    layout.other.realODWidth = 4800;
    layout.other.realANNWidth = 1200;
    layout.other.realADWidth = 4800;
    return layout;
}

// A document laid out by one body renderer, with what the tests look at.
struct BodyRun {
    SpecData spec;
    FieldLengths lengths = FieldLengths::builtIn();
    ReportData data;
    PageEngine engine;
    JobState job;
    PrintSettings settings;

    BodyRun() {
        data.spec = &spec;
        data.fieldLengths = &lengths;
        data.companyName = QStringLiteral("Dealer");
        data.reportTime = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5));
        settings.marginLeft = settings.marginRight = 720;
        settings.marginTop = settings.marginBottom = 720;
        job.bodyPrintable = true;
    }

    SifItem &add(const QString &partNumber, const QString &description = QString()) {
        SifItem &item = spec.item(spec.appendItem());
        item.setText(ItemText::PartNumber, partNumber);
        item.setText(ItemText::PartDescription, description);
        item.quantity = 1;
        return item;
    }

    void run(TemplateLayout layout) {
        BodyRenderer renderer(std::move(layout), data);
        OutputHelpers out(engine, job);
        PrintDocument(out, job, settings, {nullptr, &renderer, nullptr});
        pageCount = renderer.pageCount();
    }

    // The text items of a page that read text, in drawing order.
    std::vector<TextItem> texts(int page, const QString &text) const {
        std::vector<TextItem> found;
        for (const PageItem &item : engine.page(page).items) {
            if (const auto *t = std::get_if<TextItem>(&item); t && t->text == text)
                found.push_back(*t);
        }
        return found;
    }
    std::optional<TextItem> text(int page, const QString &text) const {
        const auto found = texts(page, text);
        return found.empty() ? std::nullopt : std::optional<TextItem>(found.front());
    }
    // The page a text is on, 0 when none.
    int pageOf(const QString &text) const {
        for (int page = 1; page <= engine.PageCount(); ++page) {
            if (this->text(page, text))
                return page;
        }
        return 0;
    }

    int pageCount = 0;
};

} // namespace

class BodyRendererTest : public QObject {
    Q_OBJECT

private slots:
    void pageBreakAtTheBoundary_data();
    void pageBreakAtTheBoundary();
    void rowTallerThanAPage();
    void emptyTemplatePrintsBandsAndTotals();
    void subtotalRows();
    void optionAndNoteLinesAcrossAPageBreak();
    void captionRowAndHeaderOnEveryPage();
    void pageFieldsOnAThreePageJob();
    void landscapePages();
    void demoPageLooksAsReviewed();
};

void BodyRendererTest::pageBreakAtTheBoundary_data() {
    QTest::addColumn<double>("slack"); // twips between the row's top and the break limit
    QTest::addColumn<int>("expectedPage");
    QTest::newRow("fits by one twip") << 1.0 << 1;
    QTest::newRow("fits exactly") << 0.0 << 1;
    QTest::newRow("misses by one twip") << -1.0 << 2;
}

void BodyRendererTest::pageBreakAtTheBoundary() {
    QFETCH(double, slack);
    QFETCH(int, expectedPage);
    // A first run on a roomy page tells where rows 5 and 6 start.
    double rowTop5 = 0;
    double rowHeight = 0;
    {
        BodyRun probe;
        for (int i = 1; i <= 8; ++i)
            probe.add(QStringLiteral("ITEM%1").arg(i));
        probe.run(listTemplate());
        const double text5 = probe.text(1, QStringLiteral("ITEM5"))->y;
        rowHeight = probe.text(1, QStringLiteral("ITEM6"))->y - text5;
        rowTop5 = text5 - 30; // the row padding above the text
    }
    // Row 5 moves on when its top is lower than PageHeight - MarginBottom - height - 1000.
    BodyRun run;
    for (int i = 1; i <= 8; ++i)
        run.add(QStringLiteral("ITEM%1").arg(i));
    run.settings.marginBottom =
        PageEngine::LetterHeight - rowHeight - BodyRenderer::FooterReserve - rowTop5 - slack;
    run.run(listTemplate());
    QCOMPARE(run.pageOf(QStringLiteral("ITEM4")), 1);
    QCOMPARE(run.pageOf(QStringLiteral("ITEM5")), expectedPage);
    QCOMPARE(run.pageOf(QStringLiteral("ITEM8")), 2);
}

void BodyRendererTest::rowTallerThanAPage() {
    BodyRun run;
    run.add(QStringLiteral("SHORT1"));
    QStringList lines;
    for (int i = 0; i < 150; ++i)
        lines << QStringLiteral("line %1").arg(i);
    run.add(QStringLiteral("TALL"), lines.join(QLatin1Char('\r')));
    run.add(QStringLiteral("SHORT2"));
    run.run(listTemplate());
    QCOMPARE(run.pageCount, 3);
    QCOMPARE(run.pageOf(QStringLiteral("SHORT1")), 1);
    // The tall row starts a page of its own, at the first row position, uncut in the list.
    const std::optional<TextItem> tall = run.text(2, QStringLiteral("TALL"));
    QVERIFY(tall);
    QCOMPARE(tall->y, run.text(1, QStringLiteral("SHORT1"))->y);
    QVERIFY(run.text(2, lines.join(QLatin1Char('\r')))->height > 15840);
    QCOMPARE(run.pageOf(QStringLiteral("SHORT2")), 3);
}

void BodyRendererTest::emptyTemplatePrintsBandsAndTotals() {
    BodyRun run;
    run.add(QStringLiteral("A1")).listPrice = 10;
    run.spec.header.totalList = 1234.5;
    TemplateLayout layout;
    placeNote(layout, QStringLiteral("Head"), Container::header(), {0, 0, 3000, 300});
    placeNote(layout, QStringLiteral("Foot"), Container::footer(), {0, 0, 3000, 300});
    placeTotal(layout, QStringLiteral("Total List$"), {0, 500, 4000, 260}).displayLabel = true;
    run.run(layout);
    QCOMPARE(run.pageCount, 1);
    std::vector<QString> texts;
    for (const PageItem &item : run.engine.page(1).items) {
        if (const auto *t = std::get_if<TextItem>(&item))
            texts.push_back(t->text);
    }
    QCOMPARE(texts, (std::vector<QString>{"Head", "Total Unit List: $1,234.50", "Foot"}));
    // Without a caption row the totals start 50 twips below the body start, 60 on.
    QCOMPARE(run.text(1, QStringLiteral("Total Unit List: $1,234.50"))->y, 720.0 + 300 + 50 + 60);
}

void BodyRendererTest::subtotalRows() {
    BodyRun run;
    SifItem &a = run.add(QStringLiteral("A1"), QStringLiteral("Desk"));
    a.quantity = 2;
    a.listPrice = 100;
    a.extendedList = 200;
    a.setText(ItemText::OptionCodes, QStringLiteral("OPT-A"));
    a.setText(ItemText::OptionDescriptions, QStringLiteral("Walnut"));
    SifItem &sub = run.add(QStringLiteral("SUBTOTAL"), QStringLiteral("Subtotal - Lobby"));
    sub.listPrice = 200;
    sub.setText(ItemText::OptionCodes, QStringLiteral("OPT-A"));
    sub.setText(ItemText::OptionDescriptions, QStringLiteral("Walnut"));
    run.run(listTemplate());

    const std::optional<TextItem> name = run.text(1, QStringLiteral("Subtotal - Lobby"));
    QVERIFY(name);
    QVERIFY(run.engine.fonts().at(name->font).spec.bold);
    // The subtotal's own amount sits under the extended column; quantity and unit price stay
    // empty, and its options are left out unless asked for.
    const std::optional<TextItem> amount = run.text(1, QStringLiteral("200.00"));
    QCOMPARE(run.texts(1, QStringLiteral("200.00")).size(), std::size_t(2));
    QCOMPARE(amount->x, run.text(1, QStringLiteral("100.00"))->x + 1400);
    QCOMPARE(run.texts(1, QStringLiteral("1")).size(), std::size_t(0));
    QCOMPARE(run.texts(1, QStringLiteral("OPT-A")).size(), std::size_t(1));
    bool shaded = false;
    for (const PageItem &item : run.engine.page(1).items) {
        if (const auto *r = std::get_if<RectItem>(&item))
            shaded = shaded || (r->top < name->y && r->bottom > name->y);
    }
    QVERIFY(shaded);

    BodyRun withOptions;
    withOptions.data.showSubTotalOptions = true;
    withOptions.spec = run.spec;
    withOptions.run(listTemplate());
    QCOMPARE(withOptions.texts(1, QStringLiteral("OPT-A")).size(), std::size_t(2));
}

void BodyRendererTest::optionAndNoteLinesAcrossAPageBreak() {
    BodyRun run;
    SifItem &item = run.add(QStringLiteral("MANY"), QStringLiteral("Lots of options"));
    QStringList codes;
    QStringList descriptions;
    for (int i = 0; i < 90; ++i) {
        codes << QStringLiteral("C%1").arg(i);
        descriptions << QStringLiteral("Description %1").arg(i);
    }
    item.setText(ItemText::OptionCodes, codes.join(QLatin1Char('\r')));
    item.setText(ItemText::OptionDescriptions, descriptions.join(QLatin1Char('\r')));
    item.setText(ItemText::NoteCodes, QStringLiteral("[=Notes:=]\rN1"));
    item.setText(ItemText::NoteDescriptions,
                 QStringLiteral("= = = = = = = = = [Notes:] = = = = = = = = =\rNote one"));
    run.run(listTemplate());

    // Taller than a page with its lines: the row stays, the lines flow on one by one.
    QCOMPARE(run.pageCount, 2);
    QCOMPARE(run.pageOf(QStringLiteral("MANY")), 1);
    const int split = run.pageOf(QStringLiteral("C89"));
    QCOMPARE(split, 2);
    const std::optional<TextItem> code = run.text(1, QStringLiteral("C0"));
    const std::optional<TextItem> description = run.text(1, QStringLiteral("Description 0"));
    QCOMPARE(code->x, 720.0 + 500 + 40);
    QCOMPARE(description->x, 720.0 + 500 + 1200 + 40);
    QCOMPARE(description->y, code->y);
    // Every line stays above the footer reserve.
    for (int page = 1; page <= 2; ++page) {
        for (const PageItem &pageItem : run.engine.page(page).items) {
            if (const auto *t = std::get_if<TextItem>(&pageItem))
                QVERIFY(t->y + t->height <= 15840 - 720 - 1000 + 1);
        }
    }
    // The notes come after the last option, markers as read.
    const std::optional<TextItem> marker = run.text(2, QStringLiteral("[=Notes:=]"));
    QVERIFY(marker);
    QVERIFY(marker->y > run.text(2, QStringLiteral("C89"))->y);
    QVERIFY(run.text(2, QStringLiteral("Note one")));
}

void BodyRendererTest::captionRowAndHeaderOnEveryPage() {
    BodyRun run;
    for (int i = 1; i <= 120; ++i)
        run.add(QStringLiteral("P%1").arg(i));
    run.lengths.setLabel(QStringLiteral("PN"), QStringLiteral("Part No."));
    TemplateLayout layout = listTemplate();
    placeNote(layout, QStringLiteral("Quotation"), Container::header(), {0, 0, 3000, 400});
    run.run(layout);
    QVERIFY(run.pageCount >= 3);
    for (int page = 1; page <= run.pageCount; ++page) {
        QVERIFY(run.text(page, QStringLiteral("Quotation")));
        const std::optional<TextItem> caption = run.text(page, QStringLiteral("Part No."));
        QVERIFY(caption);
        QCOMPARE(caption->y, 720.0 + 400);
        QVERIFY(run.text(page, QStringLiteral("Option")));
        QVERIFY(run.text(page, QStringLiteral("Option Description")));
        QVERIFY(run.text(page, QStringLiteral("Note Description")));
    }
    // Rows on a later page start where they start on the first.
    const double first = run.text(1, QStringLiteral("P1"))->y;
    const int second = run.pageOf(QStringLiteral("P120"));
    std::optional<TextItem> top;
    for (const PageItem &item : run.engine.page(second).items) {
        const auto *t = std::get_if<TextItem>(&item);
        static const QRegularExpression row(QStringLiteral("^P[0-9]+$"));
        if (!top && t && row.match(t->text).hasMatch())
            top = *t;
    }
    QVERIFY(top);
    QCOMPARE(top->y, first);
}

void BodyRendererTest::pageFieldsOnAThreePageJob() {
    BodyRun run;
    for (int i = 1; i <= 110; ++i)
        run.add(QStringLiteral("P%1").arg(i));
    TemplateLayout layout = listTemplate();
    placeBox(layout, QStringLiteral("Page n of  m"), Container::footer(), {0, 0, 3000, 240});
    placeBox(layout, QStringLiteral("Company Name"), Container::footer(), {4000, 0, 3000, 240});
    placeBox(layout, QStringLiteral("Page"), Container::header(), {0, 0, 3000, 240});
    run.run(layout);
    QCOMPARE(run.pageCount, 3);
    QVERIFY(run.job.bodyPageFields.inFooter);
    QVERIFY(!run.job.bodyPageFields.inHeader);
    for (int page = 1; page <= 3; ++page) {
        const auto pageOf = run.texts(page, QStringLiteral("Page %1 of  3").arg(page));
        QCOMPARE(pageOf.size(), std::size_t(1));
        QCOMPARE(pageOf.front().y, 15840.0 - 720 - 240);
        // The footer is drawn once, in the page-field pass; the header in the flow.
        QCOMPARE(run.texts(page, QStringLiteral("Dealer")).size(), std::size_t(1));
        QCOMPARE(run.texts(page, QStringLiteral("Page %1").arg(page)).size(), std::size_t(1));
    }
}

void BodyRendererTest::landscapePages() {
    BodyRun run;
    for (int i = 1; i <= 60; ++i)
        run.add(QStringLiteral("P%1").arg(i));
    run.job.landscape = true;
    TemplateLayout layout = listTemplate();
    layout.other.landscape = true;
    placeBox(layout, QStringLiteral("Page n of  m"), Container::footer(), {0, 0, 3000, 240});
    run.run(layout);
    QVERIFY(run.pageCount >= 2);
    QVERIFY(run.engine.page(1).landscape);
    QCOMPARE(run.engine.page(1).width, 15840.0);
    QCOMPARE(run.text(1, QStringLiteral("Page 1 of  %1").arg(run.pageCount))->y,
             12240.0 - 720 - 240);
    for (int page = 1; page <= run.pageCount; ++page) {
        for (const PageItem &item : run.engine.page(page).items) {
            if (const auto *t = std::get_if<TextItem>(&item);
                t && t->text.startsWith(QLatin1Char('P')))
                QVERIFY(t->y < 12240 - 720 - 1000 || t->text.startsWith(QLatin1String("Page")));
        }
    }
}

void BodyRendererTest::demoPageLooksAsReviewed() {
    BodyRun run;
    const QString demo = testsupport::sourcePath(QStringLiteral("examples/demo"));
    readSif(demo + QStringLiteral("/demo.sif"), QStringLiteral("Harbor Point Offices.sp4"),
            run.spec);
    run.lengths =
        JobFile::load(demo + QStringLiteral("/job.ini")).fieldLengths(FieldLengths::builtIn());
    run.data.companyName = QStringLiteral("Harbor Point Office Interiors");
    run.data.activeDocument = demo + QStringLiteral("/Harbor Point Offices.sp4");
    run.data.savedTime = QDateTime(QDate(2026, 10, 30), QTime(16, 5));
    run.data.reportTime = QDateTime(QDate(2026, 11, 2), QTime(9, 30));
    run.settings.marginLeft = run.settings.marginRight = 500;
    run.settings.marginTop = run.settings.marginBottom = 500;
    ScriptedPrompter prompter;
    BodyRenderer renderer(
        TemplateReader::load(testsupport::sourcePath(
                                 QStringLiteral("resources/Print Templates/Classic Customer.cst")),
                             prompter),
        run.data);
    OutputHelpers out(run.engine, run.job);
    PrintDocument(out, run.job, run.settings, {nullptr, &renderer, nullptr});
    QCOMPARE(prompter.messages(), QStringList());
    QVERIFY(run.engine.PageCount() >= 4);

    const QImage image = renderPageImage(run.engine, 1, 50);
    const QString name = QStringLiteral("demo-body-page1.png");
    const QString golden = testsupport::dataPath(QStringLiteral("render/body/") + name);
    compareWithGoldenImage(image, golden);
}

TAVREL_TEST(BodyRendererTest)
#include "BodyRendererTest.moc"

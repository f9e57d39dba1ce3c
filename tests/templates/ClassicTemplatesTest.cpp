#include "ClassicTemplateDesign.h"

#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "spec/FieldCatalog.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QRect>
#include <QTest>

#include <functional>

using namespace tavrel;

Q_DECLARE_METATYPE(std::function<tavrel::TemplateLayout()>)

namespace {

using Builder = std::function<TemplateLayout()>;

QString resourcePath(const QString &fileName) {
    return testsupport::sourcePath(QStringLiteral("resources/Print Templates/") + fileName);
}

void addRows() {
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<Builder>("build");
    QTest::newRow("cover") << QStringLiteral("Classic.cov") << Builder(classic::cover);
    QTest::newRow("body") << QStringLiteral("Classic Customer.cst") << Builder(classic::body);
    QTest::newRow("summary") << QStringLiteral("Classic Customer.sum") << Builder(classic::summary);
}

// Everything placed on a page, in page twips, with a name for messages.
struct Placed {
    QString name;
    QRect rect;
    bool isBox = false;
};

QList<Placed> placedOnPage(const TemplateLayout &layout, const PageArea &area) {
    QList<Placed> items;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        const QPoint origin = layout.containerOrigin(box.container, area);
        items.append({QStringLiteral("box %1 \"%2\"").arg(slot).arg(box.caption),
                      QRect(origin.x() + box.left, origin.y() + box.top, box.width, box.height),
                      true});
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = layout.line(slot);
        if (!line.placed)
            continue;
        const QPoint origin = layout.containerOrigin(line.container, area);
        items.append(
            {QStringLiteral("line %1").arg(slot),
             QRect(origin.x() + line.left, origin.y() + line.top, line.width, line.height)});
    }
    return items;
}

// Measures text in twips with the fonts the pages will use.
class Ruler {
public:
    Ruler()
        : m_device(1, 1, QImage::Format_RGB32) {
        const int dotsPerMeter = qRound(1440 / 0.0254);
        m_device.setDotsPerMeterX(dotsPerMeter);
        m_device.setDotsPerMeterY(dotsPerMeter);
    }

    QSizeF size(const BoxInfo &box, const QString &text) const {
        QFont font(box.fontName);
        font.setPointSize(box.fontSize);
        font.setBold(box.fontBold);
        font.setItalic(box.fontItalic);
        const QFontMetricsF metrics(font, &m_device);
        return {metrics.horizontalAdvance(text), metrics.height()};
    }

private:
    QImage m_device;
};

// A long but realistic value for the fields whose text is known in advance.
QString sampleText(const BoxInfo &box) {
    const QString &caption = box.caption;
    if (box.notes)
        return box.notesName;
    if (caption == QLatin1String("Page n of  m"))
        return QStringLiteral("Page 888 of  888");
    if (caption == QLatin1String("Company Name"))
        return QStringLiteral("Northwind Contract Interiors");
    if (caption == QLatin1String("Orvanta File Title"))
        return QStringLiteral("Harbor Point Tower, Level 12");
    if (caption.contains(QLatin1String("Date")) && FieldCatalog::isHeaderFooterCaption(caption))
        return QStringLiteral("12-31-2024");
    if (caption.endsWith(QLatin1String(" State")))
        return QStringLiteral("WA");
    if (caption.endsWith(QLatin1String(" Zip Code")))
        return QStringLiteral("98101-2345");
    if (caption.endsWith(QLatin1String(" Phone")) || caption.endsWith(QLatin1String(" Fax")))
        return QStringLiteral("(616) 555-0123 x456");
    if (box.total)
        return FieldCatalog::totalLabel(caption) + QStringLiteral(" $9,999,999.99");
    return caption;
}

} // namespace

class ClassicTemplatesTest : public QObject {
    Q_OBJECT

private slots:
    void resourcesAreWriterOutput_data() { addRows(); }
    void resourcesAreWriterOutput();
    void roundTrip_data() { addRows(); }
    void roundTrip();
    void fitsTheLetterPage_data() { addRows(); }
    void fitsTheLetterPage();
    void textsFitTheirBoxes_data() { addRows(); }
    void textsFitTheirBoxes();
    void boxesNameCatalogFields_data() { addRows(); }
    void boxesNameCatalogFields();
    void bodyLeavesRoomForRows();
};

void ClassicTemplatesTest::resourcesAreWriterOutput() {
    QFETCH(QString, fileName);
    QFETCH(Builder, build);
    const QByteArray expected = TemplateWriter::bytes(build(), classic::titleLine(fileName));
    const QString path = resourcePath(fileName);
    if (qEnvironmentVariableIntValue("TAVREL_UPDATE_GOLDEN") == 1)
        testsupport::writeBytes(path, expected);
    const QByteArray actual = testsupport::readBytes(path);
    // The title line carries a date that nothing reads; everything after it must match.
    const auto body = [](const QByteArray &bytes) { return bytes.mid(bytes.indexOf('\n')); };
    QVERIFY2(body(actual) == body(expected),
             qPrintable(fileName + QStringLiteral(" is not what the writer makes of the design; "
                                                  "run with TAVREL_UPDATE_GOLDEN=1")));
    QVERIFY(actual.startsWith(templateTitleText(templateKindOfPath(fileName)).toLatin1()));
}

void ClassicTemplatesTest::roundTrip() {
    QFETCH(QString, fileName);
    QFETCH(Builder, build);
    ScriptedPrompter prompter;
    const TemplateLayout read = TemplateReader::load(resourcePath(fileName), prompter);
    QVERIFY(prompter.calls().isEmpty());
    QCOMPARE(read, build());
    TemplateLayout again;
    TemplateReader::readBytes(TemplateWriter::bytes(read, QString()), again, prompter);
    QCOMPARE(again, read);
}

void ClassicTemplatesTest::fitsTheLetterPage() {
    QFETCH(QString, fileName);
    QFETCH(Builder, build);
    const TemplateLayout layout = build();
    const PageArea area = PageArea::letter(layout.other.landscape, 720);
    const QRect printable(area.marginLeft, area.marginTop, area.printableWidth(),
                          area.printableBottom() - area.marginTop);
    const QList<Placed> items = placedOnPage(layout, area);
    QVERIFY(items.size() > 10);
    for (const Placed &item : items) {
        QVERIFY2(printable.contains(item.rect), qPrintable(item.name));
        QVERIFY2(item.rect.width() > 0 && item.rect.height() > 0, qPrintable(item.name));
    }
    // No two boxes overlap, and no line crosses a box.
    for (qsizetype i = 0; i < items.size(); ++i) {
        for (qsizetype j = i + 1; j < items.size(); ++j) {
            if (!items[i].isBox && !items[j].isBox)
                continue;
            QVERIFY2(!items[i].rect.intersects(items[j].rect),
                     qPrintable(items[i].name + QStringLiteral(" overlaps ") + items[j].name));
        }
    }
    // Rectangles frame whole boxes: each box is either inside or outside, never cut.
    const QPoint body = layout.containerOrigin(Container::mainPort(), area);
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        const PrintRect &rect = layout.rect(slot);
        if (!rect.rectVisible)
            continue;
        const QRect frame(body.x() + qRound(rect.rectLeft), body.y() + qRound(rect.rectTop),
                          qRound(rect.rectWidth), qRound(rect.rectHeight));
        QVERIFY(printable.contains(frame));
        QCOMPARE(rect.left, rect.rectLeft);
        QCOMPARE(rect.top, rect.rectTop);
        for (const Placed &item : items) {
            if (item.isBox)
                QVERIFY2(frame.contains(item.rect) || !frame.intersects(item.rect),
                         qPrintable(item.name));
        }
    }
    // The body ends above the footer band.
    const qint32 footerTop = layout.containerOrigin(Container::footer(), area).y();
    for (const Placed &item : items) {
        if (item.rect.top() < footerTop)
            QVERIFY2(item.rect.bottom() < footerTop, qPrintable(item.name));
    }
}

void ClassicTemplatesTest::textsFitTheirBoxes() {
    QFETCH(QString, fileName);
    QFETCH(Builder, build);
    const TemplateLayout layout = build();
    const Ruler ruler;
    // The cover prints order values after a label column as wide as the longest label.
    const qreal labelColumn =
        30 + ruler.size(layout.box(1), QStringLiteral("Requested Install Date: ")).width() + 300;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed || box.logo)
            continue;
        const QSizeF size = ruler.size(box, sampleText(box));
        QVERIFY2(size.height() <= box.height, qPrintable(QStringLiteral("%1: line %2 in %3")
                                                             .arg(box.caption)
                                                             .arg(size.height())
                                                             .arg(box.height)));
        QVERIFY2(size.width() <= box.width, qPrintable(QStringLiteral("%1: text %2 in %3")
                                                           .arg(box.caption)
                                                           .arg(size.width())
                                                           .arg(box.width)));
        if (box.displayLabel && !box.total)
            QVERIFY2(box.width - labelColumn >= 2400, qPrintable(box.caption));
    }
}

void ClassicTemplatesTest::boxesNameCatalogFields() {
    QFETCH(Builder, build);
    const TemplateLayout layout = build();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        QCOMPARE(box.index, qint16(slot));
        if (box.notes || box.logo) {
            QCOMPARE(box.nameIndex, qint16(FieldCatalog::NoNameIndex));
            // A note must not read as a field to the renderers.
            QCOMPARE(FieldCatalog::indexOfCaption(box.caption), FieldCatalog::NoNameIndex);
        } else {
            QCOMPARE(FieldCatalog::captionAt(box.nameIndex), box.caption);
        }
        QCOMPARE(int(box.header) + int(box.footer) + int(box.body) + int(box.total), 1);
        QCOMPARE(box.header, box.container == Container::header());
        QCOMPARE(box.footer, box.container == Container::footer());
        if (box.header || box.footer)
            QVERIFY(box.notes || box.logo || FieldCatalog::isHeaderFooterCaption(box.caption));
    }
}

void ClassicTemplatesTest::bodyLeavesRoomForRows() {
    const TemplateLayout layout = classic::body();
    const PageArea area = PageArea::letter(false, 720);
    // Columns fill the printable width without gaps.
    qint32 right = 0;
    int columns = 0;
    qint32 lowest = 0;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed || !box.body)
            continue;
        lowest = std::max(lowest, box.bottom());
        if (box.level != 1)
            continue;
        QCOMPARE(box.left, right);
        right = box.right();
        ++columns;
    }
    QCOMPARE(columns, 8);
    QCOMPARE(right, area.printableWidth());
    // The footer fits in the reserve kept above the bottom margin, and a first page holds a
    // good number of item rows.
    QVERIFY(layout.bandHeight(Container::footer()) < 1000);
    const qint32 firstRow = layout.containerOrigin(Container::mainPort(), area).y() + lowest;
    QVERIFY(area.printableBottom() - 1000 - firstRow > 10000);
    // Option lines sit inside the description, quantity and manufacturer columns.
    QVERIFY(layout.other.realONNWidth + layout.other.realODWidth <= 4680 - 180);
}

TAVREL_TEST(ClassicTemplatesTest)
#include "ClassicTemplatesTest.moc"

#include "spec/ItemFields.h"
#include "common/TestRegistry.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "spec/SifReader.h"

#include <QSet>
#include <QTest>

#include <cstddef>

using namespace tavrel;

namespace {

template <typename Member> std::ptrdiff_t offsetOf(Member SifItem::*member) {
    static const SifItem probe;
    return reinterpret_cast<const char *>(&(probe.*member)) -
           reinterpret_cast<const char *>(&probe);
}

QString tagText(const char *tag) {
    return QString::fromLatin1(tag);
}

} // namespace

// The item field table against what the program documents about its fields, and against the
// record it describes.
class ItemFieldsTest : public QObject {
    Q_OBJECT

private slots:
    void keysAreUnique();
    void catalogueCaptionsFindTheirRows();
    void builtInLengths_data();
    void builtInLengths();
    void everyRecordMemberIsReached();
    void tagsFillTheirField_data();
    void tagsFillTheirField();
    void headerTagsAreNoItemTags();
};

void ItemFieldsTest::keysAreUnique() {
    QSet<QString> codes;
    QSet<QString> captions;
    QSet<QString> jsonKeys;
    for (const ItemFieldRow &row : ItemFields::rows) {
        const QString name = row.code.empty() ? row.jsonKeyText() : row.codeText();
        QVERIFY2(!row.code.empty() || !row.jsonKey.empty() || !row.caption.empty(),
                 "a row names its field somehow");
        if (!row.code.empty()) {
            QVERIFY2(!codes.contains(row.codeText()), qPrintable(name));
            codes.insert(row.codeText());
            QCOMPARE(ItemFields::rowForCode(row.codeText()), &row);
            QVERIFY2(!row.caption.empty(), qPrintable(name));
            QVERIFY2(row.length > 0, qPrintable(name));
        }
        if (!row.caption.empty()) {
            QVERIFY2(!captions.contains(row.captionText()), qPrintable(name));
            captions.insert(row.captionText());
            QCOMPARE(ItemFields::rowForCaption(row.captionText()), &row);
        }
        if (!row.jsonKey.empty()) {
            QVERIFY2(!jsonKeys.contains(row.jsonKeyText()), qPrintable(name));
            jsonKeys.insert(row.jsonKeyText());
        }
        // A field holds a text or a number, never both; a number either has a member or is
        // computed from others.
        QVERIFY2(!(row.hasText() && (row.number || row.value)), qPrintable(name));
        QVERIFY2(!(row.number && row.value), qPrintable(name));
        QVERIFY2(row.hasText() || row.number || row.value, qPrintable(name));
        // Numbers print with a pattern, except the quantity; texts print as they stand.
        QCOMPARE(row.cellPattern != nullptr,
                 !row.hasText() && row.kind != ItemFieldKind::Quantity && !row.caption.empty());
    }
    QCOMPARE(codes.size(), 46);
}

void ItemFieldsTest::catalogueCaptionsFindTheirRows() {
    const QList<ItemField> &fields = FieldCatalog::itemFields();
    QCOMPARE(fields.size(), 46);
    for (int position = 0; position < fields.size(); ++position) {
        const ItemField &field = fields.at(position);
        const ItemFieldRow *row = ItemFields::rowForCaption(field.caption);
        QVERIFY2(row, qPrintable(field.caption));
        QCOMPARE(row->codeText(), field.code);
        QCOMPARE(row->catalogPosition, position);
    }
    // The item captions of the designer list that name no coded field are still item fields
    // the body prints; every other designer item caption is a catalogue field.
    for (const QString &caption : FieldCatalog::itemCaptions()) {
        if (caption == QLatin1String("Total Option / Description"))
            continue; // printed by the totals, from all items
        QVERIFY2(ItemFields::rowForCaption(caption), qPrintable(caption));
    }
}

void ItemFieldsTest::builtInLengths_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("length");
    // The documented built-in lengths of the item field codes.
    const std::pair<const char *, int> documented[] = {
        {"PN", 16},  {"T4", 24},  {"S-", 9},  {"SPE", 11}, {"SN", 10},  {"T5", 24}, {"SP", 9},
        {"BPE", 11}, {"NL", 18},  {"PD", 34}, {"P%", 9},   {"PLE", 11}, {"NE", 25}, {"PE", 24},
        {"BP", 9},   {"SDE", 11}, {"TC", 10}, {"MD", 33},  {"ON", 49},  {"SD", 9},  {"EC", 3},
        {"ED", 60},  {"OD", 34},  {"M%", 9},  {"DE", 18},  {"MC", 5},   {"AN", 49}, {"MG", 9},
        {"PC", 20},  {"QT", 5},   {"AD", 34}, {"MGE", 11}, {"WT", 9},   {"QC", 3},  {"WTE", 11},
        {"REC", 5},  {"VO", 9},   {"PL", 9},  {"VOE", 11}, {"ONN", 16}, {"T1", 10}, {"PZ", 3},
        {"CG", 8},   {"ANN", 16}, {"T2", 24}, {"T3", 24},
    };
    for (const auto &[code, length] : documented)
        QTest::newRow(code) << QString::fromLatin1(code) << length;
}

void ItemFieldsTest::builtInLengths() {
    QFETCH(QString, code);
    QFETCH(int, length);
    const ItemFieldRow *row = ItemFields::rowForCode(code);
    QVERIFY(row);
    QCOMPARE(row->length, length);
    QCOMPARE(FieldLengths::builtInLength(code), length);
    // The item codes lead the field length list, in the table's order.
    const qsizetype position = row - ItemFields::rows;
    QCOMPARE(FieldLengths::codes().at(position), code);
}

void ItemFieldsTest::everyRecordMemberIsReached() {
    QSet<ItemText> texts;
    QSet<std::ptrdiff_t> numbers;
    for (const ItemFieldRow &row : ItemFields::rows) {
        if (row.hasText()) {
            QVERIFY(!texts.contains(row.text));
            texts.insert(row.text);
        }
        if (row.number)
            numbers.insert(offsetOf(row.number));
    }
    // Every text but the later option lines, which only the HTML and RTF texts show, is a
    // field of its own.
    for (auto field = int(ItemText::RecordNumber); field < int(ItemText::OptionLaterLines); ++field)
        QVERIFY2(texts.contains(ItemText(field)), qPrintable(QString::number(field)));
    QVERIFY(!texts.contains(ItemText::OptionLaterLines));
    // Besides its texts the record holds only 8-byte numbers, so its size counts them: a number
    // member without a row makes it larger than the rows account for.
    QCOMPARE(sizeof(SifItem),
             sizeof(std::vector<QString>) + std::size_t(numbers.size()) * sizeof(double));
    QCOMPARE(texts.size() + numbers.size(), qsizetype(52));
}

void ItemFieldsTest::tagsFillTheirField_data() {
    QTest::addColumn<QString>("tag");
    QTest::addColumn<int>("row");
    for (std::size_t i = 0; i < std::size(ItemFields::rows); ++i) {
        for (const char *tag : ItemFields::rows[i].tags) {
            if (tag)
                QTest::newRow(tag) << tagText(tag) << int(i);
        }
    }
}

// Each tag, read after a part number line, lands in its row's member and nowhere else.
void ItemFieldsTest::tagsFillTheirField() {
    QFETCH(QString, tag);
    QFETCH(int, row);
    const ItemFieldRow &field = ItemFields::rows[row];
    QCOMPARE(ItemFields::rowForTag(tag.toLatin1().constData()), &field);
    SpecData data;
    parseSifText("PN=p1\n" + tag.toLatin1() + "12.5\n", QString(), data);
    QCOMPARE(data.itemCount(), field.fill == SifFill::PartNumber ? 2 : 1);
    const SifItem &item = data.item(data.itemCount());
    const SifItem empty;
    switch (field.fill) {
    case SifFill::Text:
    case SifFill::PartNumber:
        QCOMPARE(item.text(field.text), QStringLiteral("12.5"));
        break;
    case SifFill::Number:
    case SifFill::MarginAmount:
    case SifFill::MarginPercent:
        QCOMPARE(item.*field.number, 12.5);
        break;
    case SifFill::OptionList:
    case SifFill::NoteCodeList:
    case SifFill::NoteTextList:
        QVERIFY(item.text(field.text) == QLatin1String("12.5") ||
                item.text(field.text).endsWith(QLatin1String("\r12.5")));
        break;
    case SifFill::None:
        QFAIL("a tag with nothing to fill");
    }
    // No other field of the table changed, but for a list's running copy: one line reads the
    // same in both.
    const bool list = field.fill == SifFill::OptionList || field.fill == SifFill::NoteCodeList ||
                      field.fill == SifFill::NoteTextList;
    int runningCopies = 0;
    for (const ItemFieldRow &other : ItemFields::rows) {
        if (&other == &field || other.fill == SifFill::PartNumber)
            continue; // the part number opened the item
        if (other.hasText() && !other.textOf(item).isEmpty()) {
            QVERIFY(list);
            QCOMPARE(other.textOf(item), item.text(field.text));
            ++runningCopies;
        }
        if (other.number)
            QCOMPARE(item.*other.number, empty.*other.number);
    }
    QCOMPARE(runningCopies, list ? 1 : 0);
}

void ItemFieldsTest::headerTagsAreNoItemTags() {
    for (const char *tag : {"SF=", "ST=", "DT=", "TM=", "TL=", "TP=", "TS=", "TW=", "TV="})
        QVERIFY2(!ItemFields::rowForTag(tag), tag);
    // Tags are compared as written: no lower-case or shorter forms.
    QVERIFY(!ItemFields::rowForTag("pn="));
    QVERIFY(!ItemFields::rowForTag("PN "));
}

TAVREL_TEST(ItemFieldsTest)
#include "ItemFieldsTest.moc"

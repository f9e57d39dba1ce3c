#include "spec/SpecJson.h"

#include "spec/ItemFields.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>

namespace tavrel {
namespace SpecJson {

namespace {

// Every item field the JSON names: read, computed and running texts alike.
QJsonObject itemValues(const SifItem &item) {
    QJsonObject object;
    for (const ItemFieldRow &row : ItemFields::rows) {
        if (row.jsonKey.empty())
            continue;
        if (row.hasText())
            object.insert(row.jsonKeyText(), row.textOf(item));
        else
            object.insert(row.jsonKeyText(), row.numberOf(item));
    }
    return object;
}

QJsonArray contacts(const std::vector<OrderContact> &list) {
    QJsonArray array;
    for (const OrderContact &contact : list)
        array.append(QJsonObject{{QStringLiteral("name"), contact.name},
                                 {QStringLiteral("number"), contact.number}});
    return array;
}

void addParty(QJsonObject &object, QChar prefix, QLatin1String codeTag, QLatin1String phoneTag,
              const OrderParty &party) {
    const auto key = [prefix](char second) { return QString(prefix) + QLatin1Char(second); };
    object.insert(QString(codeTag), party.code);
    object.insert(key('1'), party.company);
    object.insert(key('2'), party.streetAddress[0]);
    object.insert(key('3'), party.streetAddress[1]);
    object.insert(key('4'), party.streetAddress[2]);
    object.insert(key('5'), party.city);
    object.insert(key('6'), party.state);
    object.insert(key('7'), party.zipCode);
    object.insert(key('8'), party.country);
    object.insert(key('9'), party.name);
    object.insert(QString(phoneTag), party.phone);
    object.insert(key('F'), party.fax);
}

} // namespace

QJsonObject item(const SifItem &item) {
    QJsonObject object = itemValues(item);
    const SifItemTexts texts = SifItemTexts::of(item);
    const std::initializer_list<std::pair<const char *, const QString *>> textFields = {
        {"OptionHtml", &texts.optionHtml},     {"OptionRtf", &texts.optionRtf},
        {"NoteCodeHtml", &texts.noteCodeHtml}, {"NoteCodeRtf", &texts.noteCodeRtf},
        {"NoteTextHtml", &texts.noteTextHtml}, {"NoteTextRtf", &texts.noteTextRtf},
    };
    for (const auto &[key, value] : textFields)
        object.insert(QLatin1String(key), *value);
    return object;
}

QJsonObject header(const SifHeader &header) {
    return {
        {QStringLiteral("specFileName"), header.specFileName},
        {QStringLiteral("ST"), header.stText},
        {QStringLiteral("DT"), header.dateText},
        {QStringLiteral("TM"), header.timeText},
        {QStringLiteral("TL"), header.totalList},
        {QStringLiteral("TP"), header.totalPurchase},
        {QStringLiteral("TS"), header.totalSell},
        {QStringLiteral("TW"), header.totalWeight},
        {QStringLiteral("TV"), header.totalVolume},
        {QStringLiteral("totalMarginAmount"), header.totalMarginAmount},
        {QStringLiteral("totalDiscountAmount"), header.totalDiscountAmount},
        {QStringLiteral("totalMarginPercent"), header.totalMarginPercent},
        {QStringLiteral("totalCustomerDiscountPercent"), header.totalCustomerDiscountPercent},
        {QStringLiteral("totalDealerDiscountPercent"), header.totalDealerDiscountPercent},
    };
}

QJsonObject order(const OrderData &order, std::optional<double> chargeSum) {
    const OrderHeader &header = order.header;
    QJsonObject object{
        {QStringLiteral("present"), order.present},
        {QStringLiteral("version4"), order.version4},
        {QStringLiteral("CO"), header.purchaseOrderNumber},
        {QStringLiteral("PT"), header.purchaseOrderType},
        {QStringLiteral("CP"), header.customerPurchaseOrder},
        {QStringLiteral("OT"), header.orderType},
        {QStringLiteral("AB"), header.authorizedBy},
        {QStringLiteral("PA"), header.contractNumber},
        {QStringLiteral("PR"), header.contractRevision},
        {QStringLiteral("RD"), header.requestedShipDate},
        {QStringLiteral("RI"), header.requestedInstallDate},
        {QStringLiteral("DB"), header.directBillType},
        {QStringLiteral("TN"), header.comments},
        {QStringLiteral("sales"), contacts(order.salesPersons)},
        {QStringLiteral("dealers"), contacts(order.dealers)},
        {QStringLiteral("shippingNotes"), order.shippingNotes},
        {QStringLiteral("chargeSum"), chargeSum ? QJsonValue(*chargeSum) : QJsonValue()},
    };
    addParty(object, QLatin1Char('D'), QLatin1String("DC"), QLatin1String("DP"), header.soldTo);
    addParty(object, QLatin1Char('P'), QLatin1String("PC"), QLatin1String("PP"), header.shipTo);
    QJsonArray charges;
    for (const AdditionalCharge &charge : order.charges)
        charges.append(QJsonObject{{QStringLiteral("amount"), charge.amount},
                                   {QStringLiteral("name"), charge.name},
                                   {QStringLiteral("secondText"), charge.secondText}});
    object.insert(QStringLiteral("charges"), charges);
    return object;
}

QJsonObject fieldLengths(const FieldLengths &lengths) {
    QJsonObject object;
    for (const QString &code : FieldLengths::codes())
        object.insert(code, QJsonObject{{QStringLiteral("length"), lengths.length(code)},
                                        {QStringLiteral("label"), lengths.label(code)}});
    return object;
}

QJsonObject document(const SpecData &data, const OrderData &orderData,
                     std::optional<double> chargeSum, const FieldLengths &lengths) {
    QJsonArray items;
    for (int i = 1; i <= data.itemCount(); ++i)
        items.append(item(data.item(i)));
    return {
        {QStringLiteral("items"), items},
        {QStringLiteral("header"), header(data.header)},
        {QStringLiteral("order"), order(orderData, chargeSum)},
        {QStringLiteral("fieldLengths"), fieldLengths(lengths)},
    };
}

QByteArray text(const QJsonObject &document) {
    return QJsonDocument(document).toJson(QJsonDocument::Indented);
}

namespace {

// The indented text of value as it stands at nesting depth `depth` of a larger document: Qt
// indents every line of a nested value by four blanks a level, and no line break occurs
// inside a JSON string, so shifting each line after the first gives the nested form exactly.
QByteArray nested(const QJsonObject &value, int depth) {
    QByteArray text = QJsonDocument(value).toJson(QJsonDocument::Indented);
    text.chop(1); // the document's closing line feed
    const QByteArray indent(4 * depth, ' ');
    return text.replace('\n', QByteArray("\n") + indent);
}

} // namespace

void write(const SpecData &data, const OrderData &orderData, std::optional<double> chargeSum,
           const FieldLengths &lengths, const std::function<void(const QByteArray &)> &sink) {
    // The keys of a JSON object come out sorted: fieldLengths, header, items, order.
    sink("{\n    \"fieldLengths\": " + nested(fieldLengths(lengths), 1) +
         ",\n    \"header\": " + nested(header(data.header), 1) + ",\n    \"items\": [\n");
    const int count = data.itemCount();
    for (int i = 1; i <= count; ++i) {
        sink("        " + nested(item(data.item(i)), 2) + (i < count ? ",\n" : "\n"));
    }
    sink("    ],\n    \"order\": " + nested(order(orderData, chargeSum), 1) + "\n}\n");
}

} // namespace SpecJson
} // namespace tavrel

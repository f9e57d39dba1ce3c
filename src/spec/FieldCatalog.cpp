#include "spec/FieldCatalog.h"

#include "spec/ItemFields.h"

#include <QHash>

namespace tavrel {

namespace {

constexpr int ItemCaptionCount = 48;
constexpr int PageCaptionCount = 13;
constexpr int TotalCaptionCount = 15;

QStringList makeDesignerCaptions() {
    const char *const captions[] = {
        // Item captions.
        "Special Number", "Report Note", "Sif Note", "Table of Contensts", "Enterprise Code",
        "Enterprise Description", "Part Number", "Part Classification", "Weight", "EXT Weight",
        "Volume", "EXT Volume", "Tag 1", "Tag 2", "Tag 3", "Tag 4", "Tag 5", "Part Description",
        "Extended Description", "Model Description", "Expanded Description", "Mfg", "PZ", "Cust%",
        "Cust$", "EXT Cust$", "Deal%", "Deal$", "EXT Deal$", "Taxable", "Option Code",
        "Option Description", "Option Note Code", "Option Note Description",
        "Option Note Code / Description", "Option Code / Description", "Total Option / Description",
        "Image", "Complete", "Generic Code", "Qty", "List$", "EXT List$", "EXT Cust Disc$",
        "Cust Disc$", "MG%", "MG$", "EXT MG$",
        // Page captions ("Page n of  m" has two blanks before m).
        "File Path", "Sif File Name", "Report Time", "Report Date", "Report Date & Time",
        "Saved Date", "Saved Time", "Saved Date & Time", "Page", "Page n of  m", "Company Name",
        "Orvanta File Title", "Rec#",
        // Total captions.
        "Total Weight", "Total Volume", "Total Cust%", "Total Deal%", "Total Marg$", "Total Marg%",
        "Total Cust Disc$", "Total List$", "Total Cust$", "Total Deal$", "Total Cust$ Order",
        "Total Additional Charges", "Total Deal$ Order", "Additional Charges", "Shipping Notes",
        // Order header captions.
        "P. O. Number", "P. O. Type", "Customer P. O.", "Order Type", "Authorized By",
        "Contract Number", "Contract Rev", "Ship Date", "Install Date", "Direct Bill Type",
        "Sold Code", "Sold Company", "Sold Street Address", "Sold City", "Sold Zip Code",
        "Sold State", "Sold Country", "Sold Name", "Sold Phone", "Sold Fax", "Ship Code",
        "Ship Company", "Ship Street Address", "Ship City", "Ship Zip Code", "Ship State",
        "Ship Country", "Ship Name", "Ship Phone", "Ship Fax", "Sales Person", "Sales Number",
        "Dealer", "Dealer Number", "Comments"};
    QStringList list;
    list.reserve(FieldCatalog::DesignerCaptionCount);
    for (const char *caption : captions)
        list.append(QString::fromLatin1(caption));
    return list;
}

// The coded item fields, in the catalogue's own order.
QList<ItemField> makeItemFields() {
    QList<ItemField> fields;
    for (const ItemFieldRow &row : ItemFields::rows) {
        if (row.catalogPosition < 0)
            continue;
        if (fields.size() <= row.catalogPosition)
            fields.resize(row.catalogPosition + 1);
        fields[row.catalogPosition] = {row.captionText(), row.codeText()};
    }
    return fields;
}

QList<TotalLabel> makeTotalLabels() {
    const char *const pairs[][2] = {{"Total Weight", "Total Weight:"},
                                    {"Total Volume", "Total Volume:"},
                                    {"Total List$", "Total Unit List:"},
                                    {"Total Cust$", "Total Customer:"},
                                    {"Total Cust%", "Total Customer Percentage:"},
                                    {"Total Deal$", "Total Purchase:"},
                                    {"Total Deal%", "Total Purchase Percentage:"},
                                    {"Total Marg$", "Total Margin:"},
                                    {"Total Marg%", "Total Margin Percent:"},
                                    {"Total Cust Disc$", "Total Customer Discount:"},
                                    {"Total Option / Description", "Options / Descriptions:"},
                                    {"Total Additional Charges", "Total Added Charges:"},
                                    {"Total Cust$ Order", "Total Customer Order:"},
                                    {"Total Deal$ Order", "Total Dealer Order:"}};
    QList<TotalLabel> labels;
    for (const auto &pair : pairs)
        labels.append({QString::fromLatin1(pair[0]), QString::fromLatin1(pair[1])});
    return labels;
}

QStringList makeHeaderFooterCaptions() {
    const char *const captions[] = {"Orvanta File Title", "Saved Date",   "Saved Time",
                                    "Sif File Name",      "File Path",    "Report Date & Time",
                                    "Saved Date & Time",  "Report Date",  "Report Time",
                                    "Company Name",       "Page n of  m", "Page"};
    QStringList list;
    for (const char *caption : captions)
        list.append(QString::fromLatin1(caption));
    return list;
}

template <typename Entry, typename Key, typename Value>
QHash<QString, QString> indexBy(const QList<Entry> &entries, Key key, Value value) {
    QHash<QString, QString> hash;
    for (const Entry &entry : entries)
        hash.insert(entry.*key, entry.*value);
    return hash;
}

} // namespace

const QList<ItemField> &FieldCatalog::itemFields() {
    static const QList<ItemField> fields = makeItemFields();
    return fields;
}

QString FieldCatalog::codeForCaption(const QString &caption) {
    static const QHash<QString, QString> codes =
        indexBy(itemFields(), &ItemField::caption, &ItemField::code);
    return codes.value(caption);
}

QString FieldCatalog::captionForCode(const QString &code) {
    static const QHash<QString, QString> captions =
        indexBy(itemFields(), &ItemField::code, &ItemField::caption);
    return captions.value(code);
}

const QStringList &FieldCatalog::designerCaptions() {
    static const QStringList captions = makeDesignerCaptions();
    return captions;
}

QString FieldCatalog::captionAt(int nameIndex) {
    const QStringList &captions = designerCaptions();
    if (nameIndex < 0 || nameIndex >= captions.size())
        return {};
    return captions.at(nameIndex);
}

int FieldCatalog::indexOfCaption(const QString &caption) {
    static const QHash<QString, int> indexes = [] {
        QHash<QString, int> hash;
        const QStringList &captions = designerCaptions();
        for (int i = 0; i < captions.size(); ++i)
            hash.insert(captions.at(i), i);
        return hash;
    }();
    return indexes.value(caption, NoNameIndex);
}

QStringList FieldCatalog::itemCaptions() {
    return designerCaptions().mid(0, ItemCaptionCount);
}

QStringList FieldCatalog::pageCaptions() {
    return designerCaptions().mid(ItemCaptionCount, PageCaptionCount);
}

QStringList FieldCatalog::totalCaptions() {
    return designerCaptions().mid(ItemCaptionCount + PageCaptionCount, TotalCaptionCount);
}

QStringList FieldCatalog::orderHeaderCaptions() {
    return designerCaptions().mid(ItemCaptionCount + PageCaptionCount + TotalCaptionCount);
}

const QList<TotalLabel> &FieldCatalog::totalLabels() {
    static const QList<TotalLabel> labels = makeTotalLabels();
    return labels;
}

QString FieldCatalog::totalLabel(const QString &caption) {
    static const QHash<QString, QString> labels =
        indexBy(totalLabels(), &TotalLabel::caption, &TotalLabel::label);
    return labels.value(caption);
}

const QStringList &FieldCatalog::headerFooterCaptions() {
    static const QStringList captions = makeHeaderFooterCaptions();
    return captions;
}

bool FieldCatalog::isHeaderFooterCaption(const QString &caption) {
    return headerFooterCaptions().contains(caption);
}

bool FieldCatalog::hasNoHeaderText(const QString &caption) {
    // The picture, status and tax columns draw a picture or an icon, not a text.
    const ItemFieldRow *row = ItemFields::rowForCaption(caption);
    return row && (row->kind == ItemFieldKind::Picture || row->kind == ItemFieldKind::Status ||
                   row->kind == ItemFieldKind::Tax);
}

QString FieldCatalog::labelFromSetting(const QString &value) {
    const qsizetype comma = value.indexOf(QLatin1Char(','));
    if (comma < 0)
        return {};
    return value.mid(comma + 1).trimmed();
}

QString FieldCatalog::lengthTextFromSetting(const QString &value) {
    const qsizetype comma = value.indexOf(QLatin1Char(','));
    return (comma < 0 ? value : value.left(comma)).trimmed();
}

} // namespace tavrel

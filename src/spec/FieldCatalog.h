#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tavrel {

// One printable item field: the caption the user picks and the field code it is stored under.
struct ItemField {
    QString caption;
    QString code;
};

// One total caption and the label printed in front of its value on summary pages.
struct TotalLabel {
    QString caption;
    QString label;
};

// The catalogue of printable fields: which caption a box on a template shows, which field code
// holds the item value, and what a total is labelled. Captions are stored in template files and
// compared exactly, misspellings included ("Table of Contensts").
//
// Name index: a box's `_NameIndex` is the 0-based position of its caption in designerCaptions()
// (0 = "Special Number", 110 = "Comments"), the way a list control numbers its rows. -1 means
// the box is bound to no catalogue entry (a free note, label or picture).
class FieldCatalog {
public:
    static constexpr int DesignerCaptionCount = 111;
    static constexpr int NoNameIndex = -1;

    // The 46 item fields, reading the catalogue table down its left column, then its right.
    static const QList<ItemField> &itemFields();

    // The field code of an item caption ("Part Number" -> "PN"); empty for any other text,
    // including page, total and order captions. Exact, case-sensitive comparison.
    static QString codeForCaption(const QString &caption);
    // The caption of a field code ("PN" -> "Part Number"); empty when unknown.
    static QString captionForCode(const QString &code);

    // The 111 captions the designer offers, in its list order: item, page, total, order header.
    static const QStringList &designerCaptions();
    // The caption at a 0-based name index; empty when out of range.
    static QString captionAt(int nameIndex);
    // The 0-based name index of a caption, or NoNameIndex.
    static int indexOfCaption(const QString &caption);

    // The section groups of the designer list, each in list order.
    static QStringList itemCaptions();        // 48 entries
    static QStringList pageCaptions();        // 13 entries
    static QStringList totalCaptions();       // 15 entries
    static QStringList orderHeaderCaptions(); // 35 entries

    // Total captions with their printed labels (14 entries).
    static const QList<TotalLabel> &totalLabels();
    // The printed label of a total caption ("Total List$" -> "Total Unit List:"); empty when the
    // caption has none.
    static QString totalLabel(const QString &caption);

    // The captions that may sit in a header or footer band (12 entries).
    static const QStringList &headerFooterCaptions();
    static bool isHeaderFooterCaption(const QString &caption);

    // Captions that print no specification tag ("Image", "Complete", "Taxable").
    static bool hasNoHeaderText(const QString &caption);

    // The user's label of an item field, from the value stored under its field code: the text
    // after the first comma, trimmed; empty when there is no comma.
    static QString labelFromSetting(const QString &value);
    // The length text of the same value: the text before the first comma, trimmed.
    static QString lengthTextFromSetting(const QString &value);
};

} // namespace tavrel

#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

#include <vector>

namespace tavrel {

// The text fields of an item. The tags that fill them, their field codes, captions and lengths
// are the rows of spec/ItemFields.h.
enum class ItemText : std::uint8_t {
    None,
    RecordNumber,       // RN=
    PartNumber,         // PN=, upper-cased; "SUBTOTAL" marks a subtotal row
    PartClassification, // PC=
    Tag1,               // T1= or TG=
    Tag2,               // T2= or GC=
    Tag3,
    Tag4,
    Tag5,
    PartDescription,     // PD=
    ExtendedDescription, // PE=
    ModelDescription,    // MD=
    ExpandedDescription, // ED=
    ManufacturerCode,    // MC=
    Carton,              // QC=
    PzText,              // PZ=
    DpText,              // DP=
    TaText,              // TA=
    // Option notes (AN=, AD=) and options (ON=, OD=), each line-joined with carriage returns.
    NoteCodes,
    NoteDescriptions,
    OptionCodes,
    OptionDescriptions,
    ImText,                // IM=
    CmText,                // CM=
    GenericCode,           // CG=
    SpecialNumber,         // SN=
    ReportNote,            // NE=
    SifNote,               // NL=
    TableOfContents,       // TC=
    EnterpriseCode,        // EC=
    EnterpriseDescription, // DE=
    // The lists as "running" texts, joined with single blanks. They follow from the lists above
    // (runningText), and are stored only for a row whose lists were replaced after reading.
    NoteCodesRunning,
    NoteDescriptionsRunning,
    OptionCodesRunning,
    OptionDescriptionsRunning,
    // The option lines after the first of each list, in the order the SIF file gave them
    // (optionLaterLines); stored only when that order is not the usual one.
    OptionLaterLines,
};

// One item of the specification, in the order the parent application's records hold them.
// Texts are empty and amounts 0 until the SIF reader fills them. A big job holds hundreds of
// thousands of items with only a handful of their thirty-odd texts filled, so the texts are kept
// as a short list of the filled ones rather than a member each.
struct SifItem {
    double weight = 0;         // WT=, per unit
    double extendedWeight = 0; // quantity x weight
    double volume = 0;         // VO=, per unit
    double extendedVolume = 0; // volume x quantity
    double quantity = 0;       // QT=
    double listPrice = 0;      // PL=, per unit
    double extendedList = 0;
    double ddAmount = 0; // DD=, per unit
    double extendedDd = 0;
    double customerPercent = 0; // S-=, "Cust%"
    double sellPrice = 0;       // SP=, "Cust$" per unit
    double extendedSell = 0;
    double dealerPercent = 0; // P%=, "Deal%"
    double buyPrice = 0;      // BP=, "Deal$" per unit
    double extendedBuy = 0;
    double marginPercent = 0; // M%= or computed while reading
    double marginAmount = 0;  // MP= or computed while reading
    double extendedSellCopy = 0;

    // A stored text; empty when the item has none. For the running texts and the later option
    // lines, which are mostly not stored, ask runningText() and optionLaterLines().
    const QString &text(ItemText field) const;
    void setText(ItemText field, QString value);
    // The stored text to edit in place, added empty when missing. The reference holds until
    // another text of this item is added.
    QString &editText(ItemText field);

    const QString &partNumber() const { return text(ItemText::PartNumber); }
    const QString &partDescription() const { return text(ItemText::PartDescription); }
    const QString &optionCodes() const { return text(ItemText::OptionCodes); }
    const QString &optionDescriptions() const { return text(ItemText::OptionDescriptions); }
    const QString &noteCodes() const { return text(ItemText::NoteCodes); }
    const QString &noteDescriptions() const { return text(ItemText::NoteDescriptions); }
    bool isSubtotal() const { return partNumber() == QLatin1String("SUBTOTAL"); }

    // A list joined with single blanks (field: one of the *Running texts). The notes keep the
    // carriage return after their heading line, as the parent application's reader did.
    QString runningText(ItemText field) const;
    // The option lines after the first option code and the first description, which the HTML
    // and RTF texts of the options collect.
    QStringList optionLaterLines() const;
    // Sets the option lists, keeping the running texts and later lines the item had, as a
    // subtotal row does when it receives its group's options.
    void replaceOptions(QString codes, QString descriptions);
    // Gives back the room that growing the texts left over.
    void squeeze();

private:
    const QString *stored(ItemText field) const;

    struct StoredText {
        ItemText field;
        QString value;
    };
    std::vector<StoredText> m_texts; // ordered by field
};

// The lines of a line list (option codes, note descriptions, ...): split at carriage returns,
// as BASIC's Split does; an empty list has no lines at all.
QStringList listLines(const QString &joined);

// The order of later option lines that optionLaterLines() gives when nothing is stored: line
// 2 of the codes, line 2 of the descriptions, line 3 of the codes, and so on.
QStringList usualLaterOptionLines(const QString &codes, const QString &descriptions);

// The option and note texts of one item for HTML and RTF output.
struct SifItemTexts {
    QString optionHtml;
    QString optionRtf;
    QString noteCodeHtml;
    QString noteCodeRtf;
    QString noteTextHtml;
    QString noteTextRtf;

    static SifItemTexts of(const SifItem &item);
};

// The header lines of a SIF file and the order totals derived from them.
struct SifHeader {
    QString specFileName;
    QString stText;
    QString dateText;
    QString timeText;
    double totalList = 0;     // TL=
    double totalSell = 0;     // TS=
    double totalPurchase = 0; // TP=
    double totalWeight = 0;   // TW=
    double totalVolume = 0;   // TV=
    double totalMarginAmount = 0;
    double totalDiscountAmount = 0;
    double totalMarginPercent = 0;
    double totalCustomerDiscountPercent = 0;
    double totalDealerDiscountPercent = 0;
};

// The specification of one job: the items, 1-based as every consumer counts them, and the
// header.
class SpecData {
public:
    SifHeader header;

    int itemCount() const { return int(m_items.size()); }
    // Index 1 to itemCount(); anything else throws RuntimeError 9 (subscript out of range).
    SifItem &item(int index);
    const SifItem &item(int index) const;

    // Adds one empty item at the end and returns its index.
    int appendItem();
    // Room for this many items without moving the earlier ones again.
    void reserve(int items);
    // Back to no items and an empty header.
    void clear();

private:
    std::vector<SifItem> m_items;

    std::size_t slot(int index) const;
};

} // namespace tavrel

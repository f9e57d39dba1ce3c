#pragma once

#include <QString>

#include <vector>

namespace tavrel {

// One item of the specification, in the order the parent application's records hold them.
// Text fields are empty and amounts 0 until the SIF reader fills them. The tags that fill the
// members, their field codes, captions and lengths are the rows of spec/ItemFields.h.
struct SifItem {
    QString recordNumber;       // RN=
    QString partNumber;         // PN=, upper-cased; "SUBTOTAL" marks a subtotal row
    QString freeText1;          // not filled by the reader; free for the renderers
    QString partClassification; // PC=
    double weight = 0;          // WT=, per unit
    double extendedWeight = 0;  // quantity x weight
    double volume = 0;          // VO=, per unit
    double extendedVolume = 0;  // volume x quantity
    QString tag1;               // T1= or TG=
    QString tag2;               // T2= or GC=
    QString tag3;
    QString tag4;
    QString tag5;
    QString partDescription;     // PD=
    QString extendedDescription; // PE=
    QString modelDescription;    // MD=
    QString expandedDescription; // ED=
    QString manufacturerCode;    // MC=
    double quantity = 0;         // QT=
    QString carton;              // QC=
    double listPrice = 0;        // PL=, per unit
    double extendedList = 0;
    double ddAmount = 0; // DD=, per unit
    double extendedDd = 0;
    QString pzText;             // PZ=
    QString dpText;             // DP=
    double customerPercent = 0; // S-=, "Cust%"
    double sellPrice = 0;       // SP=, "Cust$" per unit
    double extendedSell = 0;
    double dealerPercent = 0; // P%=, "Deal%"
    double buyPrice = 0;      // BP=, "Deal$" per unit
    double extendedBuy = 0;
    QString taText; // TA=
    // Option notes (AN=, AD=) and options (ON=, OD=): each line-joined with carriage returns,
    // and as a "running" text joined with single blanks.
    QString noteCodes;
    QString noteDescriptions;
    QString noteCodesRunning;
    QString noteDescriptionsRunning;
    QString optionCodes;
    QString optionDescriptions;
    QString optionCodesRunning;
    QString optionDescriptionsRunning;
    QString imText;           // IM=
    QString cmText;           // CM=
    QString freeText2;        // not filled by the reader; free for the renderers
    double marginPercent = 0; // M%= or computed while reading
    double marginAmount = 0;  // MP= or computed while reading
    double extendedSellCopy = 0;
    QString genericCode;           // CG=
    QString specialNumber;         // SN=
    QString reportNote;            // NE=
    QString sifNote;               // NL=
    QString tableOfContents;       // TC=
    QString enterpriseCode;        // EC=
    QString enterpriseDescription; // DE=

    bool isSubtotal() const { return partNumber == QLatin1String("SUBTOTAL"); }
};

// The option and note texts of one item, pre-formatted for HTML and RTF output.
struct SifItemTexts {
    QString optionHtml;
    QString optionRtf;
    QString noteCodeHtml;
    QString noteCodeRtf;
    QString noteTextHtml;
    QString noteTextRtf;
    QString extraHtml; // sized with the others; left empty by the reader
    QString extraRtf;
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

// The specification of one job: the items with their texts, 1-based as every consumer counts
// them, and the header.
class SpecData {
public:
    SifHeader header;

    int itemCount() const { return int(m_items.size()); }
    // Index 1 to itemCount(); anything else throws RuntimeError 9 (subscript out of range).
    SifItem &item(int index);
    const SifItem &item(int index) const;
    SifItemTexts &texts(int index);
    const SifItemTexts &texts(int index) const;

    // Adds one empty item (and its texts) at the end and returns its index.
    int appendItem();
    // Room for this many items without moving the earlier ones again.
    void reserve(int items);
    // Back to no items and an empty header.
    void clear();

private:
    std::vector<SifItem> m_items;
    std::vector<SifItemTexts> m_texts;

    std::size_t slot(int index) const;
};

} // namespace tavrel

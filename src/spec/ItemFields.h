#pragma once

#include "spec/SpecData.h"

#include <QString>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace tavrel {

// What an item field holds, and so how it prints.
enum class ItemFieldKind : std::uint8_t {
    Text,       // copied as it stands
    Quantity,   // a count, printed as BASIC prints a Double
    Measure,    // weight or volume
    Amount,     // money
    Percentage, // a percent figure
    OptionList, // option or option-note lines, joined with carriage returns or blanks
    Picture,    // the item's picture file ("Image")
    Status,     // the value that picks a status bitmap ("Complete")
    Tax,        // the taxable mark ("Taxable")
};

// How the SIF reader fills a field from its tag's line.
enum class SifFill : std::uint8_t {
    None,          // computed after reading, or filled together with another field
    Text,          // the value as it stands
    Number,        // the value as a number, 0 when it is none
    PartNumber,    // starts a new item; the value upper-cased
    MarginAmount,  // the number, or else sell price - buy price
    MarginPercent, // the number, or else computed from the margin amount
    OptionList,    // ON=, OD=: option lines, sharing the option HTML and RTF texts
    NoteCodeList,  // AN=: note code lines, headed by the note-code marker
    NoteTextList,  // AD=: note description lines, headed by the note-text marker
};

// One item field: everything the reader, the JSON output, the catalogue, the field lengths and
// the body cells know about it. Empty texts and null pointers mean "none".
struct ItemFieldRow {
    std::string_view code{};    // field code in templates, the job file and the catalogue
    std::string_view caption{}; // the caption a template box shows (exact, misspellings included)
    std::array<const char *, 2> tags{}; // the SIF tags that fill it, "=" included
    std::string_view jsonKey{};         // key in the specification JSON
    ItemText text = ItemText::None;     // text field
    double SifItem::*number = nullptr;  // numeric member
    // A value computed from other members, for a field with no member of its own.
    double (*value)(const SifItem &) = nullptr;
    // What a "SUBTOTAL" row prints under the column (its own sum); null: nothing.
    double (*subtotalValue)(const SifItem &) = nullptr;
    const char16_t *cellPattern = nullptr; // body cell format of a numeric field
    ItemFieldKind kind = ItemFieldKind::Text;
    SifFill fill = SifFill::None;
    int length = 0;           // built-in length of a coded field
    int catalogPosition = -1; // place in the catalogue's list (left column down, then right)

    QString codeText() const { return QString::fromLatin1(code.data(), qsizetype(code.size())); }
    QString captionText() const {
        return QString::fromLatin1(caption.data(), qsizetype(caption.size()));
    }
    QString jsonKeyText() const {
        return QString::fromLatin1(jsonKey.data(), qsizetype(jsonKey.size()));
    }
    bool hasText() const { return text != ItemText::None; }
    // The text of the field for an item; a running text follows from its list.
    QString textOf(const SifItem &item) const {
        const bool running =
            text >= ItemText::NoteCodesRunning && text <= ItemText::OptionDescriptionsRunning;
        return running ? item.runningText(text) : item.text(text);
    }
    // The numeric value of the field for an item (0 for a text field).
    double numberOf(const SifItem &item) const {
        return number ? item.*number : value ? value(item) : 0.0;
    }
};

namespace ItemFields {

inline constexpr char16_t AmountPattern[] = u"##0.00";
inline constexpr char16_t PercentPattern[] = u"##0.00000";
// Kept as it always was, blank after the point included: the margin percentage prints so.
inline constexpr char16_t SpacedPercentPattern[] = u"##0. 00000";

using K = ItemFieldKind;
using F = SifFill;

// Coded fields first, in the order the field length editor lists them; then the fields that
// have no code.
// clang-format off
inline constexpr ItemFieldRow rows[] = {
    {.code = "PN", .caption = "Part Number", .tags = {"PN="}, .jsonKey = "PN",
     .text = ItemText::PartNumber, .fill = F::PartNumber, .length = 16, .catalogPosition = 6},
    {.code = "SN", .caption = "Special Number", .tags = {"SN="}, .jsonKey = "SN",
     .text = ItemText::SpecialNumber, .fill = F::Text, .length = 10, .catalogPosition = 0},
    {.code = "NL", .caption = "Sif Note", .tags = {"NL="}, .jsonKey = "NL",
     .text = ItemText::SifNote, .fill = F::Text, .length = 18, .catalogPosition = 2},
    {.code = "NE", .caption = "Report Note", .tags = {"NE="}, .jsonKey = "NE",
     .text = ItemText::ReportNote, .fill = F::Text, .length = 25, .catalogPosition = 1},
    {.code = "TC", .caption = "Table of Contensts", .tags = {"TC="}, .jsonKey = "TC",
     .text = ItemText::TableOfContents, .fill = F::Text, .length = 10, .catalogPosition = 3},
    {.code = "EC", .caption = "Enterprise Code", .tags = {"EC="}, .jsonKey = "EC",
     .text = ItemText::EnterpriseCode, .fill = F::Text, .length = 3, .catalogPosition = 4},
    {.code = "DE", .caption = "Enterprise Description", .tags = {"DE="}, .jsonKey = "DE",
     .text = ItemText::EnterpriseDescription, .fill = F::Text, .length = 18, .catalogPosition = 5},
    {.code = "PC", .caption = "Part Classification", .tags = {"PC="}, .jsonKey = "PC",
     .text = ItemText::PartClassification, .fill = F::Text, .length = 20, .catalogPosition = 8},
    {.code = "WT", .caption = "Weight", .tags = {"WT="}, .jsonKey = "WT",
     .number = &SifItem::weight, .cellPattern = AmountPattern, .kind = K::Measure,
     .fill = F::Number, .length = 9, .catalogPosition = 10},
    {.code = "VO", .caption = "Volume", .tags = {"VO="}, .jsonKey = "VO",
     .number = &SifItem::volume, .cellPattern = AmountPattern, .kind = K::Measure,
     .fill = F::Number, .length = 9, .catalogPosition = 17},
    {.code = "T1", .caption = "Tag 1", .tags = {"T1=", "TG="}, .jsonKey = "T1",
     .text = ItemText::Tag1, .fill = F::Text, .length = 10, .catalogPosition = 18},
    {.code = "T2", .caption = "Tag 2", .tags = {"T2=", "GC="}, .jsonKey = "T2",
     .text = ItemText::Tag2, .fill = F::Text, .length = 24, .catalogPosition = 19},
    {.code = "T3", .caption = "Tag 3", .tags = {"T3="}, .jsonKey = "T3", .text = ItemText::Tag3,
     .fill = F::Text, .length = 24, .catalogPosition = 20},
    {.code = "T4", .caption = "Tag 4", .tags = {"T4="}, .jsonKey = "T4", .text = ItemText::Tag4,
     .fill = F::Text, .length = 24, .catalogPosition = 21},
    {.code = "T5", .caption = "Tag 5", .tags = {"T5="}, .jsonKey = "T5", .text = ItemText::Tag5,
     .fill = F::Text, .length = 24, .catalogPosition = 23},
    {.code = "PD", .caption = "Part Description", .tags = {"PD="}, .jsonKey = "PD",
     .text = ItemText::PartDescription, .fill = F::Text, .length = 34, .catalogPosition = 24},
    {.code = "PE", .caption = "Extended Description", .tags = {"PE="}, .jsonKey = "PE",
     .text = ItemText::ExtendedDescription, .fill = F::Text, .length = 24, .catalogPosition = 25},
    {.code = "MD", .caption = "Model Description", .tags = {"MD="}, .jsonKey = "MD",
     .text = ItemText::ModelDescription, .fill = F::Text, .length = 33, .catalogPosition = 27},
    {.code = "ED", .caption = "Expanded Description", .tags = {"ED="}, .jsonKey = "ED",
     .text = ItemText::ExpandedDescription, .fill = F::Text, .length = 60, .catalogPosition = 26},
    {.code = "MC", .caption = "Mfg", .tags = {"MC="}, .jsonKey = "MC",
     .text = ItemText::ManufacturerCode, .fill = F::Text, .length = 5, .catalogPosition = 28},
    {.code = "QT", .caption = "Qty", .tags = {"QT="}, .jsonKey = "QT", .number = &SifItem::quantity,
     .kind = K::Quantity, .fill = F::Number, .length = 5, .catalogPosition = 39},
    {.code = "QC", .caption = "Carton", .tags = {"QC="}, .jsonKey = "QC", .text = ItemText::Carton,
     .fill = F::Text, .length = 3, .catalogPosition = 22},
    {.code = "PL", .caption = "List$", .tags = {"PL="}, .jsonKey = "PL",
     .number = &SifItem::listPrice, .cellPattern = AmountPattern, .kind = K::Amount,
     .fill = F::Number, .length = 9, .catalogPosition = 40},
    {.code = "PZ", .caption = "PZ", .tags = {"PZ="}, .jsonKey = "PZ", .text = ItemText::PzText,
     .fill = F::Text, .length = 3, .catalogPosition = 45},
    {.code = "S-", .caption = "Cust%", .tags = {"S-="}, .jsonKey = "S-",
     .number = &SifItem::customerPercent, .cellPattern = PercentPattern, .kind = K::Percentage,
     .fill = F::Number, .length = 9, .catalogPosition = 30},
    {.code = "SP", .caption = "Cust$", .tags = {"SP="}, .jsonKey = "SP",
     .number = &SifItem::sellPrice, .cellPattern = AmountPattern, .kind = K::Amount,
     .fill = F::Number, .length = 9, .catalogPosition = 29},
    {.code = "P%", .caption = "Deal%", .tags = {"P%="}, .jsonKey = "P%",
     .number = &SifItem::dealerPercent, .cellPattern = PercentPattern, .kind = K::Percentage,
     .fill = F::Number, .length = 9, .catalogPosition = 32},
    {.code = "BP", .caption = "Deal$", .tags = {"BP="}, .jsonKey = "BP",
     .number = &SifItem::buyPrice, .cellPattern = AmountPattern, .kind = K::Amount,
     .fill = F::Number, .length = 9, .catalogPosition = 31},
    {.code = "ON", .caption = "Option Code", .tags = {"ON="}, .jsonKey = "ON",
     .text = ItemText::OptionCodes, .kind = K::OptionList,
     .fill = F::OptionList, .length = 49, .catalogPosition = 33},
    {.code = "OD", .caption = "Option Description", .tags = {"OD="}, .jsonKey = "OD",
     .text = ItemText::OptionDescriptions, .kind = K::OptionList, .fill = F::OptionList, .length = 34, .catalogPosition = 34},
    {.code = "AN", .caption = "Option Note Code", .tags = {"AN="}, .jsonKey = "AN",
     .text = ItemText::NoteCodes, .kind = K::OptionList,
     .fill = F::NoteCodeList, .length = 49, .catalogPosition = 35},
    {.code = "AD", .caption = "Option Note Description", .tags = {"AD="}, .jsonKey = "AD",
     .text = ItemText::NoteDescriptions, .kind = K::OptionList, .fill = F::NoteTextList, .length = 34, .catalogPosition = 36},
    {.code = "WTE", .caption = "EXT Weight", .jsonKey = "WTE", .number = &SifItem::extendedWeight,
     .subtotalValue = [](const SifItem &i) { return i.weight; }, .cellPattern = AmountPattern,
     .kind = K::Measure, .length = 11, .catalogPosition = 11},
    {.code = "VOE", .caption = "EXT Volume", .jsonKey = "VOE", .number = &SifItem::extendedVolume,
     .subtotalValue = [](const SifItem &i) { return i.volume; }, .cellPattern = AmountPattern,
     .kind = K::Measure, .length = 11, .catalogPosition = 12},
    {.code = "CG", .caption = "Generic Code", .tags = {"CG="}, .jsonKey = "CG",
     .text = ItemText::GenericCode, .fill = F::Text, .length = 8, .catalogPosition = 9},
    {.code = "SPE", .caption = "EXT Cust$", .jsonKey = "SPE", .number = &SifItem::extendedSell,
     .subtotalValue = [](const SifItem &i) { return i.sellPrice; }, .cellPattern = AmountPattern,
     .kind = K::Amount, .length = 11, .catalogPosition = 13},
    {.code = "BPE", .caption = "EXT Deal$", .jsonKey = "BPE", .number = &SifItem::extendedBuy,
     .subtotalValue = [](const SifItem &i) { return i.buyPrice; }, .cellPattern = AmountPattern,
     .kind = K::Amount, .length = 11, .catalogPosition = 14},
    {.code = "PLE", .caption = "EXT List$", .jsonKey = "PLE", .number = &SifItem::extendedList,
     .subtotalValue = [](const SifItem &i) { return i.listPrice; }, .cellPattern = AmountPattern,
     .kind = K::Amount, .length = 11, .catalogPosition = 15},
    {.code = "SDE", .caption = "EXT Cust Disc$",
     .value = [](const SifItem &i) { return i.extendedList - i.extendedSell; },
     .subtotalValue = [](const SifItem &i) { return i.listPrice - i.sellPrice; },
     .cellPattern = AmountPattern, .kind = K::Amount, .length = 11, .catalogPosition = 42},
    {.code = "SD", .caption = "Cust Disc$",
     .value = [](const SifItem &i) { return i.listPrice - i.sellPrice; },
     .cellPattern = AmountPattern, .kind = K::Amount, .length = 9, .catalogPosition = 41},
    {.code = "M%", .caption = "MG%", .tags = {"M%="}, .jsonKey = "M%",
     .number = &SifItem::marginPercent, .cellPattern = SpacedPercentPattern, .kind = K::Percentage,
     .fill = F::MarginPercent, .length = 9, .catalogPosition = 43},
    {.code = "MG", .caption = "MG$", .tags = {"MP="}, .jsonKey = "MP",
     .number = &SifItem::marginAmount, .cellPattern = AmountPattern, .kind = K::Amount,
     .fill = F::MarginAmount, .length = 9, .catalogPosition = 44},
    {.code = "MGE", .caption = "EXT MG$",
     .value = [](const SifItem &i) { return i.marginAmount * i.quantity; },
     .subtotalValue = [](const SifItem &i) { return i.sellPrice - i.buyPrice; },
     .cellPattern = AmountPattern, .kind = K::Amount, .length = 11, .catalogPosition = 16},
    {.code = "REC", .caption = "Rec#", .tags = {"RN="}, .jsonKey = "RN",
     .text = ItemText::RecordNumber, .fill = F::Text, .length = 5, .catalogPosition = 7},
    {.code = "ONN", .caption = "Option Code / Description", .jsonKey = "ONN",
     .text = ItemText::OptionCodesRunning, .kind = K::OptionList, .length = 16,
     .catalogPosition = 37},
    {.code = "ANN", .caption = "Option Note Code / Description", .jsonKey = "ANN",
     .text = ItemText::NoteCodesRunning, .kind = K::OptionList, .length = 16,
     .catalogPosition = 38},
    // No field code: printed under a caption of their own, or not printed at all.
    {.tags = {"DD="}, .jsonKey = "DD", .number = &SifItem::ddAmount, .kind = K::Amount,
     .fill = F::Number},
    {.jsonKey = "DDE", .number = &SifItem::extendedDd, .kind = K::Amount},
    {.jsonKey = "SPE2", .number = &SifItem::extendedSellCopy, .kind = K::Amount},
    {.tags = {"DP="}, .jsonKey = "DP", .text = ItemText::DpText, .fill = F::Text},
    {.caption = "Taxable", .tags = {"TA="}, .jsonKey = "TA", .text = ItemText::TaText,
     .kind = K::Tax, .fill = F::Text},
    {.caption = "Image", .tags = {"IM="}, .jsonKey = "IM", .text = ItemText::ImText,
     .kind = K::Picture, .fill = F::Text},
    {.caption = "Complete", .tags = {"CM="}, .jsonKey = "CM", .text = ItemText::CmText,
     .kind = K::Status, .fill = F::Text},
    {.jsonKey = "ADN", .text = ItemText::NoteDescriptionsRunning, .kind = K::OptionList},
    {.jsonKey = "ODN", .text = ItemText::OptionDescriptionsRunning, .kind = K::OptionList},
};
// clang-format on

inline constexpr std::uint8_t NoRow = 0xFF;
static_assert(std::size(rows) < NoRow);

// Row numbers by the first two characters of a SIF tag (every tag is two ASCII characters and
// "="), so the reader finds a line's field with one array access.
inline constexpr std::array<std::uint8_t, 128 * 128> rowByTag = [] {
    std::array<std::uint8_t, 128 * 128> index{};
    index.fill(NoRow);
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        for (const char *const text : rows[i].tags) {
            if (!text)
                continue;
            const std::string_view tag(text);
            if (tag.size() != 3 || tag[2] != '=' || static_cast<unsigned char>(tag[0]) >= 128 ||
                static_cast<unsigned char>(tag[1]) >= 128)
                throw "a tag is two ASCII characters and '='";
            std::uint8_t &slot = index[std::size_t(tag[0]) * 128 + std::size_t(tag[1])];
            if (slot != NoRow)
                throw "a tag fills one field";
            slot = std::uint8_t(i);
        }
    }
    return index;
}();

// The row a SIF line's tag (its first three characters) fills, or null.
inline const ItemFieldRow *rowForTag(const char *tag) {
    const auto first = static_cast<unsigned char>(tag[0]);
    const auto second = static_cast<unsigned char>(tag[1]);
    if (tag[2] != '=' || first >= 128 || second >= 128)
        return nullptr;
    const std::uint8_t row = rowByTag[std::size_t(first) * 128 + second];
    return row == NoRow ? nullptr : &rows[row];
}

// The row of a field code or caption (exact, case-sensitive), or null.
const ItemFieldRow *rowForCode(const QString &code);
const ItemFieldRow *rowForCaption(const QString &caption);

} // namespace ItemFields

} // namespace tavrel

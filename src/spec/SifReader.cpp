#include "spec/SifReader.h"

#include "base/Conversions.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "spec/ItemFields.h"
#include "spec/Totals.h"

#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace tavrel {

namespace {

constexpr unsigned tagKey(const char *text) {
    return unsigned(static_cast<unsigned char>(text[0])) << 16 |
           unsigned(static_cast<unsigned char>(text[1])) << 8 |
           unsigned(static_cast<unsigned char>(text[2]));
}

constexpr unsigned tag(const char (&text)[4]) {
    return tagKey(text);
}

const QString notesCodeMarker = QStringLiteral("[=Notes:=]");
const QString notesTextMarker = QStringLiteral("= = = = = = = = = [Notes:] = = = = = = = = =");
const QString carriageReturn = QStringLiteral("\r");

// Upper-cases one character at a time, keeping a character whose capital form is not a single
// Windows-1252 character (so "ß" and "µ" stay as the parent application's code page has them).
QString upperCased(const QString &text) {
    QString result = text;
    for (QChar &c : result) {
        if (c.unicode() < 0x80) {
            if (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
                c = QChar(c.unicode() - 0x20);
            continue;
        }
        const QChar upper = c.toUpper();
        if (upper != c && toWindows1252(QStringView(&upper, 1)) != "?")
            c = upper;
    }
    return result;
}

// The numbers of "PN=" lines, so the records can be allocated once.
int countItemLines(const QByteArray &bytes) {
    int count = 0;
    const QByteArrayView view(bytes);
    for (qsizetype at = view.indexOf("PN="); at >= 0; at = view.indexOf("PN=", at + 3)) {
        if (at == 0 || view[at - 1] == '\n' || view[at - 1] == '\r')
            ++count;
    }
    return count;
}

// One pass over the lines of a SIF text, applying each to the specification.
class SifParser {
public:
    SifParser(const QString &specFileName, SpecData &data)
        : m_specFileName(specFileName)
        , m_data(data) {}

    void parse(const QByteArray &bytes);

private:
    const QString &m_specFileName;
    SpecData &m_data;
    SifItem *m_item = nullptr;
    // The current item's option lines after the first of each list, in the file's order.
    QStringList m_laterOptionLines;
    const char *m_value = nullptr;
    qsizetype m_valueSize = 0;
    QString m_numberBuffer;

    void applyLine(const char *line, qsizetype size);
    void applyHeaderTag(unsigned key);
    void applyItemTag(const ItemFieldRow &row);
    void applyListLine(const ItemFieldRow &row, const QString *marker);

    QString text() const { return fromWindows1252(m_value, m_valueSize); }
    std::optional<double> parsedNumber();
    double number() { return parsedNumber().value_or(0.0); }
    SifItem &item();
    void startItem(const ItemFieldRow &partNumber);
    void finishItem();
};

void SifParser::parse(const QByteArray &bytes) {
    const char *data = bytes.constData();
    const qsizetype size = bytes.size();
    qsizetype start = 0;
    while (start < size) {
        qsizetype end = start;
        while (end < size && data[end] != '\n' && data[end] != '\r')
            ++end;
        applyLine(data + start, end - start);
        if (end < size && data[end] == '\r' && end + 1 < size && data[end + 1] == '\n')
            ++end;
        start = end + 1;
    }
    finishItem();
}

void SifParser::applyLine(const char *line, qsizetype size) {
    // The tag is the first three characters as written; shorter lines match no tag.
    if (size < 3)
        return;
    qsizetype begin = 3;
    qsizetype end = size;
    while (begin < end && line[begin] == ' ')
        ++begin;
    while (end > begin && line[end - 1] == ' ')
        --end;
    m_value = line + begin;
    m_valueSize = end - begin;
    if (const ItemFieldRow *row = ItemFields::rowForTag(line))
        applyItemTag(*row);
    else
        applyHeaderTag(tagKey(line));
}

// Plain decimals such as "614.00" or "-3" with at most 15 digits: the digits form an exact
// integer below 2^53 and the divisor an exact power of ten, so one division gives the correctly
// rounded double, the same value the general conversion returns. Anything else: no value.
std::optional<double> plainDecimal(const char *text, qsizetype size) {
    static constexpr double powersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    qsizetype i = 0;
    const bool negative = size > 0 && text[0] == '-';
    if (negative)
        ++i;
    std::uint64_t mantissa = 0;
    int digits = 0;
    int fractionDigits = 0;
    bool point = false;
    for (; i < size; ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            if (++digits > 15)
                return std::nullopt;
            mantissa = mantissa * 10 + std::uint64_t(c - '0');
            fractionDigits += point ? 1 : 0;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0)
        return std::nullopt;
    const double value = double(mantissa) / powersOfTen[fractionDigits];
    return negative ? -value : value;
}

std::optional<double> SifParser::parsedNumber() {
    if (const std::optional<double> plain = plainDecimal(m_value, m_valueSize))
        return plain;
    m_numberBuffer.resize(m_valueSize);
    QChar *out = m_numberBuffer.data();
    for (qsizetype i = 0; i < m_valueSize; ++i)
        out[i] = QChar(char16_t(static_cast<unsigned char>(m_value[i])));
    return Conversions::parseNumber(m_numberBuffer);
}

SifItem &SifParser::item() {
    // An item line before the first "PN=" line has no record to go to.
    if (!m_item)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return *m_item;
}

void SifParser::startItem(const ItemFieldRow &partNumber) {
    finishItem();
    const int index = m_data.appendItem();
    m_item = &m_data.item(index);
    m_item->setText(partNumber.text, upperCased(text()));
}

void SifParser::finishItem() {
    if (!m_item)
        return;
    // Nearly every file alternates code and description lines; only an item whose later lines
    // came in another order keeps that order.
    // Without later lines there is no order to keep (every later line of a list lands here).
    if (!m_laterOptionLines.isEmpty() &&
        m_laterOptionLines !=
            usualLaterOptionLines(m_item->optionCodes(), m_item->optionDescriptions()))
        m_item->editText(ItemText::OptionLaterLines) = m_laterOptionLines.join(carriageReturn);
    m_laterOptionLines.clear();
    m_item->squeeze();
}

void SifParser::applyHeaderTag(unsigned key) {
    SifHeader &header = m_data.header;
    switch (key) {
    case tag("SF="):
        header.specFileName = m_specFileName;
        return;
    case tag("ST="):
        header.stText = text();
        return;
    case tag("DT="):
        header.dateText = text();
        return;
    case tag("TM="):
        header.timeText = text();
        return;
    case tag("TL="):
        header.totalList = number();
        return;
    case tag("TP="):
        header.totalPurchase = number();
        return;
    case tag("TS="):
        header.totalSell = number();
        return;
    case tag("TW="):
        header.totalWeight = number();
        return;
    case tag("TV="):
        header.totalVolume = number();
        return;
    default:
        return; // not a tag of this program: ignored
    }
}

void SifParser::applyItemTag(const ItemFieldRow &row) {
    switch (row.fill) {
    case SifFill::PartNumber:
        startItem(row);
        return;
    case SifFill::Text: {
        item().setText(row.text, text());
        return;
    }
    case SifFill::Number: {
        SifItem &current = item();
        current.*row.number = number();
        return;
    }
    case SifFill::MarginAmount: {
        SifItem &current = item();
        const std::optional<double> value = parsedNumber();
        current.*row.number =
            value ? *value : Totals::checked(current.sellPrice - current.buyPrice);
        return;
    }
    case SifFill::MarginPercent: {
        SifItem &current = item();
        const std::optional<double> value = parsedNumber();
        if (value)
            current.*row.number = *value;
        else if (current.sellPrice != 0)
            current.*row.number = Totals::checked(current.marginAmount / current.sellPrice * 100);
        else // deliberate: without a sell price the division is skipped, not replaced by 0
            current.*row.number = Totals::checked(current.marginAmount * 100);
        return;
    }
    case SifFill::OptionList:
        applyListLine(row, nullptr);
        return;
    case SifFill::NoteCodeList:
        applyListLine(row, &notesCodeMarker);
        return;
    case SifFill::NoteTextList:
        applyListLine(row, &notesTextMarker);
        return;
    case SifFill::None:
        return;
    }
}

void SifParser::applyListLine(const ItemFieldRow &row, const QString *marker) {
    SifItem &current = item();
    // An empty entry still takes its line.
    const QString value = m_valueSize == 0 ? QStringLiteral(" ") : text();
    QString &joined = current.editText(row.text);
    if (!joined.isEmpty()) {
        joined += carriageReturn + value;
        if (!marker)
            m_laterOptionLines.append(value);
    } else if (marker) {
        // The notes block opens with its heading line.
        joined = *marker + carriageReturn + value;
    } else {
        // Deliberate: the first option line goes into the fields only; the HTML and RTF texts
        // collect the later lines.
        joined = value;
    }
}

} // namespace

void parseSifText(const QByteArray &bytes, const QString &specFileName, SpecData &data) {
    data.reserve(data.itemCount() + countItemLines(bytes));
    SifParser(specFileName, data).parse(bytes);
}

void readSif(const QString &path, const QString &specFileName, SpecData &data) {
    data.clear();
    parseSifText(TextFile::readBytes(path), specFileName, data);
    Totals::computeAll(data);
}

bool loadSif(const QString &path, const QString &specFileName, SpecData &data, Prompter &prompter) {
    try {
        readSif(path, specFileName, data);
        return true;
    } catch (const RuntimeError &error) {
        reportError(prompter, QStringLiteral("Load Sif."), error);
        return false;
    }
}

} // namespace tavrel

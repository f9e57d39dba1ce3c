#include "spec/SifReader.h"

#include "base/Conversions.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
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
const QString htmlBreak = QStringLiteral(" <BR> ");
const QString rtfBreak = QStringLiteral(" \\line ");

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
    SifItemTexts *m_texts = nullptr;
    const char *m_value = nullptr;
    qsizetype m_valueSize = 0;
    QString m_numberBuffer;

    void applyLine(const char *line, qsizetype size);
    bool applyHeaderTag(unsigned key);
    bool applyItemTextTag(unsigned key);
    bool applyItemNumberTag(unsigned key);
    bool applyListTag(unsigned key);

    QString text() const { return fromWindows1252(m_value, m_valueSize); }
    std::optional<double> parsedNumber();
    double number() { return parsedNumber().value_or(0.0); }
    SifItem &item();
    void startItem();
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
}

void SifParser::applyLine(const char *line, qsizetype size) {
    // The tag is the first three characters as written; shorter lines match no tag.
    if (size < 3)
        return;
    const unsigned key = tagKey(line);
    qsizetype begin = 3;
    qsizetype end = size;
    while (begin < end && line[begin] == ' ')
        ++begin;
    while (end > begin && line[end - 1] == ' ')
        --end;
    m_value = line + begin;
    m_valueSize = end - begin;
    if (applyHeaderTag(key) || applyItemTextTag(key) || applyItemNumberTag(key))
        return;
    applyListTag(key);
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

void SifParser::startItem() {
    const int index = m_data.appendItem();
    m_item = &m_data.item(index);
    m_texts = &m_data.texts(index);
    m_item->partNumber = upperCased(text());
}

bool SifParser::applyHeaderTag(unsigned key) {
    SifHeader &header = m_data.header;
    switch (key) {
    case tag("SF="):
        header.specFileName = m_specFileName;
        return true;
    case tag("ST="):
        header.stText = text();
        return true;
    case tag("DT="):
        header.dateText = text();
        return true;
    case tag("TM="):
        header.timeText = text();
        return true;
    case tag("TL="):
        header.totalList = number();
        return true;
    case tag("TP="):
        header.totalPurchase = number();
        return true;
    case tag("TS="):
        header.totalSell = number();
        return true;
    case tag("TW="):
        header.totalWeight = number();
        return true;
    case tag("TV="):
        header.totalVolume = number();
        return true;
    case tag("PN="):
        startItem();
        return true;
    default:
        return false;
    }
}

bool SifParser::applyItemTextTag(unsigned key) {
    QString SifItem::*field = nullptr;
    switch (key) {
    case tag("SN="):
        field = &SifItem::specialNumber;
        break;
    case tag("NE="):
        field = &SifItem::reportNote;
        break;
    case tag("NL="):
        field = &SifItem::sifNote;
        break;
    case tag("TC="):
        field = &SifItem::tableOfContents;
        break;
    case tag("EC="):
        field = &SifItem::enterpriseCode;
        break;
    case tag("DE="):
        field = &SifItem::enterpriseDescription;
        break;
    case tag("RN="):
        field = &SifItem::recordNumber;
        break;
    case tag("PC="):
        field = &SifItem::partClassification;
        break;
    case tag("T1="):
    case tag("TG="):
        field = &SifItem::tag1;
        break;
    case tag("T2="):
    case tag("GC="):
        field = &SifItem::tag2;
        break;
    case tag("T3="):
        field = &SifItem::tag3;
        break;
    case tag("T4="):
        field = &SifItem::tag4;
        break;
    case tag("T5="):
        field = &SifItem::tag5;
        break;
    case tag("PD="):
        field = &SifItem::partDescription;
        break;
    case tag("PE="):
        field = &SifItem::extendedDescription;
        break;
    case tag("MD="):
        field = &SifItem::modelDescription;
        break;
    case tag("ED="):
        field = &SifItem::expandedDescription;
        break;
    case tag("MC="):
        field = &SifItem::manufacturerCode;
        break;
    case tag("QC="):
        field = &SifItem::carton;
        break;
    case tag("PZ="):
        field = &SifItem::pzText;
        break;
    case tag("DP="):
        field = &SifItem::dpText;
        break;
    case tag("TA="):
        field = &SifItem::taText;
        break;
    case tag("IM="):
        field = &SifItem::imText;
        break;
    case tag("CM="):
        field = &SifItem::cmText;
        break;
    case tag("CG="):
        field = &SifItem::genericCode;
        break;
    default:
        return false;
    }
    item().*field = text();
    return true;
}

bool SifParser::applyItemNumberTag(unsigned key) {
    double SifItem::*field = nullptr;
    switch (key) {
    case tag("WT="):
        field = &SifItem::weight;
        break;
    case tag("VO="):
        field = &SifItem::volume;
        break;
    case tag("QT="):
        field = &SifItem::quantity;
        break;
    case tag("PL="):
        field = &SifItem::listPrice;
        break;
    case tag("S-="):
        field = &SifItem::customerPercent;
        break;
    case tag("SP="):
        field = &SifItem::sellPrice;
        break;
    case tag("P%="):
        field = &SifItem::dealerPercent;
        break;
    case tag("BP="):
        field = &SifItem::buyPrice;
        break;
    case tag("DD="):
        field = &SifItem::ddAmount;
        break;
    case tag("MP="): {
        SifItem &current = item();
        const std::optional<double> value = parsedNumber();
        current.marginAmount =
            value ? *value : Totals::checked(current.sellPrice - current.buyPrice);
        return true;
    }
    case tag("M%="): {
        SifItem &current = item();
        const std::optional<double> value = parsedNumber();
        if (value)
            current.marginPercent = *value;
        else if (current.sellPrice != 0)
            current.marginPercent = Totals::checked(current.marginAmount / current.sellPrice * 100);
        else // deliberate: without a sell price the division is skipped, not replaced by 0
            current.marginPercent = Totals::checked(current.marginAmount * 100);
        return true;
    }
    default:
        return false;
    }
    SifItem &current = item();
    current.*field = number();
    return true;
}

bool SifParser::applyListTag(unsigned key) {
    if (key != tag("ON=") && key != tag("OD=") && key != tag("AN=") && key != tag("AD="))
        return false;
    SifItem &current = item();
    // An empty entry still takes its line.
    const QString value = m_valueSize == 0 ? QStringLiteral(" ") : text();
    QString *joined = nullptr;
    QString *running = nullptr;
    QString *html = &m_texts->optionHtml;
    QString *rtf = &m_texts->optionRtf;
    const QString *marker = nullptr;
    if (key == tag("ON=")) {
        joined = &current.optionCodes;
        running = &current.optionCodesRunning;
    } else if (key == tag("OD=")) {
        joined = &current.optionDescriptions;
        running = &current.optionDescriptionsRunning;
    } else if (key == tag("AN=")) {
        joined = &current.noteCodes;
        running = &current.noteCodesRunning;
        html = &m_texts->noteCodeHtml;
        rtf = &m_texts->noteCodeRtf;
        marker = &notesCodeMarker;
    } else {
        joined = &current.noteDescriptions;
        running = &current.noteDescriptionsRunning;
        html = &m_texts->noteTextHtml;
        rtf = &m_texts->noteTextRtf;
        marker = &notesTextMarker;
    }

    if (!joined->isEmpty()) {
        *joined += carriageReturn + value;
        *running += QLatin1Char(' ') + value;
        *html += htmlBreak + value;
        *rtf += rtfBreak + value;
    } else if (marker) {
        // The notes block opens with its heading line; the running text keeps the same
        // carriage return after the heading, deliberately.
        *joined = *marker + carriageReturn + value;
        *running = *joined;
        *html = *marker + htmlBreak + value;
        *rtf = *marker + rtfBreak + value;
    } else {
        // Deliberate: the first option line goes into the fields only; the HTML and RTF texts
        // collect the later lines.
        *joined = value;
        *running = value;
    }
    return true;
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

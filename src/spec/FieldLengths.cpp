#include "spec/FieldLengths.h"

#include "spec/BasicText.h"
#include "spec/ItemFields.h"

#include <utility>
#include <vector>

namespace tavrel {

namespace {

struct BuiltInLength {
    const char *code;
    int length;
};

// Page and header codes, then order header codes; "OT" is the order type. The item codes'
// lengths come with the item fields.
constexpr BuiltInLength otherLengths[] = {
    {"ST", 58},  {"DT", 10},  {"TM", 8},  {"TT", 29},  {"SDT", 17}, {"COM", 30}, {"PG", 9},
    {"PNM", 10}, {"RD", 10},  {"RT", 8},  {"RDT", 17}, {"SF", 20},  {"FP", 58},  {"AX", 29},
    {"CO", 50},  {"PA", 32},  {"OT", 50}, {"DB", 32},  {"AB", 50},  {"CP", 50},  {"PT", 50},
    {"PR", 32},  {"RSD", 32}, {"RI", 32}, {"TN", 50},  {"DC", 36},  {"D1", 36},  {"D2", 36},
    {"D5", 20},  {"D6", 4},   {"D7", 11}, {"D8", 5},   {"D9", 20},  {"DPH", 20}, {"DF", 20},
    {"SPC", 36}, {"P1", 36},  {"P2", 36}, {"P5", 20},  {"P6", 4},   {"P7", 11},  {"P8", 5},
    {"P9", 20},  {"PPH", 20}, {"PF", 20}, {"KX", 36},  {"LX", 32},  {"UX", 36},  {"VX", 32},
};

// Every code with its built-in length: the coded item fields, then the others.
const std::vector<std::pair<QString, int>> &builtInLengths() {
    static const std::vector<std::pair<QString, int>> lengths = [] {
        std::vector<std::pair<QString, int>> list;
        for (const ItemFieldRow &row : ItemFields::rows) {
            if (!row.code.empty())
                list.emplace_back(row.codeText(), row.length);
        }
        for (const BuiltInLength &entry : otherLengths)
            list.emplace_back(QString::fromLatin1(entry.code), entry.length);
        return list;
    }();
    return lengths;
}

} // namespace

FieldLengthValue splitFieldLengthValue(const QString &value) {
    const qsizetype comma = value.indexOf(QLatin1Char(','));
    if (comma < 0)
        return {trimBlanks(value), {}};
    return {trimBlanks(QStringView(value).left(comma)),
            trimBlanks(QStringView(value).mid(comma + 1))};
}

const QStringList &FieldLengths::codes() {
    static const QStringList list = [] {
        QStringList codes;
        for (const auto &[code, length] : builtInLengths())
            codes << code;
        return codes;
    }();
    return list;
}

int FieldLengths::builtInLength(const QString &code) {
    for (const auto &[known, length] : builtInLengths()) {
        if (code == known)
            return length;
    }
    return 0;
}

FieldLengths FieldLengths::builtIn() {
    FieldLengths lengths;
    for (const auto &[code, length] : builtInLengths())
        lengths.m_entries.insert(code, {length, {}});
    return lengths;
}

int FieldLengths::length(const QString &code) const {
    return m_entries.value(code).length;
}

QString FieldLengths::label(const QString &code) const {
    return m_entries.value(code).label;
}

void FieldLengths::setLength(const QString &code, int length) {
    m_entries[code].length = length;
}

void FieldLengths::setLabel(const QString &code, const QString &label) {
    m_entries[code].label = label;
}

} // namespace tavrel

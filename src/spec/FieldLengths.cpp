#include "spec/FieldLengths.h"

#include "spec/BasicText.h"

namespace tavrel {

namespace {

struct BuiltInLength {
    const char *code;
    int length;
};

// Item field codes, page and header codes, then order header codes; "OT" is the order type.
constexpr BuiltInLength builtInLengths[] = {
    {"PN", 16},  {"SN", 10},  {"NL", 18},  {"NE", 25},  {"TC", 10},  {"EC", 3},   {"DE", 18},
    {"PC", 20},  {"WT", 9},   {"VO", 9},   {"T1", 10},  {"T2", 24},  {"T3", 24},  {"T4", 24},
    {"T5", 24},  {"PD", 34},  {"PE", 24},  {"MD", 33},  {"ED", 60},  {"MC", 5},   {"QT", 5},
    {"QC", 3},   {"PL", 9},   {"PZ", 3},   {"S-", 9},   {"SP", 9},   {"P%", 9},   {"BP", 9},
    {"ON", 49},  {"OD", 34},  {"AN", 49},  {"AD", 34},  {"WTE", 11}, {"VOE", 11}, {"CG", 8},
    {"SPE", 11}, {"BPE", 11}, {"PLE", 11}, {"SDE", 11}, {"SD", 9},   {"M%", 9},   {"MG", 9},
    {"MGE", 11}, {"REC", 5},  {"ONN", 16}, {"ANN", 16}, {"ST", 58},  {"DT", 10},  {"TM", 8},
    {"TT", 29},  {"SDT", 17}, {"COM", 30}, {"PG", 9},   {"PNM", 10}, {"RD", 10},  {"RT", 8},
    {"RDT", 17}, {"SF", 20},  {"FP", 58},  {"AX", 29},  {"CO", 50},  {"PA", 32},  {"OT", 50},
    {"DB", 32},  {"AB", 50},  {"CP", 50},  {"PT", 50},  {"PR", 32},  {"RSD", 32}, {"RI", 32},
    {"TN", 50},  {"DC", 36},  {"D1", 36},  {"D2", 36},  {"D5", 20},  {"D6", 4},   {"D7", 11},
    {"D8", 5},   {"D9", 20},  {"DPH", 20}, {"DF", 20},  {"SPC", 36}, {"P1", 36},  {"P2", 36},
    {"P5", 20},  {"P6", 4},   {"P7", 11},  {"P8", 5},   {"P9", 20},  {"PPH", 20}, {"PF", 20},
    {"KX", 36},  {"LX", 32},  {"UX", 36},  {"VX", 32},
};

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
        for (const BuiltInLength &entry : builtInLengths)
            codes << QString::fromLatin1(entry.code);
        return codes;
    }();
    return list;
}

int FieldLengths::builtInLength(const QString &code) {
    for (const BuiltInLength &entry : builtInLengths) {
        if (code == QLatin1String(entry.code))
            return entry.length;
    }
    return 0;
}

FieldLengths FieldLengths::builtIn() {
    FieldLengths lengths;
    for (const BuiltInLength &entry : builtInLengths)
        lengths.m_entries.insert(QString::fromLatin1(entry.code), {entry.length, {}});
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

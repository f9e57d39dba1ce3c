#include "base/BasicFormat.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tavrel {

namespace {

bool isPlaceholder(QChar c) {
    return c == QLatin1Char('0') || c == QLatin1Char('#');
}

// The parts of a numeric pattern that decide the output.
struct Pattern {
    QString prefix;        // literals before the first integer placeholder
    QString integerSuffix; // literals after the first integer placeholder, before the point
    int minIntegerDigits = 0;
    bool thousands = false;
    bool hasPoint = false;
    QString decimalTokens; // everything after the point, placeholders and literals
    int decimals = 0;      // placeholders after the point
    bool percent = false;
};

Pattern parsePattern(QStringView text) {
    Pattern pattern;
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    const QStringView integer = point < 0 ? text : text.first(point);
    pattern.hasPoint = point >= 0;
    pattern.percent = text.contains(QLatin1Char('%'));

    qsizetype firstPlaceholder = -1;
    qsizetype lastPlaceholder = -1;
    qsizetype firstZero = -1;
    for (qsizetype i = 0; i < integer.size(); ++i) {
        if (!isPlaceholder(integer[i]))
            continue;
        if (firstPlaceholder < 0)
            firstPlaceholder = i;
        lastPlaceholder = i;
        if (firstZero < 0 && integer[i] == QLatin1Char('0'))
            firstZero = i;
    }
    for (qsizetype i = 0; i < integer.size(); ++i) {
        const QChar c = integer[i];
        if (isPlaceholder(c)) {
            if (firstZero >= 0 && i >= firstZero)
                ++pattern.minIntegerDigits;
        } else if (c == QLatin1Char(',') && i > firstPlaceholder && i < lastPlaceholder &&
                   firstPlaceholder >= 0) {
            pattern.thousands = true;
        } else if (firstPlaceholder < 0 || i < firstPlaceholder) {
            pattern.prefix += c;
        } else {
            pattern.integerSuffix += c;
        }
    }
    if (pattern.hasPoint) {
        pattern.decimalTokens = text.mid(point + 1).toString();
        for (const QChar c : std::as_const(pattern.decimalTokens)) {
            if (isPlaceholder(c))
                ++pattern.decimals;
        }
    }
    return pattern;
}

// A non-negative value as decimal digits: the integer digits (no leading zeros, empty for 0)
// and exactly `decimals` fraction digits, rounded half away from zero on the 15 significant
// digits that BASIC keeps of a double.
struct Digits {
    std::string integer;
    std::string fraction;
};

Digits decimalDigits(double magnitude, int decimals) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.14e", magnitude);
    std::string digits;
    digits.push_back(buffer[0]);
    digits.append(buffer + 2, 14);
    int integerDigits = std::atoi(buffer + 17) + 1; // exponent after "d.dddddddddddddde"

    const int keep = integerDigits + decimals;
    if (keep < 0) {
        digits.clear();
    } else if (keep < int(digits.size())) {
        const bool roundUp = digits[std::size_t(keep)] >= '5';
        digits.resize(std::size_t(keep));
        if (roundUp) {
            int i = keep - 1;
            for (; i >= 0 && digits[std::size_t(i)] == '9'; --i)
                digits[std::size_t(i)] = '0';
            if (i >= 0) {
                ++digits[std::size_t(i)];
            } else {
                digits.insert(digits.begin(), '1');
                ++integerDigits;
            }
        }
    }

    // Digit at decimal position p (0 = first integer digit), zero outside the kept digits.
    auto digitAt = [&](int p) {
        return p >= 0 && p < int(digits.size()) ? digits[std::size_t(p)] : '0';
    };
    Digits result;
    for (int p = 0; p < integerDigits; ++p)
        result.integer.push_back(digitAt(p));
    const std::size_t nonZero = result.integer.find_first_not_of('0');
    result.integer.erase(0, nonZero == std::string::npos ? result.integer.size() : nonZero);
    for (int p = integerDigits; p < integerDigits + decimals; ++p)
        result.fraction.push_back(digitAt(p));
    return result;
}

QString groupThousands(const QString &digits) {
    QString grouped;
    grouped.reserve(digits.size() + digits.size() / 3);
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += QLatin1Char(',');
        grouped += digits[i];
    }
    return grouped;
}

} // namespace

QString basicFormat(double value, QStringView patternText) {
    const Pattern pattern = parsePattern(patternText);
    const double scaled = pattern.percent ? value * 100.0 : value;
    if (!std::isfinite(scaled))
        return QString::number(scaled);

    const Digits digits = decimalDigits(std::fabs(scaled), pattern.decimals);
    QString integer = QString::fromLatin1(digits.integer);
    if (integer.size() < pattern.minIntegerDigits)
        integer = QString(pattern.minIntegerDigits - integer.size(), QLatin1Char('0')) + integer;
    if (pattern.thousands)
        integer = groupThousands(integer);

    QString text = pattern.prefix + integer + pattern.integerSuffix;
    if (pattern.hasPoint) {
        text += QLatin1Char('.');
        // "#" after the point shows a digit only up to the last significant one.
        qsizetype lastShown = qsizetype(digits.fraction.find_last_not_of('0'));
        qsizetype placeholder = 0;
        qsizetype lastZeroPlaceholder = -1;
        for (const QChar c : std::as_const(pattern.decimalTokens)) {
            if (isPlaceholder(c)) {
                if (c == QLatin1Char('0'))
                    lastZeroPlaceholder = placeholder;
                ++placeholder;
            }
        }
        lastShown = std::max(lastShown, lastZeroPlaceholder);
        placeholder = 0;
        for (const QChar c : std::as_const(pattern.decimalTokens)) {
            if (!isPlaceholder(c)) {
                text += c;
                continue;
            }
            if (placeholder <= lastShown)
                text += QLatin1Char(digits.fraction[std::size_t(placeholder)]);
            ++placeholder;
        }
    }
    // BASIC puts the sign in front of everything, currency and percent signs included; a value
    // that rounds to zero keeps its sign ("-0.00"), as BASIC shows it.
    if (scaled < 0)
        text.prepend(QLatin1Char('-'));
    return text;
}

} // namespace tavrel

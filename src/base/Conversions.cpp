#include "base/Conversions.h"

#include "base/RuntimeError.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tavrel {
namespace Conversions {

namespace {

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

std::optional<double> parseRadix(QStringView digits, int base, bool negative) {
    if (digits.isEmpty() || digits.size() > 16)
        return std::nullopt;
    bool ok = false;
    const qlonglong value = digits.toLongLong(&ok, base);
    if (!ok)
        return std::nullopt;
    return negative ? -double(value) : double(value);
}

} // namespace

std::optional<double> parseNumber(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    if (begin == end)
        return std::nullopt;

    // Long inputs are not numbers anyone writes; keep the work bounded.
    if (end - begin > 4096)
        return std::nullopt;

    bool negative = false;
    qsizetype i = begin;
    if (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-')) {
        negative = text[i] == QLatin1Char('-');
        ++i;
    }
    if (i < end && text[i] == QLatin1Char('$'))
        ++i;
    if (i + 1 < end && text[i] == QLatin1Char('&')) {
        const QChar kind = text[i + 1].toUpper();
        if (kind == QLatin1Char('H'))
            return parseRadix(text.mid(i + 2, end - i - 2), 16, negative);
        if (kind == QLatin1Char('O'))
            return parseRadix(text.mid(i + 2, end - i - 2), 8, negative);
        return std::nullopt;
    }

    // Collect a plain ASCII number: digits (commas between digits dropped), one point, exponent.
    std::string plain;
    plain.reserve(std::size_t(end - i) + 1);
    if (negative)
        plain.push_back('-');
    bool digitsSeen = false;
    bool pointSeen = false;
    for (; i < end; ++i) {
        const QChar c = text[i];
        if (c.isDigit() && c.unicode() < 128) {
            plain.push_back(char(c.unicode()));
            digitsSeen = true;
        } else if (c == QLatin1Char(',') && digitsSeen && !pointSeen) {
            continue;
        } else if (c == QLatin1Char('.') && !pointSeen) {
            plain.push_back('.');
            pointSeen = true;
        } else {
            break;
        }
    }
    if (!digitsSeen)
        return std::nullopt;
    if (i < end && (text[i] == QLatin1Char('e') || text[i] == QLatin1Char('E') ||
                    text[i] == QLatin1Char('d') || text[i] == QLatin1Char('D'))) {
        plain.push_back('e');
        ++i;
        if (i < end && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) {
            plain.push_back(char(text[i].unicode()));
            ++i;
        }
        bool exponentDigits = false;
        for (; i < end && text[i].isDigit() && text[i].unicode() < 128; ++i) {
            plain.push_back(char(text[i].unicode()));
            exponentDigits = true;
        }
        if (!exponentDigits)
            return std::nullopt;
    }
    if (i != end)
        return std::nullopt;

    errno = 0;
    char *stop = nullptr;
    const double value = std::strtod(plain.c_str(), &stop);
    if (std::isinf(value) || (errno == ERANGE && std::fabs(value) > 1.0))
        throw RuntimeError(ErrorNumber::Overflow);
    return value;
}

double numberOrZero(QStringView text) {
    return parseNumber(text).value_or(0.0);
}

namespace {
template <typename Int> Int roundChecked(double value) {
    if (std::isnan(value))
        throw RuntimeError(ErrorNumber::Overflow);
    const double rounded = std::nearbyint(value); // default rounding mode: half to even
    if (rounded < double(std::numeric_limits<Int>::min()) ||
        rounded > double(std::numeric_limits<Int>::max()))
        throw RuntimeError(ErrorNumber::Overflow);
    return Int(rounded);
}
} // namespace

qint16 toInt16(double value) {
    return roundChecked<qint16>(value);
}

qint32 toInt32(double value) {
    return roundChecked<qint32>(value);
}

qint16 textToInt16(QStringView text) {
    const std::optional<double> value = parseNumber(text);
    if (!value)
        throw RuntimeError(ErrorNumber::TypeMismatch);
    return toInt16(*value);
}

qint32 textToInt32(QStringView text) {
    const std::optional<double> value = parseNumber(text);
    if (!value)
        throw RuntimeError(ErrorNumber::TypeMismatch);
    return toInt32(*value);
}

} // namespace Conversions
} // namespace tavrel

#pragma once

#include "base/IniFile.h"
#include "templates/BoxInfo.h"
#include "templates/LineInfo.h"
#include "templates/PrintRect.h"

#include <QList>
#include <QString>

#include <optional>
#include <type_traits>
#include <variant>

namespace tavrel {

// The keys of one element in a template file, in file order, each tied to the element property
// it holds. The writer, the reader and the JSON dump all walk these tables, so the three cannot
// drift apart.
template <typename Element>
using KeyMember = std::variant<bool Element::*, qint16 Element::*, qint32 Element::*,
                               float Element::*, QString Element::*>;

template <typename Element> struct TemplateKey {
    QString suffix; // "_Placed", "_NameIndex", ...
    KeyMember<Element> member;
};

namespace TemplateKeys {

const QList<TemplateKey<BoxInfo>> &boxKeys();
const QList<TemplateKey<LineInfo>> &lineKeys();
// Rectangle keys except the closing "_Location" line, which the writer derives from the top.
const QList<TemplateKey<PrintRect>> &rectKeys();

// Value encodings of the format.
QString formatBool(bool value);
QString formatSingle(float value); // shortest text that reads back as the same single
// Conversions with the format's reading rules; no value when the text does not convert
// (not a number, or out of the type's range).
std::optional<qint16> parseInteger(const QString &text);
std::optional<qint32> parseLong(const QString &text);
std::optional<float> parseSingle(const QString &text);

template <typename Element>
QString formatValue(const Element &element, const KeyMember<Element> &member) {
    return std::visit(
        [&element](auto pointer) -> QString {
            const auto &value = element.*pointer;
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, bool>)
                return formatBool(value);
            else if constexpr (std::is_same_v<T, float>)
                return formatSingle(value);
            else if constexpr (std::is_same_v<T, QString>)
                return value;
            else
                return QString::number(value);
        },
        member);
}

// Stores the converted text; a text that does not convert leaves the property as it was and
// gives false.
template <typename Element>
bool parseValue(Element &element, const KeyMember<Element> &member, const QString &text) {
    return std::visit(
        [&element, &text](auto pointer) -> bool {
            auto &value = element.*pointer;
            using T = std::decay_t<decltype(value)>;
            std::optional<T> parsed;
            if constexpr (std::is_same_v<T, bool>)
                parsed = ParseIniBool(text);
            else if constexpr (std::is_same_v<T, qint16>)
                parsed = parseInteger(text);
            else if constexpr (std::is_same_v<T, qint32>)
                parsed = parseLong(text);
            else if constexpr (std::is_same_v<T, float>)
                parsed = parseSingle(text);
            else
                parsed = text;
            if (!parsed)
                return false;
            value = *parsed;
            return true;
        },
        member);
}

} // namespace TemplateKeys

} // namespace tavrel

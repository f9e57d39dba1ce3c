#include "templates/TemplateKeys.h"

#include "base/Conversions.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace tavrel {

namespace TemplateKeys {

const QList<TemplateKey<BoxInfo>> &boxKeys() {
    static const QList<TemplateKey<BoxInfo>> keys = {
        {QStringLiteral("_Placed"), &BoxInfo::placed},
        {QStringLiteral("_Visible"), &BoxInfo::visible},
        {QStringLiteral("_NameIndex"), &BoxInfo::nameIndex},
        {QStringLiteral("_Container"), &BoxInfo::container},
        {QStringLiteral("_Caption"), &BoxInfo::caption},
        {QStringLiteral("_FontName"), &BoxInfo::fontName},
        {QStringLiteral("_FontBold"), &BoxInfo::fontBold},
        {QStringLiteral("_FontItalic"), &BoxInfo::fontItalic},
        {QStringLiteral("_FontUnderline"), &BoxInfo::fontUnderLine},
        {QStringLiteral("_FontSize"), &BoxInfo::fontSize},
        {QStringLiteral("_Logo"), &BoxInfo::logo},
        {QStringLiteral("_LogoFile"), &BoxInfo::logoFile},
        {QStringLiteral("_ImagePlaced"), &BoxInfo::imgPlaced},
        {QStringLiteral("_ImgFileName"), &BoxInfo::imgFileName},
        {QStringLiteral("_ImgSize"), &BoxInfo::imgSize},
        {QStringLiteral("_Notes"), &BoxInfo::notes},
        {QStringLiteral("_NotesName"), &BoxInfo::notesName},
        {QStringLiteral("_Left"), &BoxInfo::left},
        {QStringLiteral("_Top"), &BoxInfo::top},
        {QStringLiteral("_Width"), &BoxInfo::width},
        {QStringLiteral("_Height"), &BoxInfo::height},
        {QStringLiteral("_BackColor"), &BoxInfo::backColor},
        {QStringLiteral("_BackcolorChange"), &BoxInfo::changeBackcolor},
        {QStringLiteral("_CustBkColor"), &BoxInfo::custBkColor},
        {QStringLiteral("_ForeColor"), &BoxInfo::foreColor},
        {QStringLiteral("_Level"), &BoxInfo::level},
        {QStringLiteral("_Header"), &BoxInfo::header},
        {QStringLiteral("_Footer"), &BoxInfo::footer},
        {QStringLiteral("_Total"), &BoxInfo::total},
        {QStringLiteral("_Body"), &BoxInfo::body},
        {QStringLiteral("_TextAlign"), &BoxInfo::textAlign},
        {QStringLiteral("_DisplayLabel"), &BoxInfo::displayLabel},
    };
    return keys;
}

const QList<TemplateKey<LineInfo>> &lineKeys() {
    static const QList<TemplateKey<LineInfo>> keys = {
        {QStringLiteral("_Placed"), &LineInfo::placed},
        {QStringLiteral("_Visible"), &LineInfo::visible},
        {QStringLiteral("_Left"), &LineInfo::left},
        {QStringLiteral("_Top"), &LineInfo::top},
        {QStringLiteral("_Height"), &LineInfo::height},
        {QStringLiteral("_Width"), &LineInfo::width},
        {QStringLiteral("_BackColor"), &LineInfo::backColor},
        {QStringLiteral("_BoderStyle"), &LineInfo::boderStyle}, // spelled so in every file
        {QStringLiteral("_Container"), &LineInfo::container},
    };
    return keys;
}

const QList<TemplateKey<PrintRect>> &rectKeys() {
    static const QList<TemplateKey<PrintRect>> keys = {
        {QStringLiteral("_Visible"), &PrintRect::rectVisible},
        {QStringLiteral("_Width"), &PrintRect::width},
        {QStringLiteral("_Left"), &PrintRect::left},
        {QStringLiteral("_Top"), &PrintRect::top},
        {QStringLiteral("_Height"), &PrintRect::height},
        {QStringLiteral("_BorderColor"), &PrintRect::borderColor},
        {QStringLiteral("_PlacedBorderColor"), &PrintRect::rectColor},
        {QStringLiteral("_PlacedLeft"), &PrintRect::rectLeft},
        {QStringLiteral("_PlacedTop"), &PrintRect::rectTop},
        {QStringLiteral("_PlacedWidth"), &PrintRect::rectWidth},
        {QStringLiteral("_PlacedHeight"), &PrintRect::rectHeight},
    };
    return keys;
}

QString formatBool(bool value) {
    return IniBoolText(value);
}

QString formatSingle(float value) {
    if (value == 0.0f || !std::isfinite(value))
        return QStringLiteral("0"); // also for -0: a sign on zero means nothing here
    char buffer[64];
    const float magnitude = std::fabs(value);
    const auto format = (magnitude >= 1e-5f && magnitude < 1e15f) ? std::chars_format::fixed
                                                                  : std::chars_format::general;
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

namespace {

std::optional<double> number(const QString &text) {
    try {
        return Conversions::parseNumber(text);
    } catch (const RuntimeError &) {
        return std::nullopt; // overflow: the value is skipped like any other failure
    }
}

template <typename Convert>
auto converted(const QString &text, Convert convert) -> std::optional<decltype(convert(0.0))> {
    const std::optional<double> value = number(text);
    if (!value)
        return std::nullopt;
    try {
        return convert(*value);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

} // namespace

std::optional<qint16> parseInteger(const QString &text) {
    return converted(text, [](double value) { return Conversions::toInt16(value); });
}

std::optional<qint32> parseLong(const QString &text) {
    return converted(text, [](double value) { return Conversions::toInt32(value); });
}

std::optional<float> parseSingle(const QString &text) {
    const std::optional<double> value = number(text);
    if (!value || !std::isfinite(*value) ||
        std::fabs(*value) > double(std::numeric_limits<float>::max()))
        return std::nullopt;
    return float(*value);
}

} // namespace TemplateKeys

} // namespace tavrel

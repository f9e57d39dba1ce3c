#include "preview/ZoomState.h"

#include <algorithm>
#include <array>

namespace tavrel {

namespace {

constexpr std::array<const char *, 6> ModeNames = {"Percentage", "Thumbnail",  "Two Pages",
                                                   "Whole Page", "Page Width", "Stretch"};

} // namespace

QString ZoomState::modeName(ZoomMode mode) {
    return QString::fromLatin1(ModeNames[std::size_t(mode)]);
}

std::optional<ZoomMode> ZoomState::modeFromName(const QString &name) {
    for (std::size_t i = 0; i < ModeNames.size(); ++i) {
        if (name == QLatin1String(ModeNames[i]))
            return ZoomMode(int(i));
    }
    return std::nullopt;
}

QStringList ZoomState::modeNames() {
    QStringList names;
    for (const char *name : ModeNames)
        names << QString::fromLatin1(name);
    return names;
}

QStringList ZoomState::percentChoices() {
    return {QStringLiteral("25%"),  QStringLiteral("50%"),  QStringLiteral("75%"),
            QStringLiteral("100%"), QStringLiteral("150%"), QStringLiteral("200%"),
            QStringLiteral("400%")};
}

std::optional<int> ZoomState::parsePercent(const QString &text) {
    QString number = text.trimmed();
    if (number.endsWith(QLatin1Char('%')))
        number.chop(1);
    bool ok = false;
    const int value = number.trimmed().toInt(&ok);
    if (!ok)
        return std::nullopt;
    return value;
}

QString ZoomState::percentText(int percent) {
    return QString::number(percent) + QLatin1Char('%');
}

void ZoomState::setPercent(int percent) {
    m_mode = ZoomMode::Percentage;
    m_percent = std::clamp(percent, MinPercent, MaxPercent);
    m_shown = m_percent;
}

} // namespace tavrel

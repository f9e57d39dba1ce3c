#include "shell/Settings.h"

#include "base/Conversions.h"

namespace tavrel {
namespace SettingsRules {

qint32 thousandthsToTwips(qint32 thousandths) {
    return Conversions::toInt32(double(thousandths) / 1000.0 * 1440.0);
}

Margins marginsInTwips(const PrinterSettings &printer) {
    return Margins{thousandthsToTwips(printer.marginLeft), thousandthsToTwips(printer.marginRight),
                   thousandthsToTwips(printer.marginTop), thousandthsToTwips(printer.marginBottom)};
}

UsablePageArea pageArea(const Margins &m) {
    UsablePageArea area;
    area.usableWidthPortrait = LetterWidthTwips - m.left - m.right;
    area.usableWidthLandscape = LetterHeightTwips - m.left - m.right;
    area.usableHeightPortrait = LetterHeightTwips - m.top - m.bottom - HeightReserveTwips;
    area.usableHeightLandscape = LetterWidthTwips - m.top - m.bottom - HeightReserveTwips;
    return area;
}

} // namespace SettingsRules
} // namespace tavrel

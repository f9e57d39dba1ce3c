#include "shell/SettingsStore.h"

#include "base/Conversions.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "shell/JobFileKeys.h"

#include <functional>

namespace tavrel {

namespace SettingsStore {

namespace {

// Runs one key's reading step; a failure (a number out of range, say) skips that key only.
void skipOnFailure(const std::function<void()> &step) {
    try {
        step();
    } catch (const RuntimeError &) {
    }
}

// An integer key: the default when empty; a non-number leaves the previous value.
template <typename Int, typename Convert>
void readInteger(const IniFile &ini, const QString &section, const QString &key, Int &target,
                 Int defaultValue, Convert convert) {
    skipOnFailure([&] {
        const QString text = ini.value(section, key);
        if (text.isEmpty()) {
            target = defaultValue;
            return;
        }
        const std::optional<double> number = Conversions::parseNumber(text);
        if (number)
            target = convert(*number);
    });
}

} // namespace

UserPreferences readUserPreferences(const IniFile &ini) {
    const QString section = JobFileKeys::userPreferences();
    UserPreferences prefs;
    prefs.companyName = ini.value(section, QStringLiteral("Company Name"));
    // The rounding keys are trimmed, and a value that does not convert falls back to 0.
    const auto rounding = [&](const QString &key) -> qint16 {
        const QString text = ini.value(section, key).trimmed();
        if (text.isEmpty())
            return 0;
        try {
            return Conversions::textToInt16(text);
        } catch (const RuntimeError &) {
            return 0;
        }
    };
    prefs.roundingDirection = rounding(QStringLiteral("Rounding Direction"));
    prefs.roundingLevel = rounding(QStringLiteral("Rounding Level"));
    return prefs;
}

QString selectPrinter(const QString &stored, const PrinterList &printers, bool *writeBack) {
    *writeBack = false;
    if (printers.current == stored)
        return stored;
    for (const QString &name : printers.installed) {
        if (name == stored)
            return name;
    }
    *writeBack = true;
    return printers.current;
}

PrinterSettings readPrinterSettings(const IniFile &ini, const PrinterList &printers,
                                    bool *writeBack) {
    const QString section = JobFileKeys::printer();
    const auto text = [&](const char *key) { return ini.value(section, QLatin1String(key)); };
    const auto int16 = [](double v) { return qint32(Conversions::toInt16(v)); };
    const auto int32 = [](double v) { return Conversions::toInt32(v); };

    // Integer settings start at 0: a value that does not convert leaves them there.
    PrinterSettings s;
    s.printCopies = 0;
    s.fontSize = 0;
    s.tempPrintDocument = ini.value(section, JobFileKeys::tempPrintDocument());
    s.activeDocument = ini.value(section, JobFileKeys::activeDocument());
    s.templateDirectory = ini.value(section, JobFileKeys::templateDirectory());
    s.function = ini.value(section, JobFileKeys::function());
    readInteger(ini, section, JobFileKeys::printCopies(), s.printCopies, 1, int16);

    const QString fontName = text("FontName");
    s.fontName = fontName.isEmpty() ? QStringLiteral("Arial") : fontName.toUpper();
    readInteger(ini, section, QStringLiteral("FontSize"), s.fontSize, 8, int16);
    s.fontBold = ParseIniBool(text("FontBold"));
    s.fontItalic = ParseIniBool(text("FontItalic"));
    s.fontUnderLine = ParseIniBool(text("FontUnderLine"));

    readInteger(ini, section, QStringLiteral("MarginLeft"), s.marginLeft, 0, int32);
    readInteger(ini, section, QStringLiteral("MarginRight"), s.marginRight, 0, int32);
    readInteger(ini, section, QStringLiteral("MarginTop"), s.marginTop, 0, int32);
    readInteger(ini, section, QStringLiteral("MarginBottom"), s.marginBottom, 0, int32);
    // A margin whose twips would not fit an integer is skipped like any other failing key.
    for (qint32 *margin : {&s.marginLeft, &s.marginRight, &s.marginTop, &s.marginBottom}) {
        try {
            SettingsRules::thousandthsToTwips(*margin);
        } catch (const RuntimeError &) {
            *margin = 0;
        }
    }

    const QString storedPrinter = ini.value(section, JobFileKeys::printerDeviceName());
    s.printerDeviceName = selectPrinter(storedPrinter.isEmpty() ? printers.current : storedPrinter,
                                        printers, writeBack);

    const QString box = text("Box");
    s.box = box.isEmpty() ? QStringLiteral("0") : box;
    const QString showLabel = text("ShowLabel");
    s.showLabel = showLabel.isEmpty() ? true : ParseIniBool(showLabel);
    s.showColor = ParseIniBool(text("ShowColor"));
    s.showSubTotalOptions = ParseIniBool(text("ShowSubTotalOptions"));
    return s;
}

} // namespace SettingsStore
} // namespace tavrel

#pragma once

#include <QString>

namespace tavrel {

// Section "Printer" of the job file, as start-up holds it.
struct PrinterSettings {
    QString tempPrintDocument;
    QString activeDocument;
    QString templateDirectory;
    QString function;
    qint32 printCopies = 1;
    QString fontName = QStringLiteral("Arial");
    qint32 fontSize = 8;
    bool fontBold = false;
    bool fontItalic = false;
    bool fontUnderLine = false;
    // Thousandths of an inch, as written in the job file.
    qint32 marginLeft = 0;
    qint32 marginRight = 0;
    qint32 marginTop = 0;
    qint32 marginBottom = 0;
    QString printerDeviceName;
    QString box = QStringLiteral("0");
    bool showLabel = true;
    bool showColor = false;
    bool showSubTotalOptions = false;
};

// Section "User Preferences".
struct UserPreferences {
    QString companyName;
    // Read and kept; no computation consults them.
    qint16 roundingDirection = 0;
    qint16 roundingLevel = 0;
};

struct Margins {
    qint32 left = 0;
    qint32 right = 0;
    qint32 top = 0;
    qint32 bottom = 0;
};

// The printable area of a Letter sheet less the margins (and a fixed 1500-twip reserve in height).
struct UsablePageArea {
    qint32 usableWidthPortrait = 0;
    qint32 usableWidthLandscape = 0;
    qint32 usableHeightPortrait = 0;
    qint32 usableHeightLandscape = 0;
};

namespace SettingsRules {

constexpr qint32 LetterWidthTwips = 12240;
constexpr qint32 LetterHeightTwips = 15840;
constexpr qint32 HeightReserveTwips = 1500;

// value / 1000 x 1440, rounded to a 32-bit integer.
qint32 thousandthsToTwips(qint32 thousandths);
Margins marginsInTwips(const PrinterSettings &printer);
UsablePageArea pageArea(const Margins &margins);

} // namespace SettingsRules

} // namespace tavrel

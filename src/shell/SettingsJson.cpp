#include "shell/SettingsJson.h"

#include "shell/AppContext.h"

namespace tavrel {

QJsonObject settingsToJson(const AppContext &c) {
    const PrinterSettings &p = c.printer;
    QJsonObject printer{
        {QStringLiteral("TempPrintDocument"), p.tempPrintDocument},
        {QStringLiteral("ActiveDocument"), p.activeDocument},
        {QStringLiteral("Template Directory"), p.templateDirectory},
        {QStringLiteral("Function"), p.function},
        {QStringLiteral("PrintCopies"), p.printCopies},
        {QStringLiteral("FontName"), p.fontName},
        {QStringLiteral("FontSize"), p.fontSize},
        {QStringLiteral("FontBold"), p.fontBold},
        {QStringLiteral("FontItalic"), p.fontItalic},
        {QStringLiteral("FontUnderLine"), p.fontUnderLine},
        {QStringLiteral("MarginLeft"), p.marginLeft},
        {QStringLiteral("MarginRight"), p.marginRight},
        {QStringLiteral("MarginTop"), p.marginTop},
        {QStringLiteral("MarginBottom"), p.marginBottom},
        {QStringLiteral("PrinterDeviceName"), p.printerDeviceName},
        {QStringLiteral("Box"), p.box},
        {QStringLiteral("ShowLabel"), p.showLabel},
        {QStringLiteral("ShowColor"), p.showColor},
        {QStringLiteral("ShowSubTotalOptions"), p.showSubTotalOptions},
    };
    const QJsonObject preferences{
        {QStringLiteral("Company Name"), c.preferences.companyName},
        {QStringLiteral("Rounding Direction"), c.preferences.roundingDirection},
        {QStringLiteral("Rounding Level"), c.preferences.roundingLevel},
    };
    const JobPaths &paths = c.paths;
    const QJsonObject derived{
        {QStringLiteral("jobFile"), paths.jobFile},
        {QStringLiteral("sifPath"), paths.sifPath},
        {QStringLiteral("activeDocument"), paths.activeDocument},
        {QStringLiteral("activeDocumentFolder"), paths.activeDocumentFolder},
        {QStringLiteral("activeDocumentName"), paths.activeDocumentName},
        {QStringLiteral("cifPath"), paths.cifPath},
        {QStringLiteral("cifPresent"), c.cifPresent},
        {QStringLiteral("cifVersion4"), c.cifVersion4},
        {QStringLiteral("templateRoot"), paths.templateRoot},
        {QStringLiteral("templateFolder"), paths.templateFolder},
        {QStringLiteral("pdfFolder"), paths.pdfFolder},
        {QStringLiteral("htmlFolder"), paths.htmlFolder},
        {QStringLiteral("rtfFolder"), paths.rtfFolder},
        {QStringLiteral("runMode"), c.runMode},
        {QStringLiteral("marginTwips"), QJsonObject{{QStringLiteral("left"), c.margins.left},
                                                    {QStringLiteral("right"), c.margins.right},
                                                    {QStringLiteral("top"), c.margins.top},
                                                    {QStringLiteral("bottom"), c.margins.bottom}}},
        {QStringLiteral("usableWidthPortrait"), c.pageArea.usableWidthPortrait},
        {QStringLiteral("usableWidthLandscape"), c.pageArea.usableWidthLandscape},
        {QStringLiteral("usableHeightPortrait"), c.pageArea.usableHeightPortrait},
        {QStringLiteral("usableHeightLandscape"), c.pageArea.usableHeightLandscape},
        {QStringLiteral("printer"), p.printerDeviceName},
    };
    return QJsonObject{{QStringLiteral("Printer"), printer},
                       {QStringLiteral("User Preferences"), preferences},
                       {QStringLiteral("derived"), derived}};
}

} // namespace tavrel

#include "shell/Startup.h"

#include "base/ErrorReport.h"
#include "base/IniFile.h"
#include "base/Prompter.h"
#include "base/TextFile.h"
#include "spec/OrderFileReader.h"
#include "spec/SifReader.h"

#include <QDir>
#include <QFileInfo>

namespace tavrel {
namespace Startup {

namespace {

void makeFolder(const QString &path) {
    // A folder that exists already, or cannot be made, is not an error here.
    QDir().mkdir(path);
}

} // namespace

bool resolveDocumentPaths(const QString &jobFile, JobPaths &paths) {
    const QString &section = SettingsStore::printerSection();
    paths.jobFile = jobFile;
    const QString sif = ReadIniValue(section, QStringLiteral("TempPrintDocument"), jobFile);
    if (sif.isEmpty())
        return false;
    paths.sifPath = PathRules::resolveAgainst(jobFile, sif);

    paths.activeDocument = PathRules::resolveAgainst(
        jobFile, ReadIniValue(section, QStringLiteral("ActiveDocument"), jobFile));
    const qsizetype separator = PathRules::lastSeparator(paths.activeDocument);
    paths.activeDocumentFolder = paths.activeDocument.left(separator + 1).trimmed();
    const QString lastComponent = PathRules::lastComponent(paths.activeDocument);
    // The last four characters go whether or not they are an extension.
    paths.activeDocumentName = lastComponent.left(std::max<qsizetype>(0, lastComponent.size() - 4));
    paths.cifPath = paths.activeDocumentFolder + paths.activeDocumentName + QStringLiteral(".cif");
    return true;
}

bool resolvePaths(AppContext &context, const QString &jobFile, const QString &executableFolder,
                  Prompter &prompter) {
    JobPaths &paths = context.paths;
    const QString &section = SettingsStore::printerSection();
    if (!resolveDocumentPaths(jobFile, paths)) {
        prompter.message(QStringLiteral("No Active Document Found."), QString(), MessageIcon::None);
        return false;
    }

    const QString templateDirectory =
        ReadIniValue(section, QStringLiteral("Template Directory"), jobFile);
    QString folderName;
    if (!templateDirectory.isEmpty()) {
        const QString resolved = PathRules::resolveAgainst(jobFile, templateDirectory);
        paths.templateRoot = PathRules::beforeLastComponent(resolved);
        folderName = PathRules::lastComponent(resolved);
    } else {
        paths.templateRoot = executableFolder;
        folderName = QStringLiteral("Print Templates");
        WriteIniValue(section, QStringLiteral("Template Directory"),
                      PathRules::join(paths.templateRoot, folderName), jobFile);
    }
    paths.templateFolder = PathRules::join(paths.templateRoot, folderName);
    paths.pdfFolder = PathRules::join(paths.templateFolder, QStringLiteral("PDF"));
    paths.htmlFolder = PathRules::join(paths.templateFolder, QStringLiteral("HTML"));
    paths.rtfFolder = PathRules::join(paths.templateFolder, QStringLiteral("RTF"));
    makeFolder(paths.pdfFolder);
    makeFolder(paths.htmlFolder);
    makeFolder(paths.rtfFolder);
    return true;
}

void readUserPreferences(AppContext &context) {
    context.preferences = SettingsStore::readUserPreferences(context.paths.jobFile);
}

void readSpecification(AppContext &context, Prompter &prompter) {
    loadSif(context.paths.sifPath, PathRules::lastComponent(context.paths.activeDocument),
            context.spec, prompter);
}

void readOrderFile(AppContext &context, Prompter &prompter) {
    loadOrderFile(context.paths.cifPath, context.order, prompter);
    context.cifPresent = context.order.present;
    context.cifVersion4 = context.order.version4;
}

void readPrinterSettings(AppContext &context, const PrinterList &printers) {
    context.printer = SettingsStore::readPrinterSettings(context.paths.jobFile, printers);
    context.runMode = context.printer.function;
}

void computePageArea(AppContext &context) {
    context.margins = SettingsRules::marginsInTwips(context.printer);
    context.pageArea = SettingsRules::pageArea(context.margins);
}

void readFieldLengths(AppContext &context) {
    context.fieldLengths.readFromJobFile(context.paths.jobFile);
}

RunModeAction actionForRunMode(const QString &runMode) {
    if (runMode == QLatin1String("1") || runMode == QLatin1String("3"))
        return RunModeAction::ShowMainWindow;
    if (runMode == QLatin1String("2"))
        return RunModeAction::PrintUnattended;
    return RunModeAction::End;
}

bool loadJob(AppContext &context, const QString &jobFile, const QString &executableFolder,
             Prompter &prompter, const PrinterList &printers) {
    if (!resolvePaths(context, jobFile, executableFolder, prompter))
        return false;
    readUserPreferences(context);
    readSpecification(context, prompter);
    readOrderFile(context, prompter);
    readPrinterSettings(context, printers);
    computePageArea(context);
    readFieldLengths(context);
    return true;
}

} // namespace Startup
} // namespace tavrel

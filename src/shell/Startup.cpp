#include "shell/Startup.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "shell/JobFileKeys.h"
#include "spec/OrderFileReader.h"
#include "spec/SifReader.h"

#include <QDir>
#include <QFileInfo>

#include <functional>

namespace tavrel {
namespace Startup {

namespace {

void makeFolder(const QString &path) {
    // A folder that exists already, or cannot be made, is not an error here.
    QDir().mkdir(path);
}

// A path of the job that cannot be resolved: reported under the key it came from.
bool reportUnresolved(Prompter &prompter, const QString &key, const QString &value) {
    const RuntimeError error(
        ErrorNumber::BadFileName,
        QStringLiteral("%1 (%2: %3)")
            .arg(RuntimeError::standardDescription(ErrorNumber::BadFileName), key, value));
    reportError(prompter, procedureName(), error);
    return false;
}

// Start-up's own writes to the job file are reported like every other failed write; the job
// file stays as it was and start-up goes on.
void writeBack(Prompter &prompter, AppContext &context,
               const std::function<void(JobFile &)> &write) {
    try {
        write(context.job);
    } catch (const RuntimeError &error) {
        reportError(prompter, procedureName(), error);
    }
}

} // namespace

QString procedureName() {
    return QStringLiteral("Main.");
}

bool resolveDocumentPaths(const JobFile &job, JobPaths &paths) {
    const QString &jobFile = job.path();
    paths.jobFile = jobFile;
    const QString sif = job.sifDocument();
    if (sif.isEmpty())
        return false;
    paths.sifPath = PathRules::resolveAgainst(jobFile, sif);

    paths.activeDocument = PathRules::resolveAgainst(jobFile, job.activeDocument());
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
    context.job = JobFile::load(jobFile);
    if (!resolveDocumentPaths(context.job, paths)) {
        prompter.message(QStringLiteral("No Active Document Found."), QString(), MessageIcon::None);
        return false;
    }

    if (!PathRules::isUsable(paths.sifPath))
        return reportUnresolved(prompter, JobFileKeys::tempPrintDocument(),
                                context.job.sifDocument());

    const QString directoryKey = JobFileKeys::templateDirectory();
    const QString templateDirectory = context.job.templateDirectory();
    QString folderName;
    if (!templateDirectory.isEmpty()) {
        const QString resolved = PathRules::resolveAgainst(jobFile, templateDirectory);
        if (!PathRules::isUsable(resolved))
            return reportUnresolved(prompter, directoryKey, templateDirectory);
        paths.templateRoot = PathRules::beforeLastComponent(resolved);
        folderName = PathRules::lastComponent(resolved);
    } else {
        paths.templateRoot = executableFolder;
        folderName = QStringLiteral("Print Templates");
        writeBack(prompter, context, [&](JobFile &job) {
            job.writeTemplateDirectory(PathRules::join(paths.templateRoot, folderName));
        });
    }
    paths.templateFolder = PathRules::join(paths.templateRoot, folderName);
    paths.pdfFolder = PathRules::join(paths.templateFolder, QStringLiteral("PDF"));
    paths.htmlFolder = PathRules::join(paths.templateFolder, QStringLiteral("HTML"));
    paths.rtfFolder = PathRules::join(paths.templateFolder, QStringLiteral("RTF"));
    // Folders are made only where the job leads: never from a path that did not resolve.
    for (const QString &folder :
         {paths.templateFolder, paths.pdfFolder, paths.htmlFolder, paths.rtfFolder}) {
        if (!PathRules::isUsable(folder))
            return reportUnresolved(prompter, directoryKey, templateDirectory);
    }
    makeFolder(paths.pdfFolder);
    makeFolder(paths.htmlFolder);
    makeFolder(paths.rtfFolder);
    return true;
}

void readUserPreferences(AppContext &context) {
    context.preferences = context.job.userPreferences();
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

void readPrinterSettings(AppContext &context, const PrinterList &printers, Prompter &prompter) {
    bool printerGone = false;
    context.printer = context.job.printerSettings(printers, &printerGone);
    context.runMode = context.printer.function;
    if (printerGone)
        writeBack(prompter, context, [&context](JobFile &job) {
            job.writePrinterDeviceName(context.printer.printerDeviceName);
        });
}

void computePageArea(AppContext &context) {
    context.margins = SettingsRules::marginsInTwips(context.printer);
    context.pageArea = SettingsRules::pageArea(context.margins);
}

void readFieldLengths(AppContext &context) {
    context.fieldLengths = context.job.fieldLengths(FieldLengths::builtIn());
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
    readPrinterSettings(context, printers, prompter);
    computePageArea(context);
    readFieldLengths(context);
    return true;
}

} // namespace Startup
} // namespace tavrel

#include "cli/Commands.h"

#include "base/ErrorReport.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "spec/FieldLengths.h"
#include "spec/OrderFileReader.h"
#include "spec/SifReader.h"
#include "spec/SpecJson.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace tavrel::cli {

namespace {

// The files of a job as start-up derives them from the job file's "Printer" section.
struct SpecJobFiles {
    QString sifPath;
    QString specFileName; // the active document's file name
    QString cifPath;
};

// Job files may name paths with "\" or "/"; a relative one is taken from the job file's folder.
QString localPath(const QString &jobFile, const QString &path) {
    QString local = path;
    local.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (local.isEmpty() || QDir::isAbsolutePath(local))
        return local;
    return QFileInfo(jobFile).absoluteDir().filePath(local);
}

std::optional<SpecJobFiles> resolveJobFiles(const QString &jobFile) {
    const IniFile ini = IniFile::load(jobFile);
    const QString sif = ini.value(QStringLiteral("Printer"), QStringLiteral("TempPrintDocument"));
    if (sif.isEmpty())
        return std::nullopt;
    const QString active = ini.value(QStringLiteral("Printer"), QStringLiteral("ActiveDocument"));
    const qsizetype separator =
        std::max(active.lastIndexOf(QLatin1Char('\\')), active.lastIndexOf(QLatin1Char('/')));
    const QString folder = active.left(separator + 1);
    const QString fileName = active.mid(separator + 1);
    // The name loses its last four characters whether or not they are an extension.
    const QString name = fileName.left(std::max<qsizetype>(0, fileName.size() - 4));
    return SpecJobFiles{localPath(jobFile, sif), fileName,
                        localPath(jobFile, folder + name + QStringLiteral(".cif"))};
}

const QString helpText = QStringLiteral(
    "Usage: tavrel-cli spec JOBFILE\n\n"
    "Reads the job's SIF file and order file as start-up does and prints, as JSON, the items\n"
    "(\"items\", in file order), the SIF header with the derived totals (\"header\"), the order\n"
    "header, sales and dealer lists, additional charges and shipping notes (\"order\") and the\n"
    "field code lengths and labels of the job file (\"fieldLengths\").\n\n"
    "A reading failure still prints what was read; the error report goes to standard error\n"
    "and the exit status is 1. A charge amount that is not a number gives \"chargeSum\": null\n"
    "and its error on standard error.\n");

} // namespace

int runSpec(const QStringList &args) {
    if (wantsHelp(args) || args.size() != 1) {
        printOut(helpText);
        return wantsHelp(args) ? 0 : 2;
    }
    const QString jobFile = args.first();
    const std::optional<SpecJobFiles> files = resolveJobFiles(jobFile);
    if (!files) {
        printErr(QStringLiteral("No Active Document Found.\n"));
        return 1;
    }

    int status = 0;
    SpecData data;
    try {
        readSif(files->sifPath, files->specFileName, data);
    } catch (const RuntimeError &error) {
        printErr(errorReportText(QStringLiteral("Load Sif."), error.number(), error.description()) +
                 QLatin1Char('\n'));
        status = 1;
    }

    ScriptedPrompter prompter;
    OrderData order;
    loadOrderFile(files->cifPath, order, prompter);
    for (const QString &message : prompter.messages()) {
        printErr(message + QLatin1Char('\n'));
        status = 1;
    }
    std::optional<double> chargeSum;
    try {
        chargeSum = sumOfAdditionalCharges(order);
    } catch (const RuntimeError &error) {
        printErr(QStringLiteral("chargeSum: Error %1: %2\n")
                     .arg(error.number())
                     .arg(error.description()));
    }

    FieldLengths lengths = FieldLengths::builtIn();
    lengths.readFromJobFile(jobFile);

    printOut(
        QString::fromUtf8(SpecJson::text(SpecJson::document(data, order, chargeSum, lengths))));
    return status;
}

} // namespace tavrel::cli

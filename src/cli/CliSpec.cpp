#include "cli/Commands.h"

#include "base/ConsolePrompter.h"
#include "base/RuntimeError.h"
#include "shell/AppContext.h"
#include "shell/Startup.h"
#include "spec/OrderFileReader.h"
#include "spec/SpecJson.h"

#include <cstdio>
#include <optional>

namespace tavrel::cli {

namespace {

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
    AppContext context;
    ConsolePrompter prompter;
    context.job = JobFile::load(args.first());
    if (!Startup::resolveDocumentPaths(context.job, context.paths)) {
        printErr(QStringLiteral("No Active Document Found.\n"));
        return 1;
    }
    Startup::readSpecification(context, prompter);
    Startup::readOrderFile(context, prompter);
    const int status = prompter.messageCount() > 0 ? 1 : 0;
    std::optional<double> chargeSum;
    try {
        chargeSum = sumOfAdditionalCharges(context.order);
    } catch (const RuntimeError &error) {
        printErr(QStringLiteral("chargeSum: Error %1: %2\n")
                     .arg(error.number())
                     .arg(error.description()));
    }
    Startup::readFieldLengths(context);

    // Streamed an item at a time: the JSON of a million items would not fit in memory at once.
    SpecJson::write(context.spec, context.order, chargeSum, context.fieldLengths,
                    [](const QByteArray &piece) {
                        std::fwrite(piece.constData(), 1, std::size_t(piece.size()), stdout);
                    });
    return status;
}

} // namespace tavrel::cli

#include "cli/CupsPrinting.h"

#include "base/RuntimeError.h"
#include "render/PageEngine.h"
#include "render/PdfOutput.h"

#include <QProcess>
#include <QTemporaryDir>

namespace tavrel::CupsPrinting {

namespace {

// Standard output of a CUPS tool, or nothing when it cannot run or fails.
QString run(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return {};
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

} // namespace

PrinterList printers() {
    PrinterList list;
    // "system default destination: NAME", or "no system default destination".
    const QString defaultLine = run(QStringLiteral("lpstat"), {QStringLiteral("-d")}).trimmed();
    const qsizetype colon = defaultLine.indexOf(QLatin1String(": "));
    if (colon >= 0)
        list.current = defaultLine.mid(colon + 2).trimmed();
    const QString names = run(QStringLiteral("lpstat"), {QStringLiteral("-e")});
    for (const QString &name : names.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        list.installed.append(name.trimmed());
    return list;
}

void print(const PageEngine &engine, const QString &printerName, int copies) {
    QTemporaryDir folder;
    const QString pdf = folder.filePath(QStringLiteral("job.pdf"));
    writePdf(engine, pdf, {});
    // The report is laid out on Letter sheets whatever the queue's default paper is.
    QStringList arguments{QStringLiteral("-n"), QString::number(std::max(1, copies)),
                          QStringLiteral("-t"), engine.DocName(),
                          QStringLiteral("-o"), QStringLiteral("media=Letter")};
    if (!printerName.isEmpty())
        arguments << QStringLiteral("-d") << printerName;
    arguments << pdf;
    QProcess lp;
    lp.start(QStringLiteral("lp"), arguments);
    if (!lp.waitForFinished(60000) || lp.exitStatus() != QProcess::NormalExit || lp.exitCode() != 0)
        throw RuntimeError(ErrorNumber::DeviceIoError,
                           QStringLiteral("The printer refused the job: ") +
                               QString::fromLocal8Bit(lp.readAllStandardError()).trimmed());
}

} // namespace tavrel::CupsPrinting

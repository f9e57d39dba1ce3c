#include "base/RecordingPrompter.h"
#include "base/RuntimeError.h"
#include "cli/Commands.h"
#include "templates/TemplateJson.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QDateTime>
#include <QJsonDocument>

namespace tavrel::cli {

namespace {

void printHelp() {
    printOut(QStringLiteral(
        "Usage: tavrel-cli template FILE [--resave OUT]\n\n"
        "Reads a page template (.cov, .cst, .sum) and prints it as JSON: its other info, and\n"
        "its boxes (every key), lines and rectangles with their slot numbers.\n\n"
        "  --resave OUT  write the template back to OUT instead, as the designer saves it\n"));
}

} // namespace

int runTemplate(const QStringList &args) {
    if (wantsHelp(args)) {
        printHelp();
        return 0;
    }
    QStringList rest = args;
    QString resavePath;
    const qsizetype resave = rest.indexOf(QStringLiteral("--resave"));
    if (resave >= 0) {
        if (resave + 1 >= rest.size()) {
            printErr(QStringLiteral("tavrel-cli template: --resave needs a file name\n"));
            return 2;
        }
        resavePath = rest.at(resave + 1);
        rest.remove(resave, 2);
    }
    if (rest.size() != 1) {
        printHelp();
        return 2;
    }
    const QString path = rest.first();
    const TemplateKind kind = templateKindOfPath(path);

    RecordingPrompter prompter;
    TemplateLayout layout;
    try {
        if (TemplateReader::read(path, layout, prompter) == TemplateReader::Result::Missing) {
            printErr(QStringLiteral("tavrel-cli template: %1: no such file\n").arg(path));
            return 1;
        }
        for (const QString &message : prompter.messages())
            printErr(message + QLatin1Char('\n'));
        if (!resavePath.isEmpty()) {
            TemplateWriter::write(resavePath, layout,
                                  TemplateWriter::titleLine(kind, QDateTime::currentDateTime()));
            return 0;
        }
    } catch (const RuntimeError &error) {
        printErr(QStringLiteral("tavrel-cli template: error %1: %2\n")
                     .arg(error.number())
                     .arg(error.description()));
        return 1;
    }
    printOut(QString::fromUtf8(
        QJsonDocument(TemplateJson::toJson(layout, kind)).toJson(QJsonDocument::Indented)));
    return 0;
}

} // namespace tavrel::cli

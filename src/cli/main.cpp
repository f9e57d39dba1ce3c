#include "cli/Commands.h"
#include "shell/DefaultTemplates.h"

#include <QGuiApplication>

#include <csignal>
#include <cstdio>
#include <functional>

namespace tavrel::cli {

bool wantsHelp(const QStringList &args) {
    return args.contains(QStringLiteral("--help")) || args.contains(QStringLiteral("-h"));
}

void printOut(const QString &text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

void printErr(const QString &text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
}

QString defaultTemplateRoot() {
    return DefaultTemplates::templateRoot(QCoreApplication::applicationDirPath());
}

} // namespace tavrel::cli

namespace {

struct Command {
    const char *name;
    const char *summary;
    std::function<int(const QStringList &)> run;
};

void printUsage(const std::vector<Command> &commands) {
    QString text = QStringLiteral("Usage: tavrel-cli COMMAND [ARGS...]\n\n"
                                  "Headless Tavrel commands for scripts, tests and benchmarks.\n\n"
                                  "Commands:\n");
    for (const Command &command : commands)
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(command.name).leftJustified(12),
                         QString::fromLatin1(command.summary));
    text += QStringLiteral("\nOptions:\n"
                           "  --help, -h    show this list and exit\n"
                           "  --version     show the version and exit\n"
                           "\nRun 'tavrel-cli help COMMAND' or 'tavrel-cli COMMAND --help' for a "
                           "command's options.\n"
                           "Exit status: 0 success, 1 the command failed, 2 wrong usage.\n");
    tavrel::cli::printOut(text);
}

QString versionText() {
    return QStringLiteral("tavrel-cli (Tavrel) %1\n").arg(QStringLiteral(TAVREL_VERSION));
}

} // namespace

int main(int argc, char **argv) {
    // A write past a file-size limit must fail like a full disk, not kill the program.
    std::signal(SIGXFSZ, SIG_IGN);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Tavrel"));

    using namespace tavrel::cli;
    const std::vector<Command> commands = {
        {"settings", "print the job file's settings as Tavrel understands them (JSON)",
         runSettings},
        {"spec", "print the specification data of a job (JSON)", runSpec},
        {"template", "print a template as JSON, or read and write it back (--resave)", runTemplate},
        {"check-print", "run the print-selection check of a job", runCheckPrint},
        {"render", "lay out a job's report and write PDF, PNG, JSON, HTML or RTF", runRender},
    };

    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty() || args.first() == QLatin1String("--help") ||
        args.first() == QLatin1String("-h")) {
        printUsage(commands);
        return args.isEmpty() ? 2 : 0;
    }
    if (args.first() == QLatin1String("--version")) {
        printOut(versionText());
        return 0;
    }
    QString name = args.takeFirst();
    // "help COMMAND" is "COMMAND --help"; "help" alone is the list of commands.
    if (name == QLatin1String("help")) {
        if (args.isEmpty()) {
            printUsage(commands);
            return 0;
        }
        name = args.first();
        args = {QStringLiteral("--help")};
    }
    for (const Command &command : commands) {
        if (name == QLatin1String(command.name))
            return command.run(args);
    }
    printErr(QStringLiteral("tavrel-cli: unknown command '%1'\n").arg(name));
    printUsage(commands);
    return 2;
}

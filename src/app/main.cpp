#include "base/ui/QtPrompter.h"
#include "shell/AppContext.h"
#include "shell/platform/SingleInstance.h"
#include "shell/ui/ApplicationStartup.h"

#include <QApplication>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

constexpr const char *helpText =
    "Usage: tavrel JOBFILE\n"
    "       tavrel --version | --help\n"
    "\n"
    "Prints furniture specifications: reads the job file that the specification application\n"
    "wrote, with the SIF and order files it names, and by its run mode (\"Function\") shows\n"
    "the main window (1, 3), prints at once (2) or ends.\n"
    "\n"
    "The whole command line is the job file's path: the arguments are joined with single\n"
    "blanks and not parsed. Only a command line of exactly one argument, --version or --help,\n"
    "is read as an option.\n"
    "\n"
    "The user guide and 'man tavrel' tell more; tavrel-cli does the same work without a window.\n";

// The two options, checked before any window system is started so that they work without a
// display. Anything else is the job file's path, word for word.
bool answerOption(int argc, char **argv) {
    if (argc != 2)
        return false;
    if (std::strcmp(argv[1], "--version") == 0) {
        std::fputs("tavrel (Tavrel) " TAVREL_VERSION "\n", stdout);
        return true;
    }
    if (std::strcmp(argv[1], "--help") == 0) {
        std::fputs(helpText, stdout);
        return true;
    }
    return false;
}

} // namespace

int main(int argc, char **argv) {
    if (answerOption(argc, argv))
        return 0;
    // A write past a file-size limit must fail like a full disk, not kill the program.
    std::signal(SIGXFSZ, SIG_IGN);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrel"));
    QApplication::setApplicationVersion(QStringLiteral(TAVREL_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);

    // The parent passes the job file's path as the whole command line, blanks included.
    const QString jobFile = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));

    tavrel::QtPrompter prompter(QStringLiteral("Tavrel"));
    // A second instance ends silently; a lock that cannot be made is reported.
    const tavrel::SingleInstance instance;
    if (!tavrel::passesSingleInstanceTest(instance, prompter))
        return 0;

    tavrel::AppContext context;
    if (!tavrel::startApplication(context, jobFile, prompter))
        return 0;
    return QApplication::exec();
}

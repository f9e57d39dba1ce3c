#include "base/ui/QtPrompter.h"
#include "shell/AppContext.h"
#include "shell/SingleInstance.h"
#include "shell/ui/ApplicationStartup.h"

#include <QApplication>

#include <csignal>

int main(int argc, char **argv) {
    // A write past a file-size limit must fail like a full disk, not kill the program.
    std::signal(SIGXFSZ, SIG_IGN);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrel"));
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

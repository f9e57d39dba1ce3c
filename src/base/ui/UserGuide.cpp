#include "base/ui/UserGuide.h"

#include "base/Prompter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tavrel::UserGuide {

CommandTable::Command command(std::function<void()> open) {
    return CommandTable::command(QStringLiteral("mnuHelpTopic"), QStringLiteral("&User Guide"),
                                 std::move(open), {QKeySequence(QKeySequence::HelpContents)})
        .withToolTip(QStringLiteral("Open the user guide (F1)"));
}

QStringList candidates(const QString &programFolder) {
    const QDir folder(programFolder);
    return {
        QDir::cleanPath(folder.filePath(QStringLiteral("../share/doc/tavrel/guide/index.html"))),
        QDir::cleanPath(folder.filePath(QStringLiteral("../doc/guide/index.html"))),
        QDir::cleanPath(folder.filePath(QStringLiteral("../../../docs/guide/index.md")))};
}

QString find(const QString &programFolder) {
    for (const QString &candidate : candidates(programFolder)) {
        if (QFileInfo(candidate).isFile())
            return QFileInfo(candidate).canonicalFilePath();
    }
    return {};
}

void open(Prompter &prompter) {
    const QString programFolder = QCoreApplication::applicationDirPath();
    const QString guide = find(programFolder);
    if (guide.isEmpty()) {
        prompter.message(QStringLiteral("The user guide could not be found. It is looked for "
                                        "in:\n%1")
                             .arg(candidates(programFolder).join(QLatin1Char('\n'))),
                         QStringLiteral("User Guide"), MessageIcon::Exclamation);
        return;
    }
    if (!prompter.openDocument(guide, QStringLiteral("User Guide")))
        prompter.message(QStringLiteral("No application could open the user guide:\n%1")
                             .arg(QDir::toNativeSeparators(guide)),
                         QStringLiteral("User Guide"), MessageIcon::Exclamation);
}

} // namespace tavrel::UserGuide

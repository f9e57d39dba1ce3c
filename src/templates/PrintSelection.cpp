#include "templates/PrintSelection.h"

#include <QFileInfo>

namespace tavrel {

namespace {

bool fileMissing(const QString &path) {
    return !path.isEmpty() && !QFileInfo(PrintSelection::localPath(path)).isFile();
}

} // namespace

QString PrintSelection::localPath(const QString &path) {
    QString local = path;
    local.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return local;
}

QString PrintSelection::checkMessage(const ReportSelection &selection) {
    if (!selection.hasAnyTemplate())
        // Two blanks before "to select": the text as the users know it.
        return QStringLiteral("No valid templates selected.\rGo to \"Custom Layout Setup\"  to "
                              "select a valid template.");
    if (selection.isSwitchedOff(0) && selection.isSwitchedOff(1) && selection.isSwitchedOff(2))
        return QStringLiteral("At least select one item to be printable.");
    if (fileMissing(selection.templates[0]))
        return QStringLiteral("Cover Page Template Not Found.");
    if (fileMissing(selection.templates[1]))
        return QStringLiteral("Custom Template Not Found.");
    if (fileMissing(selection.templates[2]))
        return QStringLiteral("Summary Template Not Found.");
    return {};
}

} // namespace tavrel

#include "templates/GroupFile.h"

#include "base/Conversions.h"
#include "base/IniFile.h"
#include "base/TextFile.h"

#include <algorithm>

namespace tavrel {

namespace {

const QString &printStateSection() {
    static const QString name = QStringLiteral("Print State");
    return name;
}

const QString &filePathSection() {
    static const QString name = QStringLiteral("File Path");
    return name;
}

// The file name without its folder; both separators count.
QString fileNameOf(const QString &path) {
    const qsizetype slash =
        std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.mid(slash + 1);
}

} // namespace

QByteArray GroupFile::bytes(const ReportSelection &group) {
    const auto state = [&group](std::size_t row) {
        return QString::number(group.isPrintable(row) ? 1 : 0);
    };
    const QStringList lines = {
        QLatin1Char('[') + printStateSection() + QLatin1Char(']'),
        QStringLiteral("Cover Printable=") + state(0),
        QStringLiteral("Body Printable=") + state(1),
        QStringLiteral("Summary Printable=") + state(2),
        QString(),
        QLatin1Char('[') + filePathSection() + QLatin1Char(']'),
        QStringLiteral("Cover Template=") + group.templates[0],
        QStringLiteral("Body Template=") + group.templates[1],
        QStringLiteral("Summary Template=") + group.templates[2],
    };
    return TextFile::encodeCrLf(lines);
}

void GroupFile::write(const QString &path, const ReportSelection &group) {
    TextFile::writeAtomically(path, bytes(group));
}

ReportSelection GroupFile::read(const QString &path) {
    const IniFile ini = IniFile::load(path);
    const auto flag = [&ini](const char *key) {
        const qint16 state =
            Conversions::textToInt16(ini.value(printStateSection(), QLatin1String(key)));
        return ReportSelection::flag(state != 0);
    };
    ReportSelection group;
    group.printable = {flag("Cover Printable"), flag("Body Printable"), flag("Summary Printable")};
    group.templates = {ini.value(filePathSection(), QStringLiteral("Cover Template")),
                       ini.value(filePathSection(), QStringLiteral("Body Template")),
                       ini.value(filePathSection(), QStringLiteral("Summary Template"))};
    return group;
}

QString GroupFile::loadedToolTip(const QString &groupPath) {
    return QLatin1Char('"') + fileNameOf(groupPath) +
           QStringLiteral("\" is currently loaded. Load another?");
}

FileDialogRequest GroupFile::saveDialog(const QString &templateDirectory) {
    FileDialogRequest request;
    request.title = QStringLiteral(" Save Group Templates As...");
    request.filter = QStringLiteral("Tavrel Pagelayout File (*.grp)|*.grp|All Files  (*.*)|*.*");
    request.folder = templateDirectory;
    request.defaultExtension = QStringLiteral("grp");
    return request;
}

FileDialogRequest GroupFile::openDialog(const QString &templateDirectory) {
    FileDialogRequest request;
    request.title = QStringLiteral("   Load Group PageLayout Template...");
    request.filter = QStringLiteral("Tavrel Page Layout File (*.grp)|*.grp|All Files  (*.*)|*.*");
    request.folder = templateDirectory;
    return request;
}

} // namespace tavrel

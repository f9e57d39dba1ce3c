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

QByteArray GroupFile::bytes(const TemplateGroup &group) {
    const QStringList lines = {
        QLatin1Char('[') + printStateSection() + QLatin1Char(']'),
        QStringLiteral("Cover Printable=") + QString::number(group.coverPrintable),
        QStringLiteral("Body Printable=") + QString::number(group.bodyPrintable),
        QStringLiteral("Summary Printable=") + QString::number(group.summaryPrintable),
        QString(),
        QLatin1Char('[') + filePathSection() + QLatin1Char(']'),
        QStringLiteral("Cover Template=") + group.coverTemplate,
        QStringLiteral("Body Template=") + group.bodyTemplate,
        QStringLiteral("Summary Template=") + group.summaryTemplate,
    };
    return TextFile::encodeCrLf(lines);
}

void GroupFile::write(const QString &path, const TemplateGroup &group) {
    TextFile::writeAtomically(path, bytes(group));
}

TemplateGroup GroupFile::read(const QString &path) {
    const IniFile ini = IniFile::load(path);
    const auto flag = [&ini](const char *key) {
        return Conversions::textToInt16(ini.value(printStateSection(), QLatin1String(key)));
    };
    TemplateGroup group;
    group.coverPrintable = flag("Cover Printable");
    group.bodyPrintable = flag("Body Printable");
    group.summaryPrintable = flag("Summary Printable");
    group.coverTemplate = ini.value(filePathSection(), QStringLiteral("Cover Template"));
    group.bodyTemplate = ini.value(filePathSection(), QStringLiteral("Body Template"));
    group.summaryTemplate = ini.value(filePathSection(), QStringLiteral("Summary Template"));
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

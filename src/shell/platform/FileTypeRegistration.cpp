#include "shell/platform/FileTypeRegistration.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

namespace tavrel {
namespace FileTypeRegistration {

namespace {

constexpr FileType fileTypes[] = {
    {".cst", "cst_auto_file"},
    {".cov", "cov_auto_file"},
    {".sum", "sum_auto_file"},
    {".grp", "grp_auto_file"},
};

// Writes only when different; returns whether the file changed.
bool writeIfChanged(const QString &path, const QByteArray &content) {
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == content)
        return false;
    existing.close();
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(content);
    return file.commit();
}

} // namespace

const FileType *types(int *count) {
    *count = int(std::size(fileTypes));
    return fileTypes;
}

QString mimeTypeName(const FileType &type) {
    // "cst_auto_file" -> "application/x-orvanta-cst-auto-file"
    return QStringLiteral("application/x-orvanta-") +
           QString::fromLatin1(type.typeName).replace(QLatin1Char('_'), QLatin1Char('-'));
}

QByteArray mimePackage() {
    QByteArray xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
    for (const FileType &type : fileTypes) {
        xml += "  <mime-type type=\"" + mimeTypeName(type).toLatin1() + "\">\n";
        xml += "    <comment>OrvantaPrint Save File</comment>\n";
        xml += "    <sub-class-of type=\"text/plain\"/>\n";
        xml += "    <generic-icon name=\"text-x-generic\"/>\n";
        xml += "    <glob pattern=\"*" + QByteArray(type.extension) + "\"/>\n";
        xml += "  </mime-type>\n";
    }
    xml += "</mime-info>\n";
    return xml;
}

QByteArray desktopEntry() {
    QByteArray mimeTypes;
    for (const FileType &type : fileTypes)
        mimeTypes += mimeTypeName(type).toLatin1() + ';';
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=OrvantaPrint Save File\n"
           "Comment=Tavrel page layout templates and template groups\n"
           "Icon=tavrel\n"
           "Exec=editor %f\n"
           "Terminal=true\n"
           "NoDisplay=true\n"
           "MimeType=" +
           mimeTypes + "\n";
}

void registerAll(const QString &dataHome) {
    QString home = dataHome;
    if (home.isEmpty())
        home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (home.isEmpty())
        return;
    const bool mimeChanged = writeIfChanged(
        QDir(home).filePath(QStringLiteral("mime/packages/orvanta-tavrel.xml")), mimePackage());
    writeIfChanged(QDir(home).filePath(QStringLiteral("applications/orvanta-tavrel-files.desktop")),
                   desktopEntry());
    // The compiled cache is what xdg-mime reads; Qt reads the package directly.
    if (mimeChanged)
        QProcess::startDetached(QStringLiteral("update-mime-database"),
                                {QDir(home).filePath(QStringLiteral("mime"))});
}

} // namespace FileTypeRegistration
} // namespace tavrel

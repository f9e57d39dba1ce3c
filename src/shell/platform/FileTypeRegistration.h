#pragma once

#include <QString>

namespace tavrel {

// Registers the template (.cst, .cov, .sum) and group (.grp) file types with the desktop, the XDG
// way: a shared-mime-info package under $XDG_DATA_HOME/mime/packages and a desktop entry under
// $XDG_DATA_HOME/applications. Like the classic registration, which opened these files in a text
// editor, the types are text files opened with the desktop's text editor. Files are rewritten
// only when their content changed; every failure is ignored.
namespace FileTypeRegistration {

struct FileType {
    const char *extension; // ".cst"
    const char *typeName;  // "cst_auto_file"
};

// The four types in registration order.
const FileType *types(int *count);

QString mimeTypeName(const FileType &type);
QByteArray mimePackage();
QByteArray desktopEntry();

// Writes both files below dataHome (empty: $XDG_DATA_HOME or ~/.local/share).
void registerAll(const QString &dataHome = {});

} // namespace FileTypeRegistration

} // namespace tavrel

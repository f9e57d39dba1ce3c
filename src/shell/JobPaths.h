#pragma once

#include <QString>

namespace tavrel {

// The paths that start-up derives from the job file.
struct JobPaths {
    QString jobFile;
    QString sifPath;
    QString activeDocument;
    QString activeDocumentFolder; // up to and including the last separator
    QString activeDocumentName;   // last component less its last four characters
    QString cifPath;
    QString templateRoot;
    QString templateFolder;
    QString pdfFolder;
    QString htmlFolder;
    QString rtfFolder;
};

namespace PathRules {

// Job, group and template files may name paths with "\" or "/"; both separate components.
qsizetype lastSeparator(const QString &path);
// The text after the last separator.
QString lastComponent(const QString &path);
// Everything before the last separator (empty when there is none).
QString beforeLastComponent(const QString &path);
// The absolute folder of the job file; empty when it cannot be known (a relative job path while
// the working folder cannot be read, as when it lies deeper than the system's path limit).
QString jobFolder(const QString &jobFile);
// A relative path named in the job file is taken relative to the job file's folder, so that a
// job and its files can travel together; absolute paths (including "C:\..." forms) stay. A
// relative path gives an empty text when the job file's folder cannot be known.
QString resolveAgainst(const QString &jobFile, const QString &path);
// An absolute path within the system's path length limit: one Tavrel may open or create.
bool isUsable(const QString &path);
// Joins with the separator Tavrel writes on this system.
QString join(const QString &folder, const QString &name);

} // namespace PathRules

} // namespace tavrel

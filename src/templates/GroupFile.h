#pragma once

#include "base/Prompter.h"
#include "templates/ReportSelection.h"

#include <QByteArray>
#include <QString>

namespace tavrel {

// Group files (".grp"): "[Print State]" with the three printable values, an empty line, then
// "[File Path]" with the three template paths, CR LF line ends, Windows-1252.
class GroupFile {
public:
    // The printable values are written as check box states: 1 for a printable row, else 0.
    static QByteArray bytes(const ReportSelection &group);
    // Replaces the file atomically; throws RuntimeError, leaving any old file as it was.
    static void write(const QString &path, const ReportSelection &group);
    // Reads with the private-profile rules. The printable values are read as integers, and any
    // value but 0 ticks its row: a value that is not a number throws RuntimeError 13 (type
    // mismatch) for the caller to report. Paths are taken as they stand, whether or not the
    // files exist.
    static ReportSelection read(const QString &path);

    // The load-group button's tool tip once a group is loaded.
    static QString loadedToolTip(const QString &groupPath);

    static FileDialogRequest saveDialog(const QString &templateDirectory);
    static FileDialogRequest openDialog(const QString &templateDirectory);

    static QString notValidMessage() { return QStringLiteral("This is not a valid Group File."); }
    static QString nothingToGroupMessage() {
        return QStringLiteral("Please select the template to be grouped.");
    }
};

} // namespace tavrel

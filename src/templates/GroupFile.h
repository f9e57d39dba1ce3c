#pragma once

#include "base/Prompter.h"

#include <QByteArray>
#include <QString>

namespace tavrel {

// The three templates of a report and their printable check boxes, as a group file holds them.
struct TemplateGroup {
    // Check box values: 0 unchecked, 1 checked.
    qint16 coverPrintable = 0;
    qint16 bodyPrintable = 0;
    qint16 summaryPrintable = 0;
    QString coverTemplate;
    QString bodyTemplate;
    QString summaryTemplate;

    bool operator==(const TemplateGroup &) const = default;
};

// Group files (".grp"): "[Print State]" with the three printable values, an empty line, then
// "[File Path]" with the three template paths, CR LF line ends, Windows-1252.
class GroupFile {
public:
    static QByteArray bytes(const TemplateGroup &group);
    // Replaces the file atomically; throws RuntimeError, leaving any old file as it was.
    static void write(const QString &path, const TemplateGroup &group);
    // Reads with the private-profile rules. The printable values are read as integers: a value
    // that is not a number throws RuntimeError 13 (type mismatch) for the caller to report.
    // Paths are taken as they stand, whether or not the files exist.
    static TemplateGroup read(const QString &path);

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

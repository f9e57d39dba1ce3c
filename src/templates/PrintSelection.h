#pragma once

#include "templates/ReportSelection.h"

#include <QString>

namespace tavrel {

class PrintSelection {
public:
    // The message that stops a direct print run, empty when printing may go on. Only a flag of
    // "0" counts as off, and missing files are reported whether or not their kind is printable.
    static QString checkMessage(const ReportSelection &selection);

    // A path from a job or group file as this system opens it ("\" separators become "/").
    static QString localPath(const QString &path);
};

} // namespace tavrel

#pragma once

#include "templates/TemplateKind.h"
#include "templates/TemplateLayout.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

namespace tavrel {

class Prompter;

// Writes page templates (".cov", ".cst", ".sum"): a title line, then the sections
// "[Other Info]", "[Box Info]", "[Line Info]" and "[Rectangle Info]" with their keys in a fixed
// order, CR LF line ends, Windows-1252 text.
class TemplateWriter {
public:
    // The title line for a kind and a moment: the kind's title followed directly by the date and
    // time; an empty line for an unknown kind.
    static QString titleLine(TemplateKind kind, const QDateTime &when);

    static QStringList lines(const TemplateLayout &layout, const QString &titleLine);
    static QByteArray bytes(const TemplateLayout &layout, const QString &titleLine);

    // Replaces the file at path atomically: a failed write leaves the old file as it was and
    // throws RuntimeError for the caller to report.
    static void write(const QString &path, const TemplateLayout &layout, const QString &titleLine);

    // The designer's save: status text while writing, the kind from the path, the title dated
    // now. Throws RuntimeError after clearing the status text.
    static void save(const QString &path, const TemplateLayout &layout, Prompter &prompter);
};

} // namespace tavrel

#pragma once

#include "templates/TemplateLayout.h"

#include <QByteArray>
#include <QString>

namespace tavrel {

class IniFile;
class Prompter;

// Reads page templates with the private-profile rules: sections and keys are found by name
// (order and key case do not matter, the first occurrence wins, values are cut at 259
// characters), "1" and "True" are true, and a value that does not convert leaves its property
// as it was. Slot numbers in the file may have gaps: placed boxes and lines take the first free
// slots of the layout they are read into; rectangles keep their numbers.
class TemplateReader {
public:
    enum class Result {
        Missing,       // no file at the path: nothing read, the layout unchanged
        Complete,      // everything read
        RanOutOfIndex, // no free slot left: "Ran out of index" shown, what was read is kept
    };

    // Reads into an existing layout (the designer's arrays). Throws RuntimeError when the file
    // exists but cannot be read.
    static Result read(const QString &path, TemplateLayout &layout, Prompter &prompter);
    static Result readBytes(const QByteArray &bytes, TemplateLayout &layout, Prompter &prompter);
    static Result readIni(const IniFile &ini, TemplateLayout &layout, Prompter &prompter);

    // A fresh layout read from the file (empty when the file is missing).
    static TemplateLayout load(const QString &path, Prompter &prompter);
};

} // namespace tavrel

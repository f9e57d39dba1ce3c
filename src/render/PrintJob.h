#pragma once

#include "render/JobState.h"

#include <QString>

#include <functional>

namespace tavrel {

class OutputHelpers;
class SectionRenderer;

// The default font and the margins (twips) a job starts with, from the settings.
struct PrintSettings {
    QString fontName = QStringLiteral("Arial");
    int fontSize = 8;
    bool fontBold = false;
    bool fontItalic = false;
    bool fontUnderline = false;
    double marginLeft = 0;
    double marginRight = 0;
    double marginTop = 0;
    double marginBottom = 0;
};

// The renderers of the three sections; a null renderer is a section that is not printed.
struct PrintSections {
    SectionRenderer *cover = nullptr;
    SectionRenderer *body = nullptr;
    SectionRenderer *summary = nullptr;
};

struct PrintCallbacks {
    // Lets the user interface paint once, between the cover and the body.
    std::function<void()> yieldToUi;
    // Opens a finished export file with the desktop's application.
    std::function<void(const QString &path, const QString &description)> openDocument;
};

// The name every job gives the document (the spooler shows it).
QString printDocumentName();

// Clears the engine and opens a new document with the job's name, header, default font,
// margins and orientation.
void startDocument(OutputHelpers &out, const JobState &job, const PrintSettings &settings);

// Prints, previews or exports the printable sections of a job on the engine behind out: clears
// it, sets the document name, header, default font, margins and orientation, renders cover,
// body and summary in that order with one NewPage between printed sections, ends the document
// and draws the deferred page-field bands over the finished pages.
void PrintDocument(OutputHelpers &out, JobState &job, const PrintSettings &settings,
                   const PrintSections &sections, const PrintCallbacks &callbacks = {});

} // namespace tavrel

#pragma once

#include "base/RuntimeError.h"
#include "render/JobState.h"

#include <QString>

#include <vector>

namespace tavrel {

class OutputHelpers;

// A problem a section met while it was laid out: the procedure that owns the message and the
// error. Renderers never show it; the one who runs the job reports it once layout is over.
struct RenderDiagnostic {
    QString procedure;
    RuntimeError error;
};

// One section of a report (cover, body or summary) as the print job drives it.
class SectionRenderer {
public:
    enum class Band { Header, Footer };

    virtual ~SectionRenderer() = default;

    // Draws the section from the current page on, adding pages as it needs them. A band that
    // holds the page field is left out here and drawn later by drawPageFieldBand.
    virtual void render(OutputHelpers &out) = 0;
    // Pages the last render produced.
    virtual int pageCount() const = 0;
    // Which band of the section holds the "Page n of  m" field.
    virtual PageFieldFlags pageFields() const = 0;
    // Draws the band on the page being overlaid: absolute page pageNumber of pageTotal.
    virtual void drawPageFieldBand(OutputHelpers &out, Band band, int pageNumber,
                                   int pageTotal) = 0;
    // What the last render met that the user must hear of, in the order it happened.
    virtual std::vector<RenderDiagnostic> diagnostics() const { return {}; }
};

// The text of a "Page n of  m" field: two blanks after "of" (deliberate).
QString pageOfText(int pageNumber, int pageTotal);
// The text of a "Page" field.
QString pageText(int pageNumber);

} // namespace tavrel

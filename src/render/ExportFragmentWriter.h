#pragma once

#include "render/DisplayList.h"
#include "render/HtmlFragments.h"

#include <QString>

namespace tavrel {

// The font and colours of a text box as the output helpers read them back from the engine
// for an HTML paragraph. weight is the flag that decides the font weight word: the underline
// flag for PrintTextBox, the bold flag for PrintAlignedTextBox.
struct HtmlTextStyle {
    int fontSize = 0;
    QString fontName;
    bool underline = false;
    bool italic = false;
    ColorNumber textColor = BlackColor;
    bool weight = false;
    ColorNumber brushColor = WhiteColor;
    int textAlign = 0;
};

// How a text goes into an RTF export: mode 1 starts a left-aligned paragraph, 2 a new
// paragraph indented by blanks, 3 continues the paragraph after blanks - 1 blanks; any other
// mode writes nothing.
struct RtfPlacement {
    int mode = 0;
    int blanks = 0;
};

// Which helper a text paragraph comes from: PrintAlignedTextBox's text is rewritten for HTML
// (blanks and carriage returns) before it goes into the paragraph, PrintTextBox's is not.
enum class HtmlTextSource { TextBox, AlignedTextBox };

// Makes the raw HTML and RTF fragments that the output helpers append through ExportRaw while
// an export is active. This base writes nothing; the HTML/RTF writer overrides it.
class ExportFragmentWriter {
public:
    virtual ~ExportFragmentWriter() = default;

    // text is the text as drawn; the writer escapes and rewrites it as the source requires.
    virtual QString textParagraph(HtmlTextSource source, const HtmlTextStyle &style, double left,
                                  double top, double width, const QString &text) const;
    virtual QString picture(const QString &path, double left, double top,
                            HtmlPictureForm form) const;
    virtual QString rtfText(const RtfPlacement &placement, const QString &text) const;
    // The navigation bar template the job hands to ExportNavBar when HTML export starts.
    virtual QString topNavigationBar() const;
};

} // namespace tavrel

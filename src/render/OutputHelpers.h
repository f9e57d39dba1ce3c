#pragma once

#include "render/ExportFragmentWriter.h"
#include "render/JobState.h"

#include <QString>

namespace tavrel {

class PageEngine;

// The helpers every renderer draws through, never through TextBox or DrawPicture directly, so
// that an active HTML or RTF export receives exactly what is printed.
class OutputHelpers {
public:
    // fragments may be null: exports then receive nothing.
    OutputHelpers(PageEngine &engine, const JobState &job,
                  const ExportFragmentWriter *fragments = nullptr);

    PageEngine &engine() const { return m_engine; }
    const JobState &job() const { return m_job; }
    const ExportFragmentWriter *fragments() const { return m_fragments; }

    // Sets FontName, FontSize, FontBold, FontItalic, FontUnderline, in that order.
    void SetPrintFont(const QString &name, int size, bool bold, bool italic, bool underline);
    // Sets the margins (twips) left, right, top, bottom, in that order.
    void SetPrintMargins(double left, double right, double top, double bottom);
    // A text box that grows to fit, plus its HTML paragraph or RTF text.
    void PrintTextBox(double left, double top, double width, const QString &text,
                      const RtfPlacement &rtf = {});
    // The same with an alignment code; its HTML paragraph takes its weight from FontBold.
    void PrintAlignedTextBox(int alignment, const QString &text, double left, double top,
                             double width);
    // Draws the picture at sizePercent ("75%") when the path names an existing file; a missing
    // file draws and reports nothing. Item pictures and band pictures differ in their HTML.
    void PrintPicture(const QString &path, double left, double top, const QString &sizePercent,
                      HtmlPictureForm form = HtmlPictureForm::Item);

private:
    // Reads the font back in the order the HTML paragraph is assembled from.
    HtmlTextStyle readBackStyle(bool weightFromBold) const;

    PageEngine &m_engine;
    const JobState &m_job;
    const ExportFragmentWriter *m_fragments;
};

} // namespace tavrel

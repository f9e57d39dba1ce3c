#include "render/OutputHelpers.h"

#include "render/PageEngine.h"

#include <QFileInfo>

namespace tavrel {

OutputHelpers::OutputHelpers(PageEngine &engine, const JobState &job,
                             const ExportFragmentWriter *fragments)
    : m_engine(engine)
    , m_job(job)
    , m_fragments(fragments) {}

void OutputHelpers::SetPrintFont(const QString &name, int size, bool bold, bool italic,
                                 bool underline) {
    m_engine.setFontName(name);
    m_engine.setFontSize(size);
    m_engine.setFontBold(bold);
    m_engine.setFontItalic(italic);
    m_engine.setFontUnderline(underline);
}

void OutputHelpers::SetPrintMargins(double left, double right, double top, double bottom) {
    m_engine.setMarginLeft(left);
    m_engine.setMarginRight(right);
    m_engine.setMarginTop(top);
    m_engine.setMarginBottom(bottom);
}

HtmlTextStyle OutputHelpers::readBackStyle(bool weightFromBold) const {
    HtmlTextStyle style;
    style.fontSize = m_engine.FontSize();
    style.fontName = m_engine.FontName();
    style.underline = m_engine.FontUnderline();
    style.italic = m_engine.FontItalic();
    style.textColor = m_engine.TextColor();
    // PrintTextBox weighs by the underline flag, not the bold one: deliberate, underlined
    // text comes out "bolder" in HTML.
    style.weight = weightFromBold ? m_engine.FontBold() : m_engine.FontUnderline();
    style.brushColor = m_engine.BrushColor();
    style.textAlign = m_engine.TextAlign();
    return style;
}

void OutputHelpers::PrintTextBox(double left, double top, double width, const QString &text,
                                 const RtfPlacement &rtf) {
    m_engine.TextBox(text, left, top, width, 0, true, false, true);
    if (m_job.htmlExport) {
        const HtmlTextStyle style = readBackStyle(false);
        if (m_fragments)
            m_engine.ExportRaw(
                m_fragments->textParagraph(HtmlTextSource::TextBox, style, left, top, width, text));
    } else if (m_job.rtfExport) {
        if (m_fragments)
            m_engine.ExportRaw(m_fragments->rtfText(rtf, text));
    }
}

void OutputHelpers::PrintAlignedTextBox(int alignment, const QString &text, double left, double top,
                                        double width) {
    m_engine.setTextAlign(alignment);
    m_engine.TextBox(text, left, top, width, 0, true, false, true);
    if (m_job.htmlExport) {
        const HtmlTextStyle style = readBackStyle(true);
        if (m_fragments)
            m_engine.ExportRaw(m_fragments->textParagraph(HtmlTextSource::AlignedTextBox, style,
                                                          left, top, width, text));
    }
}

void OutputHelpers::PrintPicture(const QString &path, double left, double top,
                                 const QString &sizePercent, HtmlPictureForm form) {
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return;
    m_engine.DrawPicture(path, left, top, sizePercent, sizePercent);
    if (m_job.htmlExport && m_fragments)
        m_engine.ExportRaw(m_fragments->picture(path, left, top, form));
}

} // namespace tavrel

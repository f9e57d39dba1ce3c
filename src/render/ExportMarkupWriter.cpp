#include "render/ExportMarkupWriter.h"

#include "render/HtmlFragments.h"
#include "render/RtfWriter.h"

namespace tavrel {

QString ExportMarkupWriter::textParagraph(HtmlTextSource source, const HtmlTextStyle &style,
                                          double left, double top, double width,
                                          const QString &text) const {
    HtmlTextFormat format;
    format.fontSize = style.fontSize;
    format.fontName = style.fontName;
    format.weight = style.weight;
    format.italic = style.italic;
    format.underline = style.underline;
    format.textColor = style.textColor;
    format.brushColor = style.brushColor;
    format.textAlign = style.textAlign;
    // Escaping comes first: the aligned-box rewriting then adds "&nbsp" and "<Br>" of its own,
    // which must stay markup.
    const HtmlMarkup markup = source == HtmlTextSource::AlignedTextBox
                                  ? htmlAlignedText(QStringView(text))
                                  : HtmlMarkup::fromData(text);
    return HtmlFragments::textParagraph(format, left, top, width, markup);
}

QString ExportMarkupWriter::picture(const QString &path, double left, double top,
                                    HtmlPictureForm form) const {
    return HtmlFragments::picture(path, left, top, form);
}

QString ExportMarkupWriter::rtfText(const RtfPlacement &placement, const QString &text) const {
    return RtfWriter::text(placement.mode, placement.blanks, RtfMarkup::fromData(text));
}

QString ExportMarkupWriter::topNavigationBar() const {
    return HtmlFragments::topNavigationBar();
}

} // namespace tavrel

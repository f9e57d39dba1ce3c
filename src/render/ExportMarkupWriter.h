#pragma once

#include "render/ExportFragmentWriter.h"

namespace tavrel {

// The fragment writer of a real export: HTML paragraphs, pictures and the navigation bar from
// HtmlFragments, RTF text from RtfWriter. Every text is treated as data and escaped before any
// markup of our own is added, so a specification value cannot inject tags or control words.
class ExportMarkupWriter : public ExportFragmentWriter {
public:
    QString textParagraph(HtmlTextSource source, const HtmlTextStyle &style, double left,
                          double top, double width, const QString &text) const override;
    QString picture(const QString &path, double left, double top,
                    HtmlPictureForm form) const override;
    QString rtfText(const RtfPlacement &placement, const QString &text) const override;
    QString topNavigationBar() const override;
};

} // namespace tavrel

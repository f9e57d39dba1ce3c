#include "render/ExportFragmentWriter.h"

namespace tavrel {

QString ExportFragmentWriter::textParagraph(HtmlTextSource, const HtmlTextStyle &, double, double,
                                            double, const QString &) const {
    return {};
}

QString ExportFragmentWriter::picture(const QString &, double, double, HtmlPictureForm) const {
    return {};
}

QString ExportFragmentWriter::rtfText(const RtfPlacement &, const QString &) const {
    return {};
}

QString ExportFragmentWriter::topNavigationBar() const {
    return {};
}

} // namespace tavrel

#include "render/PageBands.h"

#include "base/RuntimeError.h"
#include "render/HtmlFragments.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "render/SectionRenderer.h"
#include "spec/FieldCatalog.h"

#include <QFileInfo>

#include <algorithm>

namespace tavrel {

namespace {

const QString PageOfCaption = QStringLiteral("Page n of  m");
const QString PageCaption = QStringLiteral("Page");

QString sizeOr100(const QString &size) {
    return size.isEmpty() ? QStringLiteral("100%") : size;
}

bool inContainer(const QString &container, const QString &band) {
    return container == band;
}

} // namespace

namespace PageCaptions {

QString dateText(const QDateTime &when) {
    return when.isValid() ? when.toString(QStringLiteral("MM-dd-yyyy")) : QString();
}

QString timeText(const QDateTime &when) {
    return when.isValid() ? when.toString(QStringLiteral("HH:mm:ss")) : QString();
}

QString value(const QString &caption, const ReportData &data, int pageNumber, int pageTotal) {
    const auto dateAndTime = [](const QDateTime &when) {
        return when.isValid() ? dateText(when) + QLatin1Char(' ') + timeText(when) : QString();
    };
    if (caption == QLatin1String("Company Name"))
        return data.companyName;
    if (caption == QLatin1String("Orvanta File Title"))
        return data.activeDocument.isEmpty() ? QString()
                                             : QFileInfo(data.activeDocument).completeBaseName();
    if (caption == QLatin1String("File Path"))
        return data.activeDocument;
    if (caption == QLatin1String("Sif File Name"))
        return data.sifPath.isEmpty() ? QString() : QFileInfo(data.sifPath).fileName();
    if (caption == QLatin1String("Report Date"))
        return dateText(data.reportTime);
    if (caption == QLatin1String("Report Time"))
        return timeText(data.reportTime);
    if (caption == QLatin1String("Report Date & Time"))
        return dateAndTime(data.reportTime);
    if (caption == QLatin1String("Saved Date"))
        return dateText(data.savedTime);
    if (caption == QLatin1String("Saved Time"))
        return timeText(data.savedTime);
    if (caption == QLatin1String("Saved Date & Time"))
        return dateAndTime(data.savedTime);
    if (caption == PageOfCaption)
        return pageOfText(pageNumber, pageTotal);
    if (caption == PageCaption)
        return pageText(pageNumber);
    return {};
}

} // namespace PageCaptions

PageFieldFlags findPageFieldFlags(const TemplateLayout &layout) {
    PageFieldFlags flags;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed || box.caption != PageOfCaption)
            continue;
        flags.inHeader = box.container == Container::header();
        flags.inFooter = box.container == Container::footer();
        break;
    }
    return flags;
}

int engineAlignment(qint32 boxTextAlign) {
    switch (boxTextAlign) {
    case TextAlign::Right:
        return 2;
    case TextAlign::Center:
        return 1;
    default:
        return 0;
    }
}

void applyBoxStyle(OutputHelpers &out, const CustomTemplate &box) {
    PageEngine &engine = out.engine();
    const QString name = box.tFontName.isEmpty() ? engine.FontName() : box.tFontName;
    const int size = box.tFontSize > 0 ? box.tFontSize : engine.FontSize();
    out.SetPrintFont(name, size, box.tFontBold, box.tFontItalic, box.tFontUnderLine);
    engine.setTextColor(box.tForeColor);
    engine.setBrushColor(box.tBackColor);
    engine.setBrushStyle(box.tBackColor == WhiteColor ? BrushStyles::Transparent
                                                      : BrushStyles::Solid);
}

PictureExtent printedPictures(PictureCache &cache) {
    return [&cache](const QString &path, const QString &size) -> std::optional<QSizeF> {
        if (path.isEmpty() || !QFileInfo(path).isFile())
            return std::nullopt;
        try {
            const QSizeF natural = cache.load(path).naturalSize;
            return QSizeF(PictureCache::scaledExtent(size, natural.width()),
                          PictureCache::scaledExtent(size, natural.height()));
        } catch (const RuntimeError &) {
            // Not a picture, or a size that is no size: nothing prints.
            return std::nullopt;
        }
    };
}

void drawTemplateLine(PageEngine &engine, const CustomLine &line, QPointF origin) {
    const double left = origin.x() + line.tLeft;
    const double top = origin.y() + line.tTop;
    const double width = std::max(0, line.tWidth);
    const double height = std::max(0, line.tHeight);
    engine.setPenColor(line.tBackColor);
    engine.setPenStyle(line.tBoderStyle >= PenStyles::Solid &&
                               line.tBoderStyle <= PenStyles::DashDotDot
                           ? line.tBoderStyle
                           : PenStyles::Solid);
    if (width >= height) {
        engine.setPenWidth(height);
        engine.DrawLine(left, top + height / 2, left + width, top + height / 2);
    } else {
        engine.setPenWidth(width);
        engine.DrawLine(left + width / 2, top, left + width / 2, top + height);
    }
    engine.setPenWidth(0);
    engine.setPenStyle(PenStyles::Solid);
}

void drawTemplateLine(OutputHelpers &out, const CustomLine &line, QPointF origin) {
    drawTemplateLine(out.engine(), line, origin);
    if (out.job().htmlExport)
        out.engine().ExportRaw(
            HtmlFragments::horizontalRule(origin.x() + line.tLeft, origin.y() + line.tTop));
}

void drawTemplateRectangles(PageEngine &engine, const TemplateLayout &layout, QPointF origin,
                            const std::function<bool(const PrintRect &)> &which) {
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        const PrintRect &rect = layout.rect(slot);
        if (!rect.rectVisible || (which && !which(rect)))
            continue;
        engine.setBrushStyle(BrushStyles::Transparent);
        engine.setPenColor(rect.rectColor);
        engine.setPenStyle(PenStyles::Solid);
        engine.setPenWidth(0);
        const double left = origin.x() + rect.rectLeft;
        const double top = origin.y() + rect.rectTop;
        engine.DrawRectangle(left, top, left + rect.rectWidth, top + rect.rectHeight);
    }
    engine.setBrushStyle(BrushStyles::Solid);
}

PageBands::PageBands(const TemplateLayout &layout, const ReportData &data)
    : m_layout(layout)
    , m_data(data) {
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        if (inContainer(box.container, Container::header()))
            m_headerBoxes.push_back(CustomTemplate::fromBox(box));
        else if (inContainer(box.container, Container::footer()))
            m_footerBoxes.push_back(CustomTemplate::fromBox(box));
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = layout.line(slot);
        if (!line.placed)
            continue;
        if (inContainer(line.container, Container::header()))
            m_headerLines.push_back(CustomLine::fromLine(line));
        else if (inContainer(line.container, Container::footer()))
            m_footerLines.push_back(CustomLine::fromLine(line));
    }
    const PictureExtent pictures = printedPictures(m_pictureSizes);
    m_headerHeight = layout.bandHeight(Container::header(), pictures);
    m_footerHeight = layout.bandHeight(Container::footer(), pictures);
    m_pageFields = findPageFieldFlags(layout);
}

QPointF PageBands::origin(Band band, const PageEngine &engine) const {
    if (band == Band::Header)
        return {engine.MarginLeft(), engine.MarginTop()};
    return {engine.MarginLeft(), engine.PageHeight() - engine.MarginBottom() - m_footerHeight};
}

QPointF PageBands::bodyOrigin(const PageEngine &engine) const {
    return {engine.MarginLeft(), engine.MarginTop() + m_headerHeight};
}

bool PageBands::isEmpty(Band band) const {
    return band == Band::Header ? m_headerBoxes.empty() && m_headerLines.empty()
                                : m_footerBoxes.empty() && m_footerLines.empty();
}

void PageBands::draw(OutputHelpers &out, Band band, int pageNumber, int pageTotal) const {
    PageEngine &engine = out.engine();
    const QPointF at = origin(band, engine);
    for (const CustomLine &line : band == Band::Header ? m_headerLines : m_footerLines)
        drawTemplateLine(out, line, at);
    for (const CustomTemplate &box : boxes(band))
        drawBox(out, box, at, pageNumber, pageTotal);
}

QString PageBands::boxText(const CustomTemplate &box, int pageNumber, int pageTotal) const {
    if (box.tNotes)
        return box.tNotesName;
    if (FieldCatalog::isHeaderFooterCaption(box.tCaption))
        return PageCaptions::value(box.tCaption, m_data, pageNumber, pageTotal);
    return m_fieldText ? m_fieldText(box) : QString();
}

void PageBands::drawBox(OutputHelpers &out, const CustomTemplate &box, QPointF origin,
                        int pageNumber, int pageTotal) const {
    const double left = origin.x() + box.tLeft;
    const double top = origin.y() + box.tTop;
    if (box.tLogo) {
        out.PrintPicture(box.tLogoFile, left, top, sizeOr100(m_layout.other.logoSize),
                         HtmlPictureForm::Band);
        return;
    }
    if (box.tImgPlaced) {
        const QString size = box.tImgSize.isEmpty() ? m_layout.other.imageSize : box.tImgSize;
        out.PrintPicture(box.tImgFileName, left, top, sizeOr100(size), HtmlPictureForm::Band);
        return;
    }
    const QString text = boxText(box, pageNumber, pageTotal);
    if (text.isEmpty())
        return;
    applyBoxStyle(out, box);
    out.PrintAlignedTextBox(engineAlignment(box.tTextAlign), text, left, top, box.tWidth);
}

} // namespace tavrel

#include "render/SummaryRendererBase.h"

#include "base/Conversions.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PictureCache.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/SummaryRendererFlow.h"

#include <QFileInfo>

#include <algorithm>

namespace tavrel {

namespace {

const QString OneLine = QStringLiteral("W");

QString sizeOr100(const QString &size) {
    return size.isEmpty() ? QStringLiteral("100%") : size;
}

} // namespace

BoxSectionRenderer::BoxSectionRenderer(std::optional<TemplateLayout> layout, const ReportData &data,
                                       QString procedureName)
    : m_data(data)
    , m_procedureName(std::move(procedureName))
    , m_hasLayout(layout.has_value())
    , m_layout(layout ? std::move(*layout) : TemplateLayout()) {}

BoxSectionRenderer::~BoxSectionRenderer() = default;

PageFieldFlags BoxSectionRenderer::pageFields() const {
    return m_bands ? m_bands->pageFields() : PageFieldFlags{};
}

void BoxSectionRenderer::render(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    const int firstPage = engine.PageCount();
    m_diagnostics.clear();
    m_bands.reset();
    if (m_hasLayout) {
        try {
            renderSection(out);
        } catch (const RuntimeError &error) {
            addDiagnostic(error);
        }
    }
    m_pageCount = engine.PageCount() - firstPage + 1;
}

void BoxSectionRenderer::addDiagnostic(const RuntimeError &error) {
    m_diagnostics.push_back({m_procedureName, error});
}

void BoxSectionRenderer::renderSection(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    m_defaultFont = engine.FontName();
    m_defaultSize = engine.FontSize();
    m_bands = std::make_unique<PageBands>(m_layout, m_data);
    fillFields();

    engine.Paragraph(QString());
    drawBand(out, PageBands::Band::Header);
    const double bodyTop = m_bands->bodyOrigin(engine).y();
    // The body ends where the footer band begins, so that no box runs into the footer.
    const double bodyBottom =
        engine.PageHeight() - engine.MarginBottom() - m_bands->height(PageBands::Band::Footer);
    SectionFlow flow(engine, bodyTop, bodyBottom,
                     {[&] { drawBand(out, PageBands::Band::Footer); },
                      [&] { drawBand(out, PageBands::Band::Header); }});
    drawBody(out, flow);
    drawBand(out, PageBands::Band::Footer);
    drawBodyFrames(out, flow);
}

void BoxSectionRenderer::drawBand(OutputHelpers &out, PageBands::Band band) const {
    if (m_bands->isDeferred(band))
        return;
    PageEngine &engine = out.engine();
    // Page captions other than "Page n of  m" know their page now: the absolute page number.
    m_bands->draw(out, band, engine.PreviewPage(), engine.PageCount());
}

void BoxSectionRenderer::drawPageFieldBand(OutputHelpers &out, Band band, int pageNumber,
                                           int pageTotal) {
    if (!m_bands)
        return;
    m_bands->draw(out, band == Band::Header ? PageBands::Band::Header : PageBands::Band::Footer,
                  pageNumber, pageTotal);
}

void BoxSectionRenderer::drawBodyFrames(OutputHelpers &out, const SectionFlow &flow) const {
    PageEngine &engine = out.engine();
    const int lastPage = engine.PageCount();
    const double left = engine.MarginLeft();
    // Rectangles go with the boxes they frame, lines with the boxes above them, each on the page
    // of the section where its top falls.
    const auto onPage = [&](int sectionPage, const auto &draw) {
        const int page = lastPage - flow.pageCount() + sectionPage;
        if (page == lastPage) {
            draw();
            return;
        }
        engine.StartOverlay(page);
        draw();
        engine.EndOverlay();
    };
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        const PrintRect &rect = m_layout.rect(slot);
        if (!rect.rectVisible)
            continue;
        const SectionFlow::Frame frame = flow.frameOf(rect.rectTop, rect.rectTop + rect.rectHeight);
        onPage(frame.sectionPage, [&] {
            engine.setBrushStyle(BrushStyles::Transparent);
            engine.setPenColor(ColorNumber(rect.rectColor) & 0xFFFFFF);
            engine.setPenStyle(PenStyles::Solid);
            engine.setPenWidth(0);
            engine.DrawRectangle(left + rect.rectLeft, frame.top,
                                 left + rect.rectLeft + rect.rectWidth, frame.bottom);
        });
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = m_layout.line(slot);
        if (!line.placed || Container::normalized(line.container) != Container::mainPort())
            continue;
        const SectionFlow::Position at = flow.positionOf(line.top);
        onPage(at.sectionPage, [&] {
            drawTemplateLine(out, CustomLine::fromLine(line), QPointF(left, at.y - line.top));
        });
    }
    engine.setBrushStyle(BrushStyles::Solid);
}

void BoxSectionRenderer::applyStyle(OutputHelpers &out, const CustomTemplate &box) const {
    out.SetPrintFont(m_defaultFont, m_defaultSize, false, false, false);
    applyBoxStyle(out, box);
}

double BoxSectionRenderer::boxLeft(const PageEngine &engine, const CustomTemplate &box) const {
    return engine.MarginLeft() + box.tLeft;
}

double BoxSectionRenderer::measure(PageEngine &engine, const QString &text, double width) {
    engine.CalcParagraph(text.isEmpty() ? OneLine : text, width);
    return engine.TextHeight();
}

QString BoxSectionRenderer::pictureSize(const CustomTemplate &box) const {
    if (box.tLogo)
        return sizeOr100(m_layout.other.logoSize);
    return sizeOr100(box.tImgSize.isEmpty() ? m_layout.other.imageSize : box.tImgSize);
}

double BoxSectionRenderer::pictureHeight(const CustomTemplate &box) const {
    const QString path = box.tLogo ? box.tLogoFile : box.tImgFileName;
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return 0;
    try {
        PictureCache pictures;
        return PictureCache::scaledExtent(pictureSize(box),
                                          pictures.load(path).naturalSize.height());
    } catch (const RuntimeError &) {
        // Not a picture: PrintPicture reports it when it is drawn.
        return 0;
    }
}

bool BoxSectionRenderer::drawPictureBox(OutputHelpers &out, const CustomTemplate &box, double left,
                                        double top) const {
    if (box.tLogo) {
        out.PrintPicture(box.tLogoFile, left, top, pictureSize(box), HtmlPictureForm::Band);
        return true;
    }
    if (box.tImgPlaced) {
        out.PrintPicture(box.tImgFileName, left, top, pictureSize(box), HtmlPictureForm::Band);
        return true;
    }
    return false;
}

void printSectionOnly(OutputHelpers &out, JobState &job, const PrintSettings &settings,
                      SectionRenderer &section, bool pageFields) {
    if (job.stopRequest)
        return;
    PageEngine &engine = out.engine();
    startDocument(out, job, settings);
    section.render(out);
    engine.EndDoc();

    const PageFieldFlags flags = section.pageFields();
    if (!pageFields || !flags.any())
        return;
    job.totalPageCount = Conversions::toInt16(engine.PageCount());
    const auto band =
        flags.inHeader ? SectionRenderer::Band::Header : SectionRenderer::Band::Footer;
    for (int page = 1; page <= job.totalPageCount; ++page) {
        job.overlayPageNumber = Conversions::toInt16(page);
        engine.StartOverlay(page);
        section.drawPageFieldBand(out, band, page, job.totalPageCount);
        engine.EndOverlay();
    }
}

} // namespace tavrel

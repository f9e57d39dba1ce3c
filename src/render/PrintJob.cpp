#include "render/PrintJob.h"

#include "base/Conversions.h"
#include "render/ExportFiles.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/SectionRenderer.h"

#include <QFile>

namespace tavrel {

namespace {

constexpr int HtmlExportFormat = 3;

QString exportPath(const JobState &job, const QString &ending) {
    return job.exportDirectory + QLatin1Char('/') + job.exportBaseName + ending;
}

// Draws the deferred band of one section over its pages firstPage .. firstPage + count - 1.
void overlaySection(OutputHelpers &out, JobState &job, SectionRenderer &renderer,
                    const PageFieldFlags &flags, int firstPage, int count) {
    if (!flags.any())
        return;
    PageEngine &engine = out.engine();
    const auto band =
        flags.inHeader ? SectionRenderer::Band::Header : SectionRenderer::Band::Footer;
    for (int page = firstPage; page < firstPage + count && !job.cancelRequested(); ++page) {
        job.overlayPageNumber = Conversions::toInt16(page);
        engine.StartOverlay(page);
        renderer.drawPageFieldBand(out, band, page, job.totalPageCount);
        engine.EndOverlay();
    }
}

} // namespace

QString printDocumentName() {
    return QStringLiteral("Kestrium - OrvantaPrint");
}

QString pageOfText(int pageNumber, int pageTotal) {
    return QStringLiteral("Page %1 of  %2").arg(pageNumber).arg(pageTotal);
}

QString pageText(int pageNumber) {
    return QStringLiteral("Page %1").arg(pageNumber);
}

void startDocument(OutputHelpers &out, const JobState &job, const PrintSettings &settings) {
    PageEngine &engine = out.engine();
    engine.Clear();
    engine.setDocName(printDocumentName());
    engine.setHeader(QStringLiteral(" "));
    out.SetPrintFont(settings.fontName, settings.fontSize, settings.fontBold, settings.fontItalic,
                     settings.fontUnderline);
    out.SetPrintMargins(settings.marginLeft, settings.marginRight, settings.marginTop,
                        settings.marginBottom);
    engine.setOrientation(job.landscape ? 1 : 0);
    engine.StartDoc();
}

void PrintDocument(OutputHelpers &out, JobState &job, const PrintSettings &settings,
                   const PrintSections &sections, const PrintCallbacks &callbacks) {
    if (job.stopRequest)
        return;
    PageEngine &engine = out.engine();
    // However the job ends, the engine stops collecting export text.
    struct ExportEnd {
        PageEngine &engine;
        ~ExportEnd() { engine.setExportFile(QString()); }
    } exportEnd{engine};
    if (job.htmlExport) {
        engine.setExportFile(exportPath(job, QStringLiteral(".htm")));
        engine.setExportFormat(HtmlExportFormat);
        engine.setExportNavBar(0,
                               out.fragments() ? out.fragments()->topNavigationBar() : QString());
    } else if (job.rtfExport) {
        // The engine collects the RTF text just as it collects HTML fragments.
        engine.setExportFile(exportPath(job, QStringLiteral(".rtf")));
    }
    startDocument(out, job, settings);

    const bool cover = job.coverPrintable && sections.cover;
    const bool body = job.bodyPrintable && sections.body;
    const bool summary = job.summaryPrintable && sections.summary;
    if (cover) {
        engine.addAnchor(QStringLiteral("Cover"), 1, 0);
        sections.cover->render(out);
        job.coverPageCount = Conversions::toInt16(sections.cover->pageCount());
        job.coverPageFields = sections.cover->pageFields();
    }
    if (body && !job.cancelRequested()) {
        if (cover) {
            if (callbacks.yieldToUi)
                callbacks.yieldToUi();
            engine.NewPage();
        }
        engine.addAnchor(QStringLiteral("Specification"), 1, 0);
        sections.body->render(out);
        job.bodyPageCount = Conversions::toInt16(sections.body->pageCount());
        job.bodyPageFields = sections.body->pageFields();
    }
    if (summary && !job.cancelRequested()) {
        if (cover || body)
            engine.NewPage();
        engine.addAnchor(QStringLiteral("Summary"), 1, 0);
        sections.summary->render(out);
        job.summaryPageCount = Conversions::toInt16(sections.summary->pageCount());
        job.summaryPageFields = sections.summary->pageFields();
    }
    engine.EndDoc();
    // A cancelled job keeps the pages it made, without page fields and without export files.
    if (job.cancelRequested())
        return;

    // Sections that were not printed this time keep no page fields from an earlier job.
    if (!cover)
        job.coverPageFields = {};
    if (!body)
        job.bodyPageFields = {};
    if (!summary)
        job.summaryPageFields = {};

    bool pageCountRead = false;
    if (job.anyPageField()) {
        job.totalPageCount = Conversions::toInt16(engine.PageCount());
        pageCountRead = true;
        const int coverPages = cover ? job.coverPageCount : 0;
        const int bodyPages = body ? job.bodyPageCount : 0;
        if (cover)
            overlaySection(out, job, *sections.cover, job.coverPageFields, 1, coverPages);
        if (body)
            overlaySection(out, job, *sections.body, job.bodyPageFields, coverPages + 1, bodyPages);
        if (summary)
            overlaySection(out, job, *sections.summary, job.summaryPageFields,
                           coverPages + bodyPages + 1, job.summaryPageCount);
    }

    if (job.htmlExport) {
        // Without page fields the count was not read above; the file naming needs it.
        if (!pageCountRead)
            job.totalPageCount = Conversions::toInt16(engine.PageCount());
        ExportFiles::writeHtml(engine);
        const QString single = exportPath(job, QStringLiteral(".htm"));
        if (job.totalPageCount > 1) {
            // The descriptions are spelled as the shell has always been given them.
            if (callbacks.openDocument)
                callbacks.openDocument(exportPath(job, QStringLiteral("1.htm")),
                                       QStringLiteral("preview paghe layout html"));
            QFile::remove(single);
        } else if (callbacks.openDocument) {
            callbacks.openDocument(single, QStringLiteral("preveiw page layout html"));
        }
    } else if (job.rtfExport) {
        ExportFiles::writeRtf(engine, settings.fontName, settings.fontSize);
        if (callbacks.openDocument)
            callbacks.openDocument(engine.ExportFile(), QStringLiteral("Cst.rtf page"));
    }
}

} // namespace tavrel

#include "shell/TemplatePreview.h"

#include "base/RecordingPrompter.h"
#include "base/RuntimeError.h"
#include "render/CancelToken.h"
#include "render/ImageOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"

#include <algorithm>

namespace tavrel {

TemplatePreview previewTemplate(const AppContext &context, TemplateKind kind,
                                const QString &templatePath,
                                const TemplatePreviewOptions &options) {
    TemplatePreview preview;
    // Messages of the layout are shown beside the picture, not as boxes over the designer.
    RecordingPrompter quiet;
    PageEngine engine;
    try {
        ReportJob report(context, sectionOnlySelection(kind, templatePath), quiet);
        const bool whole =
            kind != TemplateKind::Custom || context.spec.itemCount() <= options.wholeJobItems;
        // Once the pages wanted are finished the rest of the section is not needed: the job
        // stops there as it stops for Cancel.
        CancelToken enough;
        int listener = 0;
        if (!whole) {
            listener = engine.addNewPageListener([&options, &enough](int page) {
                if (page > options.pages)
                    enough.cancel();
            });
        }
        report.layOut(engine, &enough);
        report.reportDiagnostics();
        preview.complete = !enough.isCancelled();
        if (listener)
            engine.removeNewPageListener(listener);
    } catch (const RuntimeError &error) {
        preview.problem = error.description();
    }
    preview.pagesLaidOut = engine.PageCount();
    for (int page = 1; page <= std::min(preview.pagesLaidOut, options.pages); ++page)
        preview.pages.append(renderPageImage(engine, page, options.dpi));
    if (preview.problem.isEmpty() && !quiet.messages().isEmpty())
        preview.problem = quiet.messages().constFirst();
    return preview;
}

} // namespace tavrel

#include "render/PdfOutput.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "render/CancelToken.h"
#include "render/PageEngine.h"
#include "render/PageLayouts.h"
#include "render/PageReplay.h"
#include "render/PdfNavigation.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>

namespace tavrel {

bool writePdf(const PageEngine &engine, const QString &path,
              const std::function<void(int page)> &progress, const CancelToken *cancel) {
    // Written beside the target and renamed over it only when complete, so that a failed or
    // cancelled export never leaves a truncated PDF nor touches the one already there. A
    // folder that does not exist is reported as the PDF writer always has, as error 75.
    if (!path.isEmpty() && !QFileInfo(path).absoluteDir().exists())
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot write %1").arg(path));
    struct Cancelled {};
    try {
        const auto paint = [&](QIODevice &device) {
            QPdfWriter writer(&device);
            // One device unit per twip: the display list is drawn as recorded.
            writer.setResolution(1440);
            writer.setTitle(engine.DocName());
            writer.setCreator(QStringLiteral("Tavrel"));
            const int count = int(engine.pages().size());
            if (count > 0)
                writer.setPageLayout(pageLayoutOf(engine.page(1)));
            QPainter painter;
            if (!painter.begin(&writer))
                throw RuntimeError(ErrorNumber::PathFileAccessError,
                                   QStringLiteral("Cannot write %1").arg(path));
            for (int number = 1; number <= count; ++number) {
                if (cancel && cancel->isCancelled()) {
                    painter.end();
                    throw Cancelled{}; // the temporary file is discarded
                }
                if (number > 1) {
                    const QPageLayout layout = pageLayoutOf(engine.page(number));
                    if (!layout.isEquivalentTo(writer.pageLayout()))
                        writer.setPageLayout(layout);
                    writer.newPage();
                }
                paintPage(painter, engine, number);
                if (progress)
                    progress(number);
            }
            if (!painter.end())
                throw RuntimeError(ErrorNumber::PathFileAccessError,
                                   QStringLiteral("Cannot write %1").arg(path));
        };
        // Qt's PDF, then the outline, page labels and document information added (qpdf).
        TextFile::writeAtomically(path, [&](QIODevice &device) {
            PdfNavigation::write(device, path, engine.navigation(), paint);
        });
    } catch (const Cancelled &) {
        return false;
    }
    return true;
}

} // namespace tavrel

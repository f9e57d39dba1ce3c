#include "render/PdfExportJob.h"

#include "base/RuntimeError.h"
#include "render/PdfOutput.h"

#include <QFileInfo>

namespace tavrel {

PdfExportResult exportPdfFile(const PageEngine &engine, const QString &path,
                              const CancelToken *cancel,
                              const std::function<void(int page)> &progress) {
    return writePdf(engine, path, progress, cancel) ? PdfExportResult::Written
                                                    : PdfExportResult::Cancelled;
}

bool pdfPathReplaceable(const QString &path) {
    const QFileInfo file(path);
    if (!file.exists())
        return true;
    return QFileInfo(file.absolutePath()).isWritable() && !file.isDir();
}

} // namespace tavrel

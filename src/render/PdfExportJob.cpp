#include "render/PdfExportJob.h"

#include "base/RuntimeError.h"
#include "render/PdfOutput.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

namespace tavrel {

PdfExportResult exportPdfFile(const PageEngine &engine, const QString &path,
                              const CancelToken *cancel,
                              const std::function<void(int page)> &progress) {
    // Beside the target, so that the last step is a rename on one file system.
    QTemporaryFile part(path + QStringLiteral(".XXXXXX.part"));
    if (!part.open())
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot write %1").arg(path));
    part.close(); // the name stays taken; the PDF writer opens it again
    if (!writePdf(engine, part.fileName(), progress, cancel))
        return PdfExportResult::Cancelled; // the temporary file goes with part
    if (QFileInfo::exists(path) && !QFile::remove(path))
        return PdfExportResult::InUse;
    if (!QFile::rename(part.fileName(), path))
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot write %1").arg(path));
    part.setAutoRemove(false);
    return PdfExportResult::Written;
}

bool pdfPathReplaceable(const QString &path) {
    const QFileInfo file(path);
    if (!file.exists())
        return true;
    return QFileInfo(file.absolutePath()).isWritable() && !file.isDir();
}

} // namespace tavrel

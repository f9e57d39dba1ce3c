#pragma once

#include "render/PdfExportJob.h"

#include <QString>

class QWidget;

namespace tavrel {

class ExportFragmentWriter;
class PageEngine;
class ReportJob;

// Long output work of the windows, each off the window thread with frmMsgbox in front showing
// how far it got and a Cancel that stops it at the next page. The box is modal, so nothing
// changes what the work reads while it runs.

// Lays report out into engine on a layout thread and reports the job's diagnostics; fragments
// receives an export run's HTML/RTF (may be null). Returns false when the user cancelled.
// Throws the RuntimeError that ended the layout.
bool layOutWithProgress(ReportJob &report, PageEngine &engine, QWidget *parent,
                        const ExportFragmentWriter *fragments = nullptr);

// Writes engine's document to path (see exportPdfFile).
PdfExportResult writePdfWithProgress(const PageEngine &engine, const QString &path,
                                     QWidget *parent);

// Prints engine's document; false when the user cancelled (the printer job is aborted).
bool printWithProgress(const PageEngine &engine, const QString &printerName, int copies,
                       QWidget *parent);

} // namespace tavrel

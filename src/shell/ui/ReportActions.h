#pragma once

#include "shell/MenuChecks.h"

#include <QString>

#include <functional>

namespace tavrel {

// What the main window asks of the report side once its own checks passed. The window only
// collects the choice; laying out, printing and exporting happen behind this interface.
class ReportActions {
public:
    virtual ~ReportActions() = default;

    // caption: the template (or group) name shown in the preview's title.
    virtual void preview(const ReportSelection &selection, const QString &caption) = 0;
    virtual void print(const ReportSelection &selection) = 0;
    virtual void exportPdf(const ReportSelection &selection, const QString &pdfPath) = 0;
    // row: 0 cover, 1 custom, 2 summary; templatePath: the file to open, or "Untitled.cov" etc.
    virtual void openDesigner(int row, const QString &templatePath) = 0;
    // Printer properties of the job's printer.
    virtual void printerProperties() = 0;
    // Called with each template the designer opened from here saves, so that the window's
    // template lists show it at once.
    virtual void setTemplateSavedHandler(std::function<void(const QString &path)> handler) {
        Q_UNUSED(handler);
    }
};

} // namespace tavrel

#include "shell/ui/frmMenu.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/RuntimeError.h"
#include "base/ui/OutputNotice.h"
#include "shell/AppContext.h"
#include "shell/ReportExport.h"
#include "shell/ui/ReportActions.h"

#include <QFileInfo>

namespace tavrel {

// The main window's output commands: preview, print, PDF and spreadsheet, each refused before
// any dialog opens when the run mode or the choice of templates does not allow it.

void frmMenu::printPreview() {
    const ReportSelection s = selection();
    const QString refusal =
        MenuChecks::beforePreview(s, [](const QString &p) { return QFileInfo::exists(p); });
    if (!refusal.isEmpty()) {
        warn(refusal);
        return;
    }
    // The group's name while the choice is still the group's; once the user changed a template
    // or a printable box, the templates that actually print.
    QString caption;
    if (!m_loadedGroup.isEmpty() && s == m_loadedGroupSelection) {
        caption = QFileInfo(m_loadedGroup).fileName();
    } else {
        QStringList names;
        for (std::size_t row = 0; row < 3; ++row) {
            if (s.isPrintable(row) && !s.templates[row].isEmpty())
                names << QFileInfo(s.templates[row]).fileName();
        }
        caption = names.join(QStringLiteral(", "));
    }
    m_actions.preview(s, caption);
}

bool frmMenu::viewOnly() const {
    return isViewOnlyRunMode(m_context.runMode);
}

std::optional<ReportSelection> frmMenu::outputSelection() {
    // Every refusal comes before any dialog: nothing is asked for that is not written.
    if (viewOnly()) {
        m_prompter.status(viewOnlyRefusalText());
        return std::nullopt;
    }
    const ReportSelection s = selection();
    const QString refusal =
        MenuChecks::beforePrint(s, [](const QString &p) { return QFileInfo::exists(p); });
    if (!refusal.isEmpty()) {
        warn(refusal);
        return std::nullopt;
    }
    return s;
}

void frmMenu::printReport() {
    if (const std::optional<ReportSelection> s = outputSelection())
        m_actions.print(*s);
}

void frmMenu::exportPdf() {
    const std::optional<ReportSelection> chosen = outputSelection();
    if (!chosen)
        return;
    const ReportSelection &s = *chosen;
    FileDialogRequest request;
    request.title = QStringLiteral("   Save as PDF format ");
    request.filter = QStringLiteral("pdf(*.pdf)|*.pdf|All Files  (*.*)|*.*");
    request.defaultExtension = QStringLiteral("pdf");
    request.folder = m_context.paths.pdfFolder;
    request.fileName = m_context.paths.activeDocumentName.isEmpty()
                           ? QStringLiteral("Report.pdf")
                           : m_context.paths.activeDocumentName + QStringLiteral(".pdf");
    const std::optional<QString> path = m_prompter.saveFile(request);
    if (!path)
        return;
    // The actions replace this with the confirmation, or clear it.
    m_prompter.status(QStringLiteral("Creating ") + *path);
    m_actions.exportPdf(s, *path);
}

void frmMenu::exportSpreadsheet() {
    // As for the PDF: refusals first, then the file dialog, then the confirmation.
    if (viewOnly()) {
        m_prompter.status(viewOnlyRefusalText());
        return;
    }
    const ReportSelection s = selection();
    if (s.templates[1].isEmpty()) {
        warn(QStringLiteral("Choose a body template first: the spreadsheet lists its columns."));
        return;
    }
    try {
        ExportOptions options;
        options.openWhenDone = false;
        const QString path = ReportExport::saveSpreadsheet(m_context, s, m_prompter, options);
        if (path.isEmpty())
            return;
        openAndConfirmOutput(m_prompter, QStringLiteral("Spreadsheet"), path,
                             ReportExport::spreadsheetDescription(path));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Spreadsheet Export."), error);
    }
}

} // namespace tavrel

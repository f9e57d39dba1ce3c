#pragma once

#include "base/ui/CommandTable.h"
#include "shell/MenuChecks.h"
#include "templates/ReportSelection.h"

#include <QMainWindow>

#include <array>
#include <optional>

class QCheckBox;
class QComboBox;
class QToolButton;
class QPushButton;

namespace tavrel {

class Prompter;
class ReportActions;
struct AppContext;

// The main window: one row per template kind (cover, body, summary) with its template list,
// printable check box and open button, and the print, preview, PDF, group and default commands.
// Its commands are one table that the buttons, the designer's menu and the shortcuts are built
// from; every command goes through dispatch().
class frmMenu : public QMainWindow {
    Q_OBJECT

public:
    frmMenu(AppContext &context, Prompter &prompter, ReportActions &actions,
            QWidget *parent = nullptr);
    ~frmMenu() override;

    // "cmdPrint", "cmdPrintPreview", "cmdPDF", "cmdLoadGroup", "cmdSaveGroup",
    // "cmdSaveAsDefault", "cmdProperties", "cmdCancel", "cmdOpen(0)".."cmdOpen(2)",
    // "imgPagelayout(0)".."imgPagelayout(2)". Returns false for an unknown command.
    bool dispatch(const QString &command);

    ReportSelection selection() const;
    // Reads the template folder again, keeping the chosen templates.
    void refreshTemplateLists();
    QComboBox *templateList(int row) const { return m_templates[std::size_t(row)]; }
    QCheckBox *printableBox(int row) const { return m_printable[std::size_t(row)]; }
    QToolButton *loadGroupButton() const { return m_loadGroup; }
    QString loadedGroup() const { return m_loadedGroup; }
    const CommandTable &commands() const { return m_commands; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildCommands();
    void buildUi();
    void fillTemplateLists();
    void selectTemplate(int row, const QString &path);
    void openTemplate(int row);
    void loadGroup();
    void saveGroup();
    void saveAsDefault();
    void printPreview();
    void printReport();
    // The selection to print or export, or nothing after saying why not.
    std::optional<ReportSelection> outputSelection();
    void exportPdf();
    void exportSpreadsheet();
    void openDesigner(int row);
    void warn(const QString &text);
    bool viewOnly() const;
    QString resolved(const QString &path) const;

    AppContext &m_context;
    Prompter &m_prompter;
    ReportActions &m_actions;
    QString m_templateDirectory;
    QString m_loadedGroup;
    ReportSelection m_loadedGroupSelection; // the choice as the group gave it
    std::array<QComboBox *, 3> m_templates{};
    std::array<QCheckBox *, 3> m_printable{};
    std::array<QToolButton *, 3> m_open{};
    QToolButton *m_loadGroup = nullptr;
    CommandTable m_commands{this};
};

} // namespace tavrel

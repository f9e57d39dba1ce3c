#include "designer/frmCustomLayout.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "designer/DesignerActions.h"
#include "designer/DesignerTexts.h"
#include "designer/FieldList.h"
#include "designer/frmFieldLength.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tavrel {

void frmCustomLayout::newTemplate() {
    if (!m_document.isSaved()) {
        const MessageAnswer answer =
            m_prompter.message(QStringLiteral("Would you liked to save the template?"), QString(),
                               MessageIcon::Information, MessageButtons::YesNo, MessageAnswer::Yes);
        if (answer == MessageAnswer::Yes && !saveTemplate())
            return;
    }
    m_document.reset(TemplateLayout{}, m_document.kind(), QString());
    updateCaption();
    updateChecks();
}

void frmCustomLayout::openTemplate() {
    const TemplateKind kind = m_document.kind();
    const std::optional<QString> path =
        m_prompter.openFile(DesignerTexts::openDialog(kind, m_environment.templateFolder));
    if (!path)
        return;
    if (templateKindOfPath(*path) != kind) {
        m_prompter.message(DesignerTexts::wrongExtensionMessage(kind), QString(),
                           MessageIcon::Exclamation);
        return;
    }
    if (!m_document.path().isEmpty() &&
        QFileInfo(*path).absoluteFilePath() == QFileInfo(m_document.path()).absoluteFilePath()) {
        m_prompter.message(QStringLiteral("Template already open."), QString(),
                           MessageIcon::Exclamation);
        return;
    }
    loadFile(*path);
}

void frmCustomLayout::loadFile(const QString &path) {
    TemplateLayout layout;
    try {
        if (TemplateReader::read(path, layout, m_prompter) == TemplateReader::Result::Missing)
            return;
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Load Template."), error);
        return;
    }
    m_document.reset(layout, templateKindOfPath(path), path);
    updateCaption();
    updateChecks();
}

bool frmCustomLayout::writeTo(const QString &path) {
    try {
        TemplateWriter::save(path, m_document.layout(), m_prompter);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Save Template."), error);
        return false;
    }
    m_document.markSaved(path);
    m_document.undoStack().setClean();
    updateCaption();
    m_designerActions.templateSaved(path);
    return true;
}

bool frmCustomLayout::saveTemplate() {
    if (m_document.path().isEmpty())
        return saveTemplateAs();
    return writeTo(m_document.path());
}

bool frmCustomLayout::saveTemplateAs() {
    const QString current = m_document.path().isEmpty()
                                ? DesignerTexts::untitledName(m_document.kind())
                                : QFileInfo(m_document.path()).fileName();
    const std::optional<QString> path = m_prompter.saveFile(
        DesignerTexts::saveAsDialog(m_document.kind(), m_environment.templateFolder, current));
    if (!path)
        return false;
    return writeTo(*path);
}

void frmCustomLayout::copyHeaderFooter() {
    if (!LayoutEdits::bandBoxSlots(m_document.layout()).isEmpty()) {
        if (m_prompter.message(DesignerTexts::copyHeaderFooterReplaceQuestion(), QString(),
                               MessageIcon::Question, MessageButtons::YesNo,
                               MessageAnswer::Yes) != MessageAnswer::Yes)
            return;
    } else if (m_prompter.message(QStringLiteral("Copy header/footer from a selected template?"),
                                  QString(), MessageIcon::Question, MessageButtons::YesNo,
                                  MessageAnswer::Yes) != MessageAnswer::Yes) {
        return;
    }
    const std::optional<QString> path =
        m_prompter.openFile(DesignerTexts::copyHeaderFooterDialog(m_environment.templateFolder));
    if (!path)
        return;
    if (templateKindOfPath(*path) == TemplateKind::Unknown) {
        m_prompter.message(QStringLiteral("This is not a valid template file."), QString(),
                           MessageIcon::Exclamation);
        return;
    }
    TemplateLayout source;
    try {
        source = TemplateReader::load(*path, m_prompter);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Copy Header Footer."), error);
        return;
    }
    TemplateLayout layout = m_document.layout();
    const int copied = LayoutEdits::copyHeaderFooter(layout, source);
    if (copied < LayoutEdits::bandBoxSlots(source).size())
        m_prompter.message(QStringLiteral("Ran out of index"), QString(), MessageIcon::Critical);
    m_document.change(layout, QStringLiteral("Copy Header/Footer"));
}

void frmCustomLayout::previewOrPrint(bool print) {
    QString path = m_document.path();
    if (path.isEmpty()) {
        const std::optional<QString> name = m_prompter.input(
            QStringLiteral("Please name the new template."), QStringLiteral("Template name"));
        if (!name || name->trimmed().isEmpty())
            return;
        QString fileName = name->trimmed();
        const QString extension = templateExtension(m_document.kind());
        if (!fileName.endsWith(extension))
            fileName += extension;
        path = QDir(m_environment.templateFolder.isEmpty() ? QDir::currentPath()
                                                           : m_environment.templateFolder)
                   .filePath(fileName);
        if (!writeTo(path))
            return;
    }
    showStatus(QStringLiteral("Please wait..."));
    // Unsaved edits are shown from a scratch copy, so that the saved file stays as it is until
    // the user saves.
    QTemporaryDir scratch;
    QString shown = path;
    if (!m_document.isSaved() && scratch.isValid()) {
        shown = scratch.filePath(QFileInfo(path).fileName());
        try {
            TemplateWriter::write(
                shown, m_document.layout(),
                TemplateWriter::titleLine(m_document.kind(), QDateTime::currentDateTime()));
        } catch (const RuntimeError &error) {
            reportError(m_prompter, QStringLiteral("Print Preview."), error);
            showStatus(QString());
            return;
        }
    }
    if (print)
        m_designerActions.print(m_document.kind(), shown);
    else
        m_designerActions.preview(m_document.kind(), shown);
    showStatus(QString());
}

void frmCustomLayout::openFieldLengths() {
    if (!m_environment.fieldLengths || !m_environment.job)
        return;
    frmFieldLength editor(*m_environment.job, *m_environment.fieldLengths, m_prompter, this);
    editor.exec();
}

} // namespace tavrel

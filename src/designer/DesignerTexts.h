#pragma once

#include "base/Prompter.h"
#include "templates/TemplateKind.h"

#include <QString>

namespace tavrel {

// The fixed texts of the designer window: file dialogs by kind, captions and refusals.
namespace DesignerTexts {

FileDialogRequest openDialog(TemplateKind kind, const QString &folder);
FileDialogRequest saveAsDialog(TemplateKind kind, const QString &folder, const QString &name);
FileDialogRequest copyHeaderFooterDialog(const QString &folder);

// "Untitled.cst", "Untitled.cov" or "Untitled.sum".
QString untitledName(TemplateKind kind);
// "Custom Page Design View - " and so on.
QString captionPrefix(TemplateKind kind);
// The window caption: prefix, document name, " - Template [", template file name, "]".
QString windowCaption(TemplateKind kind, const QString &documentName, const QString &templatePath);
// The refusal when the open dialog returns a file of another kind. The designer spells
// "summary" correctly, unlike the main window; both texts are required as they are.
QString wrongExtensionMessage(TemplateKind kind);

QString copyHeaderFooterReplaceQuestion();

} // namespace DesignerTexts

} // namespace tavrel

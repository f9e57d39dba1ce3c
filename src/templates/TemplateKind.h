#pragma once

#include <QString>

namespace tavrel {

enum class TemplateKind { Unknown, Cover, Custom, Summary };

// The kind of a template file, decided by the last four characters of its path only, compared
// exactly: ".cov", ".cst", ".sum" (so "X.COV" is no template; deliberate).
TemplateKind templateKindOfPath(const QString &path);
bool isGroupPath(const QString &path);

// The extension of a kind with its dot (".cov"), empty for Unknown.
QString templateExtension(TemplateKind kind);
// The first words of a template file's title line; the date and time follow directly.
QString templateTitleText(TemplateKind kind);
// The main window's refusal when a chosen file is not of the row's kind ("summery" is the
// required spelling).
QString notValidTemplateMessage(TemplateKind kind);
// "cover", "custom", "summary" or "unknown".
QString templateKindName(TemplateKind kind);

} // namespace tavrel

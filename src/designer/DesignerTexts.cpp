#include "designer/DesignerTexts.h"

#include <QFileInfo>

namespace tavrel::DesignerTexts {

namespace {

QString kindWord(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Cover:
        return QStringLiteral("Cover");
    case TemplateKind::Summary:
        return QStringLiteral("Summary");
    case TemplateKind::Custom:
    case TemplateKind::Unknown:
        break;
    }
    return QStringLiteral("Custom");
}

QString pattern(TemplateKind kind) {
    const QString extension =
        templateExtension(kind == TemplateKind::Unknown ? TemplateKind::Custom : kind);
    return QLatin1Char('*') + extension;
}

} // namespace

FileDialogRequest openDialog(TemplateKind kind, const QString &folder) {
    FileDialogRequest request;
    request.title = QStringLiteral("Open %1 Pagelayout Template...").arg(kindWord(kind));
    request.filter =
        QStringLiteral("Tavrel Page Layout File (%1)|%1|All Files  (*.*)|*.*").arg(pattern(kind));
    request.folder = folder;
    return request;
}

FileDialogRequest saveAsDialog(TemplateKind kind, const QString &folder, const QString &name) {
    FileDialogRequest request;
    request.title = QStringLiteral("Save %1 Pagelayout Template As...").arg(kindWord(kind));
    request.filter =
        QStringLiteral("Tavrel Pagelayout File (%1)|%1|All Files  (*.*)|*.*").arg(pattern(kind));
    request.folder = folder;
    request.defaultExtension = pattern(kind).mid(2);
    request.fileName = name;
    return request;
}

FileDialogRequest copyHeaderFooterDialog(const QString &folder) {
    FileDialogRequest request;
    request.title = QStringLiteral("Inserte a copy of header/footer from...");
    // Texts as the dialog has always shown them, misspellings and odd blanks included.
    request.filter = QStringLiteral("All Template Files (*.cov;*.cst; *.sum)|*.cov; *.cst; *.sum|"
                                    "Cover (*.cov)|*.cov|Custom (*.cst)|*.cst|"
                                    "Summery (*.sum)|*.sum|AllFiles ( *.*)|*.*");
    request.folder = folder;
    return request;
}

QString untitledName(TemplateKind kind) {
    return QStringLiteral("Untitled") +
           templateExtension(kind == TemplateKind::Unknown ? TemplateKind::Custom : kind);
}

QString captionPrefix(TemplateKind kind) {
    return kindWord(kind) + QStringLiteral(" Page Design View - ");
}

QString windowCaption(TemplateKind kind, const QString &documentName, const QString &templatePath) {
    return captionPrefix(kind) + documentName + QStringLiteral(" - Template [") +
           QFileInfo(templatePath).fileName() + QLatin1Char(']');
}

QString wrongExtensionMessage(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Summary:
        return QStringLiteral("This is not a valid summary template file.");
    case TemplateKind::Cover:
        return notValidTemplateMessage(TemplateKind::Cover);
    case TemplateKind::Custom:
    case TemplateKind::Unknown:
        break;
    }
    return QStringLiteral("This is not a valid custom template file.");
}

QString copyHeaderFooterReplaceQuestion() {
    return QStringLiteral("This template currently has header/footer fields.\r\n"
                          "You will clear these fields and will insert new fields.\r\n"
                          "Are you sure you wish to continue?");
}

} // namespace tavrel::DesignerTexts

#include "templates/TemplateKind.h"

namespace tavrel {

TemplateKind templateKindOfPath(const QString &path) {
    const QString tail = path.right(4);
    if (tail == QLatin1String(".cov"))
        return TemplateKind::Cover;
    if (tail == QLatin1String(".cst"))
        return TemplateKind::Custom;
    if (tail == QLatin1String(".sum"))
        return TemplateKind::Summary;
    return TemplateKind::Unknown;
}

bool isGroupPath(const QString &path) {
    return path.right(4) == QLatin1String(".grp");
}

QString templateExtension(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Cover:
        return QStringLiteral(".cov");
    case TemplateKind::Custom:
        return QStringLiteral(".cst");
    case TemplateKind::Summary:
        return QStringLiteral(".sum");
    case TemplateKind::Unknown:
        break;
    }
    return {};
}

QString templateTitleText(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Cover:
        return QStringLiteral("Cover  pagelayout template "); // two blanks: deliberate
    case TemplateKind::Custom:
        return QStringLiteral("Custom pagelayout template ");
    case TemplateKind::Summary:
        return QStringLiteral("Summary pagelayout template ");
    case TemplateKind::Unknown:
        break;
    }
    return {};
}

QString notValidTemplateMessage(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Cover:
        return QStringLiteral("This is not a valid cover page template file.");
    case TemplateKind::Custom:
        return QStringLiteral("This is not a valid custom template file.");
    case TemplateKind::Summary:
        return QStringLiteral("This is not a valid summery page template file.");
    case TemplateKind::Unknown:
        break;
    }
    return QStringLiteral("This is not a valid template file.");
}

QString templateKindName(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Cover:
        return QStringLiteral("cover");
    case TemplateKind::Custom:
        return QStringLiteral("custom");
    case TemplateKind::Summary:
        return QStringLiteral("summary");
    case TemplateKind::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

} // namespace tavrel

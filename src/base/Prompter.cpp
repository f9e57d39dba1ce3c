#include "base/Prompter.h"

namespace tavrel {

std::optional<PrinterSetup> Prompter::printerSetup(const PrinterSetup &) {
    return std::nullopt;
}

QString qtFileFilter(const QString &classicFilter) {
    const QStringList parts = classicFilter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i];
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        patterns = patterns.simplified();
        // Qt reads the patterns from the parentheses, blank-separated; the classic form lists
        // them separately, so the shown description keeps its words and gets Qt's pattern list.
        const qsizetype paren = description.indexOf(QLatin1Char('('));
        if (paren >= 0)
            description = description.left(paren).trimmed();
        description += QStringLiteral(" (") + patterns + QLatin1Char(')');
        filters << description;
    }
    return filters.join(QStringLiteral(";;"));
}

} // namespace tavrel

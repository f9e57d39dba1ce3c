#include "shell/MenuChecks.h"

namespace tavrel {
namespace MenuChecks {

namespace {

bool anyTemplate(const ReportSelection &s) {
    return !s.templates[0].isEmpty() || !s.templates[1].isEmpty() || !s.templates[2].isEmpty();
}

bool anyPrintable(const ReportSelection &s) {
    return s.isPrintable(0) || s.isPrintable(1) || s.isPrintable(2);
}

// True when some printable row has a template.
bool anyPrintableTemplate(const ReportSelection &s) {
    for (int row = 0; row < 3; ++row) {
        if (s.isPrintable(row) && !s.templates[row].isEmpty())
            return true;
    }
    return false;
}

} // namespace

QString beforePreview(const ReportSelection &s, const FileExists &fileExists) {
    if (!anyTemplate(s))
        return QStringLiteral("At least select one template to be print preview.");
    if (!anyPrintable(s))
        return QStringLiteral("At least select one template to be printable.");
    if (!anyPrintableTemplate(s))
        return QStringLiteral("No valid printable template selected.");
    static const std::array<const char *, 3> notFound = {"Cover page template not found.",
                                                         "Custom page template not found.",
                                                         "Summary page template not found."};
    for (int row = 0; row < 3; ++row) {
        if (s.isPrintable(row) && !s.templates[row].isEmpty() && !fileExists(s.templates[row]))
            return QString::fromLatin1(notFound[std::size_t(row)]);
    }
    return {};
}

QString beforePrint(const ReportSelection &s, const FileExists &fileExists) {
    if (!anyTemplate(s))
        return QStringLiteral("At least select one template to print.");
    if (!anyPrintable(s))
        return QStringLiteral("At least select one item to be printable.");
    if (!anyPrintableTemplate(s))
        return QStringLiteral("No valid printable template selected.");
    static const std::array<const char *, 3> notSelected = {"No cover page template selected.",
                                                            "No custom template selected.",
                                                            "No summary template selected."};
    static const std::array<const char *, 3> notFound = {"Cover Page Template Not Found.",
                                                         "Custom Template Not Found.",
                                                         "Summary Template Not Found."};
    for (int row = 0; row < 3; ++row) {
        if (!s.isPrintable(row))
            continue;
        if (s.templates[row].isEmpty())
            return QString::fromLatin1(notSelected[std::size_t(row)]);
        if (!fileExists(s.templates[row]))
            return QString::fromLatin1(notFound[std::size_t(row)]);
    }
    return {};
}

QString beforeSaveAsDefault(const ReportSelection &s) {
    if (!anyTemplate(s))
        return QStringLiteral("At least select one template to print.");
    if (!anyPrintable(s))
        return QStringLiteral("At least select one item to be printable.");
    if (!anyPrintableTemplate(s))
        return QStringLiteral("No valid printable template selected.");
    return {};
}

QString cannotSaveQuestion(const QString &fileName) {
    return QStringLiteral("Connot save '") + fileName +
           QStringLiteral("', because it does not exist.");
}

} // namespace MenuChecks
} // namespace tavrel

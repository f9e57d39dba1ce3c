#include "templates/PrintSelection.h"

#include "base/IniFile.h"
#include "base/Prompter.h"

#include <QDir>
#include <QFileInfo>

namespace tavrel {

namespace {

const QString &printerSection() {
    static const QString name = QStringLiteral("Printer");
    return name;
}

// Reads a key; an empty value takes the default, which is written back.
QString readWithDefault(const QString &jobFile, const QString &key, const QString &defaultValue) {
    const QString value = ReadIniValue(printerSection(), key, jobFile);
    if (!value.isEmpty())
        return value;
    WriteIniValue(printerSection(), key, defaultValue, jobFile);
    return defaultValue;
}

// The second read of a printable flag: still empty means "0", not written.
QString rereadFlag(const QString &jobFile, const QString &key) {
    const QString value = ReadIniValue(printerSection(), key, jobFile);
    return value.isEmpty() ? QStringLiteral("0") : value;
}

bool fileMissing(const QString &path) {
    return !path.isEmpty() && !QFileInfo(PrintSelection::localPath(path)).isFile();
}

} // namespace

QString PrintSelection::localPath(const QString &path) {
    QString local = path;
    local.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return local;
}

QString PrintSelection::templateDirectory(const QString &jobFile, const QString &executableFolder) {
    const QString value =
        localPath(ReadIniValue(printerSection(), QStringLiteral("Template Directory"), jobFile));
    if (value.isEmpty())
        return executableFolder + QStringLiteral("/Print Templates");
    if (QDir::isAbsolutePath(value))
        return QDir::cleanPath(value);
    return QDir::cleanPath(QFileInfo(jobFile).absolutePath() + QLatin1Char('/') + value);
}

PrintState PrintSelection::read(const QString &jobFile, const QString &templateDirectory) {
    const QString folder = templateDirectory + QLatin1Char('/');
    const QString one = QStringLiteral("1");
    PrintState state;
    state.coverTemplate = readWithDefault(jobFile, QStringLiteral("Cover Template"),
                                          folder + QStringLiteral("Classic.cov"));
    state.bodyTemplate = readWithDefault(jobFile, QStringLiteral("Body Template"),
                                         folder + QStringLiteral("Classic Customer.cst"));
    state.summaryTemplate = readWithDefault(jobFile, QStringLiteral("Summary Template"),
                                            folder + QStringLiteral("Classic Customer.sum"));
    readWithDefault(jobFile, QStringLiteral("Cover Printable"), one);
    readWithDefault(jobFile, QStringLiteral("Body Printable"), one);
    readWithDefault(jobFile, QStringLiteral("Summary Printable"), one);
    state.coverPrintable = rereadFlag(jobFile, QStringLiteral("Cover Printable"));
    state.bodyPrintable = rereadFlag(jobFile, QStringLiteral("Body Printable"));
    state.summaryPrintable = rereadFlag(jobFile, QStringLiteral("Summary Printable"));
    return state;
}

QString PrintSelection::checkMessage(const PrintState &state) {
    if (state.coverTemplate.isEmpty() && state.bodyTemplate.isEmpty() &&
        state.summaryTemplate.isEmpty())
        // Two blanks before "to select": the text as the users know it.
        return QStringLiteral("No valid templates selected.\rGo to \"Custom Layout Setup\"  to "
                              "select a valid template.");
    const QLatin1String zero("0");
    if (state.coverPrintable == zero && state.bodyPrintable == zero &&
        state.summaryPrintable == zero)
        return QStringLiteral("At least select one item to be printable.");
    if (fileMissing(state.coverTemplate))
        return QStringLiteral("Cover Page Template Not Found.");
    if (fileMissing(state.bodyTemplate))
        return QStringLiteral("Custom Template Not Found.");
    if (fileMissing(state.summaryTemplate))
        return QStringLiteral("Summary Template Not Found.");
    return {};
}

bool PrintSelection::check(const QString &jobFile, const QString &templateDirectory,
                           Prompter &prompter) {
    const QString message = checkMessage(read(jobFile, templateDirectory));
    if (message.isEmpty())
        return true;
    prompter.message(message, QString(), MessageIcon::Exclamation);
    return false;
}

} // namespace tavrel

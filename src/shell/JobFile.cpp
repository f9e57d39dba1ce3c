#include "shell/JobFile.h"

#include "base/Conversions.h"
#include "base/RuntimeError.h"
#include "shell/JobFileKeys.h"
#include "shell/SettingsStore.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tavrel {

namespace {

struct SelectionKeys {
    const char *templateKey;
    const char *printableKey;
    const char *defaultTemplate;
};

constexpr std::array<SelectionKeys, ReportSelection::Rows> selectionKeys = {{
    {"Cover Template", "Cover Printable", "Classic.cov"},
    {"Body Template", "Body Printable", "Classic Customer.cst"},
    {"Summary Template", "Summary Printable", "Classic Customer.sum"},
}};

QString designerSwitchKey(DesignerSwitch which) {
    switch (which) {
    case DesignerSwitch::ShowLabel:
        return QStringLiteral("ShowLabel");
    case DesignerSwitch::ShowColor:
        return QStringLiteral("ShowColor");
    case DesignerSwitch::ShowSubTotalOptions:
        return QStringLiteral("ShowSubTotalOptions");
    }
    return {};
}

const QString rectangleBorderColorKey = QStringLiteral("Rectangle BorderColor");
const QString lineBorderColorKey = QStringLiteral("Line BorderColor");
const QString lineBorderStyleKey = QStringLiteral("Line BorderStyle");

} // namespace

JobFile JobFile::load(const QString &path) {
    JobFile job;
    job.m_path = path;
    job.m_ini = IniFile::load(path);
    return job;
}

QString JobFile::printerValue(const QString &key) const {
    return m_ini.value(JobFileKeys::printer(), key);
}

QString JobFile::sifDocument() const {
    return printerValue(JobFileKeys::tempPrintDocument());
}

QString JobFile::activeDocument() const {
    return printerValue(JobFileKeys::activeDocument());
}

QString JobFile::templateDirectory() const {
    return printerValue(JobFileKeys::templateDirectory());
}

QString JobFile::runMode() const {
    return printerValue(JobFileKeys::function());
}

QString JobFile::templateFolder(const QString &executableFolder) const {
    QString value = templateDirectory();
    value.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (value.isEmpty())
        return executableFolder + QStringLiteral("/Print Templates");
    if (QDir::isAbsolutePath(value))
        return QDir::cleanPath(value);
    return QDir::cleanPath(QFileInfo(m_path).absolutePath() + QLatin1Char('/') + value);
}

PrinterSettings JobFile::printerSettings(const PrinterList &printers, bool *writeBack) const {
    return SettingsStore::readPrinterSettings(m_ini, printers, writeBack);
}

UserPreferences JobFile::userPreferences() const {
    return SettingsStore::readUserPreferences(m_ini);
}

DesignerPreferences JobFile::designerPreferences() const {
    DesignerPreferences prefs;
    const auto flag = [this](DesignerSwitch which, bool fallback) {
        const QString text = printerValue(designerSwitchKey(which));
        return text.isEmpty() ? fallback : ParseIniBool(text);
    };
    prefs.showLabel = flag(DesignerSwitch::ShowLabel, true);
    prefs.showColor = flag(DesignerSwitch::ShowColor, false);
    prefs.showSubTotalOptions = flag(DesignerSwitch::ShowSubTotalOptions, false);
    // Remembered choices that do not read as numbers fall back to black and a solid line.
    prefs.rectangleBorderColor = printerValue(rectangleBorderColorKey).toUInt();
    prefs.lineBorderColor = printerValue(lineBorderColorKey).toUInt();
    prefs.lineBorderStyle = qint16(std::clamp(printerValue(lineBorderStyleKey).toInt(), 0, 4));
    return prefs;
}

FieldLengths JobFile::fieldLengths(const FieldLengths &base) const {
    FieldLengths lengths = base;
    for (const QString &code : FieldLengths::codes()) {
        lengths.setLabel(code, splitFieldLengthValue(printerValue(code)).label);
        // Deliberate: the order type's length comes from the quantity key.
        const QString lengthKey = code == QLatin1String("OT") ? QStringLiteral("QT") : code;
        try {
            lengths.setLength(code, Conversions::textToInt16(
                                        splitFieldLengthValue(printerValue(lengthKey)).length));
        } catch (const RuntimeError &) {
            // Empty, not a number or out of range: the current length stays, silently.
        }
    }
    return lengths;
}

ReportSelection JobFile::storedSelection(const QString &templateFolder) const {
    ReportSelection selection;
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        const SelectionKeys &keys = selectionKeys[row];
        QString path = printerValue(QLatin1String(keys.templateKey));
        if (path.isEmpty())
            path = templateFolder + QLatin1Char('/') + QLatin1String(keys.defaultTemplate);
        const QString flag = printerValue(QLatin1String(keys.printableKey));
        selection.templates[row] = path;
        selection.printable[row] = flag.isEmpty() ? QStringLiteral("1") : flag;
    }
    return selection;
}

ReportSelection JobFile::reportSelection(const QString &templateFolder) {
    QList<QPair<QString, QString>> defaults;
    const ReportSelection stored = storedSelection(templateFolder);
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        const SelectionKeys &keys = selectionKeys[row];
        if (printerValue(QLatin1String(keys.templateKey)).isEmpty())
            defaults.append({QLatin1String(keys.templateKey), stored.templates[row]});
    }
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        const SelectionKeys &keys = selectionKeys[row];
        if (printerValue(QLatin1String(keys.printableKey)).isEmpty())
            defaults.append({QLatin1String(keys.printableKey), QStringLiteral("1")});
    }
    if (!defaults.isEmpty()) {
        try {
            writePrinterKeys(defaults);
        } catch (const RuntimeError &) {
            // Ignored: the flags then read as "0" below and the check says so.
        }
    }
    ReportSelection selection = stored;
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        const QString flag = printerValue(QLatin1String(selectionKeys[row].printableKey));
        selection.printable[row] = flag.isEmpty() ? QStringLiteral("0") : flag;
    }
    return selection;
}

void JobFile::writePrinterKeys(const QList<QPair<QString, QString>> &keyValues) {
    IniFile::write(m_path, JobFileKeys::printer(), keyValues);
    // Read back what the file now holds, so that the model follows the same reading rules.
    m_ini = IniFile::load(m_path);
}

void JobFile::writeTemplateDirectory(const QString &folder) {
    writePrinterKeys({{JobFileKeys::templateDirectory(), folder}});
}

void JobFile::writePrinterDeviceName(const QString &name) {
    writePrinterKeys({{JobFileKeys::printerDeviceName(), name}});
}

void JobFile::writePrinterChoice(const QString &deviceName, int copies) {
    writePrinterKeys({{JobFileKeys::printerDeviceName(), deviceName},
                      {JobFileKeys::printCopies(), QString::number(copies)}});
}

void JobFile::writeSelection(const ReportSelection &selection, const std::array<bool, 3> &rows) {
    QList<QPair<QString, QString>> keyValues;
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        if (rows[row])
            keyValues.append(
                {QLatin1String(selectionKeys[row].templateKey), selection.templates[row]});
    }
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row)
        keyValues.append(
            {QLatin1String(selectionKeys[row].printableKey), selection.printable[row]});
    writePrinterKeys(keyValues);
}

void JobFile::writeFieldLengths(const FieldLengths &lengths) {
    QList<QPair<QString, QString>> keyValues;
    for (const QString &code : FieldLengths::codes())
        keyValues.append(
            {code, QString::number(lengths.length(code)) + QLatin1Char(',') + lengths.label(code)});
    writePrinterKeys(keyValues);
}

void JobFile::writePageLayout(int kind) {
    writePrinterKeys({{JobFileKeys::pageLayout(), QString::number(kind)}});
}

void JobFile::writeDesignerSwitch(DesignerSwitch which, bool on) {
    writePrinterKeys({{designerSwitchKey(which), IniBoolText(on)}});
}

void JobFile::writeRectangleBorderColor(quint32 color) {
    writePrinterKeys({{rectangleBorderColorKey, QString::number(color)}});
}

void JobFile::writeLineBorderColor(quint32 color) {
    writePrinterKeys({{lineBorderColorKey, QString::number(color)}});
}

void JobFile::writeLineBorderStyle(qint16 style) {
    writePrinterKeys({{lineBorderStyleKey, QString::number(style)}});
}

} // namespace tavrel

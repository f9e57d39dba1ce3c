#pragma once

#include "base/IniFile.h"
#include "shell/Settings.h"
#include "spec/FieldLengths.h"
#include "templates/ReportSelection.h"

#include <QList>
#include <QPair>
#include <QString>

namespace tavrel {

struct PrinterList;

// The designer's remembered drawing choices and view switches.
struct DesignerPreferences {
    bool showLabel = true;
    bool showColor = false;
    bool showSubTotalOptions = false;
    quint32 rectangleBorderColor = 0;
    quint32 lineBorderColor = 0;
    qint16 lineBorderStyle = 0;
};

enum class DesignerSwitch { ShowLabel, ShowColor, ShowSubTotalOptions };

// The job file, read once: the parent application writes it, Tavrel reads every setting from it
// and writes a few back. Each value keeps the reading rule the parent application relies on
// (defaults, the "1"/"True" booleans, values cut at 259 characters). Every write replaces the
// file atomically and updates the model, so later readers see what was written; a write that
// fails throws RuntimeError and leaves both the file and the model as they were.
class JobFile {
public:
    JobFile() = default;
    // A missing or unreadable file reads as one with no keys.
    static JobFile load(const QString &path);
    const QString &path() const { return m_path; }

    // Section "Printer": the files and folder the job names, as stored, and the run mode.
    QString sifDocument() const;
    QString activeDocument() const;
    QString templateDirectory() const;
    QString runMode() const;
    // The template folder: "Template Directory" with "\" read as "/" and a relative folder
    // taken from the job file's folder; empty means executableFolder + "/Print Templates".
    QString templateFolder(const QString &executableFolder) const;

    // The printer settings with their defaults. The stored printer is kept when it is the
    // current or an installed one; otherwise the current printer is taken and *writeBack set.
    PrinterSettings printerSettings(const PrinterList &printers, bool *writeBack) const;
    UserPreferences userPreferences() const;
    DesignerPreferences designerPreferences() const;
    // The stored lengths and labels over `base`: a length that is missing, empty or not a
    // 16-bit number leaves base's; "0" is accepted. Deliberately, the order type ("OT") takes
    // its length from the quantity key "QT", while the editor writes "OT".
    FieldLengths fieldLengths(const FieldLengths &base) const;

    // The print selection. An empty value takes its default (the Classic templates in
    // templateFolder, printable "1"), which is written back; a write that fails is ignored, and
    // a flag still empty afterwards reads as "0".
    ReportSelection reportSelection(const QString &templateFolder);
    // The stored print selection with the same defaults, writing nothing.
    ReportSelection storedSelection(const QString &templateFolder) const;

    void writeTemplateDirectory(const QString &folder);
    void writePrinterDeviceName(const QString &name);
    // The printer and the number of copies chosen in Printer Properties, in one write.
    void writePrinterChoice(const QString &deviceName, int copies);
    // The template paths of `rows` (the others are left as stored) and all three flags.
    void writeSelection(const ReportSelection &selection, const std::array<bool, 3> &rows);
    // "length,label" under every field code.
    void writeFieldLengths(const FieldLengths &lengths);
    // The kind the designer was opened on: 1 cover, 2 custom, 3 summary.
    void writePageLayout(int kind);
    void writeDesignerSwitch(DesignerSwitch which, bool on);
    void writeRectangleBorderColor(quint32 color);
    void writeLineBorderColor(quint32 color);
    void writeLineBorderStyle(qint16 style);

private:
    QString printerValue(const QString &key) const;
    void writePrinterKeys(const QList<QPair<QString, QString>> &keyValues);

    QString m_path;
    IniFile m_ini;
};

} // namespace tavrel

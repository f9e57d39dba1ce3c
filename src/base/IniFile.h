#pragma once

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace tavrel {

// An ini file read with the Windows private-profile rules: section and key names compare
// case-insensitively, the first occurrence of a section or key wins, lines before the first
// section and lines starting with ";" are ignored, blanks around names and values are dropped,
// a value wrapped in matching quotes loses them, and a value is cut at 259 characters.
class IniFile {
public:
    static constexpr qsizetype MaxValueLength = 259;

    IniFile() = default;

    // A missing or unreadable file reads as empty.
    static IniFile load(const QString &path);
    static IniFile fromText(const QString &text);

    bool contains(const QString &section, const QString &key) const;
    // The value, or defaultValue when the key is missing (an empty value is not missing).
    QString value(const QString &section, const QString &key,
                  const QString &defaultValue = {}) const;

    // Section names and the keys of one section in file order, with their first spelling.
    QStringList sections() const;
    QStringList keys(const QString &section) const;

    // Writes key=value into the file at path, keeping every other line, comment and line-end
    // style as it was; a missing key is added at the end of its section, a missing section at
    // the end of the file. The file is replaced atomically. Throws RuntimeError on failure.
    static void write(const QString &path, const QString &section, const QString &key,
                      const QString &value);
    static void write(const QString &path, const QString &section,
                      const QList<QPair<QString, QString>> &keyValues);

private:
    struct Section {
        QString name;
        QStringList keyOrder;
        QHash<QString, QString> values; // by lower-cased key
    };
    QList<Section> m_sections;
    QHash<QString, qsizetype> m_sectionIndex; // by lower-cased name

    const Section *find(const QString &section) const;
};

// The settings access every procedure uses; each call names the file.
QString ReadIniValue(const QString &section, const QString &key, const QString &file,
                     const QString &defaultValue = {});
// True when the write succeeded; a failed write leaves the file as it was.
bool WriteIniValue(const QString &section, const QString &key, const QString &value,
                   const QString &file);

// "1" and "True" are true; everything else ("0", "False", "", "true", ...) is false.
bool ParseIniBool(const QString &text);
// The same rule under the name the renderers use for template flags.
inline bool ExportFlagText(const QString &text) {
    return ParseIniBool(text);
}
// Booleans are written "1" or "0".
inline QString IniBoolText(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace tavrel

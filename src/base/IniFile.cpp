#include "base/IniFile.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"

#include <QFile>

namespace tavrel {

namespace {

QStringView trimmed(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && (text[begin] == QLatin1Char(' ') || text[begin] == QLatin1Char('\t')))
        ++begin;
    while (end > begin && (text[end - 1] == QLatin1Char(' ') || text[end - 1] == QLatin1Char('\t')))
        --end;
    return text.mid(begin, end - begin);
}

// "[name]" gives name; anything else gives a null view.
QStringView sectionHeader(QStringView line) {
    const QStringView text = trimmed(line);
    if (text.size() < 2 || text.front() != QLatin1Char('['))
        return {};
    const qsizetype close = text.indexOf(QLatin1Char(']'));
    if (close < 0)
        return {};
    return trimmed(text.mid(1, close - 1));
}

bool isComment(QStringView line) {
    const QStringView text = trimmed(line);
    return text.startsWith(QLatin1Char(';'));
}

} // namespace

IniFile IniFile::load(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return fromText(fromWindows1252(file.readAll()));
}

IniFile IniFile::fromText(const QString &text) {
    IniFile ini;
    Section *current = nullptr;
    for (const QString &line : TextFile::splitLines(text)) {
        const QStringView header = sectionHeader(line);
        if (!header.isNull()) {
            const QString lower = header.toString().toLower();
            const auto found = ini.m_sectionIndex.constFind(lower);
            if (found == ini.m_sectionIndex.constEnd()) {
                ini.m_sectionIndex.insert(lower, ini.m_sections.size());
                ini.m_sections.append(Section{header.toString(), {}, {}});
                current = &ini.m_sections.last();
            } else {
                // The first section of a name wins; a repeated one is never looked at.
                current = nullptr;
            }
            continue;
        }
        if (!current || isComment(line))
            continue;
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals < 0)
            continue;
        const QStringView key = trimmed(QStringView(line).left(equals));
        if (key.isEmpty())
            continue;
        const QString lowerKey = key.toString().toLower();
        if (current->values.contains(lowerKey))
            continue;
        QStringView value = trimmed(QStringView(line).mid(equals + 1));
        if (value.size() >= 2 &&
            (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')) &&
            value.back() == value.front())
            value = value.mid(1, value.size() - 2);
        current->values.insert(lowerKey, value.left(MaxValueLength).toString());
        current->keyOrder << key.toString();
    }
    return ini;
}

const IniFile::Section *IniFile::find(const QString &section) const {
    const auto found = m_sectionIndex.constFind(section.toLower());
    return found == m_sectionIndex.constEnd() ? nullptr : &m_sections[*found];
}

bool IniFile::contains(const QString &section, const QString &key) const {
    const Section *s = find(section);
    return s && s->values.contains(key.toLower());
}

QString IniFile::value(const QString &section, const QString &key,
                       const QString &defaultValue) const {
    const Section *s = find(section);
    if (!s)
        return defaultValue;
    const auto found = s->values.constFind(key.toLower());
    return found == s->values.constEnd() ? defaultValue : *found;
}

QStringList IniFile::sections() const {
    QStringList names;
    for (const Section &s : m_sections)
        names << s.name;
    return names;
}

QStringList IniFile::keys(const QString &section) const {
    const Section *s = find(section);
    return s ? s->keyOrder : QStringList();
}

void IniFile::write(const QString &path, const QString &section, const QString &key,
                    const QString &value) {
    write(path, section, {{key, value}});
}

void IniFile::write(const QString &path, const QString &section,
                    const QList<QPair<QString, QString>> &keyValues) {
    QByteArray original;
    if (QFile::exists(path))
        original = TextFile::readBytes(path);
    const bool crlf = original.isEmpty() || original.contains("\r\n");
    const QString newline = crlf ? QStringLiteral("\r\n") : QStringLiteral("\n");
    QStringList lines = TextFile::splitLines(fromWindows1252(original));

    // Find the first section of that name: its header line and its last non-blank line.
    const QString wanted = section.toLower();
    qsizetype header = -1;
    qsizetype sectionEnd = -1; // index after the last non-blank line of the section
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringView name = sectionHeader(lines[i]);
        if (!name.isNull()) {
            if (header >= 0)
                break;
            if (name.toString().toLower() == wanted) {
                header = i;
                sectionEnd = i + 1;
            }
            continue;
        }
        if (header >= 0 && !trimmed(lines[i]).isEmpty())
            sectionEnd = i + 1;
    }
    if (header < 0) {
        if (!lines.isEmpty() && !trimmed(lines.last()).isEmpty())
            lines << QString();
        lines << QLatin1Char('[') + section + QLatin1Char(']');
        header = lines.size() - 1;
        sectionEnd = lines.size();
    }

    for (const auto &[key, value] : keyValues) {
        const QString lowerKey = key.trimmed().toLower();
        bool replaced = false;
        for (qsizetype i = header + 1; i < sectionEnd; ++i) {
            if (isComment(lines[i]))
                continue;
            const qsizetype equals = lines[i].indexOf(QLatin1Char('='));
            if (equals < 0)
                continue;
            const QStringView existing = trimmed(QStringView(lines[i]).left(equals));
            if (existing.toString().toLower() == lowerKey) {
                lines[i] = existing.toString() + QLatin1Char('=') + value;
                replaced = true;
                break;
            }
        }
        if (!replaced) {
            lines.insert(sectionEnd, key + QLatin1Char('=') + value);
            ++sectionEnd;
        }
    }

    QString text = lines.join(newline);
    text += newline;
    TextFile::writeAtomically(path, toWindows1252(text));
}

QString ReadIniValue(const QString &section, const QString &key, const QString &file,
                     const QString &defaultValue) {
    return IniFile::load(file).value(section, key, defaultValue);
}

bool WriteIniValue(const QString &section, const QString &key, const QString &value,
                   const QString &file) {
    try {
        IniFile::write(file, section, key, value);
        return true;
    } catch (const RuntimeError &) {
        return false;
    }
}

bool ParseIniBool(const QString &text) {
    return text == QLatin1String("1") || text == QLatin1String("True");
}

} // namespace tavrel

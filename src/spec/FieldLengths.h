#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace tavrel {

// The length (in characters) and user label of every field code: item fields, page and header
// fields, and order header fields. The job file holds them, one key per code with the value
// "length,label"; the job model reads and writes them.
class FieldLengths {
public:
    // Every code with its built-in length and an empty label.
    static FieldLengths builtIn();

    // Every code in a stable order: item codes, page codes, order header codes.
    static const QStringList &codes();
    // The built-in length of a code, or 0 for a code that is not known.
    static int builtInLength(const QString &code);

    // 0 and an empty label for a code that is not known.
    int length(const QString &code) const;
    QString label(const QString &code) const;
    void setLength(const QString &code, int length);
    void setLabel(const QString &code, const QString &label);

private:
    struct Entry {
        int length = 0;
        QString label;
    };
    QHash<QString, Entry> m_entries;
};

// A job file value "length,label" split at its first comma, both parts trimmed; a value without
// a comma is all length and no label.
struct FieldLengthValue {
    QString length;
    QString label;
};
FieldLengthValue splitFieldLengthValue(const QString &value);

} // namespace tavrel

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace tavrel {

// The length (in characters) and user label of every field code: item fields, page and header
// fields, and order header fields. They live in the job file, section "Printer", one key per
// code with the value "length,label".
class FieldLengths {
public:
    // Every code with its built-in length and an empty label.
    static FieldLengths builtIn();

    // Every code in a stable order: item codes, page codes, order header codes.
    static const QStringList &codes();
    // The built-in length of a code, or 0 for a code that is not known.
    static int builtInLength(const QString &code);

    // Reads the lengths and labels over the current values. A length that is missing, empty or
    // not a 16-bit number leaves the current length; "0" is accepted. Deliberately, the order
    // type ("OT") takes its length from the quantity key "QT", while the editor writes "OT".
    void readFromJobFile(const QString &jobFile);

    // Writes "length,label" under every code in one atomic write. Throws RuntimeError; the job
    // file is then left as it was.
    void writeToJobFile(const QString &jobFile) const;

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

// The user's label of a field code: the text after the first comma of its key in the job file,
// trimmed; empty when the value has no comma.
QString fieldLabelForCode(const QString &jobFile, const QString &code);
// The user's label of an item field caption ("Part Number" reads key "PN"); empty when the
// caption is not an item field of the catalog.
QString fieldLabel(const QString &jobFile, const QString &caption);

} // namespace tavrel

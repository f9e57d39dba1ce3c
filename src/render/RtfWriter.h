#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace tavrel {

// Text ready for an RTF document: data has "\", "{" and "}" escaped and every character above
// 127 written as a \'hh Windows-1252 escape (or \uN? when the code page lacks it), so the
// document stays valid whatever the specification holds; the control words Tavrel writes itself
// (" \line " between option lines, "\ql ", "\par") stay as they are.
class RtfMarkup {
public:
    RtfMarkup() = default;

    static RtfMarkup fromData(QStringView data);
    // Data whose pieces Tavrel joined with its own separator, such as the " \line " of the
    // option texts: every piece is escaped and the separators are kept.
    static RtfMarkup fromJoinedData(QStringView joined, QStringView separator);

    const QString &text() const { return m_text; }

private:
    explicit RtfMarkup(QString text)
        : m_text(std::move(text)) {}

    QString m_text;
};

// The raw RTF the output helpers append through ExportRaw while an RTF export runs, and the
// document around it.
namespace RtfWriter {

QString escape(QStringView data);

// The raw text for one text output, by the caller's mode:
// 1: "\ql " + text (a left-aligned paragraph start);
// 2: "\par" + blanks blanks + text (a new paragraph indented by blanks);
// 3: blanks - 1 blanks + text (continuing the paragraph);
// any other mode: nothing.
QString text(int mode, int blanks, const RtfMarkup &text);

// The RTF document around the raw text of a whole export: header with font and colour tables in
// the default font (size in points), the raw text, the closing brace.
QString document(const QString &rawText, const QString &fontName = QStringLiteral("Arial"),
                 int fontSize = 10);

// The document's bytes; the escaping leaves nothing but ASCII in it.
QByteArray documentBytes(const QString &rawText, const QString &fontName = QStringLiteral("Arial"),
                         int fontSize = 10);

// Writes the document through an atomic save; throws RuntimeError as TextFile::writeAtomically.
void writeDocument(const QString &path, const QString &rawText,
                   const QString &fontName = QStringLiteral("Arial"), int fontSize = 10);

} // namespace RtfWriter

} // namespace tavrel

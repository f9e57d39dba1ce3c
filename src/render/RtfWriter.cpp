#include "render/RtfWriter.h"
#include "render/EscapeJoined.h"

#include "base/TextFile.h"
#include "base/Windows1252.h"

namespace tavrel {

namespace {

void appendHexEscape(QString &out, uchar byte) {
    out += QLatin1String("\\'");
    out += QString::number(byte, 16).rightJustified(2, QLatin1Char('0'));
}

void appendUnicodeEscape(QString &out, char16_t unit) {
    // RTF gives \u a signed 16-bit number; "?" is the one fallback character \uc1 announces.
    out += QLatin1String("\\u") + QString::number(qint16(unit)) + QLatin1Char('?');
}

// A character the control word "\par" would swallow as part of its name or its number.
bool mergesWithControlWord(QStringView text) {
    if (text.isEmpty())
        return false;
    const char16_t c = text.front().unicode();
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'-';
}

} // namespace

RtfMarkup RtfMarkup::fromData(QStringView data) {
    return RtfMarkup(RtfWriter::escape(data));
}

RtfMarkup RtfMarkup::fromJoinedData(QStringView joined, QStringView separator) {
    return RtfMarkup(escapeJoined(joined, separator,
                                  [](QStringView piece) { return RtfWriter::escape(piece); }));
}

namespace RtfWriter {

QString escape(QStringView data) {
    QString out;
    out.reserve(data.size());
    for (qsizetype i = 0; i < data.size(); ++i) {
        const QChar c = data[i];
        const char16_t unit = c.unicode();
        if (unit == u'\\' || unit == u'{' || unit == u'}') {
            out += QLatin1Char('\\');
            out += c;
        } else if (unit < 0x80) {
            out += c;
        } else {
            const QByteArray mapped = toWindows1252(data.mid(i, 1));
            if (mapped == "?" || c.isSurrogate())
                appendUnicodeEscape(out, unit);
            else
                appendHexEscape(out, uchar(mapped.at(0)));
        }
    }
    return out;
}

QString text(int mode, int blanks, const RtfMarkup &text) {
    switch (mode) {
    case 1:
        return QLatin1String("\\ql ") + text.text();
    case 2: {
        // Without blanks the text would run into "\par" and vanish with it; one blank ends the
        // control word and prints nothing.
        const int count = (blanks <= 0 && mergesWithControlWord(text.text())) ? 1 : blanks;
        return QLatin1String("\\par") + QString(qMax(0, count), QLatin1Char(' ')) + text.text();
    }
    case 3:
        return QString(qMax(0, blanks - 1), QLatin1Char(' ')) + text.text();
    default:
        return {};
    }
}

QString document(const QString &rawText, const QString &fontName, int fontSize) {
    QString name = fontName;
    name.remove(QLatin1Char(';')); // it would end the font table entry
    const int halfPoints = qMax(1, fontSize) * 2;
    return QLatin1String("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 ") +
           escape(name) +
           QLatin1String(";}}\r\n{\\colortbl ;\\red0\\green0\\blue0;}\r\n"
                         "\\viewkind4\\uc1\\pard\\f0\\fs") +
           QString::number(halfPoints) + QLatin1Char(' ') + rawText +
           QLatin1String("\r\n\\par\r\n}\r\n");
}

QByteArray documentBytes(const QString &rawText, const QString &fontName, int fontSize) {
    return toWindows1252(document(rawText, fontName, fontSize));
}

void writeDocument(const QString &path, const QString &rawText, const QString &fontName,
                   int fontSize) {
    TextFile::writeAtomically(path, documentBytes(rawText, fontName, fontSize));
}

} // namespace RtfWriter

} // namespace tavrel

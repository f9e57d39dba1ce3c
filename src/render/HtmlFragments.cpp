#include "render/HtmlFragments.h"
#include "render/EscapeJoined.h"

#include <cmath>

namespace tavrel {

namespace {

constexpr double TwipsPerInch = 1440;
constexpr double NavigationBarGap = 200; // twips between the last output and the bottom bar

QLatin1String weightWord(bool flag) {
    return flag ? QLatin1String("bolder") : QLatin1String("normal");
}

QLatin1String styleWord(bool italic) {
    return italic ? QLatin1String("italic") : QLatin1String("normal");
}

QLatin1String decorationWord(bool underline) {
    return underline ? QLatin1String("underline") : QLatin1String("none");
}

QString escaped(QStringView data, bool attribute) {
    QString out;
    out.reserve(data.size());
    for (const QChar c : data) {
        switch (c.unicode()) {
        case u'&':
            out += QLatin1String("&amp;");
            break;
        case u'<':
            out += QLatin1String("&lt;");
            break;
        case u'>':
            out += QLatin1String("&gt;");
            break;
        case u'"':
            out += attribute ? QLatin1String("&quot;") : QLatin1String("\"");
            break;
        default:
            out += c;
        }
    }
    return out;
}

// The three font groups both navigation bars share: first and previous, the page counter, next
// and last.
QString navigationFontGroups() {
    return QStringLiteral("<font face=Wingdings size=2 color=#99CCFF><b> "
                          "<a%s style=\"color:#99CCFF\">\u00E7\u00E7</a> "
                          "<a%s style=\"color:#99CCFF\">\u00E7</a> </b></font>"
                          "<font face=Tahoma size=2 color=#99CCFF>|<b>&nbsp;&nbsp;&nbsp;&nbsp;"
                          "Page %d of %d&nbsp;&nbsp;&nbsp;&nbsp;</b>|</font>"
                          "<font face=Wingdings size=2 color=#99CCFF><b> "
                          "<a%s style=\"color:#99CCFF\">\u00E8</a> "
                          "<a%s style=\"color:#99CCFF\">\u00E8\u00E8</a> </b></font>");
}

QString navigationBar(const QString &paragraphStart) {
    return QLatin1String("<!-- navbar beg -->\r\n") + paragraphStart + navigationFontGroups() +
           QLatin1String("</p> \r\n <!-- navbar beg -->\r\n");
}

QString imageStart(double left, double top) {
    return QLatin1String("\r\n<IMG  STYLE=\"Position: Absolute; left: ") +
           HtmlFragments::inches(left) + QLatin1String("in; top: ") + HtmlFragments::inches(top) +
           QLatin1String("in\"");
}

} // namespace

HtmlMarkup HtmlMarkup::fromData(QStringView data) {
    return HtmlMarkup(HtmlFragments::escapeText(data));
}

HtmlMarkup HtmlMarkup::fromJoinedData(QStringView joined, QStringView separator) {
    return HtmlMarkup(escapeJoined(
        joined, separator, [](QStringView piece) { return HtmlFragments::escapeText(piece); }));
}

HtmlMarkup htmlAlignedText(const HtmlMarkup &text) {
    QString html = text.text();
    if (html.contains(QLatin1String("  ")))
        html.replace(QLatin1String("  "), QLatin1String(" &nbsp &nbsp"));
    else
        html.replace(QLatin1Char('\r'), QLatin1String("<Br>"));
    return HtmlMarkup(html);
}

namespace HtmlFragments {

QString inches(double twips) {
    const double value = twips / TwipsPerInch;
    if (value == 0 || !std::isfinite(value))
        return QStringLiteral("0"); // also keeps -0 from printing as "-0"
    QString text = QString::number(value, 'g', 15);
    const qsizetype exponent = text.indexOf(QLatin1Char('e'));
    if (exponent >= 0)
        text[exponent] = QLatin1Char('E');
    return text;
}

QString colorHex(quint32 color) {
    return QString::number(color, 16).toUpper();
}

int fontSizeNumber(int points) {
    switch (points) {
    case 8:
        return 10;
    case 9:
        return 11;
    case 10:
        return 12;
    case 11:
        return 13;
    case 12:
        return 14;
    case 14:
        return 15;
    case 16:
        return 16;
    case 18:
        return 17;
    case 20:
        return 18;
    case 22:
        return 19;
    case 24:
        return 20;
    default:
        return 0;
    }
}

QString alignmentWord(int textAlign) {
    switch (textAlign) {
    case 0:
    case 3:
    case 6:
        return QStringLiteral("left");
    case 1:
    case 4:
    case 7:
        return QStringLiteral("center");
    case 2:
    case 5:
    case 8:
        return QStringLiteral("right");
    default:
        return {};
    }
}

QString escapeText(QStringView data) {
    return escaped(data, false);
}

QString escapeAttribute(QStringView data) {
    return escaped(data, true);
}

QString fontFamily(QStringView fontName) {
    qsizetype end = 0;
    for (; end < fontName.size(); ++end) {
        const QChar c = fontName[end];
        const bool fits = c.isLetterOrNumber() || c == u' ' || c == u'-' || c == u'_' || c == u'.';
        if (!fits)
            break;
    }
    return fontName.left(end).trimmed().toString();
}

QString textParagraph(const HtmlTextFormat &format, double left, double top, double width,
                      const HtmlMarkup &text) {
    QString html;
    html.reserve(400 + text.text().size());
    html += QLatin1String("\r\n<P STYLE=\"Position: Absolute; text-align: ");
    html += alignmentWord(format.textAlign);
    html += QLatin1String("; left:") + inches(left);
    html += QLatin1String("in; top:") + inches(top);
    html += QLatin1String("in; Width: ") + inches(width);
    html += QLatin1String("in; font-size: ") + QString::number(fontSizeNumber(format.fontSize));
    html += QLatin1String("; font-family: ") + fontFamily(format.fontName);
    html += QLatin1String("; font-weight: ") + weightWord(format.weight);
    html += QLatin1String("; font-style: ") + styleWord(format.italic);
    html += QLatin1String("; text-decoration: ") + decorationWord(format.underline);
    html += QLatin1String("; background-color: ") + colorHex(format.brushColor);
    html += QLatin1String("\" >\r\n<font style = \"color: ") + colorHex(format.textColor);
    html += QLatin1String("\" >") + text.text() + QLatin1String("</font> </P>");
    return html;
}

QString picture(const QString &path, double left, double top, HtmlPictureForm form) {
    const QLatin1String ending = form == HtmlPictureForm::Item
                                     ? QLatin1String("\" WIDTH=50 Height=50  /> ")
                                     : QLatin1String("\" HEIGHT=50 WIDTH=50 /> ");
    return imageStart(left, top) + QLatin1String(" SRC=\"") + escapeAttribute(path) + ending;
}

QString statusIcon(const QString &path, double left, double top, HtmlIconForm form) {
    if (form == HtmlIconForm::Compact) {
        return imageStart(left, top) + QLatin1String("SRC=\"") + escapeAttribute(path) +
               QLatin1String("\" WIDTH=15  Height=15 />");
    }
    return imageStart(left, top) + QLatin1String(" SRC=\"") + escapeAttribute(path) +
           QLatin1String("\"  WIDTH=15  Height=15   />");
}

QString horizontalRule(double left, double top) {
    return QLatin1String("<HR STYLE=\" Position: Absolute; left: ") + inches(left) +
           QLatin1String("in; top: ") + inches(top) + QLatin1String("in\" / > \r\n");
}

QString topNavigationBar() {
    return navigationBar(QStringLiteral("<p style=\"background-color:#000099\";>"));
}

QString bottomNavigationBar(double currentY) {
    return navigationBar(QLatin1String("<p style=\"position: absolute; top: ") +
                         inches(currentY + NavigationBarGap) +
                         QLatin1String("in; width: 100%%; background-color: #000099\">"));
}

} // namespace HtmlFragments

} // namespace tavrel

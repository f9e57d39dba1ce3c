#pragma once

#include <QString>
#include <QStringView>

namespace tavrel {

// Text ready to stand between HTML tags: whatever came from data (SIF and order values, template
// notes and captions, file paths) has "&", "<" and ">" written as entities, while markup Tavrel
// writes itself ("<Br>", " <BR> ", " &nbsp &nbsp") stays as it is. Keeping the two apart in a type
// means a specification line holding "<script>" can never reach a page as live markup.
class HtmlMarkup {
public:
    HtmlMarkup() = default;

    static HtmlMarkup fromData(QStringView data);
    // Data whose pieces Tavrel joined with its own separator, such as the " <BR> " between the
    // option note lines: every piece is escaped and the separators are kept.
    static HtmlMarkup fromJoinedData(QStringView joined, QStringView separator);

    const QString &text() const { return m_text; }

private:
    explicit HtmlMarkup(QString text)
        : m_text(std::move(text)) {}
    friend HtmlMarkup htmlAlignedText(const HtmlMarkup &text);

    QString m_text;
};

// The engine's font and colours as they are read back for one text paragraph.
struct HtmlTextFormat {
    int fontSize = 0; // points
    QString fontName;
    // The flag that decides "bolder" / "normal": the underline flag for PrintTextBox, the bold
    // flag for PrintAlignedTextBox. The mix-up is the program's established output and is kept.
    bool weight = false;
    bool italic = false;
    bool underline = false;
    quint32 textColor = 0;
    quint32 brushColor = 16777215;
    int textAlign = 0;
};

// The two endings of a picture element: the pictures of item rows write "WIDTH=50 Height=50";
// the header and footer pictures of the band drawing and the pictures of the cover and summary
// write "HEIGHT=50 WIDTH=50".
enum class HtmlPictureForm { Item, Band };

// The two spellings of a status icon element, differing only in blanks.
enum class HtmlIconForm { Compact, Spaced };

// The PrintAlignedTextBox rewriting: when the text holds two blanks in a row, every "  " becomes
// " &nbsp &nbsp" and carriage returns stay; otherwise every carriage return becomes "<Br>".
// Line feeds are never touched.
HtmlMarkup htmlAlignedText(const HtmlMarkup &text);
inline HtmlMarkup htmlAlignedText(QStringView data) {
    return htmlAlignedText(HtmlMarkup::fromData(data));
}

// The raw HTML pieces the output helpers hand to ExportRaw while an HTML export runs. Every
// fragment is byte for byte the form browsers of the original reports were given; only data
// characters that would break the markup are written as entities.
namespace HtmlFragments {

// Twips as inches: twips / 1440 in the general number form of a BASIC Double converted to text,
// at most 15 significant digits, no trailing zeros, "0." before fractions, "E" exponents only
// below 0.0001 or from 1E15 on, "." as decimal point whatever the locale. 720 twips -> "0.5",
// 500 -> "0.347222222222222".
QString inches(double twips);

// An engine colour number in upper-case hexadecimal without leading zeros or "#". The number
// holds red in its low byte, so the digits read blue-green-red; deliberate, kept byte for byte.
QString colorHex(quint32 color);

// The font-size number for a point size: 8..24 map to 10..20 by the fixed table, any other size
// to 0 (a 13-point text is written with size 0).
int fontSizeNumber(int points);

// "left" for 0, 3, 6; "center" for 1, 4, 7; "right" for 2, 5, 8; "" for any other code.
QString alignmentWord(int textAlign);

// "&", "<", ">" as entities, for text between tags.
QString escapeText(QStringView data);
// The same plus '"' as "&quot;", for attribute values.
QString escapeAttribute(QStringView data);

// A font name as the paragraph's font-family value can hold it: the name up to the first
// character that no family name has (";", ":", quotes, brackets, "/", "\\" and the like), blanks
// trimmed. A template is a file users exchange, and its font name must never end the
// declaration and start one of its own. "Arial; background-image: url(x)" gives "Arial".
QString fontFamily(QStringView fontName);

// A positioned paragraph (PrintTextBox, PrintAlignedTextBox); left, top and width in twips.
QString textParagraph(const HtmlTextFormat &format, double left, double top, double width,
                      const HtmlMarkup &text);

// A positioned picture (PrintPicture). Width and height are always 50 whatever the size
// percentage of the printed picture: deliberate, that is the established output.
QString picture(const QString &path, double left, double top,
                HtmlPictureForm form = HtmlPictureForm::Item);

// A positioned status icon of size 15; path names the icon file written for the export.
QString statusIcon(const QString &path, double left, double top,
                   HtmlIconForm form = HtmlIconForm::Compact);

// A separator line as a positioned horizontal rule. Unlike the other fragments it ends with the
// line break instead of starting with one.
QString horizontalRule(double left, double top);

// The navigation bar template copied to the top of every page file. Its four "%s" take the link
// attributes of the first, previous, next and last page, its "%d of %d" the page number and count.
// The "ç" and "è" are the Wingdings arrows left and right.
QString topNavigationBar();

// The bar set while the body's page fields are overlaid, placed 200 twips below currentY (the
// engine's CurrentY at that point). Its "100%%" is doubled for the template filling.
QString bottomNavigationBar(double currentY);

} // namespace HtmlFragments

} // namespace tavrel

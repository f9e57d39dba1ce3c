#pragma once

#include "render/DisplayList.h"
#include "render/FontTable.h"
#include "render/PageAnchors.h"
#include "render/PictureCache.h"
#include "render/TextLayout.h"

#include <QHash>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tavrel {

struct PageBatch;

// Where FindText found a text: the page, the rectangle (twips) around the match, and which
// match of that page it is (0 for the first, in the order the page was drawn).
struct TextMatch {
    int page = 0;
    QRectF rect;
    int indexOnPage = 0;
};

// The page-drawing engine every report goes through. It keeps the members of the print engine
// the renderers were written against, under the same names (getters carry the member's name,
// setters put "set" in front), and records each page as a display list in twips that the
// backends (PDF, printer, PNG, preview) replay.
//
// Everything is measured from the page's top-left corner; margins are only stored for the
// renderers to read, and for Paragraph's flow. Drawing outside an open document or overlay,
// and out-of-range page numbers, throw RuntimeError 5.
class PageEngine {
public:
    using NewPageListener = std::function<void(int pageNumber)>;
    // Receives every member call ("NewPage", "PageCount", "FontName=" for a property set, ...);
    // tests use it to check call sequences.
    using CallTrace = std::function<void(const char *member)>;

    static constexpr double LetterWidth = 12240;
    static constexpr double LetterHeight = 15840;
    // Page numbers are 16-bit integers; NewPage past this many pages throws RuntimeError 6.
    static constexpr int MaxPageCount = 32767;

    PageEngine();
    ~PageEngine();
    PageEngine(const PageEngine &) = delete;
    PageEngine &operator=(const PageEngine &) = delete;

    // Document
    void Clear();
    void setDocName(const QString &name);
    QString DocName() const;
    void setHeader(const QString &header);
    QString Header() const;
    void setOrientation(int orientation); // 0 portrait, 1 landscape
    int Orientation() const;
    // The paper of the current printer, portrait (twips); Letter unless set.
    void setPaperSize(double width, double height);
    double PageWidth() const;
    double PageHeight() const;
    void setMarginLeft(double twips);
    void setMarginRight(double twips);
    void setMarginTop(double twips);
    void setMarginBottom(double twips);
    double MarginLeft() const;
    double MarginRight() const;
    double MarginTop() const;
    double MarginBottom() const;
    void StartDoc();
    void EndDoc();
    // Ends the current page and starts the next one, then raises the new-page notification.
    // Throws RuntimeError 6 (overflow) instead of starting page MaxPageCount + 1.
    void NewPage();
    int PageCount() const;
    int PreviewPage() const;
    void setPreviewPage(int page);
    void StartOverlay(int page);
    void EndOverlay();
    bool isDocumentOpen() const { return m_documentOpen; }

    // Positions and measuring
    double CurrentY() const;
    void setCurrentY(double twips);
    // Measures text in the current font over the paragraph width (the page between the
    // margins) or the given width, and keeps the height for TextHeight; draws nothing.
    void CalcParagraph(const QString &text);
    void CalcParagraph(const QString &text, double width);
    double TextHeight() const;
    // Width of the widest line of text in the current font, unwrapped.
    double TextWidth(const QString &text);
    // Flows text at the left margin and CurrentY over the paragraph width; CurrentY moves
    // below it.
    void Paragraph(const QString &text);
    // Text in a box: wrapped to the width when wrap is set; a height of 0 grows the box to fit;
    // with calcOnly only measures (TextHeight); with shade the box is filled with the brush
    // first. CurrentY becomes the bottom of the text. A text longer than the paper can show
    // is laid out and kept only as far as it can show (visiblePart); so it is measured too.
    void TextBox(const QString &text, double left, double top, double width, double height,
                 bool wrap = true, bool calcOnly = false, bool shade = true);

    // Font state
    void setFontName(const QString &name);
    void setFontSize(int points);
    void setFontBold(bool bold);
    void setFontItalic(bool italic);
    void setFontUnderline(bool underline);
    QString FontName() const;
    int FontSize() const;
    bool FontBold() const;
    bool FontItalic() const;
    bool FontUnderline() const;

    // Drawing state
    void setTextAlign(int code); // 0,3,6 left; 1,4,7 centre; 2,5,8 right
    int TextAlign() const;
    void setTextColor(ColorNumber color);
    ColorNumber TextColor() const;
    void setBrushColor(ColorNumber color);
    ColorNumber BrushColor() const;
    void setBrushStyle(int style);
    int BrushStyle() const;
    void setPenColor(ColorNumber color);
    ColorNumber PenColor() const;
    void setPenStyle(int style);
    int PenStyle() const;
    void setPenWidth(double twips); // 0 is the thinnest line the device draws
    double PenWidth() const;

    void DrawLine(double x1, double y1, double x2, double y2);
    void DrawRectangle(double left, double top, double right, double bottom);
    // Width and height are size arguments: "75%" of the picture's natural size, or twips.
    // Throws RuntimeError 53 for a missing file and 481 for a file that is not a picture.
    void DrawPicture(const QString &path, double left, double top, const QString &width,
                     const QString &height);

    // Export hooks: while ExportFile is not empty, ExportRaw appends raw text to the page
    // being drawn. The HTML and RTF writers read it back per page.
    void setExportFile(const QString &path);
    QString ExportFile() const;
    void setExportFormat(int format);
    int ExportFormat() const;
    // Bar 0 goes to the top of every page file; bar 1, set while a page is drawn or overlaid,
    // is remembered for that page and goes below its fragments (pageNavBar).
    void setExportNavBar(int index, const QString &text);
    QString ExportNavBar(int index) const;
    void ExportRaw(const QString &text);
    // The bottom bar set while page (1-based) was drawn or overlaid during an export; "" if none.
    QString pageNavBar(int page) const;

    // Searches the pages from fromPage onwards for text, every occurrence of every line in the
    // order the page was drawn; the first skipOnFromPage matches of fromPage are passed over
    // (Find again goes on after the match it showed).
    std::optional<TextMatch> FindText(const QString &text, int fromPage, bool caseSensitive = false,
                                      int skipOnFromPage = 0) const;

    // Notifications and tracing
    int addNewPageListener(NewPageListener listener);
    void removeNewPageListener(int id);
    void setCallTrace(CallTrace trace) { m_trace = std::move(trace); }

    // Puts pages another engine laid out into this document at their numbers, with the fonts and
    // pictures they use (PageHandover.cpp): the preview's document taking what a layout thread
    // published. A batch of a shorter document drops the pages beyond it.
    void adoptPages(PageBatch batch);

    // Navigation: a named place at y on the page being drawn (PageAnchors.h), and the document
    // information the PDF gets; cleared with the document.
    void addAnchor(const QString &title, int level, double y);
    DocumentNavigation &navigation() { return m_navigation; }
    const DocumentNavigation &navigation() const { return m_navigation; }

    // The recorded document, for the backends.
    const Page &page(int number) const; // 1-based
    const std::vector<Page> &pages() const { return m_pages; }
    const FontTable &fonts() const { return m_fonts; }
    const PictureCache &pictures() const { return m_pictures; }

private:
    struct MeasureKey {
        QString text;
        int font;
        double width;
        bool wrap;
        friend bool operator==(const MeasureKey &, const MeasureKey &) = default;
    };
    friend size_t qHash(const MeasureKey &key, size_t seed);

    void trace(const char *member) const {
        if (m_trace)
            m_trace(member);
    }
    Page &target(); // the page drawing goes to; throws when none
    void addPage();
    int currentFont();
    void fontChanged() { m_fontIndex = -1; }
    const LaidOutText &measure(const QString &text, double width, bool wrap);
    // The part of text that can show on the paper in a box of this width (TextLayout).
    QString visibleText(const QString &text, int font, double width, bool wrap) const;
    double paragraphWidth() const;

    std::vector<Page> m_pages;
    FontTable m_fonts;
    PictureCache m_pictures;
    QHash<MeasureKey, LaidOutText> m_measured; // recent layouts, so measure-then-draw lays out once

    QString m_docName;
    QString m_header;
    int m_orientation = 0;
    double m_paperWidth = LetterWidth;
    double m_paperHeight = LetterHeight;
    double m_marginLeft = 0;
    double m_marginRight = 0;
    double m_marginTop = 0;
    double m_marginBottom = 0;
    bool m_documentOpen = false;
    int m_currentPage = 0; // 1-based page being laid out, 0 when none
    int m_overlayPage = 0; // 1-based page reopened by StartOverlay, 0 when none
    int m_previewPage = 0;
    double m_currentY = 0;
    double m_textHeight = 0;

    FontSpec m_font{QStringLiteral("Arial"), 8, false, false, false};
    int m_fontIndex = -1;
    int m_textAlign = 0;
    ColorNumber m_textColor = BlackColor;
    ColorNumber m_brushColor = WhiteColor;
    int m_brushStyle = BrushStyles::Solid;
    ColorNumber m_penColor = BlackColor;
    int m_penStyle = PenStyles::Solid;
    double m_penWidth = 0;

    QString m_exportFile;
    int m_exportFormat = 0;
    QString m_navBars[2];
    QHash<int, QString> m_pageNavBars; // page -> bottom bar of an export

    std::vector<std::pair<int, NewPageListener>> m_newPageListeners;
    int m_nextListenerId = 1;
    CallTrace m_trace;
    DocumentNavigation m_navigation;
};

} // namespace tavrel

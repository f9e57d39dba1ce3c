#include "render/PageEngine.h"

#include "base/RuntimeError.h"

#include <QHashFunctions>

#include <algorithm>
#include <iterator>

namespace tavrel {

namespace {

// Measurements kept for a following TextBox; renderers measure a row's cells and then draw
// them, so a small window is enough.
constexpr qsizetype MeasureCacheLimit = 512;

[[noreturn]] void invalidCall() {
    throw RuntimeError(ErrorNumber::InvalidProcedureCall);
}

// Vertical offset of the text inside a box of the given height for an alignment code:
// 0-2 top, 3-5 bottom, 6-8 middle; other codes top.
double verticalOffset(int align, double boxHeight, double textHeight) {
    if (boxHeight <= 0 || align < 0 || align > 8)
        return 0;
    switch (align / 3) {
    case 1:
        return boxHeight - textHeight;
    case 2:
        return (boxHeight - textHeight) / 2;
    default:
        return 0;
    }
}

} // namespace

size_t qHash(const PageEngine::MeasureKey &key, size_t seed) {
    return qHashMulti(seed, key.text, key.font, key.width, key.wrap);
}

PageEngine::PageEngine() = default;
PageEngine::~PageEngine() = default;

// ---- document -------------------------------------------------------------------------------

void PageEngine::Clear() {
    trace("Clear");
    m_pages.clear();
    m_fonts.clear();
    m_pictures.clear();
    m_measured.clear();
    m_pageNavBars.clear();
    // The author and subject are the job's, set before it lays out; the anchors are the layout's.
    m_navigation.anchors.clear();
    m_fontIndex = -1;
    m_documentOpen = false;
    m_currentPage = 0;
    m_overlayPage = 0;
    m_previewPage = 0;
    m_currentY = 0;
    m_textHeight = 0;
}

void PageEngine::addAnchor(const QString &title, int level, double y) {
    m_navigation.anchors.push_back(
        {title, level, m_overlayPage ? m_overlayPage : m_currentPage, y});
}

void PageEngine::setDocName(const QString &name) {
    trace("DocName=");
    m_docName = name;
}

QString PageEngine::DocName() const {
    trace("DocName");
    return m_docName;
}

void PageEngine::setHeader(const QString &header) {
    trace("Header=");
    m_header = header;
}

QString PageEngine::Header() const {
    trace("Header");
    return m_header;
}

void PageEngine::setOrientation(int orientation) {
    trace("Orientation=");
    if (orientation != 0 && orientation != 1)
        invalidCall();
    m_orientation = orientation;
}

int PageEngine::Orientation() const {
    trace("Orientation");
    return m_orientation;
}

void PageEngine::setPaperSize(double width, double height) {
    if (width <= 0 || height <= 0)
        invalidCall();
    m_paperWidth = width;
    m_paperHeight = height;
}

double PageEngine::PageWidth() const {
    trace("PageWidth");
    return m_orientation == 1 ? m_paperHeight : m_paperWidth;
}

double PageEngine::PageHeight() const {
    trace("PageHeight");
    return m_orientation == 1 ? m_paperWidth : m_paperHeight;
}

void PageEngine::setMarginLeft(double twips) {
    trace("MarginLeft=");
    m_marginLeft = twips;
}

void PageEngine::setMarginRight(double twips) {
    trace("MarginRight=");
    m_marginRight = twips;
}

void PageEngine::setMarginTop(double twips) {
    trace("MarginTop=");
    m_marginTop = twips;
}

void PageEngine::setMarginBottom(double twips) {
    trace("MarginBottom=");
    m_marginBottom = twips;
}

double PageEngine::MarginLeft() const {
    trace("MarginLeft");
    return m_marginLeft;
}

double PageEngine::MarginRight() const {
    trace("MarginRight");
    return m_marginRight;
}

double PageEngine::MarginTop() const {
    trace("MarginTop");
    return m_marginTop;
}

double PageEngine::MarginBottom() const {
    trace("MarginBottom");
    return m_marginBottom;
}

void PageEngine::StartDoc() {
    trace("StartDoc");
    m_pages.clear();
    m_measured.clear();
    m_overlayPage = 0;
    m_documentOpen = true;
    addPage();
}

void PageEngine::EndDoc() {
    trace("EndDoc");
    if (!m_documentOpen)
        invalidCall();
    if (m_overlayPage != 0)
        invalidCall();
    m_documentOpen = false;
    m_currentPage = 0;
}

void PageEngine::addPage() {
    // Pages of one report hold about as many items as the page before, so a new page gets room
    // for that many at once instead of growing by doubling, and a page that did grow gives back
    // its unused room when it ends: a big job keeps thousands of pages. A few places stay
    // free for what the page-field pass draws on top.
    constexpr std::size_t OverlayRoom = 4;
    constexpr std::size_t GrowthRoom = 16;
    Page page;
    if (!m_pages.empty()) {
        DisplayItems &last = m_pages.back().items;
        last.trim(OverlayRoom);
        page.items.reserveLike(last, GrowthRoom);
    }
    page.landscape = m_orientation == 1;
    page.width = page.landscape ? m_paperHeight : m_paperWidth;
    page.height = page.landscape ? m_paperWidth : m_paperHeight;
    m_pages.push_back(std::move(page));
    m_currentPage = int(m_pages.size());
    m_previewPage = m_currentPage;
    m_currentY = m_marginTop;
}

void PageEngine::NewPage() {
    trace("NewPage");
    if (!m_documentOpen || m_overlayPage != 0)
        invalidCall();
    // Page numbers are 16-bit: stop at the first page past the limit, not after laying out
    // thousands more.
    if (m_pages.size() >= std::size_t(MaxPageCount))
        throw RuntimeError(ErrorNumber::Overflow);
    addPage();
    // Copy: a listener may subscribe or unsubscribe while being called.
    const auto listeners = m_newPageListeners;
    for (const auto &[id, listener] : listeners)
        listener(m_currentPage);
}

int PageEngine::PageCount() const {
    trace("PageCount");
    return int(m_pages.size());
}

int PageEngine::PreviewPage() const {
    trace("PreviewPage");
    return m_previewPage;
}

void PageEngine::setPreviewPage(int page) {
    trace("PreviewPage=");
    if (page < 1 || page > int(m_pages.size()))
        invalidCall();
    m_previewPage = page;
}

void PageEngine::StartOverlay(int page) {
    trace("StartOverlay");
    if (page < 1 || page > int(m_pages.size()) || m_overlayPage != 0)
        invalidCall();
    m_overlayPage = page;
}

void PageEngine::EndOverlay() {
    trace("EndOverlay");
    if (m_overlayPage == 0)
        invalidCall();
    m_overlayPage = 0;
}

Page &PageEngine::target() {
    const int number = m_overlayPage != 0 ? m_overlayPage : m_currentPage;
    if (number == 0)
        invalidCall();
    return m_pages[std::size_t(number - 1)];
}

const Page &PageEngine::page(int number) const {
    if (number < 1 || number > int(m_pages.size()))
        invalidCall();
    return m_pages[std::size_t(number - 1)];
}

// ---- text -----------------------------------------------------------------------------------

double PageEngine::CurrentY() const {
    trace("CurrentY");
    return m_currentY;
}

void PageEngine::setCurrentY(double twips) {
    trace("CurrentY=");
    m_currentY = twips;
}

int PageEngine::currentFont() {
    if (m_fontIndex < 0)
        m_fontIndex = m_fonts.indexOf(m_font);
    return m_fontIndex;
}

QString PageEngine::visibleText(const QString &text, int font, double width, bool wrap) const {
    return visiblePart(text, m_fonts.at(font), width, wrap, std::max(m_paperWidth, m_paperHeight));
}

const LaidOutText &PageEngine::measure(const QString &text, double width, bool wrap) {
    const int font = currentFont();
    if (m_measured.size() >= MeasureCacheLimit)
        m_measured.clear();
    MeasureKey key{visibleText(text, font, width, wrap), font, width, wrap};
    auto found = m_measured.find(key);
    if (found == m_measured.end())
        found = m_measured.insert(key, layoutText(key.text, m_fonts.at(font), width, wrap));
    return found.value();
}

double PageEngine::paragraphWidth() const {
    return (m_orientation == 1 ? m_paperHeight : m_paperWidth) - m_marginLeft - m_marginRight;
}

void PageEngine::CalcParagraph(const QString &text) {
    trace("CalcParagraph=");
    m_textHeight = measure(text, paragraphWidth(), true).height;
}

void PageEngine::CalcParagraph(const QString &text, double width) {
    trace("CalcParagraph=");
    m_textHeight = measure(text, width, true).height;
}

double PageEngine::TextHeight() const {
    trace("TextHeight");
    return m_textHeight;
}

double PageEngine::TextWidth(const QString &text) {
    trace("TextWidth");
    const int font = currentFont();
    return layoutText(visibleText(text, font, 0, false), m_fonts.at(font), 0, false).width;
}

void PageEngine::Paragraph(const QString &text) {
    trace("Paragraph=");
    TextBox(text, m_marginLeft, m_currentY, paragraphWidth(), 0, true, false, false);
}

void PageEngine::TextBox(const QString &wholeText, double left, double top, double width,
                         double height, bool wrap, bool calcOnly, bool shade) {
    trace("TextBox");
    const int font = currentFont();
    // Only what can show on paper is laid out and kept.
    const QString text = visibleText(wholeText, font, width, wrap);
    LaidOutText laid;
    if (!m_measured.isEmpty()) {
        // Drawing what was just measured: take the kept layout instead of laying out again.
        const MeasureKey key{text, font, width, wrap};
        const auto found = m_measured.find(key);
        if (found != m_measured.end()) {
            laid = calcOnly ? found.value() : std::move(found.value());
            if (!calcOnly)
                m_measured.erase(found);
        } else {
            laid = layoutText(text, m_fonts.at(font), width, wrap);
        }
    } else {
        laid = layoutText(text, m_fonts.at(font), width, wrap);
    }
    m_textHeight = laid.height;
    if (calcOnly)
        return;

    Page &page = target();
    TextItem item;
    item.x = left;
    item.y = top;
    item.width = width;
    item.height = height > 0 ? height : laid.height;
    item.textTop = top + verticalOffset(m_textAlign, height, laid.height);
    item.text = text;
    item.lines = std::move(laid.lines);
    item.font = font;
    item.align = m_textAlign;
    item.color = m_textColor;
    if (shade && m_brushStyle == BrushStyles::Solid)
        item.background = m_brushColor;
    m_currentY = item.textTop + laid.height;
    if (!item.lines.empty() || item.background >= 0)
        page.items.push_back(std::move(item));
}

// ---- font state -----------------------------------------------------------------------------

void PageEngine::setFontName(const QString &name) {
    trace("FontName=");
    m_font.name = name;
    fontChanged();
}

void PageEngine::setFontSize(int points) {
    trace("FontSize=");
    m_font.size = points;
    fontChanged();
}

void PageEngine::setFontBold(bool bold) {
    trace("FontBold=");
    m_font.bold = bold;
    fontChanged();
}

void PageEngine::setFontItalic(bool italic) {
    trace("FontItalic=");
    m_font.italic = italic;
    fontChanged();
}

void PageEngine::setFontUnderline(bool underline) {
    trace("FontUnderline=");
    m_font.underline = underline;
    fontChanged();
}

QString PageEngine::FontName() const {
    trace("FontName");
    return m_font.name;
}

int PageEngine::FontSize() const {
    trace("FontSize");
    return m_font.size;
}

bool PageEngine::FontBold() const {
    trace("FontBold");
    return m_font.bold;
}

bool PageEngine::FontItalic() const {
    trace("FontItalic");
    return m_font.italic;
}

bool PageEngine::FontUnderline() const {
    trace("FontUnderline");
    return m_font.underline;
}

// ---- drawing state and shapes ---------------------------------------------------------------

void PageEngine::setTextAlign(int code) {
    trace("TextAlign=");
    m_textAlign = code;
}

int PageEngine::TextAlign() const {
    trace("TextAlign");
    return m_textAlign;
}

void PageEngine::setTextColor(ColorNumber color) {
    trace("TextColor=");
    m_textColor = color & 0xFFFFFF;
}

ColorNumber PageEngine::TextColor() const {
    trace("TextColor");
    return m_textColor;
}

void PageEngine::setBrushColor(ColorNumber color) {
    trace("BrushColor=");
    m_brushColor = color & 0xFFFFFF;
}

ColorNumber PageEngine::BrushColor() const {
    trace("BrushColor");
    return m_brushColor;
}

void PageEngine::setBrushStyle(int style) {
    trace("BrushStyle=");
    m_brushStyle = style;
}

int PageEngine::BrushStyle() const {
    trace("BrushStyle");
    return m_brushStyle;
}

void PageEngine::setPenColor(ColorNumber color) {
    trace("PenColor=");
    m_penColor = color & 0xFFFFFF;
}

ColorNumber PageEngine::PenColor() const {
    trace("PenColor");
    return m_penColor;
}

void PageEngine::setPenStyle(int style) {
    trace("PenStyle=");
    m_penStyle = style;
}

int PageEngine::PenStyle() const {
    trace("PenStyle");
    return m_penStyle;
}

void PageEngine::setPenWidth(double twips) {
    trace("PenWidth=");
    m_penWidth = std::max(0.0, twips);
}

double PageEngine::PenWidth() const {
    trace("PenWidth");
    return m_penWidth;
}

void PageEngine::DrawLine(double x1, double y1, double x2, double y2) {
    trace("DrawLine");
    target().items.push_back(LineItem{x1, y1, x2, y2, m_penColor, m_penStyle, m_penWidth});
}

void PageEngine::DrawRectangle(double left, double top, double right, double bottom) {
    trace("DrawRectangle");
    target().items.push_back(RectItem{left, top, right, bottom, m_penColor, m_penStyle, m_penWidth,
                                      m_brushColor, m_brushStyle});
}

void PageEngine::DrawPicture(const QString &path, double left, double top, const QString &width,
                             const QString &height) {
    trace("DrawPicture");
    Page &page = target();
    const PictureCache::Picture &picture = m_pictures.load(path);
    const double w = PictureCache::scaledExtent(width, picture.naturalSize.width());
    const double h = PictureCache::scaledExtent(height, picture.naturalSize.height());
    page.items.push_back(PictureItem{path, left, top, w, h});
}

// ---- export hooks ---------------------------------------------------------------------------

void PageEngine::setExportFile(const QString &path) {
    trace("ExportFile=");
    m_exportFile = path;
}

QString PageEngine::ExportFile() const {
    trace("ExportFile");
    return m_exportFile;
}

void PageEngine::setExportFormat(int format) {
    trace("ExportFormat=");
    m_exportFormat = format;
}

int PageEngine::ExportFormat() const {
    trace("ExportFormat");
    return m_exportFormat;
}

void PageEngine::setExportNavBar(int index, const QString &text) {
    trace("ExportNavBar=");
    if (index < 0 || index > 1)
        invalidCall();
    m_navBars[index] = text;
    const int page = m_overlayPage != 0 ? m_overlayPage : m_currentPage;
    if (index == 1 && page != 0 && !m_exportFile.isEmpty())
        m_pageNavBars.insert(page, text);
}

QString PageEngine::ExportNavBar(int index) const {
    trace("ExportNavBar");
    if (index < 0 || index > 1)
        invalidCall();
    return m_navBars[index];
}

void PageEngine::ExportRaw(const QString &text) {
    trace("ExportRaw=");
    if (m_exportFile.isEmpty())
        return;
    target().exportRaw += text;
}

QString PageEngine::pageNavBar(int page) const {
    return m_pageNavBars.value(page);
}

// ---- notifications --------------------------------------------------------------------------

int PageEngine::addNewPageListener(NewPageListener listener) {
    const int id = m_nextListenerId++;
    m_newPageListeners.emplace_back(id, std::move(listener));
    return id;
}

void PageEngine::removeNewPageListener(int id) {
    std::erase_if(m_newPageListeners, [id](const auto &entry) { return entry.first == id; });
}

} // namespace tavrel

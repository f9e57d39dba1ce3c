#include "render/ExportFiles.h"

#include "render/HtmlPageSet.h"
#include "render/PageEngine.h"
#include "render/RtfWriter.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <variant>
#include <vector>

namespace tavrel {

namespace {

constexpr double TwipsPerInch = 1440;
constexpr double ThinnestRule = 15; // twips: one pixel on a 96 dpi screen

QString cssInches(double twips) {
    return QString::number(twips / TwipsPerInch, 'f', 4) + QLatin1String("in");
}

QString cssColor(ColorNumber color) {
    // The engine's colour numbers hold red in the low byte.
    return QStringLiteral("#%1%2%3")
        .arg(color & 0xFF, 2, 16, QLatin1Char('0'))
        .arg((color >> 8) & 0xFF, 2, 16, QLatin1Char('0'))
        .arg((color >> 16) & 0xFF, 2, 16, QLatin1Char('0'));
}

// The horizontal rule fragments carry only where a line starts, and a browser draws such a rule
// as a dot. The page frame is ours, so each rule gets its size and colour there, taken from the
// line drawn at that place: the k-th rule of the page is "hr:nth-of-type(k)". A rule without a
// drawn line keeps the browser's look. Rules lie above the text paragraphs, whose white
// backgrounds would otherwise hide them where the printed page leaves white boxes unfilled.
QString ruleStyles(const Page &page) {
    static const QRegularExpression rule(
        QStringLiteral("<HR STYLE=\" Position: Absolute; left: ([^i\"]*)in; top: ([^i\"]*)in\""));
    std::vector<LineItem> lines;
    for (const PageItem &item : page.items) {
        if (const auto *line = std::get_if<LineItem>(&item))
            lines.push_back(*line);
    }
    QString rules;
    int number = 0;
    QRegularExpressionMatchIterator it = rule.globalMatch(page.exportRaw);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        ++number;
        const double left = match.captured(1).toDouble() * TwipsPerInch;
        const double top = match.captured(2).toDouble() * TwipsPerInch;
        for (auto candidate = lines.begin(); candidate != lines.end(); ++candidate) {
            const LineItem &line = *candidate;
            const double pen = std::max(line.penWidth, ThinnestRule);
            const double x = std::min(line.x1, line.x2);
            const double y = std::min(line.y1, line.y2);
            const double width = std::abs(line.x2 - line.x1);
            const double height = std::abs(line.y2 - line.y1);
            // A line starts at the rule's place: at its left, and at its top or within the pen's
            // width below it (a bar drawn through its middle), or across it (a vertical bar).
            const bool across = width < height;
            const bool starts =
                across ? std::abs(y - top) < 1 && x >= left - 1 && x <= left + pen + 1
                       : std::abs(x - left) < 1 && y >= top - pen && y <= top + pen + 1;
            if (!starts)
                continue;
            const double boxLeft = across ? x - pen / 2 : x;
            const double boxTop = across ? y : y - pen / 2;
            rules +=
                QStringLiteral("hr:nth-of-type(%1){margin:%2 0 0 %3;width:%4;height:%5;"
                               "border:0;padding:0;background-color:%6;color:%6;z-index:1}\r\n")
                    .arg(number)
                    .arg(cssInches(boxTop - top), cssInches(boxLeft - left),
                         cssInches(across ? pen : width), cssInches(across ? height : pen),
                         cssColor(line.color));
            lines.erase(candidate);
            break;
        }
    }
    return rules;
}

} // namespace

namespace ExportFiles {

QStringList writeHtml(const PageEngine &engine) {
    HtmlPageSet pages(engine.ExportFile());
    pages.setTopBar(engine.ExportNavBar(0));
    const int count = int(engine.pages().size());
    for (int number = 1; number <= count; ++number) {
        pages.addPage();
        pages.append(engine.page(number).exportRaw);
        const QString rules = ruleStyles(engine.page(number));
        if (!rules.isEmpty())
            pages.setPageStyle(number, rules);
        const QString bottomBar = engine.pageNavBar(number);
        if (!bottomBar.isEmpty())
            pages.setBottomBar(number, bottomBar);
    }
    return pages.write();
}

void writeRtf(const PageEngine &engine, const QString &fontName, int fontSize) {
    QString raw;
    for (const Page &page : engine.pages())
        raw += page.exportRaw;
    RtfWriter::writeDocument(engine.ExportFile(), raw, fontName, fontSize);
}

QString firstHtmlPage(const QString &exportFile, int pageCount) {
    HtmlPageSet pages(exportFile);
    for (int number = 0; number < pageCount; ++number)
        pages.addPage();
    return pages.filePath(1);
}

} // namespace ExportFiles

} // namespace tavrel

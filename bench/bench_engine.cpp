// The page engine against the Qt floor of the comparison harness (bench/README in the shared
// harness): the same item listing, drawn through PageEngine and written as PDF.
//
//   QT_QPA_PLATFORM=offscreen bench_engine items_N.sif out.pdf
//
// The report mirrors qtfloor/main.cpp box for box: Letter page, 36 pt margins, title and date,
// bold caption row with a rule, 8 columns in Liberation Sans 8 pt with 2/1.5 pt padding, option
// lines under each item, a grey rule under each block, blocks never split, totals at the end
// and "Page n of m" centred in the footer. The footers go in through the page-field pass
// (StartOverlay after EndDoc), as the print job draws them. Figures go to standard error; they
// are printed, never checked.
#include "render/FontTable.h"
#include "render/PageEngine.h"
#include "render/PdfOutput.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tavrel;

namespace {

// Layout constants of the harness, in points; the engine works in twips (20 per point).
constexpr double S = 20;
constexpr double PageW = 612, PageH = 792, Margin = 36;
constexpr double PadX = 2, PadY = 1.5, OptPadY = 0.5, OptIndent = 8;
constexpr double ColW[8] = {80, 150, 40, 35, 55, 60, 55, 65};
constexpr bool ColRight[8] = {false, false, false, true, true, true, true, true};
const char *const Captions[8] = {"Part Number", "Description", "Mfr",  "Qty",
                                 "List",        "Ext List",    "Sell", "Ext Sell"};
constexpr double HeaderTop = Margin, CaptionTop = 58, BodyTop = 72;
constexpr double BodyBottom = PageH - Margin - 16, FooterBaseline = PageH - Margin - 4;
constexpr ColorNumber Grey = 0x999999;

struct Item {
    QString cell[8];
    std::vector<std::pair<QString, QString>> options;
};

qint64 cents(const QString &text) {
    const qsizetype dot = text.indexOf(QLatin1Char('.'));
    if (dot < 0)
        return text.toLongLong() * 100;
    const QString fraction = (text.mid(dot + 1) + QStringLiteral("00")).left(2);
    return text.left(dot).toLongLong() * 100 + fraction.toLongLong();
}

QString money(qint64 amount) {
    QString whole = QString::number(amount / 100);
    for (qsizetype p = whole.size() - 3; p > 0; p -= 3)
        whole.insert(p, QLatin1Char(','));
    return whole + QLatin1Char('.') +
           QString::number(amount % 100).rightJustified(2, QLatin1Char('0'));
}

// The harness's SIF subset: an item begins at each PN= line; ON=/OD= lines pair up in order.
bool load(const QString &path, std::vector<Item> &items, qint64 &totalList, qint64 &totalSell) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray all = file.readAll();
    totalList = totalSell = 0;
    qint64 quantity = 0, list = 0, sell = 0;
    bool open = false;
    std::vector<QString> codes, descriptions;
    auto close = [&] {
        if (!open)
            return;
        Item &item = items.back();
        for (std::size_t k = 0; k < codes.size() || k < descriptions.size(); ++k)
            item.options.emplace_back(k < codes.size() ? codes[k] : QString(),
                                      k < descriptions.size() ? descriptions[k] : QString());
        item.cell[3] = QString::number(quantity);
        item.cell[4] = money(list);
        item.cell[5] = money(quantity * list);
        item.cell[6] = money(sell);
        item.cell[7] = money(quantity * sell);
        totalList += quantity * list;
        totalSell += quantity * sell;
        codes.clear();
        descriptions.clear();
    };
    for (QByteArray line : all.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.size() < 3)
            continue;
        const QByteArray tag = line.left(3);
        const QString value = QString::fromUtf8(line.constData() + 3, line.size() - 3);
        if (tag == "PN=") {
            close();
            items.emplace_back();
            items.back().cell[0] = value.toUpper();
            quantity = list = sell = 0;
            open = true;
        } else if (!open) {
            continue;
        } else if (tag == "PD=") {
            items.back().cell[1] = value;
        } else if (tag == "MC=") {
            items.back().cell[2] = value;
        } else if (tag == "QT=") {
            quantity = qint64(value.toDouble());
        } else if (tag == "PL=") {
            list = cents(value);
        } else if (tag == "SP=") {
            sell = cents(value);
        } else if (tag == "ON=") {
            codes.push_back(value);
        } else if (tag == "OD=") {
            descriptions.push_back(value);
        }
    }
    close();
    return true;
}

class ListingReport {
public:
    explicit ListingReport(PageEngine &engine)
        : m_engine(engine) {
        double x = Margin;
        for (int i = 0; i < 8; ++i) {
            m_colX[i] = x;
            x += ColW[i];
        }
        const QFontMetricsF regular(FontTable::makeFont({QStringLiteral("Liberation Sans"), 8}));
        const QFontMetricsF title(
            FontTable::makeFont({QStringLiteral("Liberation Sans"), 14, true}));
        m_ascent = regular.ascent();
        m_titleAscent = title.ascent();
        m_lineSpacing = regular.lineSpacing();
    }

    void setFont(int size, bool bold) {
        m_engine.setFontSize(size);
        m_engine.setFontBold(bold);
    }

    // A text box without shading, as the floor draws its texts.
    void text(const QString &text, double left, double top, double width, int align) {
        m_engine.setTextAlign(align);
        m_engine.TextBox(text, left, top, width, 0, true, false, false);
    }

    void cell(int column, const QString &value, double top) {
        text(value, (m_colX[column] + PadX) * S, top, (ColW[column] - 2 * PadX) * S,
             ColRight[column] ? 2 : 0);
    }

    void rule(double y, double width, ColorNumber color) {
        m_engine.setPenWidth(width);
        m_engine.setPenColor(color);
        m_engine.DrawLine(Margin * S, y, (PageW - Margin) * S, y);
    }

    void pageHeader() {
        setFont(14, true);
        text(QStringLiteral("Furniture Specification Report"), Margin * S,
             (HeaderTop + 13) * S - m_titleAscent, (PageW - 2 * Margin) * S, 0);
        setFont(8, false);
        text(QStringLiteral("Date: 2025-01-15"), Margin * S, (HeaderTop + 13) * S - m_ascent,
             (PageW - 2 * Margin) * S, 2);
        setFont(8, true);
        for (int i = 0; i < 8; ++i)
            cell(i, QString::fromLatin1(Captions[i]), (CaptionTop + PadY) * S);
        rule((CaptionTop + 2 * PadY) * S + m_lineSpacing, 0.5 * S, 0);
        setFont(8, false);
    }

    double measure(const QString &value, double width) {
        m_engine.CalcParagraph(value, width);
        return m_engine.TextHeight();
    }

    void run(const std::vector<Item> &items, qint64 totalList, qint64 totalSell) {
        const double codeLeft = (m_colX[0] + PadX + OptIndent) * S;
        const double codeWidth = (ColW[0] - 2 * PadX - OptIndent) * S;
        const double descriptionLeft = (m_colX[1] + PadX) * S;
        const double descriptionWidth = (ColW[1] + ColW[2] - 2 * PadX) * S;
        m_engine.addNewPageListener([this](int) { pageHeader(); });
        m_engine.StartDoc();
        pageHeader();
        double y = BodyTop * S;
        bool pageEmpty = true;
        std::vector<double> optionHeights;
        for (const Item &item : items) {
            // Measure the block, break the page if it does not fit, then draw it.
            double row = 0;
            for (int i = 0; i < 8; ++i)
                row = std::max(row, measure(item.cell[i], (ColW[i] - 2 * PadX) * S));
            row += 2 * PadY * S;
            double block = row;
            optionHeights.clear();
            for (const auto &[code, description] : item.options) {
                const double height =
                    std::max(measure(code, codeWidth), measure(description, descriptionWidth)) +
                    2 * OptPadY * S;
                optionHeights.push_back(height);
                block += height;
            }
            if (y + block > BodyBottom * S && !pageEmpty) {
                m_engine.NewPage();
                y = BodyTop * S;
            }
            for (int i = 0; i < 8; ++i)
                cell(i, item.cell[i], y + PadY * S);
            double optionTop = y + row;
            for (std::size_t k = 0; k < item.options.size(); ++k) {
                text(item.options[k].first, codeLeft, optionTop + OptPadY * S, codeWidth, 0);
                text(item.options[k].second, descriptionLeft, optionTop + OptPadY * S,
                     descriptionWidth, 0);
                optionTop += optionHeights[k];
            }
            rule(y + block, 0.25 * S, Grey);
            y += block;
            pageEmpty = false;
        }
        const double totalsHeight = m_lineSpacing + 2 * PadY * S;
        if (y + totalsHeight > BodyBottom * S) {
            m_engine.NewPage();
            y = BodyTop * S;
        }
        rule(y, 0.5 * S, 0);
        setFont(8, true);
        const double top = y + PadY * S;
        cell(0, QStringLiteral("Totals: %1 items").arg(items.size()), top);
        text(money(totalList), (m_colX[4] + PadX) * S, top, (ColW[4] + ColW[5] - 2 * PadX) * S, 2);
        text(money(totalSell), (m_colX[6] + PadX) * S, top, (ColW[6] + ColW[7] - 2 * PadX) * S, 2);
        m_engine.EndDoc();

        // The page-field pass: footers once the page count is known.
        setFont(8, false);
        const int count = m_engine.PageCount();
        for (int page = 1; page <= count; ++page) {
            m_engine.StartOverlay(page);
            text(QStringLiteral("Page %1 of %2").arg(page).arg(count), Margin * S,
                 FooterBaseline * S - m_ascent, (PageW - 2 * Margin) * S, 1);
            m_engine.EndOverlay();
        }
    }

private:
    PageEngine &m_engine;
    double m_colX[8] = {};
    double m_ascent = 0;
    double m_titleAscent = 0;
    double m_lineSpacing = 0;
};

long peakRssKb() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: bench_engine items.sif out.pdf\n");
        return 2;
    }
    QElapsedTimer timer;
    timer.start();
    std::vector<Item> items;
    qint64 totalList = 0, totalSell = 0;
    if (!load(args.at(1), items, totalList, totalSell)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(args.at(1)));
        return 1;
    }
    const qint64 loadMs = timer.restart();
    const long afterLoadKb = peakRssKb();

    PageEngine engine;
    engine.setDocName(QStringLiteral("Furniture Specification Report"));
    engine.setFontName(QStringLiteral("Liberation Sans"));
    engine.setFontSize(8);
    ListingReport(engine).run(items, totalList, totalSell);
    const qint64 recordMs = timer.restart();
    const long afterRecordKb = peakRssKb();

    writePdf(engine, args.at(2));
    const qint64 writeMs = timer.elapsed();
    std::fprintf(stderr,
                 "bench_engine: items %zu pages %d; load %.2fs record %.2fs write %.2fs "
                 "total %.2fs; peak RSS after load %ld MB, after record %ld MB, at end %ld MB\n",
                 items.size(), int(engine.pages().size()), loadMs / 1000.0, recordMs / 1000.0,
                 writeMs / 1000.0, (loadMs + recordMs + writeMs) / 1000.0, afterLoadKb / 1024,
                 afterRecordKb / 1024, peakRssKb() / 1024);
    return 0;
}

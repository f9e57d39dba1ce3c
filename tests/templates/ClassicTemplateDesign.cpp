#include "ClassicTemplateDesign.h"

#include "spec/FieldCatalog.h"
#include "templates/TemplateKind.h"
#include "templates/TemplateWriter.h"

#include <QDateTime>
#include <QRect>

using namespace tavrel;

namespace classic {

namespace {

// Twips of the printable width of a Letter page with half-inch margins.
constexpr qint32 Width = 10800;
constexpr qint32 HalfWidth = 5160;
constexpr qint32 RightColumn = 5640;
constexpr qint32 Black = 0;
constexpr qint32 Navy = 31 + 56 * 256 + 100 * 65536; // RGB(31, 56, 100)
constexpr qint32 Gray = 128 + 128 * 256 + 128 * 65536;
constexpr qint32 DarkGray = 64 + 64 * 256 + 64 * 65536;

enum Align : qint32 {
    Left = TextAlign::Left,
    Right = TextAlign::Right,
    Center = TextAlign::Center
};

struct Font {
    qint16 size = 9;
    bool bold = false;
    bool italic = false;
    qint32 color = Black;
};

// Places boxes, lines and rectangles into the next free slots, the way the designer would.
class Builder {
public:
    TemplateLayout layout;

    BoxInfo &field(const QString &caption, const QString &container, QRect geometry, Font font,
                   Align align = Left, qint16 level = 1) {
        const int slot = layout.freeBoxSlot();
        BoxInfo &box = layout.box(slot);
        box.index = qint16(slot);
        box.placed = true;
        box.visible = true;
        box.nameIndex = qint16(FieldCatalog::indexOfCaption(caption));
        box.container = container;
        box.caption = caption;
        box.headerText = BoxInfo::headerTextForCaption(caption);
        box.fontName = QStringLiteral("Arial");
        box.fontSize = font.size;
        box.fontBold = font.bold;
        box.fontItalic = font.italic;
        box.foreColor = font.color;
        box.left = geometry.x();
        box.top = geometry.y();
        box.width = geometry.width();
        box.height = geometry.height();
        box.backColor = WhiteColor;
        box.level = level;
        box.textAlign = align;
        box.header = container == Container::header();
        box.footer = container == Container::footer();
        box.body = container == Container::mainPort();
        return box;
    }

    BoxInfo &note(const QString &text, const QString &container, QRect geometry, Font font,
                  Align align = Left, qint16 level = 1) {
        BoxInfo &box = field(text, container, geometry, font, align, level);
        box.nameIndex = FieldCatalog::NoNameIndex;
        box.notes = true;
        box.notesName = text;
        return box;
    }

    BoxInfo &total(const QString &caption, QRect geometry, Font font, Align align, qint16 level) {
        BoxInfo &box = field(caption, Container::mainPort(), geometry, font, align, level);
        box.body = false;
        box.total = true;
        box.displayLabel = true;
        return box;
    }

    void line(const QString &container, qint32 left, qint32 top, qint32 width, qint32 height,
              qint32 color = Gray) {
        const int slot = layout.freeLineSlot();
        LineInfo &line = layout.line(slot);
        line.index = qint16(slot);
        line.placed = true;
        line.visible = true;
        line.container = container;
        line.left = left;
        line.top = top;
        line.width = width;
        line.height = height;
        line.backColor = color;
        line.boderStyle = qint16(LineStyle::Solid);
    }

    void rect(QRect geometry, qint32 color) {
        const int slot = layout.freeRectSlot();
        PrintRect &rect = layout.rect(slot);
        rect.rectIndex = qint16(slot);
        rect.rectVisible = true;
        rect.rectPlaced = true;
        rect.left = rect.rectLeft = float(geometry.x());
        rect.top = rect.rectTop = float(geometry.y());
        rect.width = rect.rectWidth = float(geometry.width());
        rect.height = rect.rectHeight = float(geometry.height());
        rect.rectRight = rect.rectLeft + rect.rectWidth;
        rect.rectBottom = rect.rectTop + rect.rectHeight;
        rect.borderColor = rect.rectColor = color;
        rect.rectLocation = PrintRect::locationForTop(rect.top);
    }
};

QString header() {
    return Container::header();
}
QString footer() {
    return Container::footer();
}
QString mainPort() {
    return Container::mainPort();
}

// Company, file title and dates across the top of body and summary pages.
void pageHeader(Builder &b, const QString &title) {
    b.field(QStringLiteral("Company Name"), header(), {0, 0, 6000, 360}, {14, true, false, Navy});
    b.note(title, header(), {6240, 0, 4560, 360}, {14, true, false, Navy}, Right);
    b.field(QStringLiteral("Orvanta File Title"), header(), {0, 400, 6000, 300}, {11, true}, Left,
            2);
    b.note(QStringLiteral("Printed:"), header(), {7200, 420, 1680, 240},
           {8, false, false, DarkGray}, Right, 2);
    b.field(QStringLiteral("Report Date"), header(), {9000, 420, 1800, 240}, {8}, Right, 2);
    b.note(QStringLiteral("Saved:"), header(), {7200, 680, 1680, 240}, {8, false, false, DarkGray},
           Right, 3);
    b.field(QStringLiteral("Saved Date"), header(), {9000, 680, 1800, 240}, {8}, Right, 3);
    b.line(header(), 0, 980, Width, 30, Navy);
}

// Company, file title and page number across the bottom of every page.
void pageFooter(Builder &b) {
    b.line(footer(), 0, 0, Width, 15);
    const Font small{8, false, false, DarkGray};
    b.field(QStringLiteral("Company Name"), footer(), {0, 60, 3600, 240}, small);
    b.field(QStringLiteral("Orvanta File Title"), footer(), {3600, 60, 3600, 240}, small, Center);
    b.field(QStringLiteral("Page n of  m"), footer(), {7200, 60, 3600, 240}, small, Right);
}

// A section heading with a rule under it, in the page body.
void heading(Builder &b, const QString &text, qint32 left, qint32 top, qint32 width, qint16 level) {
    b.note(text, mainPort(), {left, top, width, 280}, {10, true, false, Navy}, Left, level);
    b.line(mainPort(), left, top + 300, width, 15);
}

// One address block: company, street, city/state/zip, country, contact, phone and fax.
void addressBlock(Builder &b, const QString &prefix, const QString &title, qint32 left) {
    const auto caption = [&prefix](const char *rest) {
        return prefix + QLatin1Char(' ') + QLatin1String(rest);
    };
    b.note(title, mainPort(), {left, 2640, 2520, 280}, {10, true, false, Navy}, Left, 9);
    b.line(mainPort(), left, 2940, HalfWidth, 15);
    b.field(caption("Code"), mainPort(), {left + 2580, 2640, 2580, 280},
            {8, false, false, DarkGray}, Right, 9);
    const qint32 x = left + 120;
    b.field(caption("Company"), mainPort(), {x, 3020, 5040, 260}, {10, true}, Left, 10);
    b.field(caption("Street Address"), mainPort(), {x, 3300, 5040, 720}, {9}, Left, 11);
    b.field(caption("City"), mainPort(), {x, 4040, 2400, 240}, {9}, Left, 12);
    b.field(caption("State"), mainPort(), {x + 2460, 4040, 660, 240}, {9}, Left, 12);
    b.field(caption("Zip Code"), mainPort(), {x + 3180, 4040, 1860, 240}, {9}, Left, 12);
    b.field(caption("Country"), mainPort(), {x, 4300, 5040, 240}, {9}, Left, 13);
    b.note(QStringLiteral("Attn:"), mainPort(), {x, 4560, 600, 240}, {8, false, false, DarkGray},
           Left, 14);
    b.field(caption("Name"), mainPort(), {x + 660, 4560, 4380, 240}, {9}, Left, 14);
    b.note(QStringLiteral("Phone:"), mainPort(), {x, 4820, 600, 240}, {8, false, false, DarkGray},
           Left, 15);
    b.field(caption("Phone"), mainPort(), {x + 660, 4820, 1860, 240}, {9}, Left, 15);
    b.note(QStringLiteral("Fax:"), mainPort(), {x + 2580, 4820, 420, 240},
           {8, false, false, DarkGray}, Left, 15);
    b.field(caption("Fax"), mainPort(), {x + 3060, 4820, 1980, 240}, {9}, Left, 15);
}

} // namespace

TemplateLayout cover() {
    Builder b;
    b.layout.other.logoSize = QStringLiteral("100%");
    b.layout.other.imageSize = QStringLiteral("100%");

    // Header band: logo at the left, the dealer and the file on the right.
    BoxInfo &logo = b.note(QStringLiteral("Logo"), header(), {0, 0, 2880, 1080}, {9});
    logo.notes = false;
    logo.notesName.clear();
    logo.logo = true;
    b.field(QStringLiteral("Company Name"), header(), {3120, 0, 7680, 440}, {18, true, false, Navy},
            Right);
    b.field(QStringLiteral("Orvanta File Title"), header(), {3120, 480, 7680, 320}, {12, true},
            Right, 2);
    b.note(QStringLiteral("Date:"), header(), {7200, 840, 1680, 240}, {9, false, false, DarkGray},
           Right, 3);
    b.field(QStringLiteral("Report Date"), header(), {9000, 840, 1800, 240}, {9}, Right, 3);
    b.line(header(), 0, 1160, Width, 30, Navy);

    // Body: title, order data in two columns, the two addresses side by side, sales persons
    // and dealers, comments.
    b.note(QStringLiteral("QUOTATION"), mainPort(), {0, 120, Width, 480}, {20, true, false, Navy},
           Center, 1);
    heading(b, QStringLiteral("Order Information"), 0, 780, Width, 2);
    const char *const leftFields[] = {"P. O. Number", "P. O. Type", "Customer P. O.", "Order Type",
                                      "Authorized By"};
    const char *const rightFields[] = {"Contract Number", "Contract Rev", "Ship Date",
                                       "Install Date", "Direct Bill Type"};
    for (int row = 0; row < 5; ++row) {
        const qint32 top = 1160 + row * 260;
        const qint16 level = qint16(3 + row);
        b.field(QLatin1String(leftFields[row]), mainPort(), {0, top, HalfWidth, 240}, {9}, Left,
                level)
            .displayLabel = true;
        b.field(QLatin1String(rightFields[row]), mainPort(), {RightColumn, top, HalfWidth, 240},
                {9}, Left, level)
            .displayLabel = true;
    }
    addressBlock(b, QStringLiteral("Sold"), QStringLiteral("Sold To"), 0);
    addressBlock(b, QStringLiteral("Ship"), QStringLiteral("Ship To"), RightColumn);

    heading(b, QStringLiteral("Sales Representatives"), 0, 5300, HalfWidth, 16);
    heading(b, QStringLiteral("Dealers"), RightColumn, 5300, HalfWidth, 16);
    b.field(QStringLiteral("Sales Person"), mainPort(), {0, 5680, 2940, 240}, {9}, Left, 17);
    b.field(QStringLiteral("Sales Number"), mainPort(), {3000, 5680, 2160, 240}, {9}, Left, 17);
    b.field(QStringLiteral("Dealer"), mainPort(), {RightColumn, 5680, 2940, 240}, {9}, Left, 17);
    b.field(QStringLiteral("Dealer Number"), mainPort(), {RightColumn + 3000, 5680, 2160, 240}, {9},
            Left, 17);

    heading(b, QStringLiteral("Order Comments"), 0, 6400, Width, 18);
    b.field(QStringLiteral("Comments"), mainPort(), {120, 6800, Width - 240, 1440}, {9}, Left, 19);
    b.rect({0, 6760, Width, 1520}, Gray);

    pageFooter(b);
    return b.layout;
}

TemplateLayout body() {
    Builder b;
    b.layout.other.logoSize = QStringLiteral("100%");
    b.layout.other.imageSize = QStringLiteral("100%");
    // Option and option-note lines sit under the description, indented a little, and end
    // before the price columns.
    b.layout.other.realONNWidth = 1200;
    b.layout.other.realODWidth = 3300;
    b.layout.other.realANNWidth = 1200;
    b.layout.other.realADWidth = 3300;

    pageHeader(b, QStringLiteral("Customer Quotation"));

    // Item columns: left edges and widths fill the printable width exactly.
    struct Column {
        const char *caption;
        qint32 width;
        Align align;
    };
    const Column columns[] = {{"Part Number", 1500, Left}, {"Part Description", 3540, Left},
                              {"Mfg", 600, Left},          {"Qty", 540, Right},
                              {"List$", 1080, Right},      {"EXT List$", 1200, Right},
                              {"Cust$", 1080, Right},      {"EXT Cust$", 1260, Right}};
    qint32 left = 0;
    for (const Column &column : columns) {
        b.field(QLatin1String(column.caption), mainPort(), {left, 60, column.width, 260}, {8},
                column.align, 1);
        left += column.width;
    }
    // Sub-lines under each item: its options, then its option notes.
    b.field(QStringLiteral("Option Code / Description"), mainPort(), {1680, 340, 4500, 240},
            {8, false, true}, Left, 2);
    b.field(QStringLiteral("Option Note Code / Description"), mainPort(), {1680, 600, 4500, 240},
            {8, false, true, DarkGray}, Left, 3);

    // Totals at the end of the listing, right-aligned under the price columns.
    b.total(QStringLiteral("Total List$"), {6180, 900, 4620, 260}, {9, true}, Right, 4);
    b.total(QStringLiteral("Total Cust$"), {6180, 1180, 4620, 260}, {9, true}, Right, 5);

    pageFooter(b);
    return b.layout;
}

TemplateLayout summary() {
    Builder b;
    b.layout.other.logoSize = QStringLiteral("100%");
    b.layout.other.imageSize = QStringLiteral("100%");
    b.layout.other.realONNWidth = 1440; // the option-code column of the options total

    pageHeader(b, QStringLiteral("Order Summary"));

    heading(b, QStringLiteral("Customer Pricing"), 0, 100, HalfWidth, 1);
    heading(b, QStringLiteral("Dealer Pricing"), RightColumn, 100, HalfWidth, 1);
    const char *const leftTotals[] = {"Total List$", "Total Cust Disc$", "Total Cust%",
                                      "Total Cust$", "Total Weight"};
    const char *const rightTotals[] = {"Total Deal$", "Total Deal%", "Total Marg$", "Total Marg%",
                                       "Total Volume"};
    for (int row = 0; row < 5; ++row) {
        const qint32 top = 500 + row * 280;
        const qint16 level = qint16(2 + row);
        b.total(QLatin1String(leftTotals[row]), {0, top, HalfWidth, 260}, {9}, Left, level);
        b.total(QLatin1String(rightTotals[row]), {RightColumn, top, HalfWidth, 260}, {9}, Left,
                level);
    }

    heading(b, QStringLiteral("Charges"), 0, 2060, HalfWidth, 7);
    heading(b, QStringLiteral("Shipping Instructions"), RightColumn, 2060, HalfWidth, 7);
    b.total(QStringLiteral("Additional Charges"), {0, 2440, HalfWidth, 260}, {9}, Left, 8);
    b.total(QStringLiteral("Shipping Notes"), {RightColumn, 2440, HalfWidth, 780}, {9}, Left, 8);
    b.total(QStringLiteral("Total Additional Charges"), {0, 2720, HalfWidth, 260}, {9, true}, Left,
            9);

    heading(b, QStringLiteral("Options"), 0, 3340, Width, 10);
    b.total(QStringLiteral("Total Option / Description"), {0, 3720, Width, 260}, {9}, Left, 11);

    // The two order totals close the page inside a frame.
    b.rect({RightColumn - 120, 4220, HalfWidth + 120, 760}, Navy);
    b.total(QStringLiteral("Total Cust$ Order"), {RightColumn, 4300, HalfWidth - 120, 300},
            {11, true, false, Navy}, Right, 12);
    b.total(QStringLiteral("Total Deal$ Order"), {RightColumn, 4620, HalfWidth - 120, 300},
            {11, true}, Right, 13);

    pageFooter(b);
    return b.layout;
}

QString titleLine(const QString &fileName) {
    const QDateTime when(QDate(2025, 1, 6), QTime(9, 0, 0));
    return TemplateWriter::titleLine(templateKindOfPath(fileName), when);
}

} // namespace classic

#pragma once

#include "render/PageEngine.h"

#include <QImage>

// A small two-page document that uses every kind of item: wrapped and aligned text in several
// fonts and colours, lines, rectangles, a picture, and a landscape second page.
inline void drawSampleDocument(tavrel::PageEngine &engine, const QString &picturePath) {
    using namespace tavrel;
    engine.setDocName(QStringLiteral("Kestrium - OrvantaPrint"));
    engine.StartDoc();
    engine.setFontName(QStringLiteral("Arial"));
    engine.setFontSize(16);
    engine.setFontBold(true);
    engine.setTextAlign(1);
    engine.TextBox(QStringLiteral("Harbor Point Offices"), 720, 720, 10800, 0);
    engine.setFontSize(8);
    engine.setFontBold(false);
    engine.setPenWidth(10);
    engine.DrawLine(720, engine.CurrentY() + 60, 11520, engine.CurrentY() + 60);
    const double top = engine.CurrentY() + 200;
    const char *captions[] = {"Part Number", "Description", "Qty", "Ext List"};
    const double lefts[] = {720, 2520, 7920, 9720};
    const double widths[] = {1700, 5300, 1700, 1800};
    engine.setFontBold(true);
    for (int i = 0; i < 4; ++i) {
        engine.setTextAlign(i >= 2 ? 2 : 0);
        engine.TextBox(QString::fromLatin1(captions[i]), lefts[i], top, widths[i], 0);
    }
    engine.setFontBold(false);
    const QString cells[] = {
        QStringLiteral("HMI-DESK-7230"),
        QStringLiteral("Height-adjustable desk with 2 box drawers, grommets, levelers, wire "
                       "management and a very long description that wraps onto more lines"),
        QStringLiteral("12"), QStringLiteral("$12,345.60")};
    const double rowTop = top + 250;
    double bottom = rowTop;
    for (int i = 0; i < 4; ++i) {
        engine.setTextAlign(i >= 2 ? 2 : 0);
        engine.TextBox(cells[i], lefts[i], rowTop, widths[i], 0);
        bottom = qMax(bottom, engine.CurrentY());
    }
    engine.setFontItalic(true);
    engine.setTextColor(255); // red
    engine.setTextAlign(0);
    engine.TextBox(QStringLiteral("Option FIN: Walnut veneer\rOption LCK: Keyed alike"), 1000,
                   bottom + 60, 6000, 0);
    engine.setFontItalic(false);
    engine.setTextColor(0);
    engine.setPenWidth(0);
    engine.setPenStyle(PenStyles::Dash);
    engine.DrawLine(720, engine.CurrentY() + 60, 11520, engine.CurrentY() + 60);
    engine.setPenStyle(PenStyles::Solid);
    engine.setBrushColor(0xF0E0C0); // light blue: red C0, green E0, blue F0
    engine.DrawRectangle(720, 6000, 5000, 7440);
    engine.setBrushColor(16777215);
    engine.setFontUnderline(true);
    engine.setTextAlign(7);
    engine.TextBox(QStringLiteral("Centred in a fixed box"), 720, 6000, 4280, 1440, true, false,
                   false);
    engine.setFontUnderline(false);
    engine.DrawPicture(picturePath, 6000, 6000, QStringLiteral("75%"), QStringLiteral("75%"));
    engine.setOrientation(1);
    engine.NewPage();
    engine.setFontName(QStringLiteral("Times New Roman"));
    engine.setFontSize(12);
    engine.setTextAlign(0);
    engine.TextBox(QStringLiteral("Landscape page in Times New Roman"), 720, 720, 14400, 0);
    engine.setTextAlign(1);
    engine.setFontName(QStringLiteral("Arial"));
    engine.setFontSize(8);
    engine.TextBox(QStringLiteral("Page 2 of  2"), 720, 11200, 14400, 0);
    engine.EndDoc();
}

inline QString writeSamplePicture(const QString &path) {
    QImage image(192, 96, QImage::Format_RGB32);
    image.fill(QColor(0, 102, 204));
    for (int x = 0; x < 192; ++x)
        for (int y = 40; y < 56; ++y)
            image.setPixel(x, y, qRgb(255, 204, 0));
    image.save(path);
    return path;
}

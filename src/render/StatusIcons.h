#pragma once

#include <QString>
#include <QStringView>

namespace tavrel {

// The small bitmaps of the "Complete" column and the tax icon of the "Taxable" column. They are
// the program's own resources (resources/icons.qrc, drawn by resources/icons/make_icons.py):
// 64 x 64 PNG files whose resolution is stored as 384 dpi, so that their natural size is
// 240 twips like the 16-pixel screen bitmaps they stand for, and "75%" prints them 1/8 inch
// high while they stay sharp on paper.
namespace StatusIcons {

constexpr int FirstBitmap = 103;
constexpr int LastBitmap = 112;
constexpr int UnknownBitmap = 111;

// The bitmap for a "Complete" cell value: "0" 103, "1" 104, "2" 105, "4" 106, "6" 107, "7" 108,
// "8" 109, "9" 110, "10" 112; any other text (including " 1" or "01") 111.
int bitmapForValue(QStringView cellValue);

// What a bitmap shows, in a few words ("not started", "complete", ...).
QString meaning(int bitmap);

// The Qt resource path of a status bitmap (":/status/103.png"); throws RuntimeError 5 for a
// number outside 103..112.
QString resourcePath(int bitmap);

// The Qt resource path of the tax icon.
QString taxResourcePath();

// The file name a status bitmap is written under for an HTML export ("status103.png").
QString iconFileName(int bitmap);

// Writes the bitmap into folder under iconFileName and returns the file's path. Throws
// RuntimeError 5 for an unknown number and the errors of TextFile::writeAtomically.
QString writeIconFile(int bitmap, const QString &folder);

} // namespace StatusIcons

} // namespace tavrel

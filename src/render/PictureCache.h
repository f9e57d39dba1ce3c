#pragma once

#include <QHash>
#include <QImage>
#include <QSizeF>
#include <QString>

namespace tavrel {

// Pictures loaded through Qt's image readers, once per path.
class PictureCache {
public:
    struct Picture {
        QImage image;
        QSizeF naturalSize; // twips, at the image's own resolution (96 dpi when it has none)
    };

    // Throws RuntimeError 53 when the file is missing and 481 when it is not a picture.
    const Picture &load(const QString &path);
    // The loaded picture, or nullptr when the path was never loaded.
    const Picture *find(const QString &path) const;
    void clear() { m_pictures.clear(); }
    // Takes a picture another cache loaded (pages handed from one engine to another).
    void insert(const QString &path, const Picture &picture) { m_pictures.insert(path, picture); }

    // The size a size argument gives: "75%" scales the natural size, a number is twips, an
    // empty text keeps the natural size. Throws RuntimeError 5 for anything else.
    static double scaledExtent(const QString &sizeArgument, double natural);

private:
    QHash<QString, Picture> m_pictures;
};

} // namespace tavrel

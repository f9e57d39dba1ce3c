#pragma once

#include <QHash>
#include <QImage>
#include <QMutex>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <cstdint>
#include <optional>

namespace tavrel {

// Pictures loaded through Qt's image readers. Layout asks only for a picture's size (read once
// per path, without keeping its pixels); drawing asks for the picture decoded at the size it
// prints, and those images are kept up to a byte budget, the least recently drawn going first.
// Layout and drawing may run on different threads.
class PictureCache {
public:
    struct Picture {
        QSize pixels;        // as drawn, after the file's own rotation
        QSizeF naturalSize;  // twips, at the image's own resolution (96 dpi when it has none)
        bool turned = false; // the file's rotation swaps width and height
    };

    // Pictures print at up to this resolution; a file with fewer pixels keeps all of its own.
    static constexpr double PrintDpi = 300;
    // No side of a decoded picture exceeds this: 16 inches at PrintDpi, beyond any paper.
    static constexpr int MaxDecodedSide = 4800;
    static constexpr qint64 DefaultByteBudget = qint64(128) * 1024 * 1024;

    explicit PictureCache(qint64 byteBudget = DefaultByteBudget);
    PictureCache(const PictureCache &) = delete;
    PictureCache &operator=(const PictureCache &) = delete;

    // The picture's size. Throws RuntimeError 53 when the file is missing and 481 when it is
    // not a picture; the description names the file.
    Picture load(const QString &path);
    // The picture decoded for drawing over `printed` twips (see decodedSize); a null image
    // when the file cannot be decoded (any more).
    QImage image(const QString &path, QSizeF printed) const;
    // The pixel size a picture of `pixels` is decoded at to print over `printed` twips: enough
    // for PrintDpi, never more than the file holds, within MaxDecodedSide; the proportions stay.
    static QSize decodedSize(QSize pixels, QSizeF printed);

    qint64 cachedBytes() const;
    void clear();
    // The size of a picture loaded before, if it was; and the same taken over from another
    // cache (pages handed from one engine to another).
    std::optional<Picture> find(const QString &path) const;
    void insert(const QString &path, const Picture &picture);

    // The size a size argument gives: "75%" scales the natural size, a number is twips, an
    // empty text keeps the natural size. Throws RuntimeError 5 for anything else.
    static double scaledExtent(const QString &sizeArgument, double natural);

private:
    struct Decoded {
        QImage image;
        std::uint64_t lastUse = 0;
    };

    const qint64 m_byteBudget;
    mutable QMutex m_mutex;
    QHash<QString, Picture> m_pictures;
    mutable QHash<QString, Decoded> m_decoded; // by decodedKey
    mutable qint64 m_decodedBytes = 0;
    mutable std::uint64_t m_useCount = 0;

    void keep(const QString &key, const QImage &image) const;
};

} // namespace tavrel

#include "render/PictureCache.h"

#include "base/Conversions.h"
#include "base/RuntimeError.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMutexLocker>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double TwipsPerInch = 1440;
constexpr double MetersPerInch = 0.0254;
constexpr double DefaultDpi = 96;
// Pictures up to this many pixels a side are decoded whole once for their resolution; larger
// ones at ProbeSide, which takes a fraction of the memory.
constexpr int WholeDecodeSide = 2048;
constexpr int ProbeSide = 512;

// scale: how many of the file's pixels one pixel of the decoded image stands for. Qt's PNG
// reader scales the resolution with the pixels (rounding down), its other readers keep it.
double dotsPerInch(int decodedDotsPerMeter, int readerDefault, double scale) {
    const double dotsPerMeter = decodedDotsPerMeter * scale;
    // Qt gives images without resolution information its own default; treat those as 96 dpi.
    if (dotsPerMeter <= 0 || std::abs(dotsPerMeter - readerDefault) < scale)
        return DefaultDpi;
    return dotsPerMeter * MetersPerInch;
}

// The error of a picture that cannot be loaded, naming the file so that the report says which.
RuntimeError pictureError(int number, const QString &path) {
    return RuntimeError(
        number, QStringLiteral("%1 (%2)").arg(RuntimeError::standardDescription(number), path));
}

bool isTurned(const QImageReader &reader) {
    return reader.autoTransform() &&
           reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
}

} // namespace

PictureCache::PictureCache(qint64 byteBudget)
    : m_byteBudget(byteBudget) {}

PictureCache::Picture PictureCache::load(const QString &path) {
    {
        const QMutexLocker lock(&m_mutex);
        const auto found = m_pictures.constFind(path);
        if (found != m_pictures.constEnd())
            return found.value();
    }
    if (!QFileInfo(path).isFile())
        throw pictureError(ErrorNumber::FileNotFound, path);
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    Picture picture;
    picture.turned = isTurned(reader);
    // The pixels are never kept here, only the size and resolution.
    const bool probed =
        stored.isValid() && std::max(stored.width(), stored.height()) > WholeDecodeSide;
    if (probed)
        reader.setScaledSize(
            stored.scaled(ProbeSide, ProbeSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const bool resolutionScales = reader.format() == "png";
    const QImage probe = reader.read();
    if (probe.isNull())
        throw pictureError(ErrorNumber::InvalidPicture, path);
    picture.pixels = probed ? (picture.turned ? stored.transposed() : stored) : probe.size();
    const double scaleX =
        probed && resolutionScales ? double(picture.pixels.width()) / probe.width() : 1.0;
    const double scaleY =
        probed && resolutionScales ? double(picture.pixels.height()) / probe.height() : 1.0;
    const QImage plain(1, 1, QImage::Format_RGB32);
    picture.naturalSize =
        QSizeF(picture.pixels.width() /
                   dotsPerInch(probe.dotsPerMeterX(), plain.dotsPerMeterX(), scaleX),
               picture.pixels.height() /
                   dotsPerInch(probe.dotsPerMeterY(), plain.dotsPerMeterY(), scaleY)) *
        TwipsPerInch;
    const QMutexLocker lock(&m_mutex);
    m_pictures.insert(path, picture);
    return picture;
}

QSize PictureCache::decodedSize(QSize pixels, QSizeF printed) {
    if (pixels.isEmpty())
        return pixels;
    const double wanted = std::max(std::abs(printed.width()) / pixels.width(),
                                   std::abs(printed.height()) / pixels.height()) *
                          PrintDpi / TwipsPerInch;
    const double largest = double(MaxDecodedSide) / std::max(pixels.width(), pixels.height());
    double factor = std::min(wanted, largest);
    if (!(factor < 1.0)) // NaN included: keep every pixel
        return pixels;
    factor = std::max(factor, 0.0);
    return QSize(std::max(1, int(std::ceil(pixels.width() * factor))),
                 std::max(1, int(std::ceil(pixels.height() * factor))));
}

std::optional<PictureCache::Picture> PictureCache::find(const QString &path) const {
    const QMutexLocker lock(&m_mutex);
    const auto found = m_pictures.constFind(path);
    if (found == m_pictures.constEnd())
        return std::nullopt;
    return found.value();
}

void PictureCache::insert(const QString &path, const Picture &picture) {
    const QMutexLocker lock(&m_mutex);
    m_pictures.insert(path, picture);
}

QImage PictureCache::image(const QString &path, QSizeF printed) const {
    Picture picture;
    bool known = false;
    {
        const QMutexLocker lock(&m_mutex);
        const auto found = m_pictures.constFind(path);
        if (found != m_pictures.constEnd()) {
            picture = found.value();
            known = true;
        }
    }
    QImageReader reader(path);
    reader.setAutoTransform(true);
    if (!known) {
        picture.turned = isTurned(reader);
        const QSize stored = reader.size();
        picture.pixels = picture.turned ? stored.transposed() : stored;
    }
    const QSize size = picture.pixels.isValid() ? decodedSize(picture.pixels, printed) : QSize();
    const QString key = QStringLiteral("%1x%2:").arg(size.width()).arg(size.height()) + path;
    {
        const QMutexLocker lock(&m_mutex);
        const auto found = m_decoded.find(key);
        if (found != m_decoded.end()) {
            found->lastUse = ++m_useCount;
            return found->image;
        }
    }
    if (size.isValid() && size != picture.pixels)
        reader.setScaledSize(picture.turned ? size.transposed() : size);
    const QImage image = reader.read();
    if (!image.isNull())
        keep(key, image);
    return image;
}

void PictureCache::keep(const QString &key, const QImage &image) const {
    const qint64 bytes = image.sizeInBytes();
    if (bytes > m_byteBudget)
        return; // drawn, but never worth the whole budget
    const QMutexLocker lock(&m_mutex);
    if (m_decoded.contains(key))
        return;
    while (!m_decoded.isEmpty() && m_decodedBytes + bytes > m_byteBudget) {
        auto oldest = m_decoded.begin();
        for (auto it = m_decoded.begin(); it != m_decoded.end(); ++it) {
            if (it->lastUse < oldest->lastUse)
                oldest = it;
        }
        m_decodedBytes -= oldest->image.sizeInBytes();
        m_decoded.erase(oldest);
    }
    m_decoded.insert(key, Decoded{image, ++m_useCount});
    m_decodedBytes += bytes;
}

qint64 PictureCache::cachedBytes() const {
    const QMutexLocker lock(&m_mutex);
    return m_decodedBytes;
}

void PictureCache::clear() {
    const QMutexLocker lock(&m_mutex);
    m_pictures.clear();
    m_decoded.clear();
    m_decodedBytes = 0;
}

double PictureCache::scaledExtent(const QString &sizeArgument, double natural) {
    const QString trimmed = sizeArgument.trimmed();
    if (trimmed.isEmpty())
        return natural;
    if (trimmed.endsWith(QLatin1Char('%'))) {
        const auto percent = Conversions::parseNumber(QStringView(trimmed).chopped(1));
        if (!percent)
            throw RuntimeError(ErrorNumber::InvalidProcedureCall);
        return natural * *percent / 100.0;
    }
    const auto twips = Conversions::parseNumber(trimmed);
    if (!twips)
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    return *twips;
}

} // namespace tavrel

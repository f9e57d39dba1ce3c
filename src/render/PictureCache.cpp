#include "render/PictureCache.h"

#include "base/Conversions.h"
#include "base/RuntimeError.h"

#include <QFileInfo>
#include <QImageReader>

namespace tavrel {

namespace {

constexpr double TwipsPerInch = 1440;
constexpr double MetersPerInch = 0.0254;
constexpr double DefaultDpi = 96;

double dotsPerInch(int dotsPerMeter, int readerDefault) {
    // Qt gives images without resolution information its own default; treat those as 96 dpi.
    if (dotsPerMeter <= 0 || dotsPerMeter == readerDefault)
        return DefaultDpi;
    return dotsPerMeter * MetersPerInch;
}

} // namespace

const PictureCache::Picture &PictureCache::load(const QString &path) {
    const auto found = m_pictures.constFind(path);
    if (found != m_pictures.constEnd())
        return found.value();
    if (!QFileInfo(path).isFile())
        throw RuntimeError(ErrorNumber::FileNotFound);
    QImageReader reader(path);
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull())
        throw RuntimeError(ErrorNumber::InvalidPicture);
    const QImage plain(1, 1, QImage::Format_RGB32);
    Picture picture;
    picture.naturalSize =
        QSizeF(image.width() / dotsPerInch(image.dotsPerMeterX(), plain.dotsPerMeterX()),
               image.height() / dotsPerInch(image.dotsPerMeterY(), plain.dotsPerMeterY())) *
        TwipsPerInch;
    picture.image = std::move(image);
    return m_pictures.insert(path, std::move(picture)).value();
}

const PictureCache::Picture *PictureCache::find(const QString &path) const {
    const auto found = m_pictures.constFind(path);
    return found == m_pictures.constEnd() ? nullptr : &found.value();
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

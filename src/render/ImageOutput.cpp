#include "render/ImageOutput.h"

#include "base/RuntimeError.h"
#include "render/PageEngine.h"
#include "render/PageReplay.h"

#include <QDir>
#include <QPainter>

#include <cmath>

namespace tavrel {

QImage renderPageImage(const PageEngine &engine, int pageNumber, double dpi) {
    const Page &page = engine.page(pageNumber);
    const double scale = dpi / 1440.0;
    QImage image(qMax(1, int(std::lround(page.width * scale))),
                 qMax(1, int(std::lround(page.height * scale))), QImage::Format_RGB32);
    const int dotsPerMeter = int(std::lround(dpi / 0.0254));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    paintPage(painter, engine, pageNumber);
    painter.end();
    return image;
}

QStringList writePngPages(const PageEngine &engine, const QString &folder, double dpi) {
    if (!QDir().mkpath(folder))
        throw RuntimeError(ErrorNumber::PathNotFound);
    QStringList written;
    const int count = int(engine.pages().size());
    for (int number = 1; number <= count; ++number) {
        const QString path = QDir(folder).filePath(
            QStringLiteral("page-%1.png").arg(number, 3, 10, QLatin1Char('0')));
        if (!renderPageImage(engine, number, dpi).save(path, "PNG"))
            throw RuntimeError(ErrorNumber::PathFileAccessError,
                               QStringLiteral("Cannot write %1").arg(path));
        written << path;
    }
    return written;
}

} // namespace tavrel

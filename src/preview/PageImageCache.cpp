#include "preview/PageImageCache.h"

#include "render/PageEngine.h"
#include "render/PageReplay.h"

#include <QPainter>

namespace tavrel {

PageImageCache::PageImageCache(qsizetype budgetBytes)
    : m_images(budgetBytes / 1024) {}

QImage PageImageCache::render(const PageEngine &engine, int page, QSize size,
                              qreal devicePixelRatio) {
    const Page &recorded = engine.page(page);
    QImage image(size * devicePixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(size.width() / recorded.width, size.height() / recorded.height);
    paintPage(painter, engine, page);
    return image;
}

QImage PageImageCache::image(const PageEngine &engine, int page, QSize size,
                             qreal devicePixelRatio) {
    const Key key{page, int(size.width() * devicePixelRatio), int(size.height() * devicePixelRatio),
                  qsizetype(engine.page(page).items.size())};
    if (const QImage *cached = m_images.object(key))
        return *cached;
    ++m_renders;
    QImage image = render(engine, page, size, devicePixelRatio);
    const qsizetype cost = std::max<qsizetype>(1, image.sizeInBytes() / 1024);
    m_images.insert(key, new QImage(image), cost);
    return image;
}

} // namespace tavrel

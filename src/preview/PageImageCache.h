#pragma once

#include <QCache>
#include <QImage>
#include <QSize>

namespace tavrel {

class PageEngine;

// Rendered page images for the screen, keyed by page, pixel size and the page's item count:
// the page-field pass and a page still being laid out add items, and such a page must be drawn
// again. The least recently used images go first once the memory budget is spent.
class PageImageCache {
public:
    explicit PageImageCache(qsizetype budgetBytes = qsizetype(192) * 1024 * 1024);

    // The page (1-based) at that size in device pixels, on white paper, rendered on demand
    // through the page replay. The size need not keep the page's proportions ("Stretch").
    QImage image(const PageEngine &engine, int page, QSize size, qreal devicePixelRatio);
    void clear() { m_images.clear(); }
    int count() const { return int(m_images.count()); }
    // How many images have been rendered so far (not found in the cache).
    int renders() const { return m_renders; }

    // Renders without caching; also used for pages too big to keep.
    static QImage render(const PageEngine &engine, int page, QSize size, qreal devicePixelRatio);

private:
    struct Key {
        int page = 0;
        int width = 0;
        int height = 0;
        qsizetype items = 0;
        friend bool operator==(const Key &, const Key &) = default;
    };
    friend size_t qHash(const Key &key, size_t seed) {
        return qHashMulti(seed, key.page, key.width, key.height, key.items);
    }

    QCache<Key, QImage> m_images; // cost in KiB
    int m_renders = 0;
};

} // namespace tavrel

#include "render/PageHandover.h"

#include "render/PageEngine.h"

#include <QSet>

#include <algorithm>

namespace tavrel {

PageBatch copyPages(const PageEngine &engine, int first, int last) {
    PageBatch batch;
    const std::vector<Page> &pages = engine.pages();
    first = std::max(1, first);
    last = std::min(last, int(pages.size()));
    batch.firstPage = first;
    batch.documentPages = int(pages.size());
    batch.docName = engine.DocName();
    batch.navigation = engine.navigation();
    const FontTable &fonts = engine.fonts();
    batch.fonts.reserve(std::size_t(fonts.size()));
    for (int i = 0; i < fonts.size(); ++i)
        batch.fonts.push_back(fonts.at(i).spec);
    QSet<QString> pictures;
    for (int number = first; number <= last; ++number) {
        const Page &page = pages[std::size_t(number - 1)];
        batch.pages.push_back(page);
        for (const PageItem &item : page.items) {
            const auto *picture = std::get_if<PictureItem>(&item);
            if (!picture || pictures.contains(picture->path))
                continue;
            pictures.insert(picture->path);
            if (const std::optional<PictureCache::Picture> loaded =
                    engine.pictures().find(picture->path))
                batch.pictures.emplace_back(picture->path, *loaded);
        }
    }
    return batch;
}

void PageEngine::adoptPages(PageBatch batch) {
    if (batch.documentPages < int(m_pages.size()))
        m_pages.resize(std::size_t(batch.documentPages));
    m_docName = batch.docName;
    m_navigation = std::move(batch.navigation);
    // The batch's font numbers become this document's.
    std::vector<int> fontIndex;
    fontIndex.reserve(batch.fonts.size());
    for (const FontSpec &spec : batch.fonts)
        fontIndex.push_back(m_fonts.indexOf(spec));
    for (const auto &[path, picture] : batch.pictures) {
        if (!m_pictures.find(path))
            m_pictures.insert(path, picture);
    }
    int number = batch.firstPage;
    for (Page &page : batch.pages) {
        page.items.remapFonts(fontIndex);
        if (number > int(m_pages.size()))
            m_pages.resize(std::size_t(number));
        m_pages[std::size_t(number - 1)] = std::move(page);
        ++number;
    }
}

} // namespace tavrel

#pragma once

#include "render/DisplayList.h"
#include "render/FontTable.h"
#include "render/PageAnchors.h"
#include "render/PictureCache.h"

#include <QString>

#include <utility>
#include <vector>

namespace tavrel {

class PageEngine;

// Finished pages on their way from the engine that laid them out (a layout thread's) to the one
// that shows them (the preview's, on the window thread). A batch is a self-contained copy: its
// pages name fonts by index into its own font list and pictures by path into its own pictures,
// so nothing in it points back into the engine it came from.
struct PageBatch {
    int firstPage = 1; // the number of pages.front()
    std::vector<Page> pages;
    std::vector<FontSpec> fonts; // the source's font table, by index
    std::vector<std::pair<QString, PictureCache::Picture>> pictures; // those the pages draw
    int documentPages = 0; // pages of the source document when the batch was made
    QString docName;
    DocumentNavigation navigation; // the outline so far and the document information
};

// Copies pages first..last (1-based, inclusive) of engine, on the thread that owns engine.
PageBatch copyPages(const PageEngine &engine, int first, int last);

} // namespace tavrel

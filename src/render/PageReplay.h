#pragma once

class QPainter;

namespace tavrel {

class PageEngine;

// Paints one recorded page (1-based) with a painter whose coordinates are twips from the page's
// top-left corner. Every backend (PDF, printer, PNG, preview) draws through this one function.
void paintPage(QPainter &painter, const PageEngine &engine, int pageNumber);

} // namespace tavrel

#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace tavrel {

class PageEngine;

// The recorded document as JSON, the test surface for layout:
// {"pageCount": N, "pages": [{"number", "width", "height", "landscape", "items": [...]}]}
// with text, line, rect and picture items in drawing order. Twips are numbers rounded to
// hundredths, so whole twips print without decimals.
QJsonObject displayListJson(const PageEngine &engine);
QByteArray displayListJsonText(const PageEngine &engine);

} // namespace tavrel

#include "render/DisplayListJson.h"

#include "render/PageEngine.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace tavrel {

namespace {

double twips(double value) {
    const double rounded = std::round(value * 100.0) / 100.0;
    return rounded == 0 ? 0.0 : rounded; // no "-0"
}

QJsonObject textJson(const TextItem &item, const FontTable &fonts) {
    QJsonArray lines;
    for (const TextLine &line : item.lines)
        lines.append(item.text.mid(line.start, line.length));
    const FontSpec &font = fonts.at(item.font).spec;
    return QJsonObject{
        {QStringLiteral("type"), QStringLiteral("text")},
        {QStringLiteral("x"), twips(item.x)},
        {QStringLiteral("y"), twips(item.y)},
        {QStringLiteral("width"), twips(item.width)},
        {QStringLiteral("height"), twips(item.height)},
        {QStringLiteral("text"), item.text},
        {QStringLiteral("lines"), lines},
        {QStringLiteral("font"), QJsonObject{{QStringLiteral("name"), font.name},
                                             {QStringLiteral("size"), font.size},
                                             {QStringLiteral("bold"), font.bold},
                                             {QStringLiteral("italic"), font.italic},
                                             {QStringLiteral("underline"), font.underline}}},
        {QStringLiteral("align"), item.align},
        {QStringLiteral("color"), qint64(item.color)},
        {QStringLiteral("background"),
         item.background >= 0 ? QJsonValue(item.background) : QJsonValue()},
    };
}

QJsonObject lineJson(const LineItem &item) {
    return QJsonObject{
        {QStringLiteral("type"), QStringLiteral("line")},
        {QStringLiteral("x1"), twips(item.x1)},
        {QStringLiteral("y1"), twips(item.y1)},
        {QStringLiteral("x2"), twips(item.x2)},
        {QStringLiteral("y2"), twips(item.y2)},
        {QStringLiteral("color"), qint64(item.color)},
        {QStringLiteral("style"), item.style},
        {QStringLiteral("penWidth"), twips(item.penWidth)},
    };
}

QJsonObject rectJson(const RectItem &item) {
    return QJsonObject{
        {QStringLiteral("type"), QStringLiteral("rect")},
        {QStringLiteral("left"), twips(item.left)},
        {QStringLiteral("top"), twips(item.top)},
        {QStringLiteral("right"), twips(item.right)},
        {QStringLiteral("bottom"), twips(item.bottom)},
        {QStringLiteral("penColor"), qint64(item.penColor)},
        {QStringLiteral("penStyle"), item.penStyle},
        {QStringLiteral("brushColor"), qint64(item.brushColor)},
        {QStringLiteral("brushStyle"), item.brushStyle},
    };
}

QJsonObject pictureJson(const PictureItem &item) {
    return QJsonObject{
        {QStringLiteral("type"), QStringLiteral("picture")},
        {QStringLiteral("path"), item.path},
        {QStringLiteral("x"), twips(item.x)},
        {QStringLiteral("y"), twips(item.y)},
        {QStringLiteral("width"), twips(item.width)},
        {QStringLiteral("height"), twips(item.height)},
    };
}

} // namespace

QJsonObject displayListJson(const PageEngine &engine) {
    QJsonArray pages;
    int number = 0;
    for (const Page &page : engine.pages()) {
        QJsonArray items;
        for (const PageItem &pageItem : page.items) {
            if (const auto *text = std::get_if<TextItem>(&pageItem))
                items.append(textJson(*text, engine.fonts()));
            else if (const auto *line = std::get_if<LineItem>(&pageItem))
                items.append(lineJson(*line));
            else if (const auto *rect = std::get_if<RectItem>(&pageItem))
                items.append(rectJson(*rect));
            else if (const auto *picture = std::get_if<PictureItem>(&pageItem))
                items.append(pictureJson(*picture));
        }
        pages.append(QJsonObject{
            {QStringLiteral("number"), ++number},
            {QStringLiteral("width"), twips(page.width)},
            {QStringLiteral("height"), twips(page.height)},
            {QStringLiteral("landscape"), page.landscape},
            {QStringLiteral("items"), items},
        });
    }
    return QJsonObject{{QStringLiteral("pageCount"), int(engine.pages().size())},
                       {QStringLiteral("pages"), pages}};
}

QByteArray displayListJsonText(const PageEngine &engine) {
    return QJsonDocument(displayListJson(engine)).toJson(QJsonDocument::Indented);
}

} // namespace tavrel

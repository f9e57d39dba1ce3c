#include "templates/TemplateJson.h"

#include "templates/TemplateKeys.h"

#include <QJsonArray>

#include <type_traits>

namespace tavrel {

namespace {

QJsonValue singleValue(float value) {
    return TemplateKeys::formatSingle(value).toDouble();
}

template <typename Element>
QJsonObject elementJson(int slot, const Element &element, const QList<TemplateKey<Element>> &keys) {
    QJsonObject object{{QStringLiteral("slot"), slot}};
    for (const TemplateKey<Element> &key : keys) {
        const QJsonValue value = std::visit(
            [&element](auto pointer) -> QJsonValue {
                const auto &v = element.*pointer;
                using T = std::decay_t<decltype(v)>;
                if constexpr (std::is_same_v<T, float>)
                    return singleValue(v);
                else if constexpr (std::is_same_v<T, QString> || std::is_same_v<T, bool>)
                    return v;
                else
                    return int(v);
            },
            key.member);
        object.insert(key.suffix.mid(1), value);
    }
    return object;
}

QJsonObject otherInfoJson(const OtherInfo &other) {
    return {{QStringLiteral("LogoSize"), other.logoSize},
            {QStringLiteral("ImageSize"), other.imageSize},
            {QStringLiteral("Landscape"), other.landscape},
            {QStringLiteral("RealONNWidth"), singleValue(other.realONNWidth)},
            {QStringLiteral("RealODWidth"), singleValue(other.realODWidth)},
            {QStringLiteral("RealANNWidth"), singleValue(other.realANNWidth)},
            {QStringLiteral("RealADWidth"), singleValue(other.realADWidth)}};
}

} // namespace

QJsonObject TemplateJson::toJson(const TemplateLayout &layout, TemplateKind kind) {
    QJsonArray boxes;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed && !box.visible)
            continue;
        QJsonObject object = elementJson(slot, box, TemplateKeys::boxKeys());
        object.insert(QStringLiteral("HeaderText"), box.headerText);
        boxes.append(object);
    }
    QJsonArray lines;
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        if (layout.line(slot).placed)
            lines.append(elementJson(slot, layout.line(slot), TemplateKeys::lineKeys()));
    }
    QJsonArray rectangles;
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        const PrintRect &rect = layout.rect(slot);
        if (!rect.rectVisible)
            continue;
        QJsonObject object = elementJson(slot, rect, TemplateKeys::rectKeys());
        object.insert(QStringLiteral("Location"), PrintRect::locationForTop(rect.top));
        rectangles.append(object);
    }
    return {{QStringLiteral("kind"), templateKindName(kind)},
            {QStringLiteral("otherInfo"), otherInfoJson(layout.other)},
            {QStringLiteral("boxes"), boxes},
            {QStringLiteral("lines"), lines},
            {QStringLiteral("rectangles"), rectangles}};
}

} // namespace tavrel

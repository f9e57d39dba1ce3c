#pragma once

#include "spec/FieldLengths.h"
#include "spec/OrderData.h"
#include "spec/SpecData.h"

#include <QByteArray>
#include <QJsonObject>

#include <functional>
#include <optional>

namespace tavrel {

// The specification data as JSON, for scripts and tests. Item and header keys are the SIF tags
// without "="; computed item fields use their field codes (WTE, SPE, ...) or SPE2 (extended sell
// copy), MP (margin amount), M% (margin percent), DDE, ANN, ADN, ONN, ODN. Numbers are written
// in their shortest form that reads back to the same double.
namespace SpecJson {

QJsonObject item(const SifItem &item);
QJsonObject header(const SifHeader &header);
// chargeSum is written as null when there is none (the sum failed).
QJsonObject order(const OrderData &order, std::optional<double> chargeSum);
QJsonObject fieldLengths(const FieldLengths &lengths);

// {"items": [...], "header": {...}, "order": {...}, "fieldLengths": {...}}
QJsonObject document(const SpecData &data, const OrderData &order, std::optional<double> chargeSum,
                     const FieldLengths &lengths);
// Indented UTF-8 text of the document, ending in a line feed.
QByteArray text(const QJsonObject &document);
// The same text as text(document(...)), handed to sink piece by piece (an item at a time), so
// that a million items never stand in memory as JSON.
void write(const SpecData &data, const OrderData &order, std::optional<double> chargeSum,
           const FieldLengths &lengths, const std::function<void(const QByteArray &)> &sink);

} // namespace SpecJson

} // namespace tavrel

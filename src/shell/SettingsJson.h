#pragma once

#include <QJsonObject>

namespace tavrel {

struct AppContext;

// What start-up understood of a job file: both sections under their key names with defaults
// applied, and the values derived from them.
QJsonObject settingsToJson(const AppContext &context);

} // namespace tavrel

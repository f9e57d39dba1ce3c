#pragma once

#include "templates/TemplateLayout.h"

#include <QString>

// The three default templates a new user sees first, built in code so that the files in
// resources/Print Templates are exactly what the template writer makes of them.
namespace classic {

tavrel::TemplateLayout cover();
tavrel::TemplateLayout body();
tavrel::TemplateLayout summary();

// The fixed title line the resource files carry (nothing reads it).
QString titleLine(const QString &fileName);

} // namespace classic

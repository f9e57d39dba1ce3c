#pragma once

#include "spec/SpecData.h"

#include <QByteArray>
#include <QString>

namespace tavrel {

class Prompter;

// Reads the SIF file at path into data (emptied first), then computes the subtotal options, the
// item extensions and the derived header totals. specFileName is what an "SF=" line stores (the
// active document's file name; the line's own value is ignored). Throws RuntimeError when the
// file cannot be read, an item line comes before the first "PN=" line, or a number overflows;
// what was read up to then stays in data, and the extensions and totals are not computed.
void readSif(const QString &path, const QString &specFileName, SpecData &data);

// readSif for start-up: a failure is reported as "Load Sif." and false is returned.
bool loadSif(const QString &path, const QString &specFileName, SpecData &data, Prompter &prompter);

// Only the reading step, from SIF text in memory (Windows-1252 bytes), appended to data;
// nothing is computed afterwards. Throws as readSif does.
void parseSifText(const QByteArray &bytes, const QString &specFileName, SpecData &data);

} // namespace tavrel

#pragma once

#include "spec/FieldLengths.h"
#include "spec/OrderData.h"
#include "spec/SpecData.h"

#include <QDateTime>
#include <QHash>
#include <QString>

namespace tavrel {

// What the section renderers read besides their template: the specification, the order file,
// the field lengths and labels, and the values of the page captions. Filled once per job from the
// application's context; the renderers never change it.
struct ReportData {
    const SpecData *spec = nullptr;
    const OrderData *order = nullptr;
    const FieldLengths *fieldLengths = nullptr;

    QString sifPath;        // the specification file
    QString activeDocument; // the parent's document: "File Path", "Orvanta File Title"
    QString companyName;    // "Company Name"
    bool cifPresent = false;
    bool showLabel = true; // the "ShowLabel" preference
    bool showSubTotalOptions = false;

    // "Report Date", "Report Time": when the job started (fixed by tests).
    QDateTime reportTime;
    // "Saved Date", "Saved Time": when the parent last saved its document (the active document's
    // modification time, or the SIF file's when there is none).
    QDateTime savedTime;

    // Twips, from the settings.
    double marginLeft = 0;
    double marginRight = 0;
    double marginTop = 0;
    double marginBottom = 0;
};

} // namespace tavrel

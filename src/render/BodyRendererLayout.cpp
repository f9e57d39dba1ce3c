#include "render/BodyRendererLayout.h"

#include "render/ReportData.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "templates/PrintRect.h"
#include "templates/TemplateLayout.h"

#include <algorithm>
#include <limits>

namespace tavrel::BodyLayout {

double textWidth(double columnWidth) {
    return std::max(1.0, columnWidth - 2 * CellInset);
}

qint32 totalsTop(const std::vector<CustomTemplate> &totalBoxes) {
    qint32 top = std::numeric_limits<qint32>::max();
    for (const CustomTemplate &box : totalBoxes)
        top = std::min(top, box.tTop);
    return top;
}

qint32 captionRowBottom(const std::vector<CustomTemplate> &columns) {
    qint32 bottom = 0;
    for (const CustomTemplate &box : columns)
        bottom = std::max(bottom, box.tTop + box.tHeight);
    return bottom;
}

bool framesTotals(const PrintRect &rect, qint32 totalsTop, qint32 captionRowBottom) {
    return totalsTop != std::numeric_limits<qint32>::max() &&
           double(rect.rectTop) >= double(captionRowBottom);
}

PairWidths pairWidths(const CustomTemplate &box, bool notes, const OtherInfo &other) {
    PairWidths widths;
    widths.code = notes ? other.realANNWidth : other.realONNWidth;
    widths.description = notes ? other.realADWidth : other.realODWidth;
    if (widths.code <= 0 && widths.description <= 0) {
        widths.code = box.tWidth / 3.0;
        widths.description = box.tWidth - widths.code;
    }
    return widths;
}

SubLinePart subLinePart(BodyColumnKind kind) {
    switch (kind) {
    case BodyColumnKind::OptionCodes:
    case BodyColumnKind::NoteCodes:
        return SubLinePart::Code;
    case BodyColumnKind::OptionDescriptions:
    case BodyColumnKind::NoteDescriptions:
        return SubLinePart::Description;
    default:
        return SubLinePart::Both;
    }
}

QString columnCaption(const CustomTemplate &box, const ReportData &data) {
    const QString code = FieldCatalog::codeForCaption(box.tCaption);
    if (!data.showLabel || code.isEmpty())
        return box.tCaption;
    const QString label = data.fieldLengths ? data.fieldLengths->label(code) : QString();
    return label.isEmpty() ? box.tCaption : label;
}

std::vector<CaptionPiece> captionPieces(const CustomTemplate &box, BodyColumnKind kind,
                                        const OtherInfo &other, const QString &captionText) {
    if (kind == BodyColumnKind::Options || kind == BodyColumnKind::Notes) {
        const bool notes = kind == BodyColumnKind::Notes;
        const PairWidths widths = pairWidths(box, notes, other);
        return {{notes ? QStringLiteral("Note") : QStringLiteral("Option"), 0, widths.code, true},
                {notes ? QStringLiteral("Note Description") : QStringLiteral("Option Description"),
                 widths.code, widths.description, true}};
    }
    return {{captionText, 0, double(box.tWidth), false}};
}

} // namespace tavrel::BodyLayout

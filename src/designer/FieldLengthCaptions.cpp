#include "designer/FieldLengthCaptions.h"

#include "spec/FieldCatalog.h"

#include <QHash>

namespace tavrel {
namespace FieldLengthCaptions {

namespace {

struct NamedCode {
    const char *code;
    const char *caption;
};

constexpr NamedCode pageCodes[] = {
    {"ST", "Spec Title"},
    {"DT", "Spec Date"},
    {"TM", "Spec Time"},
    {"TT", "Orvanta File Title"},
    {"SDT", "Saved Date & Time"},
    {"COM", "Company Name"},
    {"PG", "Page"},
    {"PNM", "Page n of  m"},
    {"RD", "Report Date"},
    {"RT", "Report Time"},
    {"RDT", "Report Date & Time"},
    {"SF", "Sif File Name"},
    {"FP", "File Path"},
};

constexpr NamedCode orderCodes[] = {
    {"AX", "Additional Charges"},
    {"CO", "P. O. Number"},
    {"PA", "Contract Number"},
    {"OT", "Order Type"},
    {"DB", "Direct Bill Type"},
    {"AB", "Authorized By"},
    {"CP", "Customer P. O."},
    {"PT", "P. O. Type"},
    {"PR", "Contract Rev"},
    {"RSD", "Ship Date"},
    {"RI", "Install Date"},
    {"TN", "Comments"},
    {"DC", "Sold Code"},
    {"D1", "Sold Company"},
    {"D2", "Sold Street Address"},
    {"D5", "Sold City"},
    {"D6", "Sold State"},
    {"D7", "Sold Zip Code"},
    {"D8", "Sold Country"},
    {"D9", "Sold Name"},
    {"DPH", "Sold Phone"},
    {"DF", "Sold Fax"},
    {"SPC", "Ship Code"},
    {"P1", "Ship Company"},
    {"P2", "Ship Street Address"},
    {"P5", "Ship City"},
    {"P6", "Ship State"},
    {"P7", "Ship Zip Code"},
    {"P8", "Ship Country"},
    {"P9", "Ship Name"},
    {"PPH", "Ship Phone"},
    {"PF", "Ship Fax"},
    {"KX", "Sales Person"},
    {"LX", "Sales Number"},
    {"UX", "Dealer"},
    {"VX", "Dealer Number"},
};

template <std::size_t N> const char *find(const NamedCode (&table)[N], const QString &code) {
    for (const NamedCode &entry : table) {
        if (code == QLatin1String(entry.code))
            return entry.caption;
    }
    return nullptr;
}

} // namespace

Group groupOf(const QString &code) {
    if (find(pageCodes, code))
        return Group::Page;
    if (find(orderCodes, code))
        return Group::Order;
    return Group::Item;
}

QString captionOf(const QString &code) {
    if (const char *caption = find(pageCodes, code))
        return QString::fromLatin1(caption);
    if (const char *caption = find(orderCodes, code))
        return QString::fromLatin1(caption);
    const QString caption = FieldCatalog::captionForCode(code);
    return caption.isEmpty() ? code : caption;
}

QString groupTitle(Group group) {
    switch (group) {
    case Group::Item:
        return QStringLiteral("Item Fields");
    case Group::Page:
        return QStringLiteral("Page Fields");
    case Group::Order:
        return QStringLiteral("Order Fields");
    }
    return {};
}

} // namespace FieldLengthCaptions
} // namespace tavrel

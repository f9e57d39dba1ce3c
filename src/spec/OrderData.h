#pragma once

#include <QString>

#include <array>
#include <vector>

namespace tavrel {

// A sold-to or ship-to party of the order file.
struct OrderParty {
    QString code;                         // DC= / PC=
    QString company;                      // D1= / P1=
    std::array<QString, 3> streetAddress; // D2=..D4= / P2=..P4=
    QString city;                         // D5= / P5=
    QString state;                        // D6= / P6=
    QString zipCode;                      // D7= / P7=
    QString country;                      // D8= / P8=
    QString name;                         // D9= / P9=
    QString phone;                        // DP= / PP=
    QString fax;                          // DF= / PF=
};

// The order header values, each exactly as written after the tag (no trimming).
struct OrderHeader {
    OrderParty soldTo;
    OrderParty shipTo;
    QString purchaseOrderNumber;   // CO=
    QString purchaseOrderType;     // PT=
    QString customerPurchaseOrder; // CP=
    QString orderType;             // OT=
    QString authorizedBy;          // AB=
    QString contractNumber;        // PA=
    QString contractRevision;      // PR=
    QString requestedShipDate;     // RD=
    QString requestedInstallDate;  // RI=
    QString directBillType;        // DB=
    QString comments;              // TN= lines, joined with carriage returns
};

// One additional charge; the amount is summed as a number only when asked.
struct AdditionalCharge {
    QString amount;
    QString name;       // "Design", "Shipping", "Install", or the file's name followed by ": "
    QString secondText; // version 4 files only; kept, printed nowhere
};

// A sales person or dealer with their number.
struct OrderContact {
    QString name;
    QString number;
};

// Everything read from the order file beside the specification.
struct OrderData {
    bool present = false;  // a file exists at the order file path
    bool version4 = false; // it has the "[CIF V4]" line
    OrderHeader header;
    // Index 1 is the first entry (element 0), as the file numbers them.
    std::vector<OrderContact> salesPersons;
    std::vector<OrderContact> dealers;
    int currentSalesPerson = 0; // 16-bit counters in the file's terms
    int currentDealer = 0;
    std::vector<AdditionalCharge> charges; // the charge count is charges.size()
    QString shippingNotes;                 // SN= lines, joined with carriage returns

    int chargeCount() const { return int(charges.size()); }
};

// The label and value lists filled before a cover page is drawn, one entry per field box slot.
struct OrderFieldLists {
    static constexpr int Slots = 137;
    // Indices 1 to Slots are used; index 0 is never written.
    std::vector<QString> labels;
    std::vector<QString> values;
};

} // namespace tavrel

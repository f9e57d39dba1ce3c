#include "spec/OrderFileReader.h"

#include "base/ContainedLines.h"
#include "base/Conversions.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "spec/BasicText.h"
#include "spec/Totals.h"

#include <QFileInfo>

#include <limits>
#include <optional>

namespace tavrel {

namespace {

const QString carriageReturn = QStringLiteral("\r");

std::optional<QStringList> linesOf(const QString &path) {
    try {
        return TextFile::readLines(path);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

bool isAsciiDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// The line's first character and a digit in column 2, such as "K3" or "a1"; -1 otherwise.
int indexDigit(const QString &line, QChar first, Qt::CaseSensitivity sensitivity) {
    if (line.size() < 2 || !isAsciiDigit(line[1]))
        return -1;
    if (QStringView(line).first(1).compare(QStringView(&first, 1), sensitivity) != 0)
        return -1;
    return line[1].digitValue();
}

// Joins lines into one note: the first becomes the note, later ones follow a carriage return.
// With onlyNew, a text already found anywhere in the note is skipped. The lines hold no line
// breaks, so a text is in the note exactly when it is in the note as it began or in an earlier
// line; that is decided for all lines at once when they are in, rather than by searching the
// growing note once per line, which a file of many distinct lines would make quadratic.
class NoteJoiner {
public:
    NoteJoiner(QString &notes, bool onlyNew)
        : notes_(notes)
        , onlyNew_(onlyNew) {}

    // The text must stay in place until finish(): it is a piece of a line of the file.
    void append(QStringView text) { texts_ << text; }

    void finish() {
        const qsizetype offset = notes_.isEmpty() ? 0 : 1;
        std::vector<bool> contained;
        if (onlyNew_) {
            contained = containedInEarlierLines(
                offset ? QList<QStringView>{QStringView(notes_)} + texts_ : texts_);
        }
        for (qsizetype index = 0; index < texts_.size(); ++index) {
            const QStringView text = texts_[index];
            if (notes_.isEmpty())
                notes_ = text.toString();
            else if (!onlyNew_ || !contained[std::size_t(index + offset)])
                (notes_ += carriageReturn) += text;
        }
        texts_.clear();
    }

private:
    QString &notes_;
    const bool onlyNew_;
    QList<QStringView> texts_;
};

// Contact lists are numbered from 1 by the digit of their K or U line; an index outside the
// list is the failing statement that the reader skips.
QString *contactField(std::vector<OrderContact> &list, int index, QString OrderContact::*field) {
    if (index < 1 || index > int(list.size()))
        return nullptr;
    return &(list[std::size_t(index - 1)].*field);
}

void startContact(std::vector<OrderContact> &list, int &current, int digit, const QString &name) {
    current = digit;
    if (digit < 1) // resizing to no entries fails, and so does storing at index 0
        return;
    list.resize(std::size_t(digit));
    list[std::size_t(digit - 1)].name = name;
}

QString *headerField(OrderHeader &header, QStringView tag) {
    static const struct {
        const char *tag;
        QString OrderHeader::*field;
    } plain[] = {
        {"CO=", &OrderHeader::purchaseOrderNumber},   {"PT=", &OrderHeader::purchaseOrderType},
        {"CP=", &OrderHeader::customerPurchaseOrder}, {"OT=", &OrderHeader::orderType},
        {"AB=", &OrderHeader::authorizedBy},          {"PA=", &OrderHeader::contractNumber},
        {"PR=", &OrderHeader::contractRevision},      {"RD=", &OrderHeader::requestedShipDate},
        {"RI=", &OrderHeader::requestedInstallDate},  {"DB=", &OrderHeader::directBillType},
    };
    for (const auto &entry : plain) {
        if (tag == QLatin1String(entry.tag))
            return &(header.*entry.field);
    }
    // Sold-to lines start with "D", ship-to lines with "P"; the second character picks the field.
    OrderParty *party = tag.startsWith(QLatin1Char('D'))   ? &header.soldTo
                        : tag.startsWith(QLatin1Char('P')) ? &header.shipTo
                                                           : nullptr;
    if (!party || tag.size() != 3 || tag[2] != QLatin1Char('='))
        return nullptr;
    switch (tag[1].unicode()) {
    case u'C':
        return &party->code;
    case u'1':
        return &party->company;
    case u'2':
        return &party->streetAddress[0];
    case u'3':
        return &party->streetAddress[1];
    case u'4':
        return &party->streetAddress[2];
    case u'5':
        return &party->city;
    case u'6':
        return &party->state;
    case u'7':
        return &party->zipCode;
    case u'8':
        return &party->country;
    case u'9':
        return &party->name;
    case u'P':
        return &party->phone;
    case u'F':
        return &party->fax;
    default:
        return nullptr;
    }
}

void readHeaderLine(const QString &line, OrderData &order, NoteJoiner &comments) {
    // A view: comment lines, which may be most of the file, are kept as views until the end.
    const QStringView text = QStringView(line).mid(3);
    if (const int digit = indexDigit(line, QLatin1Char('K'), Qt::CaseSensitive); digit >= 0) {
        startContact(order.salesPersons, order.currentSalesPerson, digit, text.toString());
    } else if (indexDigit(line, QLatin1Char('L'), Qt::CaseSensitive) >= 0) {
        // An L line belongs to the K line before it; its own digit is not used.
        if (QString *number =
                contactField(order.salesPersons, order.currentSalesPerson, &OrderContact::number))
            *number = text.toString();
    } else if (const int digit = indexDigit(line, QLatin1Char('U'), Qt::CaseSensitive);
               digit >= 0) {
        startContact(order.dealers, order.currentDealer, digit, text.toString());
    } else if (indexDigit(line, QLatin1Char('V'), Qt::CaseSensitive) >= 0) {
        if (QString *number =
                contactField(order.dealers, order.currentDealer, &OrderContact::number))
            *number = text.toString();
    } else if (QString *field = headerField(order.header, QStringView(line).left(3))) {
        *field = text.toString();
    } else if (line.startsWith(QLatin1String("TN="))) {
        // Comments already holding the text anywhere do not take it again.
        comments.append(text);
    }
}

void addCharge(OrderData &order, const QString &amount, const QString &name) {
    // The charge count is a 16-bit number; one more would overflow and the line is skipped.
    if (order.chargeCount() >= std::numeric_limits<qint16>::max())
        return;
    order.charges.push_back({amount, name, {}});
}

void readClassicChargeLine(const QString &line, OrderData &order, NoteJoiner &shippingNotes) {
    const QString tag = line.left(3).toUpper();
    const QStringView text = QStringView(line).mid(3);
    if (tag == QLatin1String("DE=")) {
        addCharge(order, text.toString(), QStringLiteral("Design"));
    } else if (tag == QLatin1String("SH=")) {
        addCharge(order, text.toString(), QStringLiteral("Shipping"));
    } else if (tag == QLatin1String("IN=")) {
        addCharge(order, text.toString(), QStringLiteral("Install"));
    } else if (indexDigit(line, QLatin1Char('X'), Qt::CaseInsensitive) >= 0) {
        // Deliberate: the slot is taken before the "=" test, so an X line without "=" still
        // counts, with an empty amount and name.
        addCharge(order, {}, {});
        if (line.mid(2, 1) == QLatin1String("=") && !order.charges.empty())
            order.charges.back().amount = text.toString();
    } else if (tag == QLatin1String("SN=")) {
        shippingNotes.append(text);
    }
}

void readVersion4ChargeLine(const QString &line, OrderData &order, NoteJoiner &shippingNotes) {
    if (const int digit = indexDigit(line, QLatin1Char('A'), Qt::CaseInsensitive); digit >= 0) {
        // The digit sets the count: charges come in ascending order, and a lower number after
        // a higher one drops the higher entries.
        if (digit > 0)
            order.charges.resize(std::size_t(digit));
        if (order.charges.empty())
            return;
        AdditionalCharge &charge = order.charges.back();
        const QString kind = line.mid(2, 1);
        if (kind == QLatin1String("="))
            charge.amount = line.mid(3);
        else if (kind == QLatin1String("N"))
            charge.name = line.mid(4) + QStringLiteral(": ");
        else if (kind == QLatin1String("S"))
            charge.secondText = line.mid(4) + QStringLiteral(": ");
    } else if (line.left(3).toUpper() == QLatin1String("SN=")) {
        shippingNotes.append(QStringView(line).mid(3));
    }
}

} // namespace

bool isCifVersion4(const QString &cifPath) {
    const QStringList lines = TextFile::readLines(cifPath);
    for (const QString &line : lines) {
        if (trimBlanks(line) == QLatin1String("[CIF V4]"))
            return true;
    }
    return false;
}

void readAdditionalChargeLines(const QStringList &lines, bool version4, OrderData &order) {
    // Only version 4 files skip shipping notes the note already holds.
    NoteJoiner shippingNotes(order.shippingNotes, version4);
    for (const QString &line : lines) {
        if (version4)
            readVersion4ChargeLine(line, order, shippingNotes);
        else
            readClassicChargeLine(line, order, shippingNotes);
    }
    shippingNotes.finish();
}

void readAdditionalCharges(const QString &cifPath, bool version4, OrderData &order) {
    if (const std::optional<QStringList> lines = linesOf(cifPath))
        readAdditionalChargeLines(*lines, version4, order);
}

void readOrderHeaderLines(const QStringList &lines, OrderData &order) {
    NoteJoiner comments(order.header.comments, true);
    for (const QString &line : lines)
        readHeaderLine(line, order, comments);
    comments.finish();
}

void readOrderHeader(const QString &cifPath, OrderData &order) {
    if (const std::optional<QStringList> lines = linesOf(cifPath))
        readOrderHeaderLines(*lines, order);
}

void loadOrderFile(const QString &cifPath, OrderData &order, Prompter &prompter) {
    order = OrderData();
    order.present = QFileInfo(cifPath).isFile();
    if (!order.present)
        return;
    try {
        order.version4 = isCifVersion4(cifPath);
    } catch (const RuntimeError &error) {
        reportError(prompter, QStringLiteral("CheckVersion Sub Procedure."), error);
    }
    readAdditionalCharges(cifPath, order.version4, order);
    readOrderHeader(cifPath, order);
}

double sumOfAdditionalCharges(const OrderData &order) {
    double sum = 0;
    for (const AdditionalCharge &charge : order.charges) {
        const std::optional<double> amount = Conversions::parseNumber(trimBlanks(charge.amount));
        if (!amount)
            throw RuntimeError(ErrorNumber::TypeMismatch);
        sum = Totals::checked(sum + *amount);
    }
    return sum;
}

namespace {

QString streetAddress(const OrderParty &party) {
    QString value;
    for (std::size_t line = 0; line < party.streetAddress.size(); ++line) {
        const QString &text = party.streetAddress[line];
        if (text.isEmpty())
            continue;
        // A first non-empty line 2 or 3 is preceded by a carriage return too; kept deliberately.
        value = line == 0 ? text : trimBlanks(value) + carriageReturn + text;
    }
    return value;
}

// The value a party caption shows, or nothing when the caption names no party field.
std::optional<QString> partyValue(const OrderHeader &header, const QString &caption) {
    const bool sold = caption.startsWith(QLatin1String("Sold "));
    if (!sold && !caption.startsWith(QLatin1String("Ship ")))
        return std::nullopt;
    const OrderParty &party = sold ? header.soldTo : header.shipTo;
    const QStringView field = QStringView(caption).mid(5);
    if (field == QLatin1String("Code"))
        return party.code;
    if (field == QLatin1String("Company"))
        return party.company;
    if (field == QLatin1String("Street Address"))
        return streetAddress(party);
    if (field == QLatin1String("City"))
        return party.city;
    if (field == QLatin1String("Zip Code"))
        return party.zipCode;
    if (field == QLatin1String("State"))
        return party.state;
    if (field == QLatin1String("Country"))
        return party.country;
    if (field == QLatin1String("Name"))
        return party.name;
    if (field == QLatin1String("Phone"))
        return party.phone;
    if (field == QLatin1String("Fax"))
        return party.fax;
    return std::nullopt;
}

struct LabelledField {
    const char *caption;
    const char *label;
    QString OrderHeader::*value; // null: the field has a label only
    bool date;
};

// The order fields with a label of their own; the first ten show their value only when the
// order file is present.
constexpr int PresentOnlyFields = 10;
const LabelledField labelledFields[] = {
    {"P. O. Number", "P. O. Number:", &OrderHeader::purchaseOrderNumber, false},
    {"P. O. Type", "P. O. Type:", &OrderHeader::purchaseOrderType, false},
    {"Customer P. O.", "Customer P. O.:", &OrderHeader::customerPurchaseOrder, false},
    {"Order Type", "Order Type:", &OrderHeader::orderType, false},
    {"Authorized By", "Authorized By:", &OrderHeader::authorizedBy, false},
    {"Contract Number", "Contract Number:", &OrderHeader::contractNumber, false},
    {"Contract Rev", "Contract Rev:", &OrderHeader::contractRevision, false},
    {"Ship Date", "Requested Ship Date:", &OrderHeader::requestedShipDate, true},
    {"Install Date", "Requested Install Date:", &OrderHeader::requestedInstallDate, true},
    {"Direct Bill Type", "Direct Bill Type:", &OrderHeader::directBillType, false},
    {"Sales Person", "Sales: ", nullptr, false},
    {"Sales Number", "Number: ", nullptr, false},
    {"Dealer", "Dealer: ", nullptr, false},
    {"Dealer Number", "Number: ", nullptr, false},
};

} // namespace

void fillOrderField(OrderFieldLists &lists, const OrderData &order, bool cifPresent, int boxIndex,
                    const QString &caption) {
    lists.labels.resize(OrderFieldLists::Slots + 1);
    lists.values.resize(OrderFieldLists::Slots + 1);
    if (boxIndex < 1 || boxIndex > OrderFieldLists::Slots)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    QString &label = lists.labels[std::size_t(boxIndex)];
    QString &value = lists.values[std::size_t(boxIndex)];
    const OrderHeader &header = order.header;

    for (int i = 0; i < int(std::size(labelledFields)); ++i) {
        const LabelledField &field = labelledFields[i];
        if (caption != QLatin1String(field.caption))
            continue;
        label = QString::fromLatin1(field.label);
        if (field.value && (cifPresent || i >= PresentOnlyFields)) {
            const QString &text = header.*field.value;
            value = field.date ? formatRequestedDate(text) : text;
        }
        return;
    }
    if (caption == QLatin1String("Comments")) {
        value = header.comments;
    } else if (const std::optional<QString> party = partyValue(header, caption)) {
        value = *party;
    }
}

QString formatRequestedDate(const QString &date) {
    if (date.contains(QLatin1Char('-')))
        return date;
    return date.mid(4, 2) + QLatin1Char('-') + date.mid(6, 2) + QLatin1Char('-') + date.left(4);
}

} // namespace tavrel

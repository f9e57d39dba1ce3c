// Order files: the version test, both passes start-up makes over the lines, then the charge sum
// the summary page asks for.

#include "FuzzInput.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "spec/OrderData.h"
#include "spec/OrderFileReader.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    const QStringList lines = TextFile::splitLines(fromWindows1252(fuzz::inputBytes(data, size)));
    OrderData order;
    order.present = true;
    // As isCifVersion4 decides, without the file it needs.
    order.version4 = std::any_of(lines.cbegin(), lines.cend(), [](const QString &line) {
        return QStringView(line).trimmed() == QLatin1String("[CIF V4]");
    });
    readAdditionalChargeLines(lines, order.version4, order);
    readOrderHeaderLines(lines, order);
    try {
        sumOfAdditionalCharges(order);
    } catch (const RuntimeError &) {
        // A charge that is not a number is refused by design.
    }
    return 0;
}

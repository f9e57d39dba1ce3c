// Order files: both passes start-up makes over the lines, in either version, then the charge sum
// the summary page asks for.

#include "FuzzInput.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "spec/OrderData.h"
#include "spec/OrderFileReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    const QStringList lines = TextFile::splitLines(fromWindows1252(fuzz::inputBytes(data, size)));
    for (const bool version4 : {false, true}) {
        OrderData order;
        order.present = true;
        order.version4 = version4;
        readAdditionalChargeLines(lines, version4, order);
        readOrderHeaderLines(lines, order);
        try {
            sumOfAdditionalCharges(order);
        } catch (const RuntimeError &) {
            // A charge that is not a number is refused by design.
        }
    }
    return 0;
}

// SIF files: the reading step and everything start-up computes from what was read.

#include "FuzzInput.h"

#include "base/RuntimeError.h"
#include "spec/SifReader.h"
#include "spec/SpecData.h"
#include "spec/Totals.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    SpecData spec;
    try {
        parseSifText(fuzz::inputBytes(data, size), QStringLiteral("fuzz.sif"), spec);
        Totals::computeAll(spec);
    } catch (const RuntimeError &) {
        // A refused file is a valid outcome; only crashes, hangs and leaks are findings.
    }
    return 0;
}

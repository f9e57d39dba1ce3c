// Group files: read from a file, as the main window's load-group button does.

#include "FuzzInput.h"

#include "base/RuntimeError.h"
#include "templates/GroupFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    const QString &path = fuzz::scratchPath(".grp");
    if (!fuzz::writeScratch(path, fuzz::inputBytes(data, size)))
        return 0;
    try {
        const ReportSelection group = GroupFile::read(path);
        GroupFile::bytes(group);
    } catch (const RuntimeError &) {
        // A printable value that is not a number is refused by design (type mismatch).
    }
    return 0;
}

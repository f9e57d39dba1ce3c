// Ini and job files: the private-profile reader, the field lengths read from a job file, and the
// writer that keeps every other line of an existing file.

#include "FuzzInput.h"

#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "base/Windows1252.h"
#include "shell/JobFile.h"
#include "shell/SettingsStore.h"
#include "spec/FieldLengths.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    const QByteArray bytes = fuzz::inputBytes(data, size);
    const IniFile ini = IniFile::fromText(fromWindows1252(bytes));
    qsizetype total = 0;
    for (const QString &section : ini.sections()) {
        for (const QString &key : ini.keys(section))
            total += ini.value(section, key).size();
    }
    if (total > qsizetype(size) + 1)
        __builtin_trap(); // values are cut pieces of the input and can never outgrow it

    // The file-based steps are covered by small inputs; a huge one would only time the disk.
    if (size > 1024 * 1024)
        return 0;
    const QString &path = fuzz::scratchPath(".ini");
    if (!fuzz::writeScratch(path, bytes))
        return 0;
    const JobFile job = JobFile::load(path);
    job.fieldLengths(FieldLengths::builtIn());
    bool writeBack = false;
    job.printerSettings(PrinterList{}, &writeBack);
    job.userPreferences();
    job.designerPreferences();
    job.storedSelection(QStringLiteral("/t"));
    try {
        IniFile::write(path, QStringLiteral("Printer"), QStringLiteral("PN"),
                       QStringLiteral("12,Part"));
        if (IniFile::load(path).value(QStringLiteral("Printer"), QStringLiteral("PN")) !=
            QLatin1String("12,Part"))
            __builtin_trap(); // what was just written must read back
    } catch (const RuntimeError &) {
    }
    return 0;
}

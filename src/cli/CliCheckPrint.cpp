#include "cli/Commands.h"

namespace tavrel::cli {

int runCheckPrint(const QStringList &args)
{
    Q_UNUSED(args);
    printErr(QStringLiteral("tavrel-cli check-print: not available yet\n"));
    return 1;
}

} // namespace tavrel::cli

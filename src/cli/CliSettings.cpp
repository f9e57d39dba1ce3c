#include "cli/Commands.h"

namespace tavrel::cli {

int runSettings(const QStringList &args)
{
    Q_UNUSED(args);
    printErr(QStringLiteral("tavrel-cli settings: not available yet\n"));
    return 1;
}

} // namespace tavrel::cli

#include "cli/Commands.h"

namespace tavrel::cli {

int runSpec(const QStringList &args)
{
    Q_UNUSED(args);
    printErr(QStringLiteral("tavrel-cli spec: not available yet\n"));
    return 1;
}

} // namespace tavrel::cli

#include "cli/Commands.h"

namespace tavrel::cli {

int runRender(const QStringList &args)
{
    Q_UNUSED(args);
    printErr(QStringLiteral("tavrel-cli render: not available yet\n"));
    return 1;
}

} // namespace tavrel::cli

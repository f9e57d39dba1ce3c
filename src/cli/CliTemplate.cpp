#include "cli/Commands.h"

namespace tavrel::cli {

int runTemplate(const QStringList &args)
{
    Q_UNUSED(args);
    printErr(QStringLiteral("tavrel-cli template: not available yet\n"));
    return 1;
}

} // namespace tavrel::cli

#include "NamedValue.h"

#include <KvSyncTool/Exception.h>

namespace KvSyncCli {

NamedValue splitNamedValue(const QString &text)
{
    const int sign = text.indexOf(QLatin1Char('='));
    if (sign <= 0)
        throw KvSyncTool::Exception(InvalidParameter,
                                    QStringLiteral("\"%1\" is not NAME=VALUE").arg(text));
    return {text.left(sign), text.mid(sign + 1)};
}

} // namespace KvSyncCli

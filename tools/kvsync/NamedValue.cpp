#include "NamedValue.h"

#include "Command.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QSet>

namespace KvSyncCli {

namespace {

NamedValue split(const QString &text)
{
    const int sign = text.indexOf(QLatin1Char('='));
    if (sign <= 0)
        throw KvSyncTool::Exception(InvalidParameter,
                                    QStringLiteral("\"%1\" is not NAME=VALUE").arg(text));
    return {text.left(sign), text.mid(sign + 1)};
}

} // namespace

QList<NamedValue> namedValues(const std::vector<std::string> &arguments)
{
    QList<NamedValue> values;
    QSet<QString> names;
    for (const std::string &argument : arguments) {
        const NamedValue value = split(fromArgument(argument));
        if (names.contains(value.name))
            throw KvSyncTool::Exception(
                InvalidParameter,
                QStringLiteral("\"%1\" is given more than one value").arg(value.name));
        names.insert(value.name);
        values.append(value);
    }
    return values;
}

} // namespace KvSyncCli

#include "CommandInfo.h"

namespace Scanner {

namespace {

QVariantMap describe(const ParameterInfo &parameter)
{
    QVariantMap map{{QStringLiteral("name"), QString::fromLatin1(parameter.name)},
                    {QStringLiteral("type"), QString::fromLatin1(parameter.type)}};
    if (*parameter.unit)
        map.insert(QStringLiteral("unit"), QString::fromLatin1(parameter.unit));
    if (parameter.range) {
        map.insert(QStringLiteral("minimum"), parameter.range->first);
        map.insert(QStringLiteral("maximum"), parameter.range->second);
    }
    return map;
}

} // namespace

QStringList namesOf(const std::vector<ParameterInfo> &parameters)
{
    QStringList names;
    for (const ParameterInfo &parameter : parameters)
        names.append(QString::fromLatin1(parameter.name));
    return names;
}

QVariantMap CommandInfo::describe() const
{
    QVariantList maps;
    for (const ParameterInfo &parameter : parameters)
        maps.append(Scanner::describe(parameter));
    return {{QStringLiteral("name"), QString::fromLatin1(name)},
            {QStringLiteral("form"), QString::fromLatin1(form)},
            {QStringLiteral("parameters"), maps}};
}

CommandInfo listingCommand()
{
    return {"commands", "list"};
}

} // namespace Scanner

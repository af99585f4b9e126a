#include "PropertyTable.h"

#include <QtCore/QStringList>

namespace VirtualScanner {

void PropertyTable::add(const QString &name, Getter getter, Setter setter)
{
    properties.insert(name, {std::move(getter), std::move(setter)});
}

ErrorCode PropertyTable::get(const QString &name, Values &values) const
{
    if (name == QStringLiteral("properties")) {
        values.insert(QStringLiteral("names"), QStringList(properties.keys()));
        return Success;
    }
    const auto property = properties.constFind(name);
    if (property == properties.constEnd())
        return UnknownProperty;
    return property->get ? property->get(values) : PropertyNotReadable;
}

ErrorCode PropertyTable::set(const QString &name, const Values &values) const
{
    const auto property = properties.constFind(name);
    if (property == properties.constEnd())
        return UnknownProperty;
    return property->set ? property->set(values) : PropertyNotWritable;
}

} // namespace VirtualScanner

#ifndef VIRTUALSCANNER_PROPERTYTABLE_H
#define VIRTUALSCANNER_PROPERTYTABLE_H

#include "DeviceGate.h"

#include <functional>

namespace VirtualScanner {

/// The properties of one device by name. Each capability adds its own while the device is made;
/// afterwards the table does not change, so it needs no lock.
class PropertyTable
{
public:
    using Getter = std::function<ErrorCode(Values &)>;
    using Setter = std::function<ErrorCode(const Values &)>;

    /// An empty function makes the property write-only or read-only.
    void add(const QString &name, Getter getter, Setter setter = {});

    ErrorCode get(const QString &name, Values &values) const;
    ErrorCode set(const QString &name, const Values &values) const;

private:
    struct Property
    {
        Getter get;
        Setter set;
    };

    QMap<QString, Property> properties;
};

} // namespace VirtualScanner

#endif

#include "VirtualDevice.h"

#include "Models.h"

namespace VirtualScanner {

VirtualDevice::VirtualDevice(int index, const QString &name, BaseDeviceSpace::DeviceTypes types)
    : ownIndex(index)
    , deviceName(name)
    , deviceTypes(types)
{
    // Faults and facts pass no gate: they work while the device is unconnected, failing or gone.
    deviceProperties.add(QStringLiteral("info"),
                         [this](Values &values) { return getInfo(values); });
    deviceProperties.add(QStringLiteral("fail"), {},
                         [this](const Values &order) { return deviceGate.setFailure(order); });
    deviceProperties.add(QStringLiteral("slow"), {},
                         [this](const Values &order) { return deviceGate.setDelay(order); });
    deviceProperties.add(
        QStringLiteral("vanish"), [this](Values &values) { return deviceGate.getVanished(values); },
        [this](const Values &order) { return deviceGate.setVanished(order); });
}

QString VirtualDevice::name()
{
    return deviceName;
}

QFlags<BaseDeviceSpace::DeviceType> VirtualDevice::types()
{
    return deviceTypes;
}

ErrorCode VirtualDevice::connectDeviceByIndex(int index)
{
    if (index < 0 || index >= modelCount())
        return NoSuchIndex;
    // An object is of one kind from its making: the core found its capabilities by its type.
    if (index != ownIndex)
        return OtherDevice;
    return deviceGate.connect();
}

ErrorCode VirtualDevice::getProperty(const QString &property, Values &values)
{
    return deviceProperties.get(property, values);
}

ErrorCode VirtualDevice::setProperty(const QString &property, const Values &values)
{
    return deviceProperties.set(property, values);
}

ErrorCode VirtualDevice::getInfo(Values &values) const
{
    values.insert(QStringLiteral("name"), deviceName);
    values.insert(QStringLiteral("index"), ownIndex);
    values.insert(QStringLiteral("serial"),
                  QStringLiteral("VS-%1").arg(ownIndex + 1, 4, 10, QLatin1Char('0')));
    values.insert(QStringLiteral("types"), static_cast<int>(deviceTypes));
    values.insert(QStringLiteral("connected"), deviceGate.isConnected());
    return Success;
}

} // namespace VirtualScanner

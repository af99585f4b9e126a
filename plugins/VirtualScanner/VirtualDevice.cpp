#include "VirtualDevice.h"

#include "Models.h"

#include <atomic>

namespace VirtualScanner {

namespace {

std::atomic<quint32> claimed{0};

} // namespace

HardwareClaim::HardwareClaim(int index)
    : bit(quint32(1) << index)
{
}

HardwareClaim::~HardwareClaim()
{
    release();
}

bool HardwareClaim::claim()
{
    if (!isClaimed)
        isClaimed = (claimed.fetch_or(bit) & bit) == 0;
    return isClaimed;
}

void HardwareClaim::release()
{
    if (isClaimed)
        claimed.fetch_and(~bit);
    isClaimed = false;
}

VirtualDevice::VirtualDevice(int index, const QString &name, BaseDeviceSpace::DeviceTypes types)
    : ownIndex(index)
    , deviceName(name)
    , deviceTypes(types)
    , hardware(index)
{
    deviceGate.onLoss([this] { hardware.release(); });
    // Facts pass no gate: they can be had before the connection and after its loss.
    deviceProperties.add(QStringLiteral("info"),
                         [this](Values &values) { return getInfo(values); });
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
    return deviceGate.connect("connectDeviceByIndex", [&] {
        if (index < 0 || index >= modelCount())
            return NoSuchIndex;
        // An object is of one kind from its making: the core found its capabilities by its type.
        if (index != ownIndex)
            return OtherDevice;
        return hardware.claim() ? Success : DeviceInUse;
    });
}

ErrorCode VirtualDevice::getProperty(const QString &property, Values &values)
{
    return deviceProperties.get(property, values);
}

ErrorCode VirtualDevice::setProperty(const QString &property, const Values &values)
{
    return deviceProperties.set(property, values);
}

void VirtualDevice::extend(void (*extension)(DeviceGate &, PropertyTable &))
{
    extension(deviceGate, deviceProperties);
}

void VirtualDevice::end()
{
    deviceGate.close();
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

void DeviceEnd::operator()(VirtualDevice *device) const
{
    device->end();
    delete device;
}

} // namespace VirtualScanner

#ifndef VIRTUALSCANNER_VIRTUALDEVICE_H
#define VIRTUALSCANNER_VIRTUALDEVICE_H

#include "PropertyTable.h"

#include "KvSyncDevice/DeviceInterface.h"

#include <memory>

namespace VirtualScanner {

/// One piece of hardware, as one of the device objects that are made for it claims it: one at a
/// time is connected.
class HardwareClaim
{
public:
    explicit HardwareClaim(int index);
    ~HardwareClaim();
    HardwareClaim(const HardwareClaim &) = delete;
    HardwareClaim &operator=(const HardwareClaim &) = delete;

    /// Whether the hardware is this object's now.
    bool claim();
    void release();

private:
    const quint32 bit;
    bool isClaimed = false;
};

/// What all devices of this plug-in share: name, kinds, connection and properties. A device class
/// derives from this and from the capabilities that it offers (see Models.cpp).
class VirtualDevice : public BaseDeviceSpace::DeviceInterface
{
public:
    VirtualDevice(int index, const QString &name, BaseDeviceSpace::DeviceTypes types);
    VirtualDevice(const VirtualDevice &) = delete;
    VirtualDevice &operator=(const VirtualDevice &) = delete;

    QString name() override;
    QFlags<BaseDeviceSpace::DeviceType> types() override;
    ErrorCode connectDeviceByIndex(int index) override;
    ErrorCode getProperty(const QString &property, Values &values) override;
    ErrorCode setProperty(const QString &property, const Values &values) override;

    /// Adds to gate and properties, while nobody uses the device yet.
    void extend(void (*extension)(DeviceGate &, PropertyTable &));
    /// Lets nobody in any more and returns when those inside have left. Comes before the
    /// destructor, which would otherwise take the capabilities away under them.
    void end();

protected:
    DeviceGate deviceGate;
    PropertyTable deviceProperties;

private:
    ErrorCode getInfo(Values &values) const;

    const int ownIndex;
    const QString deviceName;
    const BaseDeviceSpace::DeviceTypes deviceTypes;
    HardwareClaim hardware;
};

/// Ends a device, then deletes it.
struct DeviceEnd
{
    void operator()(VirtualDevice *device) const;
};
using DevicePointer = std::unique_ptr<VirtualDevice, DeviceEnd>;

} // namespace VirtualScanner

#endif

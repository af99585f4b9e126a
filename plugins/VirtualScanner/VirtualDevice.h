#ifndef VIRTUALSCANNER_VIRTUALDEVICE_H
#define VIRTUALSCANNER_VIRTUALDEVICE_H

#include "PropertyTable.h"

#include "KvSyncDevice/DeviceInterface.h"

#include <memory>

namespace VirtualScanner {

/// The place at which one piece of hardware stands. However many device objects are made for it,
/// one at a time is connected with it.
class Seat
{
public:
    explicit Seat(int placeIndex);
    ~Seat();
    Seat(const Seat &) = delete;
    Seat &operator=(const Seat &) = delete;

    /// Whether the place is this object's now.
    bool take();
    void leave();

private:
    const quint32 place; ///< as a bit
    bool isTaken = false;
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
    Seat seat;
};

/// Ends a device, then deletes it.
struct DeviceEnd
{
    void operator()(VirtualDevice *device) const;
};
using DevicePointer = std::unique_ptr<VirtualDevice, DeviceEnd>;

} // namespace VirtualScanner

#endif

#ifndef VIRTUALSCANNER_VIRTUALDEVICE_H
#define VIRTUALSCANNER_VIRTUALDEVICE_H

#include "PropertyTable.h"

#include "KvSyncDevice/DeviceInterface.h"

namespace VirtualScanner {

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

protected:
    DeviceGate deviceGate;
    PropertyTable deviceProperties;

private:
    ErrorCode getInfo(Values &values) const;

    const int ownIndex;
    const QString deviceName;
    const BaseDeviceSpace::DeviceTypes deviceTypes;
};

} // namespace VirtualScanner

#endif

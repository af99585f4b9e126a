#ifndef KVSYNCDEVICE_DEVICEINTERFACE_H
#define KVSYNCDEVICE_DEVICEINTERFACE_H

#include "KvSyncDevice/Visibility.h"
#include "KvSyncTool/ErrorCode.h"

#include <QtCore/QFlags>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace BaseDeviceSpace {

/// Kind of device; a device may be of several kinds.
enum DeviceType : int {
    CameraDevice = 0x01,
    ProjectorDevice = 0x02,
    MotorDevice = 0x04,
    ControllerDevice = 0x08,
};
Q_DECLARE_FLAGS(DeviceTypes, DeviceType)
Q_DECLARE_OPERATORS_FOR_FLAGS(DeviceTypes)

/// The interface that every device of a device plug-in implements.
///
/// A device class derives from this, from each capability interface that it offers, and from no
/// other: the core finds capabilities by cross-cast. The order of the virtual operations is a
/// binary contract; it never changes.
///
/// Any thread may call, several at once; the core holds no lock during a call. The plug-in
/// serializes what it must. An ErrorCode reaches the caller unchanged, including the plug-in's own
/// codes; an exception passes through the core.
class KVSYNC_SHARED_TYPE DeviceInterface
{
public:
    /// The device's name, for display.
    virtual QString name() = 0;

    /// The kinds that the device belongs to.
    virtual QFlags<DeviceType> types() = 0;

    /// Reserved slot; never called by the core.
    virtual void deviceReserved1() {}

    /// Connects the device at `index` (from 0) in the plug-in's own list.
    virtual ErrorCode connectDeviceByIndex(int index) = 0;

    /// Reserved slots; never called by the core.
    virtual void deviceReserved2() {}
    virtual void deviceReserved3() {}

    /// Fills `values` with the content of `property`. The core neither clears nor reads it.
    virtual ErrorCode getProperty(const QString &property, QMap<QString, QVariant> &values) = 0;

    /// Sets `property` from `values`. The plug-in defines names, keys and units.
    virtual ErrorCode setProperty(const QString &property,
                                  const QMap<QString, QVariant> &values) = 0;

    /// Last, so that it takes no slot of the operations above.
    virtual ~DeviceInterface() = default;
};

} // namespace BaseDeviceSpace

#endif

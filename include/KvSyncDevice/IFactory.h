#ifndef KVSYNCDEVICE_IFACTORY_H
#define KVSYNCDEVICE_IFACTORY_H

#include "KvSyncDevice/DeviceInterface.h"

#include <QtCore/QObject>

/// The interface identifier by which the core recognizes a device plug-in's root object.
#define IFactory_iid "Veltrano.Device.IFactory.2.0.200324"

/// The root object of a device plug-in: counts, creates and destroys devices.
///
/// The root class derives from IFactory alone and names it in Q_INTERFACES, with
/// Q_PLUGIN_METADATA(IID IFactory_iid). It has no Q_OBJECT here: it adds no slot between QObject's
/// eleven and those below, whose order is a binary contract.
///
/// The core keeps the plug-in loaded, and this object alive, until its DeviceManager is destroyed.
/// Any thread may call, several at once; the core holds no lock during a call. What an operation
/// throws passes through to the caller.
class KVSYNC_SHARED_TYPE IFactory : public QObject
{
public:
    /// Reserved slots; never called by the core.
    virtual void factoryReserved1() {}
    virtual void factoryReserved2() {}

    /// The number of devices that can be created.
    virtual int enumDevices() = 0;

    /// Creates a device. The factory owns it; it must stay valid until it is given to
    /// destroyDevice. Its address becomes the device's handle. Null is passed on as handle 0 with
    /// `Success`; to report that there is no device, throw, or return 0 from enumDevices.
    virtual BaseDeviceSpace::DeviceInterface *createDevice() = 0;

    /// Destroys a device created here. Any code but `Success` keeps the handle registered and is
    /// returned to the caller. Leave `device` unchanged: if it is cleared, its handle stays
    /// registered although the device is gone, and the core destroys it again on its own
    /// destruction. Must not throw while the core is being destroyed: the process would terminate.
    virtual ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) = 0;

    /// Overrides QObject's; takes no slot of its own.
    ~IFactory() override = default;
};

Q_DECLARE_INTERFACE(IFactory, IFactory_iid)

#endif

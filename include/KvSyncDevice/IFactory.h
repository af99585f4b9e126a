#ifndef KVSYNCDEVICE_IFACTORY_H
#define KVSYNCDEVICE_IFACTORY_H

#include "KvSyncDevice/DeviceInterface.h"

#include <QtCore/QObject>

/// What the core asks a device plug-in's root object for.
#define IFactory_iid "Veltrano.Device.IFactory.2.0.200324"

/// The root object of a device plug-in: counts, makes and destroys devices.
///
/// The root class derives from IFactory alone and names it in Q_INTERFACES, with
/// Q_PLUGIN_METADATA(IID IFactory_iid). It has no Q_OBJECT here: it adds no slot between QObject's
/// eleven and those below, whose order is a binary contract.
///
/// The core keeps the plug-in loaded, and this object alive, until its DeviceManager is destroyed.
/// Any thread may call, several at once, without a lock of the core. What an operation throws
/// passes through to the caller.
class KVSYNC_SHARED_TYPE IFactory : public QObject
{
public:
    /// Hold their places; never called by the core.
    virtual void factoryReserved1() {}
    virtual void factoryReserved2() {}

    /// The number of devices that can be created.
    virtual int enumDevices() = 0;

    /// Makes a device. The factory owns it; it stays valid until destroyDevice got it. Its address
    /// becomes the device's handle. Null is passed on as handle 0 with `Success`; throw, or have no
    /// device to create in enumDevices, to say that there is none.
    virtual BaseDeviceSpace::DeviceInterface *createDevice() = 0;

    /// Releases a device made here. Anything but `Success` keeps the handle registered and is
    /// returned to the caller. Leave `device` as it is: if it is cleared, its handle stays
    /// registered after the device is gone, and the core destroys it once more at its own end.
    /// Must not throw while the core is being destroyed: the process would end.
    virtual ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) = 0;

    /// Overrides QObject's; takes no place of its own.
    ~IFactory() override = default;
};

Q_DECLARE_INTERFACE(IFactory, IFactory_iid)

#endif

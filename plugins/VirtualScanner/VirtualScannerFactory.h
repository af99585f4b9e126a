#ifndef VIRTUALSCANNER_VIRTUALSCANNERFACTORY_H
#define VIRTUALSCANNER_VIRTUALSCANNERFACTORY_H

#include "VirtualDevice.h"

#include "KvSyncDevice/IFactory.h"

#include <map>
#include <mutex>

namespace VirtualScanner {

/// The root object. createDevice makes the devices of the list in turn and starts again after the
/// last; a caller that wants the one at index i creates until connectDeviceByIndex(i) accepts, and
/// deletes the others.
class VirtualScannerFactory final : public IFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IFactory_iid)
    Q_INTERFACES(IFactory)

public:
    int enumDevices() override;
    BaseDeviceSpace::DeviceInterface *createDevice() override;
    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override;

private:
    std::mutex mutex;
    int nextIndex = 0;
    std::map<BaseDeviceSpace::DeviceInterface *, DevicePointer> devices;
};

} // namespace VirtualScanner

#endif

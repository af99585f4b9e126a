#include "VirtualScannerFactory.h"

#include "Models.h"
#include "faults/FaultInjection.h"

namespace VirtualScanner {

int VirtualScannerFactory::enumDevices()
{
    return modelCount();
}

BaseDeviceSpace::DeviceInterface *VirtualScannerFactory::createDevice()
{
    const std::lock_guard<std::mutex> locker(mutex);
    DevicePointer device = makeDevice(nextIndex);
    device->extend(injectFaults); // not in a driver
    nextIndex = (nextIndex + 1) % modelCount();
    BaseDeviceSpace::DeviceInterface *const address = device.get();
    devices.emplace(address, std::move(device));
    return address;
}

ErrorCode VirtualScannerFactory::destroyDevice(BaseDeviceSpace::DeviceInterface *&device)
{
    DevicePointer doomed; // ends, and waits for its callers, after the lock is given back
    const std::lock_guard<std::mutex> locker(mutex);
    const auto found = devices.find(device);
    if (found == devices.end())
        return UnknownDevice;
    doomed = std::move(found->second);
    devices.erase(found);
    // `device` stays as it is: the core takes it for the key of the handle that ends.
    return Success;
}

} // namespace VirtualScanner

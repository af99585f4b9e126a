#include "Registry.h"

#include "Errors.h"
#include "Search.h"

#include <algorithm>
#include <utility>

namespace Scanner::PluginDevices {

using KvSyncCore::DeviceController;

Registry::Registry(Publish publishEvent)
    : publish(std::move(publishEvent))
{
}

void Registry::setController(DeviceController *newController)
{
    const std::lock_guard<std::mutex> lock(mutex);
    // The core hands itself over again with every load. Another one may stand where the one before
    // stood, so the pointer alone does not tell.
    const bool isSame = newController && newController == controller;
    const auto isGone = [&](const std::shared_ptr<Device> &device) {
        if (isSame && newController->name(device->handle()).first == Success)
            return false;
        device->abandon();
        return true;
    };
    devices.erase(std::remove_if(devices.begin(), devices.end(), isGone), devices.end());
    controller = newController;
}

qint64 Registry::open(const QVariantMap &parameters)
{
    const DeviceAddress address(parameters);
    const std::lock_guard<std::mutex> searchLock(searching);
    DeviceController &core = currentController();
    Search search(core, address);
    const qint64 handle = search.connect(address.index);
    const auto device = std::make_shared<Device>(core, handle, address, publish);
    const std::lock_guard<std::mutex> lock(mutex);
    // An ended device that is just about to be removed may have stood at the same address.
    devices.erase(std::remove_if(devices.begin(), devices.end(),
                                 [handle](const std::shared_ptr<Device> &each) {
                                     return each->handle() == handle;
                                 }),
                  devices.end());
    devices.push_back(device);
    search.take(handle);
    return handle;
}

std::shared_ptr<Device> Registry::find(qint64 handle)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found =
        std::find_if(devices.begin(), devices.end(), [handle](const std::shared_ptr<Device> &each) {
            return each->handle() == handle;
        });
    return found == devices.end() ? nullptr : *found;
}

void Registry::remove(const std::shared_ptr<DeviceFunctions> &closed)
{
    const std::lock_guard<std::mutex> lock(mutex);
    devices.erase(std::remove(devices.begin(), devices.end(), closed), devices.end());
}

QVariantList Registry::list()
{
    const std::lock_guard<std::mutex> lock(mutex);
    QVariantList maps;
    for (const std::shared_ptr<Device> &device : devices)
        maps.append(device->describe());
    return maps;
}

QVariantList Registry::enumerate(const QVariantMap &parameters)
{
    const PluginAddress address(parameters);
    const std::lock_guard<std::mutex> searchLock(searching);
    DeviceController &core = currentController();
    Search search(core, address);
    QVariantList maps;
    for (int index = 0; index < search.count(); ++index) {
        QVariantMap map{{QStringLiteral("index"), index}};
        try {
            const Connection device(core, search.connect(index));
            map.insert(QStringLiteral("name"), device.name());
            map.insert(QStringLiteral("types"), device.capabilities());
        } catch (const KvSyncTool::Exception &) {
            // It is there, but not for us: it may be in use, or switched off.
        }
        maps.append(map);
    }
    return maps;
}

DeviceController &Registry::currentController()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return *controller;
}

} // namespace Scanner::PluginDevices

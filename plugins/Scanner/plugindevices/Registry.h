#ifndef SCANNER_PLUGINDEVICES_REGISTRY_H
#define SCANNER_PLUGINDEVICES_REGISTRY_H

#include "Device.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Scanner::PluginDevices {

/// The devices of device plug-ins that are open. Any thread may call.
class Registry
{
public:
    explicit Registry(Publish publishEvent);

    /// Devices of another core are open no longer.
    void setController(KvSyncCore::DeviceController *newController);

    /// Opens one by {"plugin", "version", "index"} and returns its handle, which is the
    /// core's. Throws as DeviceAddress and Search do.
    qint64 open(const QVariantMap &parameters);
    /// The open device of that handle, or null.
    std::shared_ptr<Device> find(qint64 handle);
    /// It was closed.
    void remove(const std::shared_ptr<DeviceFunctions> &closed);

    /// One map for each open device, in the order of opening: see Device::describe.
    QVariantList list();
    /// One map for each device that the plug-in {"plugin", "version"} has: {"index", "name",
    /// "types"}. Each is connected for a moment; "name" and "types" are missing if it refuses that.
    QVariantList enumerate(const QVariantMap &parameters);

private:
    KvSyncCore::DeviceController &currentController();

    const Publish publish;
    std::mutex searching; ///< plug-ins are loaded, and their devices made, by one thread at a time
    std::mutex mutex;
    KvSyncCore::DeviceController *controller = nullptr;
    std::vector<std::shared_ptr<Device>> devices;
};

} // namespace Scanner::PluginDevices

#endif

#ifndef SCANNER_PLUGINDEVICES_H
#define SCANNER_PLUGINDEVICES_H

#include "PluginDevice.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Scanner {

/// The devices of device plug-ins that are open. Any thread may call.
class PluginDevices
{
public:
    explicit PluginDevices(Publish publishEvent);

    /// Devices of another core are open no longer.
    void setController(KvSyncCore::DeviceController *newController);

    /// Opens one by {"plugin", "version", "index"} and answers with its handle, which is the
    /// core's. Throws as DeviceAddress and DeviceSearch do.
    qint64 open(const QVariantMap &parameters);
    /// The open device of that handle, or null.
    std::shared_ptr<PluginDevice> find(qint64 handle);
    /// It was closed.
    void remove(const std::shared_ptr<Device> &closed);

    /// One map for each open device, in the order of opening: see PluginDevice::describe.
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
    std::vector<std::shared_ptr<PluginDevice>> devices;
};

} // namespace Scanner

#endif

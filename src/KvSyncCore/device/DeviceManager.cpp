#include "device/DeviceManager.h"

#include "LogChannels.h"

namespace KvSyncCore {

DeviceManager::DeviceManager() = default;

DeviceManager::~DeviceManager()
{
    deleteAllDevices();
    unloadAllPlugins();
}

ErrorCode DeviceManager::setPluginDirPath(const QString &dir)
{
    if (dir.isEmpty()) {
        KVSYNC_CRITICAL << "plugin path is null";
        return InvalidParameter;
    }
    pluginDirPath = dir;
    return Success;
}

} // namespace KvSyncCore

#ifndef SCANNER_DEVICESEARCH_H
#define SCANNER_DEVICESEARCH_H

#include "DeviceAddress.h"

#include <KvSyncCore/DeviceController.h>

#include <vector>

namespace Scanner {

/// Looks for the object that stands for a place in a device plug-in's list.
///
/// A plug-in makes devices without being told which, and a device may accept only the index that it
/// stands for. So objects are made, as many as the plug-in counts, until one accepts; at the end
/// those that were not taken are deleted.
class DeviceSearch
{
public:
    /// Loads the plug-in. Throws the code with which the core refused, and `ConnectFailed` if the
    /// plug-in counts no device.
    DeviceSearch(KvSyncCore::DeviceController &deviceController,
                 const PluginAddress &pluginAddress);
    ~DeviceSearch();
    DeviceSearch(const DeviceSearch &) = delete;
    DeviceSearch &operator=(const DeviceSearch &) = delete;

    /// How many devices the plug-in counts; at least one.
    int count() const { return deviceCount; }

    /// The handle of a connected device. The search deletes it unless it is taken. Throws
    /// `InvalidParameter` for an index that is too high, `ConnectFailed` if no object accepts it.
    qint64 connect(int index);
    /// The device is the caller's now.
    void take(qint64 handle);

private:
    qint64 make();

    KvSyncCore::DeviceController &controller;
    const PluginAddress address;
    int deviceCount;
    std::vector<qint64> idle;      ///< made, but not connected
    std::vector<qint64> connected; ///< and not taken
};

} // namespace Scanner

#endif

#ifndef SCANNER_PLUGINDEVICES_SEARCH_H
#define SCANNER_PLUGINDEVICES_SEARCH_H

#include <KvSyncCore/DeviceController.h>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVersionNumber>

#include <vector>

namespace Scanner::PluginDevices {

/// Names a device plug-in as a host does: {"plugin": text, "version": text}. Of the version the
/// first two numbers count.
struct PluginAddress
{
    /// Throws `InvalidParameter` if a part is missing or cannot be used.
    explicit PluginAddress(const QVariantMap &parameters);

    /// "VirtualScanner 1.0", for people.
    QString shown() const;

    QString plugin;
    QVersionNumber version;
};

/// The same and {"index": number}, from 0: one of the plug-in's devices.
struct DeviceAddress : PluginAddress
{
    explicit DeviceAddress(const QVariantMap &parameters);

    int index;
};

/// Looks for the object that stands for a place in a device plug-in's list.
///
/// A plug-in makes devices without being told which, and a device may accept only the index that it
/// stands for. So objects are made, as many as the plug-in counts, until one accepts; at the end
/// those that were not taken are deleted.
class Search
{
public:
    /// Loads the plug-in. Throws the code with which the core refused, and `ConnectFailed` if the
    /// plug-in counts no device.
    Search(KvSyncCore::DeviceController &deviceController, const PluginAddress &pluginAddress);
    ~Search();
    Search(const Search &) = delete;
    Search &operator=(const Search &) = delete;

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

} // namespace Scanner::PluginDevices

#endif

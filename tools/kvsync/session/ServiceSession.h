#ifndef KVSYNC_SERVICESESSION_H
#define KVSYNC_SERVICESESSION_H

#include "plugins/PluginFolders.h"
#include "session/Interruption.h"

#include <KvSyncCore/SyncCore.h>

#include <atomic>
#include <functional>
#include <optional>

namespace KvSyncCli {

/// One event of a plug-in.
struct PluginEvent
{
    bool isPublic;
    QString plugin;
    QString name;
    QVariantList payload;
    QVersionNumber version;
};

/// The service core with one command plug-in in use, and at most one device that it has open.
class ServiceSession
{
public:
    /// Throws what the core throws when the plug-in cannot be loaded.
    ServiceSession(const PluginDirectories &directories, Interruption &ofProcess,
                   QString pluginName = QStringLiteral("Scanner"),
                   QVersionNumber version = QVersionNumber(1, 0));
    /// Closes the device.
    ~ServiceSession();
    ServiceSession(const ServiceSession &) = delete;
    ServiceSession &operator=(const ServiceSession &) = delete;

    /// `listener` runs on whatever thread the plug-in emits from, as long as this object lives.
    void listen(const std::function<void(const PluginEvent &event)> &listener);

    /// Calls one of the plug-in's functions.
    QVariant call(const QString &function, const QVariantList &arguments = {});

    /// Opens a device, which is closed at the latest with this object, and as soon as the process
    /// is asked to end. The one before must be closed. Throws what the plug-in throws.
    void open(const QVariantMap &address);

    /// Calls a function whose first argument is the open device's handle.
    QVariant callDevice(const QString &function, const QVariantList &furtherArguments = {});
    /// Calls the plug-in's "execute" for the open device.
    QVariant execute(const QString &command, const QVariantList &arguments = {});

    /// Closes now, which ends a call that is under way. Any thread, more than once. Throws if the
    /// plug-in refuses.
    void close();
    /// The same, but throws nothing.
    void closeAnyhow();

private:
    QVariant requestHandle(const QVariantMap &address);

    KvSyncCore::SyncCore core;
    Interruption &interruption;
    const QString plugin;
    const QVersionNumber pluginVersion;
    CommandInterface *commands = nullptr; ///< the core's, for as long as the process lives
    QVariant handle;
    std::atomic<bool> isOpen{false};
    std::optional<Interruption::Ending> ending;
};

} // namespace KvSyncCli

#endif

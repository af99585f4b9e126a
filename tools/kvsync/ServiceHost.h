#ifndef KVSYNC_SERVICEHOST_H
#define KVSYNC_SERVICEHOST_H

#include "Command.h"

#include <KvSyncCore/SyncCore.h>

namespace KvSyncCli {

/// One event of a plug-in.
struct Event
{
    bool isPublic;
    QString pluginName;
    QString name;
    QVariantList payload;
    QVersionNumber version;
};

/// The service core, with one command plug-in in use.
class ServiceHost
{
public:
    /// Throws what the core throws when the plug-in cannot be loaded.
    ServiceHost(const GlobalOptions &options, QString pluginName, QVersionNumber version);

    /// Closes a device, from any thread: a plug-in must bear that, the core need not.
    void close(qint64 handle);

    /// Calls one of the plug-in's functions.
    QVariant call(const QString &function, const QVariantList &arguments);

    /// `listener` runs on whatever thread the plug-in emits from, as long as this object lives.
    void listen(const std::function<void(const Event &event)> &listener);

private:
    KvSyncCore::SyncCore core;
    const QString plugin;
    const QVersionNumber pluginVersion;
    CommandInterface *commands = nullptr; ///< the core's, for as long as the process lives
};

} // namespace KvSyncCli

#endif

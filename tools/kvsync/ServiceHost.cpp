#include "ServiceHost.h"

#include <utility>

namespace KvSyncCli {

using KvSyncCore::SyncCore;

ServiceHost::ServiceHost(const GlobalOptions &options, QString pluginName, QVersionNumber version)
    : plugin(std::move(pluginName))
    , pluginVersion(std::move(version))
{
    core.init(fromArgument(options.logicDir), fromArgument(options.deviceDir));
    core.loadCommandPlugin(plugin, pluginVersion);
    commands = core.getCommandPlugin(plugin, pluginVersion);
}

void ServiceHost::close(qint64 handle)
{
    commands->closeDevices(handle);
}

QVariant ServiceHost::call(const QString &function, const QVariantList &arguments)
{
    return core.execute(plugin, function, arguments, pluginVersion);
}

void ServiceHost::listen(const std::function<void(const Event &event)> &listener)
{
    QObject::connect(
        &core, &SyncCore::sendSignals, &core,
        [listener](bool isPublic, const QString &emitter, const QString &name,
                   const QVariantList &payload, const QVersionNumber &version) {
            listener(Event{isPublic, emitter, name, payload, version});
        },
        Qt::DirectConnection);
}

} // namespace KvSyncCli

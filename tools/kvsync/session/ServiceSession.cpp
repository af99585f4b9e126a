#include "session/ServiceSession.h"

#include "session/Simulator.h"

#include <KvSyncTool/Exception.h>

#include <utility>

namespace KvSyncCli {

using KvSyncCore::SyncCore;

ServiceSession::ServiceSession(const PluginDirectories &directories, Interruption &ofProcess,
                               QString pluginName, QVersionNumber version)
    : interruption(ofProcess)
    , plugin(std::move(pluginName))
    , pluginVersion(std::move(version))
{
    core.init(directories.logic, directories.device);
    core.loadCommandPlugin(plugin, pluginVersion);
    commands = core.getCommandPlugin(plugin, pluginVersion);
}

ServiceSession::~ServiceSession()
{
    ending.reset();
    closeAnyhow();
}

void ServiceSession::listen(const std::function<void(const PluginEvent &event)> &listener)
{
    QObject::connect(
        &core, &SyncCore::sendSignals, &core,
        [listener](bool isPublic, const QString &emitter, const QString &name,
                   const QVariantList &payload, const QVersionNumber &version) {
            listener(PluginEvent{isPublic, emitter, name, payload, version});
        },
        Qt::DirectConnection);
}

QVariant ServiceSession::call(const QString &function, const QVariantList &arguments)
{
    return core.execute(plugin, function, arguments, pluginVersion);
}

void ServiceSession::open(const QVariantMap &address)
{
    ending.reset();
    // Nobody leaves while a device is being opened: it would stay open.
    const Interruption::Ending later(interruption, [] {});
    handle = requestHandle(address);
    isOpen = true;
    ending.emplace(interruption, [this] { closeAnyhow(); });
}

QVariant ServiceSession::callDevice(const QString &function, const QVariantList &furtherArguments)
{
    return call(function, QVariantList{handle} + furtherArguments);
}

QVariant ServiceSession::execute(const QString &command, const QVariantList &arguments)
{
    return callDevice(QStringLiteral("execute"), {command, QVariant(arguments)});
}

// Not by way of the core, which serves one thread at a time; a plug-in must bear it.
void ServiceSession::close()
{
    if (isOpen.exchange(false))
        commands->closeDevices(handle.toLongLong());
}

void ServiceSession::closeAnyhow()
{
    try {
        close();
    } catch (...) {
        // Another failure is on its way to the user; this one is its consequence.
    }
}

QVariant ServiceSession::requestHandle(const QVariantMap &address)
{
    try {
        return call(QStringLiteral("openDevices"), {address});
    } catch (const KvSyncTool::Exception &refusal) {
        if (refusal.code() == ConnectFailed)
            requireUsableSimulator();
        throw;
    }
}

} // namespace KvSyncCli

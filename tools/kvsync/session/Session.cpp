#include "session/Session.h"

#include "session/Simulator.h"

#include <KvSyncTool/Exception.h>

#include <utility>

namespace KvSyncCli {

using KvSyncCore::SyncCore;

Session::Session(const PluginDirectories &directories, Interruption &ofProcess, QString pluginName,
                 QVersionNumber version)
    : interruption(ofProcess)
    , plugin(std::move(pluginName))
    , pluginVersion(std::move(version))
{
    core.init(directories.logic, directories.device);
    core.loadCommandPlugin(plugin, pluginVersion);
    commands = core.getCommandPlugin(plugin, pluginVersion);
}

Session::~Session()
{
    ending.reset();
    closeAnyhow();
}

void Session::listen(const std::function<void(const PluginEvent &event)> &listener)
{
    QObject::connect(
        &core, &SyncCore::sendSignals, &core,
        [listener](bool isPublic, const QString &emitter, const QString &name,
                   const QVariantList &payload, const QVersionNumber &version) {
            listener(PluginEvent{isPublic, emitter, name, payload, version});
        },
        Qt::DirectConnection);
}

QVariant Session::call(const QString &function, const QVariantList &arguments)
{
    return core.execute(plugin, function, arguments, pluginVersion);
}

void Session::open(const QVariantMap &address)
{
    ending.reset();
    // Nobody leaves while a device is being opened: it would stay open.
    const Interruption::Ending later(interruption, [] {});
    handle = requestHandle(address);
    isOpen = true;
    ending.emplace(interruption, [this] { closeAnyhow(); });
}

QVariant Session::callDevice(const QString &function, const QVariantList &furtherArguments)
{
    return call(function, QVariantList{handle} + furtherArguments);
}

QVariant Session::execute(const QString &command, const QVariantList &arguments)
{
    return callDevice(QStringLiteral("execute"), {command, QVariant(arguments)});
}

// Not by way of the core, which serves one thread at a time; a plug-in must bear it.
void Session::close()
{
    if (isOpen.exchange(false))
        commands->closeDevices(handle.toLongLong());
}

void Session::closeAnyhow()
{
    try {
        close();
    } catch (...) {
        // Another failure is on its way to the user; this one is its consequence.
    }
}

QVariant Session::requestHandle(const QVariantMap &address)
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

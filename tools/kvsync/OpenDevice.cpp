#include "OpenDevice.h"

#include "session/Simulator.h"

#include <KvSyncTool/Exception.h>

namespace KvSyncCli {

namespace {

// Nobody leaves while a device is being opened: it would stay open.
QVariant open(ServiceHost &host, Interruption &interruption, const QVariantMap &parameters)
{
    const Interruption::Ending later(interruption, [] {});
    try {
        return host.call(QStringLiteral("openDevices"), {parameters});
    } catch (const KvSyncTool::Exception &refusal) {
        if (refusal.code() == ConnectFailed)
            requireUsableSimulator();
        throw;
    }
}

} // namespace

OpenDevice::OpenDevice(ServiceHost &serviceHost, Interruption &interruption,
                       const QVariantMap &parameters)
    : host(serviceHost)
    , handle(open(serviceHost, interruption, parameters))
{
    ending.emplace(interruption, [this] { closeAnyhow(); });
}

OpenDevice::~OpenDevice()
{
    ending.reset();
    closeAnyhow();
}

QVariant OpenDevice::call(const QString &function, const QVariantList &furtherArguments)
{
    return host.call(function, QVariantList{handle} + furtherArguments);
}

void OpenDevice::close()
{
    if (isOpen.exchange(false))
        host.close(handle.toLongLong());
}

void OpenDevice::closeAnyhow()
{
    try {
        close();
    } catch (...) {
        // Another failure is on its way to the user; this one is its consequence.
    }
}

} // namespace KvSyncCli

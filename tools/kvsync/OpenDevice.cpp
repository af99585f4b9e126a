#include "OpenDevice.h"

#include <KvSyncTool/Exception.h>

namespace KvSyncCli {

OpenDevice::OpenDevice(ServiceHost &serviceHost, const QVariantMap &parameters)
    : host(serviceHost)
    , handle(host.call(QStringLiteral("openDevices"), {parameters}))
{
}

OpenDevice::~OpenDevice()
{
    try {
        close();
    } catch (const KvSyncTool::Exception &) {
        // Another failure is on its way to the user; this one is its consequence.
    }
}

QVariant OpenDevice::call(const QString &function, const QVariantList &furtherArguments)
{
    return host.call(function, QVariantList{handle} + furtherArguments);
}

void OpenDevice::close()
{
    if (!isOpen)
        return;
    isOpen = false;
    host.call(QStringLiteral("closeDevices"), {handle});
}

} // namespace KvSyncCli

#ifndef KVSYNC_OPENDEVICE_H
#define KVSYNC_OPENDEVICE_H

#include "ServiceHost.h"

namespace KvSyncCli {

/// A device that a plug-in opened; closed again at the end, whatever happens.
class OpenDevice
{
public:
    OpenDevice(ServiceHost &serviceHost, const QVariantMap &parameters);
    ~OpenDevice();
    OpenDevice(const OpenDevice &) = delete;
    OpenDevice &operator=(const OpenDevice &) = delete;

    /// Calls a function whose first argument is the device's handle.
    QVariant call(const QString &function, const QVariantList &furtherArguments = {});

    /// Closes now. Throws if the plug-in refuses.
    void close();

private:
    ServiceHost &host;
    const QVariant handle;
    bool isOpen = true;
};

} // namespace KvSyncCli

#endif

#ifndef KVSYNC_OPENDEVICE_H
#define KVSYNC_OPENDEVICE_H

#include "ServiceHost.h"
#include "session/Interruption.h"

#include <atomic>
#include <optional>

namespace KvSyncCli {

/// A device that a plug-in opened; closed again at the end, whatever happens, and as soon as the
/// process shall end.
class OpenDevice
{
public:
    OpenDevice(ServiceHost &serviceHost, Interruption &interruption, const QVariantMap &parameters);
    ~OpenDevice();
    OpenDevice(const OpenDevice &) = delete;
    OpenDevice &operator=(const OpenDevice &) = delete;

    /// Calls a function whose first argument is the device's handle.
    QVariant call(const QString &function, const QVariantList &furtherArguments = {});

    /// Closes now, which ends a call that is under way. Any thread, more than once. Throws if the
    /// plug-in refuses.
    void close();
    /// The same, but throws nothing.
    void closeAnyhow();

private:
    ServiceHost &host;
    const QVariant handle;
    std::atomic<bool> isOpen{true};
    std::optional<Interruption::Ending> ending;
};

} // namespace KvSyncCli

#endif

#ifndef KVSYNC_TESTS_DEVICEREGISTRY_H
#define KVSYNC_TESTS_DEVICEREGISTRY_H

#include "device/support/DeviceTest.h"

namespace KvSyncTest {

/// Counting, creating and deleting, with everything that they log.
class DeviceRegistry : public DeviceTest
{
protected:
    DeviceRegistry();

    /// Loads Scripted under the script and creates this fixture's device by it. The manager must
    /// end before the script does.
    DeviceHandle createBy(LendingScript &script);

    /// All lines since the last time, each critical one written by `operation`.
    void expectLines(const std::vector<LogLine> &expected, const std::string &operation);
    /// Both operations that need a factory say that the plug-in is not loaded.
    void expectNotLoaded(const QString &name, const QVersionNumber &wanted);
    void expectDeleteRefused(DeviceHandle handle, const char *text = "handle is invalid");

    const QString scripted = "Scripted";
    const std::vector<LogLine> nothing;
    BareDevice device; ///< answers Success
};

/// The handle of a device: its address.
DeviceHandle addressOf(const BaseDeviceSpace::DeviceInterface &device);

} // namespace KvSyncTest

#endif

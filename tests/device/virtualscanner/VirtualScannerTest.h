#ifndef KVSYNC_TESTS_VIRTUALSCANNERTEST_H
#define KVSYNC_TESTS_VIRTUALSCANNERTEST_H

#include "VirtualScanner/Codes.h"

#include "KvSyncCore/DeviceController.h"
#include "device/DeviceManager.h"
#include "support/ApplicationFolder.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace KvSyncTest {

using Values = QMap<QString, QVariant>;

/// Whether the condition comes true in good time.
template <typename Condition>
bool eventually(Condition condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// The built plug-in VirtualScanner behind a controller, as a host has it.
class VirtualScannerTest : public ::testing::Test
{
protected:
    enum Index { Scanner = 0, Camera = 1, Turntable = 2, Marker = 3 };

    VirtualScannerTest();

    /// A new, unconnected device of that index.
    DeviceHandle create(int index);
    /// A new, connected device of that index.
    DeviceHandle open(int index);

    ErrorCode set(DeviceHandle handle, const char *property, const Values &values);
    /// Reads a property; it must succeed.
    Values get(DeviceHandle handle, const char *property, Values values = {});
    ErrorCode codeOfGet(DeviceHandle handle, const char *property, Values values = {});
    /// Whether a call gets into the device in good time; then it waits there.
    bool isCalled(DeviceHandle handle);

    static const QString name;
    static const QVersionNumber version;

    ApplicationFolder folder;
    LogCapture log;
    KvSyncCore::DeviceManager manager;
    KvSyncCore::DeviceController devices{&manager};
};

} // namespace KvSyncTest

#endif

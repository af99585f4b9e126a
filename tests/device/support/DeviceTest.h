#ifndef KVSYNC_TESTS_DEVICETEST_H
#define KVSYNC_TESTS_DEVICETEST_H

#include "device/DeviceManager.h"
#include "device/support/FakeDevice.h"
#include "fixtures/plugins/Scripted/DeviceScript.h"
#include "support/ApplicationFolder.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <string>

namespace KvSyncTest {

/// Hands out the devices that the test owns, one at a time.
class LendingScript : public DeviceScript
{
public:
    int enumDevices() override { return 5; }
    BaseDeviceSpace::DeviceInterface *createDevice() override { return next; }
    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&) override { return Success; }

    BaseDeviceSpace::DeviceInterface *next = nullptr;
};

/// The text of the std::exception that `callable` throws.
template <typename Callable>
std::string thrownBy(Callable callable)
{
    try {
        callable();
    } catch (const std::exception &exception) {
        return exception.what();
    }
    return "nothing thrown";
}

/// A device manager over an application folder of its own.
class DeviceTest : public ::testing::Test
{
protected:
    DeviceTest();
    ~DeviceTest() override;

    /// Ends the manager, as the end of the SyncCore does.
    void endManager();

    /// Puts a fixture's module into the folder under that file name.
    void copyFixture(const QString &fixture, const QString &fileName);
    /// Copies a fixture as <fixture>.1.0.1.dll and loads it.
    void loadFixture(const QString &fixture);
    /// Creates a device of a loaded fixture, which must succeed.
    DeviceHandle createFixtureDevice(const QString &fixture);
    /// Registers a device of the test's own; its deletion is heard of and does nothing.
    DeviceHandle lend(BaseDeviceSpace::DeviceInterface &device);

    static const QVersionNumber version;

    ApplicationFolder folder;
    LendingScript lending;
    LogCapture log;
    std::unique_ptr<KvSyncCore::DeviceManager> manager;

private:
    bool scriptedIsLoaded = false;
};

} // namespace KvSyncTest

#endif

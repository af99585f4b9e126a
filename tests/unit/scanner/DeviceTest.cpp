// What cannot be brought about through the plug-in's file: a system that starts no thread more.
#include "directlink/Device.h"
#include "support/ExpectThrows.h"

#include <Tessel3SyncSimulator/Control.h>
#include <device/DeviceManager.h>

#include <gtest/gtest.h>
#include <system_error>

using namespace Scanner;
namespace Simulator = Tessel3SyncSimulator;

TEST(ScannerDevice, AThreadThatCannotBeStartedFailsTheOpeningWhichLeavesTheScannerAlone)
{
    const std::system_error failure(
        std::make_error_code(std::errc::resource_unavailable_try_again));
    bool isRefusing = true;
    Simulator::reset();
    KvSyncCore::DeviceManager manager;
    KvSyncCore::DeviceController controller(&manager);
    DirectLink::Device device([](const QString &, const QVariantList &) {},
                              [&](std::function<void()> body) {
                                  if (isRefusing)
                                      throw failure;
                                  return std::thread(std::move(body));
                              });
    device.setController(&controller);
    const QVariantMap parameters{{QStringLiteral("serial"), QStringLiteral("KV-SIM-0001")}};

    KvSyncTest::expectThrows(
        ConnectFailed,
        QStringLiteral("The thread for the scanner's events cannot be started: %1")
            .arg(QString::fromLocal8Bit(failure.what())),
        [&] { device.open(parameters); });
    EXPECT_EQ(Simulator::callCount("ConnectDevice"), 0);
    KvSyncTest::expectThrows(HandleInvalid, QStringLiteral("No open device has the handle 1"),
                             [&] { device.requireOpen(); });

    isRefusing = false;
    device.open(parameters);
    device.requireOpen();
    device.close();
}

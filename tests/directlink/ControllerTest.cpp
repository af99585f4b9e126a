#include "DirectLink.h"

#include <limits>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using ::testing::Contains;

using Controller = ConnectedScanner;

TEST_F(Controller, SharesTheConnectionWithEveryOtherOverItsManager)
{
    DeviceController other(&link.manager);
    EXPECT_THAT(journalOf([&] { other.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Controller, CopyServesTheSameScanner)
{
    DeviceController copy(controller);
    EXPECT_THAT(journalOf([&] { copy.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Controller, ServesTheOthersScannerAfterAssignment)
{
    KvSyncCore::DeviceManager unconnected;
    DeviceController other(&unconnected);
    EXPECT_THAT(journalOf([&] { other.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(null, 0, 1)"));
    EXPECT_EQ(&(other = controller), &other);
    EXPECT_THAT(journalOf([&] { other.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Controller, ReachesTheScannerByCommandWithAnyHandle)
{
    for (const DeviceHandle handle :
         {DeviceHandle(0), DeviceHandle(-1), std::numeric_limits<DeviceHandle>::max()}) {
        QMap<QString, QVariant> parameters{{"projectWorkType", 4}};
        ErrorCode code = HandleInvalid;
        const Journal journal =
            journalOf([&] { code = controller.executeCommand(handle, "Project", parameters); });
        EXPECT_EQ(code, Success);
        EXPECT_THAT(journal, Contains("Project(device, 4)"));
    }
}

/// Everything that takes a handle.
void runAll(DeviceController &controller, DeviceHandle handle)
{
    unsigned short gain = 0;
    double exposure = 0;
    QList<CameraSpace::ImageBlock *> blocks;
    QByteArray data;
    QMap<QString, QVariant> parameters;
    controller.connectDeviceBySerial(handle, "KV");
    controller.reconnectDevice(handle);
    controller.setScanCallback(handle, onScan(), context());
    controller.setStatusCallback(handle, onStatus(), context());
    controller.executeCommand(handle, "stopScan", parameters);
    controller.setGainAndExpo(handle, 1, 2, 0);
    controller.getGainAndExpo(handle, gain, exposure, 0);
    controller.setExopsureTime(handle, 2, 0);
    controller.getExposureTime(handle, exposure, 0);
    controller.setGain(handle, 1, 0);
    controller.getGain(handle, gain, 0);
    controller.grabImage(handle, 0, blocks);
    controller.project(handle, ProjectorSpace::SpecklePattern, ProjectorSpace::DefaultVariant);
    controller.writeCustomInfo(handle, 0, "x");
    controller.readCustomInfo(handle, 0, data);
    controller.disconnectDevice(handle);
}

/// What an unconnected scanner sees of it.
Journal journalOfAll(DeviceHandle handle)
{
    DirectLink fresh;
    fresh.scanner.effects.GetCamerasInformation = talkativeScanner().GetCamerasInformation;
    return journalOf([&] { runAll(fresh.controller, handle); });
}

TEST(ControllerHandle, IsNotLookedAtByAnyOperationOfTheDirectLink)
{
    const Journal expected = journalOfAll(anyHandle);
    EXPECT_THAT(expected, Contains("DisConnectDevice(null)"));
    for (const DeviceHandle handle :
         {DeviceHandle(0), DeviceHandle(-1), std::numeric_limits<DeviceHandle>::max(),
          std::numeric_limits<DeviceHandle>::min()})
        EXPECT_EQ(journalOfAll(handle), expected) << handle;
}

} // namespace

// The place of every operation that the core calls, read from the compiler at hand. Both ABIs are
// compared by the test VtableLayouts.

#include "KvSyncDevice/CameraInterface.h"
#include "KvSyncDevice/ControllerInterface.h"
#include "KvSyncDevice/IFactory.h"
#include "KvSyncDevice/MotorInterface.h"
#include "KvSyncDevice/ProjectorInterface.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Slots = std::vector<std::pair<int, std::string>>;

// Under the Itanium ABI a pointer to a virtual member holds 1 + its offset in the table.
template <typename Member>
int slotOf(Member member)
{
    std::ptrdiff_t word = 0;
    std::memcpy(&word, &member, sizeof word);
    return static_cast<int>(word / static_cast<std::ptrdiff_t>(sizeof(void *)));
}

#define PLACE(Interface, operation)                                                                \
    {                                                                                              \
        slotOf(&Interface::operation), #operation                                                  \
    }

using BaseDeviceSpace::DeviceInterface;
using CameraSpace::CameraInterface;
using ControllerSpace::ControllerInterface;
using MotorSpace::MotorInterface;
using ProjectorSpace::ProjectorInterface;

TEST(DeviceSlots, FactoryFollowsThirteenOthersOfWhichTheDestructorTakesTwoPlaces)
{
    const Slots slots = {PLACE(IFactory, enumDevices), PLACE(IFactory, createDevice),
                         PLACE(IFactory, destroyDevice)};
    EXPECT_EQ(slots, (Slots{{14, "enumDevices"}, {15, "createDevice"}, {16, "destroyDevice"}}));
}

TEST(DeviceSlots, Device)
{
    const Slots slots = {PLACE(DeviceInterface, name), PLACE(DeviceInterface, types),
                         PLACE(DeviceInterface, connectDeviceByIndex),
                         PLACE(DeviceInterface, getProperty), PLACE(DeviceInterface, setProperty)};
    EXPECT_EQ(slots, (Slots{{0, "name"},
                            {1, "types"},
                            {3, "connectDeviceByIndex"},
                            {6, "getProperty"},
                            {7, "setProperty"}}));
}

TEST(DeviceSlots, Camera)
{
    const Slots slots = {PLACE(CameraInterface, getExposureTimeRange),
                         PLACE(CameraInterface, getGainRange),
                         PLACE(CameraInterface, getMaxImageSize),
                         PLACE(CameraInterface, setInterestSize),
                         PLACE(CameraInterface, getInterestSize),
                         PLACE(CameraInterface, setAOIOffset),
                         PLACE(CameraInterface, getAOIOffset),
                         PLACE(CameraInterface, getPixelFormat),
                         PLACE(CameraInterface, setTriggerMode),
                         PLACE(CameraInterface, getTriggerMode),
                         PLACE(CameraInterface, discardFrames),
                         PLACE(CameraInterface, startStream),
                         PLACE(CameraInterface, stopStream)};
    EXPECT_EQ(slots, (Slots{{0, "getExposureTimeRange"},
                            {3, "getGainRange"},
                            {6, "getMaxImageSize"},
                            {7, "setInterestSize"},
                            {8, "getInterestSize"},
                            {9, "setAOIOffset"},
                            {10, "getAOIOffset"},
                            {11, "getPixelFormat"},
                            {12, "setTriggerMode"},
                            {13, "getTriggerMode"},
                            {14, "discardFrames"},
                            {15, "startStream"},
                            {16, "stopStream"}}));
}

TEST(DeviceSlots, Controller)
{
    const Slots slots = {
        PLACE(ControllerInterface, updateFireware), PLACE(ControllerInterface, sendCommand),
        PLACE(ControllerInterface, readCommand), PLACE(ControllerInterface, lockCommandChannel),
        PLACE(ControllerInterface, unlockCommandChannel)};
    EXPECT_EQ(slots, (Slots{{2, "updateFireware"},
                            {3, "sendCommand"},
                            {4, "readCommand"},
                            {5, "lockCommandChannel"},
                            {6, "unlockCommandChannel"}}));
}

TEST(DeviceSlots, Motor)
{
    const Slots slots = {PLACE(MotorInterface, rotate), PLACE(MotorInterface, waitMotorStop),
                         PLACE(MotorInterface, resetMotor), PLACE(MotorInterface, stopMotor)};
    EXPECT_EQ(slots,
              (Slots{{0, "rotate"}, {1, "waitMotorStop"}, {2, "resetMotor"}, {3, "stopMotor"}}));
}

TEST(DeviceSlots, Projector)
{
    const Slots slots = {PLACE(ProjectorInterface, projectorPWM),
                         PLACE(ProjectorInterface, currentProjectorPWM),
                         PLACE(ProjectorInterface, projectorLEDSwitch),
                         PLACE(ProjectorInterface, currentProjectorLEDSwitch),
                         PLACE(ProjectorInterface, setProjectorLuminance),
                         PLACE(ProjectorInterface, getProjectorLuminance),
                         PLACE(ProjectorInterface, scan),
                         PLACE(ProjectorInterface, writePatternToFlash)};
    EXPECT_EQ(slots, (Slots{{0, "projectorPWM"},
                            {1, "currentProjectorPWM"},
                            {2, "projectorLEDSwitch"},
                            {3, "currentProjectorLEDSwitch"},
                            {4, "setProjectorLuminance"},
                            {5, "getProjectorLuminance"},
                            {7, "scan"},
                            {8, "writePatternToFlash"}}));
}

// Capabilities are reached by cross-cast, so none may derive from the device or from another.
TEST(DeviceSlots, CapabilitiesStandAlone)
{
    EXPECT_FALSE((std::is_base_of_v<DeviceInterface, CameraInterface>));
    EXPECT_FALSE((std::is_base_of_v<DeviceInterface, ControllerInterface>));
    EXPECT_FALSE((std::is_base_of_v<DeviceInterface, MotorInterface>));
    EXPECT_FALSE((std::is_base_of_v<DeviceInterface, ProjectorInterface>));
}

TEST(DeviceContract, EnumerationsAreThirtyTwoBits)
{
    EXPECT_EQ(sizeof(ErrorCode), 4u);
    EXPECT_EQ(sizeof(BaseDeviceSpace::DeviceType), 4u);
    EXPECT_EQ(sizeof(CameraSpace::PixelFormatType), 4u);
    EXPECT_EQ(sizeof(CameraSpace::TriggerMode), 4u);
    EXPECT_EQ(sizeof(ProjectorSpace::MajorPatternType), 4u);
    EXPECT_EQ(sizeof(ProjectorSpace::SubPatternType), 4u);
    EXPECT_EQ(sizeof(ProjectorSpace::ScanType), 4u);
    EXPECT_EQ(sizeof(MotorSpace::AxisType), 4u);
    EXPECT_EQ(sizeof(ControllerSpace::CmdType), 4u);
    EXPECT_EQ(sizeof(ControllerSpace::FirewareType), 4u);
}

TEST(DeviceContract, RecordsAreCopyableAndRotateInfoIsDefaultConstructible)
{
    EXPECT_TRUE(std::is_copy_constructible_v<CameraSpace::ImageBlock>);
    EXPECT_TRUE(std::is_default_constructible_v<MotorSpace::RotateInfo>);
    EXPECT_TRUE(std::is_copy_assignable_v<MotorSpace::RotateInfo>);
}

TEST(DeviceContract, AnImageBlockThatNobodyFilledIsZero)
{
    alignas(CameraSpace::ImageBlock) unsigned char room[sizeof(CameraSpace::ImageBlock)];
    std::memset(room, 0xA5, sizeof(room));
    auto *const block = new (room) CameraSpace::ImageBlock;
    EXPECT_EQ(block->tag, 0);
    EXPECT_EQ(block->width, 0);
    EXPECT_EQ(block->height, 0);
    EXPECT_EQ(block->bitDepth, 0);
    EXPECT_TRUE(block->data.isEmpty());
    block->~ImageBlock();
}

TEST(DeviceContract, TheFactorysIdentifierIsFixed)
{
    EXPECT_STREQ(qobject_interface_iid<IFactory *>(), "Veltrano.Device.IFactory.2.0.200324");
}

} // namespace

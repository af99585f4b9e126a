// What crosses between the core and device plug-ins; tests/contract holds the virtual tables.

#include "KvSyncDevice/CameraInterface.h"
#include "KvSyncDevice/ControllerInterface.h"
#include "KvSyncDevice/IFactory.h"
#include "KvSyncDevice/MotorInterface.h"
#include "KvSyncDevice/ProjectorInterface.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <type_traits>

namespace {

using BaseDeviceSpace::DeviceInterface;
using CameraSpace::CameraInterface;
using ControllerSpace::ControllerInterface;
using MotorSpace::MotorInterface;
using ProjectorSpace::ProjectorInterface;

// Capabilities are reached by cross-cast, so none may derive from the device or from another.
TEST(DeviceContract, CapabilitiesStandAlone)
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

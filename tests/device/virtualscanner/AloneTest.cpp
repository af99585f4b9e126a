// The devices as an author copies them: without the faults on order, and without the core.

#include "VirtualScanner/Codes.h"
#include "VirtualScanner/Models.h"

#include "KvSyncDevice/CameraInterface.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace VirtualScanner;
using namespace CameraSpace;

namespace {

class DeviceAlone : public ::testing::Test
{
protected:
    static constexpr int cameraIndex = 1;

    DeviceAlone()
    {
        EXPECT_TRUE(camera);
        device->extend([](DeviceGate &deviceGate, PropertyTable &) { gate = &deviceGate; });
        EXPECT_EQ(device->connectDeviceByIndex(cameraIndex), Success);
    }

    ErrorCode fetch()
    {
        Values values{{QStringLiteral("timeoutMs"), 60000}};
        return device->getProperty(QStringLiteral("frame"), values);
    }

    static int callsInside() { return gate->callsInside(gate->lock()); }

    static DeviceGate *gate;
    DevicePointer device = makeDevice(cameraIndex);
    CameraInterface *camera = dynamic_cast<CameraInterface *>(device.get());
};

DeviceGate *DeviceAlone::gate = nullptr;

} // namespace

TEST_F(DeviceAlone, HasNoFaultsOnOrder)
{
    Values values;
    EXPECT_EQ(device->getProperty(QStringLiteral("properties"), values), Success);
    EXPECT_EQ(values.value(QStringLiteral("names")).toStringList().filter(QStringLiteral("vanish")),
              QStringList());
    EXPECT_EQ(device->setProperty(QStringLiteral("fail"), {{QStringLiteral("code"), 7}}),
              UnknownProperty);
}

TEST_F(DeviceAlone, DeliversTheFramesOfItsStream)
{
    ASSERT_EQ(camera->startStream(0), Success);
    EXPECT_EQ(fetch(), Success);
    EXPECT_EQ(fetch(), Success);
}

TEST_F(DeviceAlone, EndsOnlyWhenThoseWhoWaitInsideHaveLeft)
{
    ASSERT_EQ(camera->setTriggerMode(SoftwareTrigger, 0), Success);
    ASSERT_EQ(camera->startStream(0), Success);
    std::atomic<int> refused{0};
    std::vector<std::thread> callers;
    for (int i = 0; i < 4; ++i)
        callers.emplace_back([&] { refused += fetch() == DeviceVanished ? 1 : 0; });
    while (callsInside() < 4)
        std::this_thread::yield();
    device->end();
    EXPECT_EQ(callsInside(), 0);
    EXPECT_EQ(camera->startStream(0), DeviceVanished);
    EXPECT_EQ(device->connectDeviceByIndex(cameraIndex), DeviceVanished);
    for (std::thread &caller : callers)
        caller.join();
    EXPECT_EQ(refused, 4);
}

TEST_F(DeviceAlone, EndsItsThreadInTheMiddleOfAStream)
{
    for (int i = 0; i < 50; ++i) {
        ASSERT_EQ(camera->startStream(0), Success);
        ASSERT_EQ(fetch(), Success);
        device = makeDevice(cameraIndex);
        camera = dynamic_cast<CameraInterface *>(device.get());
        ASSERT_EQ(device->connectDeviceByIndex(cameraIndex), Success);
    }
}

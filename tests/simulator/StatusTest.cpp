#include "StatusCatcher.h"

#include <atomic>
#include <chrono>
#include <future>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class StatusEvents : public Scanner
{
protected:
    StatusEvents() { connect(); }
};

TEST_F(StatusEvents, ArriveInOrderWithBothBytes)
{
    StatusCatcher catcher(device);
    sendStatus(DistanceEvent, DistanceTooNear);
    sendStatus(DistanceEvent, DistanceRight);
    sendStatus(DistanceEvent, DistanceTooFar);
    sendStatus(ButtonEvent, 1);
    EXPECT_TRUE(catcher.waitFor({{2, 1}, {2, 2}, {2, 3}, {3, 1}}));
}

TEST_F(StatusEvents, ArriveDuringAScanToo)
{
    FrameCatcher frames(device);
    StatusCatcher events(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(frames.waitFor(1));
    sendStatus(ButtonEvent, 2);
    EXPECT_TRUE(events.waitFor({{3, 2}}));
}

TEST_F(StatusEvents, WhileTheFirstPictureIsMadeReadyHangNothing)
{
    ScannerSetup setup;
    setup.width = 640;
    setup.height = 512;
    setup.seed = 4711; // a scene that nobody has made ready before
    reset(setup);
    connect();
    StatusCatcher events(device);
    std::size_t sent = 0;
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    while (account().produced == 0) {
        // The next one as soon as the last has come: one of them while the picture is made ready.
        if (events.events().size() == sent) {
            sendStatus(ButtonEvent, 1);
            ++sent;
        }
        std::this_thread::yield();
    }
    EXPECT_TRUE(account().balances());
}

TEST_F(StatusEvents, WithoutACallbackOrAConnectionAreLost)
{
    sendStatus(ButtonEvent, 1);
    ASSERT_EQ(Ok, DisConnectDevice(device));
    sendStatus(ButtonEvent, 2);
    connect();
    StatusCatcher catcher(device);
    sendStatus(ButtonEvent, 3);
    EXPECT_TRUE(catcher.waitFor({{3, 3}}));
}

TEST_F(StatusEvents, RemovingTheCallbackWaitsForTheRunningOne)
{
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> returned{false};
    StatusCatcher catcher(device, [&] {
        entered.set_value();
        release.get_future().wait();
        returned = true;
    });
    sendStatus(ButtonEvent, 1);
    entered.get_future().wait();
    std::future<bool> removed = std::async(std::launch::async, [&] {
        SetStatusCallBackFunction(device, nullptr, nullptr);
        return returned.load();
    });
    EXPECT_EQ(std::future_status::timeout, removed.wait_for(std::chrono::milliseconds(50)));
    release.set_value();
    EXPECT_TRUE(removed.get());
}

TEST_F(StatusEvents, TheHostMayDisconnectFromTheStatusCallback)
{
    std::promise<RETSTATUS> result;
    StatusCatcher catcher(device, [&] { result.set_value(DisConnectDevice(device)); });
    sendStatus(ButtonEvent, 1);
    EXPECT_EQ(Ok, result.get_future().get());
}

TEST_F(StatusEvents, UnpluggingStopsTheScanAndTellsTheHost)
{
    StatusCatcher events(device);
    FrameCatcher frames(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(frames.waitFor(1));
    setAttached(false);
    EXPECT_TRUE(events.waitFor({{ConnectionEvent, ConnectionIsLost}}));
    const long long produced = account().produced;
    setAttached(false);
    setAttached(true);
    EXPECT_TRUE(
        events.waitFor({{ConnectionEvent, ConnectionIsLost}, {ConnectionEvent, ConnectionIsBack}}));
    EXPECT_EQ(produced, account().produced);
}

TEST_F(StatusEvents, AnUnpluggedScannerIsNotFound)
{
    setAttached(false);
    bool connected = true;
    expectRefused(UnknownScanner, GetCamerasInformation("", serials, a, b, flags, count));
    expectRefused(UnknownScanner, GetCameraCount("", count));
    expectRefused(UnknownScanner, IsConnectedOnU3("", connected));
    expectRefused(UnknownScanner, ConnectDevice("SPECKLE", "", serials, a, b, device));
}

TEST_F(StatusEvents, CallsToAnUnpluggedScannerAreRefusedUntilItIsPluggedInAndReconnected)
{
    double exposure = 0.0;
    setAttached(false);
    expectRefused(ConnectionLost, GetCameraExposure(device, 0, exposure));
    expectRefused(ConnectionLost, ReconnectDevice(device));
    setAttached(true);
    expectRefused(CamerasClosed, GetCameraExposure(device, 0, exposure));
    EXPECT_EQ(Ok, ReconnectDevice(device));
    EXPECT_EQ(Ok, GetCameraExposure(device, 0, exposure));
}

TEST_F(StatusEvents, AHostCanRemoveItsCallbacksAndDisconnectFromAnUnpluggedScanner)
{
    setAttached(false);
    EXPECT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    EXPECT_EQ(Ok, SetStatusCallBackFunction(device, nullptr, nullptr));
    EXPECT_EQ(Ok, DisConnectDevice(device));
}

#include "ScannerFixture.h"
#include "StatusCatcher.h"

#include <future>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class HostileMode : public Scanner
{
protected:
    HostileMode()
    {
        connect();
        setHostile(true);
    }
};

TEST_F(HostileMode, EveryCallbackComesFromAnotherThread)
{
    FrameCatcher catcher(device);
    std::thread::id last = std::this_thread::get_id();
    std::size_t changes = 0;
    const auto frames = catcher.scan(20);
    for (const Frame &frame : frames) {
        // An identifier may be used again once its thread has ended, but never this thread's.
        EXPECT_NE(std::this_thread::get_id(), frame.thread);
        changes += frame.thread != last;
        last = frame.thread;
    }
    EXPECT_GE(changes, 1u);
}

TEST_F(HostileMode, FramesLingerUntilTheCallbackIsRemoved)
{
    FrameCatcher catcher(device);
    const std::size_t atStop = catcher.scan(3).size();
    EXPECT_TRUE(catcher.waitFor(atStop + 3));
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    const std::size_t atRemoval = catcher.frames().size();
    const long long produced = account().produced;
    // A status event shows that the frame thread has moved on.
    StatusCatcher events(device);
    sendStatus(ButtonEvent, 1);
    ASSERT_TRUE(events.waitFor({{ButtonEvent, 1}}));
    EXPECT_EQ(atRemoval, catcher.frames().size());
    EXPECT_EQ(produced, account().produced);
    EXPECT_TRUE(account().balances());
}

TEST_F(HostileMode, StatusEventsComeFromOtherThreadsToo)
{
    std::promise<std::thread::id> ofFrame;
    std::promise<std::thread::id> ofEvent;
    setHostile(false);
    {
        FrameCatcher frames(device);
        ofFrame.set_value(frames.scan(1).front().thread);
    }
    setHostile(true);
    StatusCatcher events(device, [&] { ofEvent.set_value(std::this_thread::get_id()); });
    sendStatus(ButtonEvent, 1);
    EXPECT_NE(ofFrame.get_future().get(), ofEvent.get_future().get());
}

TEST_F(HostileMode, TheHostMayDisconnectAndConnectAgainFromTheCallback)
{
    std::promise<void> connected;
    FrameCatcher catcher(device, [&](const Frame &) {
        EXPECT_EQ(Ok, DisConnectDevice(device));
        connect();
        connected.set_value();
    });
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    connected.get_future().wait();
    FrameCatcher second(device);
    second.scan(2);
    EXPECT_EQ(1u, catcher.frames().size());
}

TEST_F(HostileMode, APlanSwitchesItOn)
{
    setHostile(false);
    setFaultPlan(R"({"hostile": true})");
    FrameCatcher catcher(device);
    const std::size_t atStop = catcher.scan(1).size();
    EXPECT_TRUE(catcher.waitFor(atStop + 3));
}

TEST_F(HostileMode, AThousandRoundsOfStartingAndStoppingLeaveNothingBehind)
{
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1));
    const FrameCatcher::Reaction end = [&](const Frame &) {
        EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, false);
        SetScanCallBackFunction(device, nullptr, nullptr);
    };
    for (int round = 0; round < 1000; ++round) {
        FrameCatcher catcher(device, round % 3 == 0 ? end : FrameCatcher::Reaction());
        ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
        if (round % 10 == 0) {
            ASSERT_TRUE(catcher.waitFor(1));
        }
        ASSERT_EQ(Ok, EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(0), false));
        if (round % 100 == 0) {
            ASSERT_EQ(Ok, DisConnectDevice(device));
            connect();
            ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1));
        }
    }
    EXPECT_TRUE(account().balances());
    EXPECT_GE(account().delivered, 100);
}

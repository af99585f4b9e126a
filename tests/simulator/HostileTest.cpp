#include "ScannerFixture.h"
#include "StatusCatcher.h"

#include <chrono>
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
    // Twenty periods, in which a trigger that went on would have shown.
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(40);
    eventually([&] { return std::chrono::steady_clock::now() > until; });
    EXPECT_EQ(atRemoval, catcher.frames().size());
    EXPECT_LE(account().produced, produced + 1);
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
    StatusCatcher events(device);
    events.reaction = [&] { ofEvent.set_value(std::this_thread::get_id()); };
    sendStatus(ButtonEvent, 1);
    EXPECT_NE(ofFrame.get_future().get(), ofEvent.get_future().get());
}

TEST_F(HostileMode, TheHostMayDisconnectAndConnectAgainFromTheCallback)
{
    std::promise<void> connected;
    FrameCatcher catcher(device);
    catcher.reaction = [&](const Frame &) {
        EXPECT_EQ(Ok, DisConnectDevice(device));
        connect();
        connected.set_value();
    };
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    connected.get_future().wait();
    slowDown();
    FrameCatcher second(device);
    EXPECT_EQ(1, second.scan(2).front().number);
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

TEST_F(HostileMode, FramesComeInBursts)
{
    // Long beside the time that a picture takes on a busy machine.
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 100));
    std::vector<std::chrono::steady_clock::time_point> times;
    FrameCatcher catcher(device);
    catcher.reaction = [&](const Frame &) { times.push_back(std::chrono::steady_clock::now()); };
    catcher.scan(12);
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    int together = 0;
    for (std::size_t i = 1; i < times.size(); ++i)
        together += times[i] - times[i - 1] < std::chrono::milliseconds(50);
    EXPECT_GE(together, 3);
}

TEST_F(HostileMode, AThousandRoundsOfStartingAndStoppingLeaveNothingBehind)
{
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1));
    for (int round = 0; round < 1000; ++round) {
        FrameCatcher catcher(device);
        if (round % 3 == 0)
            catcher.reaction = [&](const Frame &) {
                EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, false);
                SetScanCallBackFunction(device, nullptr, nullptr);
            };
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

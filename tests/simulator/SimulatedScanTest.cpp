#include "ScannerFixture.h"

#include <atomic>
#include <future>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Scan : public Scanner
{
protected:
    Scan() { connect(); }
};

TEST_F(Scan, DeliversOneImageOfEachSpeckleCameraOnAThreadOfItsOwn)
{
    FrameCatcher catcher(device);
    const Frame frame = catcher.scan(1).front();
    EXPECT_EQ(2u, frame.images.size());
    EXPECT_EQ(160, frame.width);
    EXPECT_EQ(128, frame.height);
    EXPECT_NE(std::this_thread::get_id(), frame.thread);
}

TEST_F(Scan, DeliversTheColorCameraAsThirdImageInAColorMode)
{
    for (int mode : {0, 2, 7}) {
        FrameCatcher catcher(device);
        EXPECT_EQ(3u, catcher.scan(1, mode).front().images.size()) << mode;
    }
}

TEST_F(Scan, GapsInTheNumbersAreTheDroppedFrames)
{
    FrameCatcher catcher(device);
    catcher.scan(20);
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    const auto frames = catcher.frames();
    const Account counted = account();
    EXPECT_EQ(static_cast<long long>(frames.size()), counted.delivered);
    EXPECT_GE(counted.produced, frames.back().number);
    EXPECT_TRUE(counted.balances());
}

TEST_F(Scan, SwitchingOffInAnotherModeStopsTheScan)
{
    FrameCatcher catcher(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(catcher.waitFor(1));
    ASSERT_EQ(Ok, EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(0), false));
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    const long long delivered = account().delivered;
    // A second scan without a callback shows that the frame thread has moved on.
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(eventually([] { return account().noCallback > 1; }));
    EXPECT_EQ(delivered, account().delivered);
}

TEST_F(Scan, FramesWithoutACallbackAreCounted)
{
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(eventually([] { return account().noCallback >= 3; }));
    EXPECT_EQ(0, account().delivered);
    EXPECT_TRUE(account().balances());
}

TEST_F(Scan, CanBeStartedAgainAfterTheCamerasWereClosed)
{
    FrameCatcher catcher(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(catcher.waitFor(1));
    ASSERT_EQ(Ok, CloseDeviceCamera(device));
    ASSERT_EQ(Ok, ReconnectDevice(device));
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    const std::size_t before = catcher.frames().size();
    FrameCatcher second(device);
    second.scan(1);
    EXPECT_EQ(before, catcher.frames().size());
}

TEST_F(Scan, TheAccountBalancesAtEveryMoment)
{
    FrameCatcher catcher(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    while (account().delivered < 10)
        ASSERT_TRUE(account().balances());
}

TEST_F(Scan, ANewPeriodHoldsAtOnce)
{
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 3600000));
    FrameCatcher catcher(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1));
    EXPECT_TRUE(catcher.waitFor(3));
}

TEST_F(Scan, TheHostMayStopTheScanFromTheCallback)
{
    FrameCatcher catcher(device, [&](const Frame &) {
        EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, false);
    });
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(catcher.waitFor(1));
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    EXPECT_EQ(1u, catcher.frames().size());
}

TEST_F(Scan, TheHostMayRemoveTheCallbackFromTheCallback)
{
    FrameCatcher catcher(device,
                         [&](const Frame &) { SetScanCallBackFunction(device, nullptr, nullptr); });
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(eventually([] { return account().noCallback > 2; }));
    EXPECT_EQ(1u, catcher.frames().size());
}

TEST_F(Scan, TheHostMayDisconnectAndConnectAgainFromTheCallback)
{
    std::promise<void> connected;
    FrameCatcher catcher(device, [&](const Frame &) {
        EXPECT_EQ(Ok, DisConnectDevice(device));
        serials.clear();
        connect();
        connected.set_value();
    });
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    connected.get_future().wait();
    FrameCatcher second(device);
    second.scan(2);
    EXPECT_EQ(1u, catcher.frames().size());
}

TEST_F(Scan, BuffersStayValidUntilTheCallbackReturnsWhateverItDoes)
{
    struct Kept
    {
        void *&device;
        std::promise<bool> same;
    } kept{device, {}};
    // Its end waits for the callback, which uses what is above.
    FrameCatcher catcher(device);
    const auto callback = [](const void *const &context, std::vector<unsigned char *> &images,
                             const int &width, const int &height, std::vector<int> &) {
        auto &self = *static_cast<Kept *>(const_cast<void *>(context));
        const std::vector<unsigned char> before(images[0], images[0] + width * height);
        DisConnectDevice(self.device);
        self.same.set_value(std::equal(before.begin(), before.end(), images[0]));
    };
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, callback, &kept));
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    EXPECT_TRUE(kept.same.get_future().get());
}

/// What waits for a running callback: each ends the registration in its own way.
class Waiting : public Scan, public testing::WithParamInterface<int>
{
protected:
    static constexpr int Ways = 4;

    void endRegistration()
    {
        switch (GetParam()) {
        case 0:
            SetScanCallBackFunction(device, nullptr, nullptr);
            break;
        case 1:
            SetScanCallBackFunction(
                device,
                [](const void *const &, std::vector<unsigned char *> &, const int &, const int &,
                   std::vector<int> &) {},
                nullptr);
            break;
        case 2:
            DisConnectDevice(device);
            break;
        default:
            reset(smallSetup());
        }
    }
};

TEST_P(Waiting, EndsOnlyAfterTheRunningCallback)
{
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> returned{false};
    FrameCatcher catcher(device, [&](const Frame &) {
        if (returned)
            return;
        entered.set_value();
        release.get_future().wait();
        returned = true;
    });
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    entered.get_future().wait();
    std::future<bool> ended = std::async(std::launch::async, [&] {
        endRegistration();
        return returned.load();
    });
    EXPECT_EQ(std::future_status::timeout, ended.wait_for(std::chrono::milliseconds(50)));
    release.set_value();
    EXPECT_TRUE(ended.get());
}

INSTANTIATE_TEST_SUITE_P(RemovingReplacingDisconnectingResetting, Waiting, testing::Range(0, 4));

TEST_F(Scan, AScannerWithoutCamerasEnumeratesNothing)
{
    ScannerSetup setup = smallSetup();
    setup.cameras.clear();
    reset(setup);
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    EXPECT_TRUE(serials.empty());
    EXPECT_EQ(0, count);
}

TEST_F(Scan, AScannerWithOneCameraDeliversOneImage)
{
    ScannerSetup setup = smallSetup();
    setup.cameras = {CameraKind::RightSpeckle};
    reset(setup);
    connect();
    FrameCatcher catcher(device);
    EXPECT_EQ(1u, catcher.scan(1, 3).front().images.size());
}

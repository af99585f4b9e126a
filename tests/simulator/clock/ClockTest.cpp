// Scans in a time of the test's own, over the library's functions: every moment is exact.
#include "ClockFixture.h"

#include "api/SimulatedLibrary.h"

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Clock : public VirtualScanner
{
};

TEST_F(Clock, FramesComeOnePeriodAfterAnother)
{
    takeFrames();
    switchOn();
    time.pass(35);
    ASSERT_EQ((Numbers{1, 2, 3}), numbers());
    EXPECT_EQ(10, frames[0].at);
    EXPECT_EQ(20, frames[1].at);
    EXPECT_EQ(30, frames[2].at);
}

TEST_F(Clock, FramesAreNumberedFromOneWithEveryEnabling)
{
    takeFrames();
    switchOn();
    time.pass(25);
    switchOn();
    time.pass(25);
    switchOff();
    switchOn();
    time.pass(15);
    EXPECT_EQ((Numbers{1, 2, 1, 2, 1}), numbers());
}

TEST_F(Clock, ClosingTheCamerasAndReconnectingStopTheScanAtOnce)
{
    for (const auto stop : {CloseDeviceCamera, ReconnectDevice}) {
        ASSERT_EQ(Ok, ReconnectDevice(device));
        takeFrames();
        switchOn();
        time.pass(25);
        ASSERT_EQ(Ok, stop(device));
        const long long produced = account().produced;
        time.pass(1000);
        EXPECT_EQ(produced, account().produced);
    }
    EXPECT_EQ((Numbers{1, 2, 1, 2}), numbers());
}

TEST_F(Clock, AStatusEventWhileTheFirstPictureIsMadeReadyHangsNothing)
{
    pictures.prepareMs = 500;
    takeFrames();
    takeEvents();
    time.at(100, [] { sendStatus(ButtonEvent, 1); });
    switchOn();
    time.passUntil(525);
    EXPECT_EQ(1u, events.size());
    EXPECT_EQ((Numbers{1, 2}), numbers());
    EXPECT_EQ((Counted{2, 0, 0, 0, 0, 0}), counted());
}

TEST_F(Clock, ThePeriodOfTheScanBeforeInventsNoLosses)
{
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1));
    takeFrames();
    takeEvents([&] { time.pass(500); });
    switchOn();
    time.pass(5);
    switchOff();
    const Account before = account();
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1000));
    switchOn();
    sendStatus(ButtonEvent, 1);
    time.pass(60);
    switchOff();
    EXPECT_EQ(before.produced, account().produced);
}

TEST_F(Clock, MakingASceneReadyIsNoPartOfTheScannersTime)
{
    pictures.prepareMs = 300;
    takeFrames();
    switchOn();
    time.passUntil(315);
    setTurntableAngle(20.0);
    time.passUntil(632);
    // The second was due 20 ms after the clock had begun, and the table had turned by then.
    ASSERT_EQ((Numbers{1, 2, 3}), numbers());
    EXPECT_EQ(310, frames[0].at);
    EXPECT_EQ(620, frames[1].at);
    EXPECT_EQ(630, frames[2].at);
    EXPECT_EQ((Counted{3, 0, 0, 0, 0, 0}), counted());
}

TEST_F(Clock, FramesThatWaitForASlowHostShowTheLightAndTheAngleOfTheirMoment)
{
    takeFrames([&](const ReceivedFrame &frame) { time.pass(frame.number == 1 ? 45 : 0); });
    switchOn();
    for (int frame = 2; frame <= 5; ++frame) {
        time.at(10 * frame - 5, [this, frame] {
            setTurntableAngle(frame);
            SetProjectorBrightness(device, 10 * frame);
            SetCameraExposure(device, 0, 100.0 * frame);
        });
    }
    time.pass(70);
    ASSERT_EQ((Numbers{1, 2, 3, 4, 5, 6, 7}), numbers());
    for (const ReceivedFrame &frame : frames) {
        const int moment = std::min(frame.number, 5);
        EXPECT_EQ(moment == 1 ? 0.0 : moment, frame.shown.tableDegrees) << frame.number;
        EXPECT_EQ(moment == 1 ? 60 : 10 * moment, frame.shown.brightness) << frame.number;
        EXPECT_EQ(moment == 1 ? 8000.0 : 100.0 * moment, frame.shown.exposureUs) << frame.number;
    }
    EXPECT_EQ(55, frames[1].at);
    EXPECT_EQ(55, frames[4].at);
}

TEST_F(Clock, WhatASlowHostDoesNotTakeInTimeIsLostButForTheLastFour)
{
    takeFrames([&](const ReceivedFrame &frame) { time.pass(frame.number == 1 ? 402 : 0); });
    switchOn();
    time.pass(422);
    EXPECT_EQ((Numbers{1, 38, 39, 40, 41, 42}), numbers());
    EXPECT_EQ((Counted{6, 0, 36, 0, 0, 0}), counted());
}

TEST_F(Clock, FramesLostWhileTheHostHandlesAnEventAreItsOwn)
{
    takeFrames();
    takeEvents([&] { time.pass(100); });
    switchOn();
    time.at(15, [] { sendStatus(ButtonEvent, 1); });
    time.pass(115);
    EXPECT_EQ((Numbers{1, 8, 9, 10, 11}), numbers());
    EXPECT_EQ((Counted{5, 0, 6, 0, 0, 0}), counted());
}

TEST_F(Clock, FramesWhosePictureIsNotReadyInTimeAreCounted)
{
    pictures.pictureMs = [](int frame) { return frame == 1 ? 100 : 0; };
    takeFrames();
    switchOn();
    time.pass(112);
    EXPECT_EQ((Numbers{1, 8, 9, 10, 11}), numbers());
    EXPECT_EQ((Counted{5, 0, 0, 6, 0, 0}), counted());
}

TEST_F(Clock, FramesThatWaitWhenTheTriggerGoesOffAreCounted)
{
    takeFrames([&](const ReceivedFrame &) { time.pass(1000); });
    switchOn();
    time.at(55, [this] { switchOff(); });
    time.pass(50);
    EXPECT_EQ((Numbers{1}), numbers());
    EXPECT_EQ((Counted{1, 0, 0, 0, 4, 0}), counted());
    EXPECT_EQ(5, account().produced);
}

TEST_F(Clock, AFrameThatWasBeingMadeWhenTheScanEndedIsCountedAtOnce)
{
    pictures.pictureMs = [](int) { return 8; };
    takeFrames();
    Counted atOnce;
    switchOn();
    time.at(15, [&] {
        switchOff();
        atOnce = counted();
    });
    time.pass(100);
    EXPECT_EQ((Counted{0, 0, 0, 0, 1, 0}), atOnce);
    EXPECT_EQ(atOnce, counted());
    EXPECT_TRUE(frames.empty());
}

TEST_F(Clock, ANewPeriodBeginsAtOnce)
{
    takeFrames();
    switchOn();
    time.pass(25);
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 100));
    time.pass(99);
    EXPECT_EQ(2u, frames.size());
    time.pass(1);
    EXPECT_EQ(3u, frames.size());
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 100));
    time.pass(100);
    ASSERT_EQ(4u, frames.size());
    EXPECT_EQ(225, frames[3].at);
}

TEST_F(Clock, TheTrueDepthOfAFrameOutlastsItsScanItsConnectionAndTurns)
{
    using Depths = std::vector<float>;
    const auto present = [] { return trueDepth(CameraKind::LeftSpeckle); };
    const auto depths = [] {
        std::vector<Depths> all;
        for (int frame = 0; frame <= 3; ++frame)
            all.push_back(trueDepth(CameraKind::LeftSpeckle, frame));
        return all;
    };
    takeFrames();
    switchOn();
    const Depths first = present();
    time.pass(15);
    setTurntableAngle(90.0);
    const Depths second = present();
    ASSERT_NE(first, second);
    time.pass(10);
    switchOff();
    // What is no frame of the scan has the depth of the present.
    EXPECT_EQ((std::vector<Depths>{second, first, second, second}), depths());
    setTurntableAngle(180.0);
    EXPECT_EQ((std::vector<Depths>{present(), first, second, present()}), depths());
    ASSERT_EQ(Ok, DisConnectDevice(device));
    setTurntableAngle(270.0);
    EXPECT_EQ((std::vector<Depths>{present(), first, second, present()}), depths());
    reset(setup());
    EXPECT_EQ((std::vector<Depths>{first, first, first, first}), depths());
}

TEST_F(Clock, HostileFramesComeInBurstsOfUpToFour)
{
    setHostile(true);
    takeFrames();
    switchOn();
    time.pass(1000);
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    std::size_t frame = 0;
    while (frame < frames.size()) {
        const int length = burstLength(1, frames[frame].number);
        for (int i = 0; i < length && frame < frames.size(); ++i, ++frame)
            EXPECT_EQ(frames[frame].at, 10 * (frames[frame].number + length - 1 - i));
    }
    EXPECT_GT(frames.size(), 90u);
}

TEST_F(Clock, HostileFramesLingerUntilTheCallbackIsRemoved)
{
    setHostile(true);
    takeFrames();
    switchOn();
    time.pass(200);
    switchOff();
    const std::size_t atStop = frames.size();
    time.pass(200);
    const std::size_t atRemoval = frames.size();
    EXPECT_GE(atRemoval, atStop + 15);
    ASSERT_EQ(Ok, SetScanCallBackFunction(device, nullptr, nullptr));
    const long long produced = account().produced;
    time.pass(200);
    EXPECT_EQ(atRemoval, frames.size());
    EXPECT_EQ(produced, account().produced);
}

TEST_F(Clock, AMillionFramesAreCountedInADay)
{
    ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 86));
    switchOn();
    time.pass(86000000);
    EXPECT_EQ((Counted{0, 1000000, 0, 0, 0, 0}), counted());
}

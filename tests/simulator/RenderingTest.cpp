#include "ScannerFixture.h"

#include <cmath>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Rendering : public Scanner
{
protected:
    Rendering() { connect(); }

    void lightsAsInAScan()
    {
        SetStrobeControlledByTrigger(device, CONTROLROUTE_SCAN, STROBE_STATE_SCAN);
        Project(device, PROJECTWORKTYPES_SCAN);
    }

    /// The first frame of a new scan: the same number, so the same noise.
    Images firstFrame(int mode = 1) { return FrameCatcher(device).scan(1, mode).front().images; }
};

TEST_F(Rendering, TheSameSeedGivesTheSameBytes)
{
    lightsAsInAScan();
    const Images before = firstFrame();
    reset(smallSetup());
    connect();
    lightsAsInAScan();
    EXPECT_EQ(before, firstFrame());
}

TEST_F(Rendering, AnotherSeedGivesAnotherPattern)
{
    lightsAsInAScan();
    const Images before = firstFrame();
    ScannerSetup setup = smallSetup();
    setup.seed = 2;
    reset(setup);
    connect();
    lightsAsInAScan();
    EXPECT_NE(before, firstFrame());
}

TEST_F(Rendering, FramesDifferByNoiseAlone)
{
    lightsAsInAScan();
    FrameCatcher catcher(device);
    const auto frames = catcher.scan(2);
    const auto &one = frames[0].images[0];
    const auto &two = frames[1].images[0];
    EXPECT_NE(one, two);
    double difference = 0.0;
    for (std::size_t i = 0; i < one.size(); ++i)
        difference += std::abs(one[i] - two[i]);
    EXPECT_LT(difference / static_cast<double>(one.size()), 3.0);
}

TEST_F(Rendering, TheDefaultsExposeWell)
{
    lightsAsInAScan();
    for (const auto &image : firstFrame()) {
        const auto white = std::count(image.begin(), image.end(), 255);
        EXPECT_GT(meanOf(image), 40.0);
        EXPECT_LT(meanOf(image), 120.0);
        EXPECT_LT(white, static_cast<std::ptrdiff_t>(image.size() / 100));
        EXPECT_GT(*std::max_element(image.begin(), image.end()), 180);
    }
}

TEST_F(Rendering, TheTwoSpeckleCamerasSeeDifferentPictures)
{
    lightsAsInAScan();
    const Images images = firstFrame();
    EXPECT_NE(images[0], images[1]);
}

TEST_F(Rendering, WithoutProjectionThePictureIsDim)
{
    lightsAsInAScan();
    const double lit = meanOf(firstFrame()[0]);
    SetStrobeControlledByTrigger(device, static_cast<CONTROLROUTE>(0), STROBE_STATE_SCAN);
    Project(device, PROJECTWORKTYPES_OFF);
    const double dark = meanOf(firstFrame()[0]);
    EXPECT_LT(dark, 10.0);
    EXPECT_GT(dark, 1.0);
    EXPECT_GT(lit, 5.0 * dark);
}

TEST_F(Rendering, BrightnessFollowsExposureAndGainOfThatCameraAlone)
{
    lightsAsInAScan();
    const Images before = firstFrame();
    ASSERT_EQ(Ok, SetCameraExposure(device, 0, 4000.0));
    const Images shorter = firstFrame();
    EXPECT_NEAR(meanOf(before[0]) / 2.0, meanOf(shorter[0]), 2.0);
    EXPECT_EQ(before[1], shorter[1]);
    ASSERT_EQ(Ok, SetCameraExposureAndGain(device, 0, 8000.0, 0));
    EXPECT_NEAR(meanOf(before[0]) / 2.0, meanOf(firstFrame()[0]), 2.0);
}

TEST_F(Rendering, FullExposureAndGainSaturate)
{
    lightsAsInAScan();
    ASSERT_EQ(Ok, SetCameraExposureAndGain(device, 0, 1000000.0, 65535));
    const auto image = firstFrame()[0];
    EXPECT_EQ(255, *std::min_element(image.begin(), image.end()));
}

#include "PictureTools.h"
#include "ScannerFixture.h"

#include <cmath>
#include <stdexcept>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Scene : public Scanner
{
protected:
    Scene()
    {
        ScannerSetup setup = smallSetup();
        setup.width = 640;
        setup.height = 512;
        reset(setup);
        connect();
        Project(device, PROJECTWORKTYPES_SCAN);
    }

    /// Brightness in the left picture and at the true place in the right one, `shift` pixels off,
    /// for every fifth surface point that both cameras see.
    static std::vector<std::pair<double, double>> matches(const Frame &frame, double shift)
    {
        const Calibration left = calibration(CameraKind::LeftSpeckle);
        const Calibration right = calibration(CameraKind::RightSpeckle);
        const auto leftDepth = trueDepth(CameraKind::LeftSpeckle, frame.number);
        const auto rightDepth = trueDepth(CameraKind::RightSpeckle, frame.number);
        std::vector<std::pair<double, double>> pairs;
        for (std::size_t i = 0; i < leftDepth.size(); i += 5) {
            const Pixel seen = pixelAt(i, frame.width, leftDepth[i]);
            const Pixel other = pictureOf(right, worldPoint(left, seen));
            const double x = other.x + shift;
            if (x < 0 || other.y < 0 || x >= frame.width - 1 || other.y >= frame.height - 1)
                continue;
            // Hidden by something nearer?
            if (std::abs(sampled(rightDepth, frame.width, other.x, other.y) - other.depth) > 1.0)
                continue;
            pairs.emplace_back(frame.images[0][i],
                               sampled(frame.images[1], frame.width, x, other.y));
        }
        return pairs;
    }
};

TEST_F(Scene, TheTrueDepthMatchesWhatBothCamerasSee)
{
    const Frame frame = firstFrame();
    const auto exact = matches(frame, 0.0);
    EXPECT_GT(exact.size(), 10000u);
    EXPECT_GT(correlation(exact), 0.93);
    EXPECT_LT(correlation(matches(frame, 4.0)), 0.3);
    EXPECT_LT(correlation(matches(frame, -4.0)), 0.3);
}

TEST_F(Scene, TheTrueDepthMatchesAtEveryAngleOfTheTable)
{
    for (double angle : {33.0, -120.0, 1000.5}) {
        setTurntableAngle(angle);
        EXPECT_EQ(angle, turntableAngle());
        const Frame frame = firstFrame();
        EXPECT_GT(correlation(matches(frame, 0.0)), 0.93) << angle;
    }
}

TEST_F(Scene, TheDepthIsThatOfAnObjectInFrontOfATable)
{
    const auto depth = trueDepth(CameraKind::LeftSpeckle);
    ASSERT_EQ(640u * 512u, depth.size());
    EXPECT_GT(*std::min_element(depth.begin(), depth.end()), 450.0f);
    EXPECT_LT(*std::max_element(depth.begin(), depth.end()), 1000.0f);
    // Neighbours far apart in depth: the outline of the object.
    int jumps = 0;
    for (std::size_t i = 1; i < depth.size(); ++i)
        jumps += std::abs(depth[i] - depth[i - 1]) > 15.0f && i % 640 != 0;
    EXPECT_GT(jumps, 50);
}

TEST_F(Scene, WhatARayAboveTheHorizonMeetsIsNothing)
{
    // A picture so high that it shows what lies beyond the floor.
    ScannerSetup setup = smallSetup();
    setup.width = 64;
    setup.height = 288;
    reset(setup);
    connect();
    const auto depth = trueDepth(CameraKind::LeftSpeckle);
    const auto nothing = std::count(depth.begin(), depth.end(), NothingThere);
    EXPECT_GT(nothing, 64);
    EXPECT_LT(nothing, 64 * 100);
    EXPECT_EQ(NothingThere, depth.front());
    EXPECT_GT(*std::min_element(depth.begin(), depth.end()), 200.0f);
    // Below the horizon everything has a depth, and it is dark where nothing is.
    const auto image = firstFrame().images[0];
    bool wasThere = false;
    for (std::size_t row = 0; row < 288; ++row) {
        const bool isThere = std::isfinite(depth[row * 64]);
        EXPECT_TRUE(isThere || !wasThere) << row;
        EXPECT_TRUE(isThere || image[row * 64] <= BlackLevel + 5) << row;
        wasThere = isThere;
    }
}

TEST_F(Scene, TurningTheTableTurnsTheObjectInThePictures)
{
    const Images before = firstFrame().images;
    const auto depth = trueDepth(CameraKind::LeftSpeckle);
    setTurntableAngle(20.0);
    EXPECT_NE(before, firstFrame().images);
    EXPECT_NE(depth, trueDepth(CameraKind::LeftSpeckle));
    setTurntableAngle(360.0);
    EXPECT_EQ(before, firstFrame().images);
}

TEST_F(Scene, EveryFrameKeepsTheDepthItWasTakenWith)
{
    const auto straight = trueDepth(CameraKind::LeftSpeckle);
    FrameCatcher catcher(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(catcher.waitFor(2));
    setTurntableAngle(90.0);
    const std::size_t atTurn = catcher.frames().size();
    // Of those that come now, one may be on its way and four may have waited since before.
    ASSERT_TRUE(catcher.waitFor(atTurn + 6));
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, false));
    EXPECT_EQ(straight, trueDepth(CameraKind::LeftSpeckle, 1));
    EXPECT_EQ(trueDepth(CameraKind::LeftSpeckle),
              trueDepth(CameraKind::LeftSpeckle, catcher.frames().back().number));
    EXPECT_NE(straight, trueDepth(CameraKind::LeftSpeckle));
}

TEST_F(Scene, TheTableIsTurnedByThePlainCFunctionsToo)
{
    EXPECT_EQ(1, Tessel3SyncSimulator_setTurntableAngle(-45.5));
    EXPECT_EQ(-45.5, Tessel3SyncSimulator_turntableAngle());
    EXPECT_EQ(-45.5, turntableAngle());
}

TEST_F(Scene, AnglesBeyondReasonAreRefused)
{
    setTurntableAngle(5.0);
    for (double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL, 3600000.5}) {
        EXPECT_THROW(setTurntableAngle(bad), std::invalid_argument);
        EXPECT_EQ(0, Tessel3SyncSimulator_setTurntableAngle(bad));
    }
    EXPECT_EQ(5.0, turntableAngle());
}

TEST_F(Scene, TheCamerasStandApartAndLookAtTheSamePlace)
{
    const Calibration left = calibration(CameraKind::LeftSpeckle);
    const Calibration right = calibration(CameraKind::RightSpeckle);
    EXPECT_EQ(120.0, right.position[0] - left.position[0]);
    EXPECT_EQ(640, left.width);
    for (CameraKind kind : {CameraKind::LeftSpeckle, CameraKind::RightSpeckle, CameraKind::Color}) {
        const Calibration camera = calibration(kind);
        const Pixel centre = pictureOf(camera, {0.0, 0.0, 640.0});
        EXPECT_NEAR(camera.centreX, centre.x, 1e-9);
        EXPECT_NEAR(camera.centreY, centre.y, 1e-9);
    }
}

#include "ScannerFixture.h"

#include <future>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Snapshot : public Scanner
{
protected:
    Snapshot() { connect(); }

    RETSTATUS snap(int route = CONTROLROUTE_SCAN)
    {
        return SnapColorImage(device, images, width, height, fifth, sixth, seventh,
                              static_cast<CONTROLROUTE>(route));
    }

    std::vector<unsigned char> plane(std::size_t index) const
    {
        return {images[index], images[index] + width * height};
    }

    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    int fifth = 0;
    double sixth = 0.0;
    int seventh = 0;
};

TEST_F(Snapshot, HasThreeColorPlanesOfTheSensorsSize)
{
    ASSERT_EQ(Ok, snap());
    ASSERT_EQ(3u, images.size());
    EXPECT_EQ(160, width);
    EXPECT_EQ(128, height);
    EXPECT_EQ(0, fifth);
    EXPECT_NE(plane(0), plane(1));
    EXPECT_NE(plane(1), plane(2));
    // The object, in the middle, is of a warm color; the floor before it is grey.
    const std::size_t middle = 56 * 160 + 80;
    EXPECT_GT(plane(0)[middle], plane(2)[middle] + 20);
    const std::size_t corner = 127 * 160;
    EXPECT_NEAR(plane(0)[corner], plane(2)[corner], 12);
}

TEST_F(Snapshot, TellsExposureAndGainOfTheColorCamera)
{
    ASSERT_EQ(Ok, SetCameraExposureAndGain(device, 2, 1234.5, 8));
    ASSERT_EQ(Ok, snap());
    EXPECT_EQ(1234.5, sixth);
    EXPECT_EQ(8, seventh);
}

TEST_F(Snapshot, IsWellExposedByDefaultAndDarkWithoutTheStrobe)
{
    ASSERT_EQ(Ok, snap());
    EXPECT_GT(meanOf(plane(1)), 60.0);
    EXPECT_LT(meanOf(plane(1)), 180.0);
    ASSERT_EQ(Ok, snap(0));
    EXPECT_LT(meanOf(plane(1)), 10.0);
}

TEST_F(Snapshot, FollowsTheStrobesFirstRatio)
{
    ASSERT_EQ(Ok, SetStrobeDutioRatio(device, 50, 0, 0));
    ASSERT_EQ(Ok, snap());
    const double full = meanOf(plane(0));
    ASSERT_EQ(Ok, SetStrobeDutioRatio(device, 25, 100, 100));
    ASSERT_EQ(Ok, snap());
    EXPECT_NEAR(full / 2.0, meanOf(plane(0)), 6.0);
}

TEST_F(Snapshot, ReplacesTheImagesItIsGiven)
{
    ASSERT_EQ(Ok, snap());
    ASSERT_EQ(Ok, snap());
    EXPECT_EQ(3u, images.size());
}

TEST_F(Snapshot, StaysValidWhileAScanRuns)
{
    ASSERT_EQ(Ok, snap());
    const auto before = plane(0);
    FrameCatcher(device).scan(5);
    EXPECT_EQ(before, plane(0));
}

TEST_F(Snapshot, TheFirstOfAConnectionIsTheSameEveryTime)
{
    ASSERT_EQ(Ok, snap());
    const auto first = plane(0);
    ASSERT_EQ(Ok, snap());
    EXPECT_NE(first, plane(0));
    connect();
    ASSERT_EQ(Ok, snap());
    EXPECT_EQ(first, plane(0));
}

TEST_F(Snapshot, WorksDuringAScan)
{
    FrameCatcher catcher(device);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_EQ(Ok, snap());
    EXPECT_TRUE(catcher.waitFor(2));
}

TEST_F(Snapshot, IsRefusedOverAnUnknownRoute)
{
    expectRefused(OutOfRange, snap(3));
    expectRefused(OutOfRange, snap(-1));
    EXPECT_TRUE(images.empty());
}

TEST_F(Snapshot, IsRefusedWithoutAColorCamera)
{
    ScannerSetup setup = smallSetup();
    setup.cameras = {CameraKind::LeftSpeckle, CameraKind::RightSpeckle};
    reset(setup);
    connect();
    expectRefused(NoColorCamera, snap());
}

TEST_F(Snapshot, IsRefusedWhileTheCamerasAreClosed)
{
    ASSERT_EQ(Ok, CloseDeviceCamera(device));
    expectRefused(CamerasClosed, snap());
}

TEST_F(Snapshot, LooksAgainAtTheCamerasOnceItsPictureIsMade)
{
    ScannerSetup setup = smallSetup();
    setup.width = 1024;
    setup.height = 1024;
    RETSTATUS status = RETSTATUS_SUCCESS;
    // Closed while the picture is made, unless this thread is held up so long; then once more.
    for (int attempt = 0; attempt < 20 && status == Ok; ++attempt) {
        ++setup.seed; // a scene that must be made first
        reset(setup);
        connect();
        std::future<RETSTATUS> snapped = std::async(std::launch::async, [this] { return snap(); });
        ASSERT_TRUE(eventually([] { return callCount("SnapColorImage") == 1; }));
        ASSERT_EQ(Ok, CloseDeviceCamera(device));
        status = snapped.get();
    }
    expectRefused(CamerasClosed, status);
    EXPECT_TRUE(images.empty());
}

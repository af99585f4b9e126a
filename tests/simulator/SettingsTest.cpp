#include "ScannerFixture.h"

#include <cmath>
#include <limits>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Settings : public Scanner
{
protected:
    Settings() { connect(); }
};

/// One setting of a single integer: by its two functions, its default and its range.
struct IntegerSetting
{
    const char *name;
    std::function<RETSTATUS(void *&, int)> set;
    std::function<RETSTATUS(void *&, int &)> get;
    int initial;
    int lowest;
    int highest;
};

void PrintTo(const IntegerSetting &setting, std::ostream *stream)
{
    *stream << setting.name;
}

class EveryInteger : public Scanner, public testing::WithParamInterface<IntegerSetting>
{
};

TEST_P(EveryInteger, IsReadBackAsItWasSetAndKeptWhenAValueIsRefused)
{
    const IntegerSetting &setting = GetParam();
    connect();
    int value = -99;
    ASSERT_EQ(Ok, setting.get(device, value));
    EXPECT_EQ(setting.initial, value);
    for (int good : {setting.lowest, setting.highest}) {
        ASSERT_EQ(Ok, setting.set(device, good));
        ASSERT_EQ(Ok, setting.get(device, value));
        EXPECT_EQ(good, value);
    }
    for (int bad : {setting.lowest - 1, setting.highest + 1}) {
        expectRefused(OutOfRange, setting.set(device, bad));
        ASSERT_EQ(Ok, setting.get(device, value));
        EXPECT_EQ(setting.highest, value);
    }
}

TEST_P(EveryInteger, IsRefusedWithoutAConnectionAndLeavesTheOutputAlone)
{
    int value = -99;
    expectRefused(NotConnected, GetParam().set(device, GetParam().lowest));
    expectRefused(NotConnected, GetParam().get(device, value));
    EXPECT_EQ(-99, value);
}

INSTANTIATE_TEST_SUITE_P(
    Setting, EveryInteger,
    testing::Values(
        IntegerSetting{"LaserLineDutioRatio", SetLaserLineDutioRatio, GetLaserLineDutioRatio, 50, 0,
                       100},
        IntegerSetting{"ProjectDutioRatio", SetProjectDutioRatio, GetProjectDutioRatio, 50, 0, 100},
        IntegerSetting{"IRLaserDutioRatio", SetIRLaserDutioRatio, GetIRLaserDutioRatio, 50, 0, 100},
        IntegerSetting{"ProjectorBrightness", SetProjectorBrightness, GetProjectorBrightness, 60, 0,
                       100},
        IntegerSetting{"VideoTriggerPeriod", SetVideoTriggerPeriod, GetVideoTriggerPeriod, 2, 1,
                       3600000},
        IntegerSetting{
            "CameraGain", [](void *&device, int gain) { return SetCameraGain(device, 1, gain); },
            [](void *&device, int &gain) { return GetCameraGain(device, 1, gain); }, 16, 0, 65535}),
    [](const auto &one) { return std::string(one.param.name); });

TEST_F(Settings, StrobeRatiosAreReadBackInOrder)
{
    int first = 0;
    int second = 0;
    int third = 0;
    ASSERT_EQ(Ok, SetStrobeDutioRatio(device, 1, 2, 3));
    expectRefused(OutOfRange, SetStrobeDutioRatio(device, 4, 5, 101));
    expectRefused(OutOfRange, SetStrobeDutioRatio(device, -1, 5, 6));
    ASSERT_EQ(Ok, GetStrobeDutioRatio(device, first, second, third));
    EXPECT_EQ(1, first);
    EXPECT_EQ(2, second);
    EXPECT_EQ(3, third);
}

TEST_F(Settings, ExposureAndGainBelongToEachCameraAlone)
{
    ASSERT_EQ(Ok, SetCameraExposureAndGain(device, 0, 1234.5, 65535));
    ASSERT_EQ(Ok, SetCameraExposure(device, 1, 99.25));
    double exposure = 0.0;
    int gain = 0;
    ASSERT_EQ(Ok, GetCameraExposureAndGain(device, 0, exposure, gain));
    EXPECT_EQ(1234.5, exposure);
    EXPECT_EQ(65535, gain);
    ASSERT_EQ(Ok, GetCameraExposureAndGain(device, 1, exposure, gain));
    EXPECT_EQ(99.25, exposure);
    EXPECT_EQ(16, gain);
    ASSERT_EQ(Ok, GetCameraExposure(device, 2, exposure));
    EXPECT_EQ(8000.0, exposure);
}

TEST_F(Settings, ExposuresOutsideTheRangeAreRefused)
{
    const double infinite = std::numeric_limits<double>::infinity();
    for (double bad : {0.0, 0.999, -1.0, 1000000.5, infinite, -infinite, std::nan("")}) {
        expectRefused(OutOfRange, SetCameraExposure(device, 0, bad));
        expectRefused(OutOfRange, SetCameraExposureAndGain(device, 0, bad, 1));
    }
    expectRefused(OutOfRange, SetCameraExposureAndGain(device, 0, 100.0, 70000));
    double exposure = 0.0;
    int gain = 0;
    ASSERT_EQ(Ok, GetCameraExposureAndGain(device, 0, exposure, gain));
    EXPECT_EQ(8000.0, exposure);
    EXPECT_EQ(16, gain);
}

TEST_F(Settings, CameraNumbersOutsideTheListAreRefused)
{
    double exposure = 1.5;
    int gain = 2;
    for (int camera : {-1, 3, 127}) {
        expectRefused(UnknownCamera, SetCameraExposureAndGain(device, camera, 100.0, 1));
        expectRefused(UnknownCamera, GetCameraExposureAndGain(device, camera, exposure, gain));
        expectRefused(UnknownCamera, SetCameraExposure(device, camera, 100.0));
        expectRefused(UnknownCamera, GetCameraExposure(device, camera, exposure));
        expectRefused(UnknownCamera, SetCameraGain(device, camera, 1));
        expectRefused(UnknownCamera, GetCameraGain(device, camera, gain));
    }
    EXPECT_EQ(1.5, exposure);
    EXPECT_EQ(2, gain);
}

TEST_F(Settings, WorkTypesModesAndRoutesOutsideTheirRangesAreRefused)
{
    expectRefused(OutOfRange, Project(device, static_cast<PROJECTWORKTYPES>(4)));
    expectRefused(OutOfRange, Project(device, static_cast<PROJECTWORKTYPES>(-1)));
    expectRefused(OutOfRange, EnableBlueLaser(device, static_cast<LASERWORKMODE>(3), true));
    expectRefused(OutOfRange, SetDistanceIndicate(device, static_cast<DISTANCESTATUS>(4)));
    expectRefused(OutOfRange, SetStrobeControlledByTrigger(device, static_cast<CONTROLROUTE>(3),
                                                           STROBE_STATE_SCAN));
    expectRefused(OutOfRange, SetStrobeControlledByTrigger(device, CONTROLROUTE_SCAN,
                                                           static_cast<STROBE_STATE>(5)));
    expectRefused(OutOfRange,
                  EnableVideoTrigger(device, static_cast<CAMERA_TRIGGER_MODE>(8), true));
}

TEST_F(Settings, TheValuesOfEveryScanAreAccepted)
{
    EXPECT_EQ(Ok, SetStrobeControlledByTrigger(device, CONTROLROUTE_SCAN, STROBE_STATE_SCAN));
    EXPECT_EQ(Ok, SetDistanceIndicate(device, DISTANCESTATUS_SCAN));
    EXPECT_EQ(Ok, Project(device, PROJECTWORKTYPES_SCAN));
    EXPECT_EQ(Ok, Project(device, PROJECTWORKTYPES_OFF));
    EXPECT_EQ(Ok, EnableIRLaser(device, false));
    EXPECT_EQ(Ok, EnableBlueLaser(device, static_cast<LASERWORKMODE>(0), false));
}

#include "DirectLink.h"

#include <limits>

namespace {

using namespace KvSyncTest;
using ::testing::Contains;

using CameraSetting = ConnectedScanner;
using Gain = ConnectedScanner;
using Exposure = ConnectedScanner;
using LightSetting = ConnectedScanner;

TEST_F(CameraSetting, NumbersOfCamerasKeepTheirSign)
{
    unsigned short gain = 0;
    double exposure = 0;
    for (const int camera : {-128, -1, 127}) {
        const auto number = static_cast<signed char>(camera);
        const std::string start = "(device, " + std::to_string(camera) + ", ";
        const Journal journal = journalOf([&] {
            controller.setGainAndExpo(anyHandle, 1, 2, number);
            controller.getGainAndExpo(anyHandle, gain, exposure, number);
            controller.setExopsureTime(anyHandle, 2, number);
            controller.getExposureTime(anyHandle, exposure, number);
            controller.setGain(anyHandle, 1, number);
            controller.getGain(anyHandle, gain, number);
        });
        EXPECT_THAT(journal, Contains("SetCameraExposureAndGain" + start + "2, 1)"));
        EXPECT_THAT(journal, Contains("GetCameraExposureAndGain" + start + "0, 0)"));
        EXPECT_THAT(journal, Contains("SetCameraExposure" + start + "2)"));
        EXPECT_THAT(journal, Contains("GetCameraExposure" + start + "0)"));
        EXPECT_THAT(journal, Contains("SetCameraGain" + start + "1)"));
        EXPECT_THAT(journal, Contains("GetCameraGain" + start + "0)"));
        EXPECT_THAT(journal, Contains(debug("setExopsureTime",
                                            "exposureTime:2,cameraID:" + std::to_string(camera) +
                                                ",func default success")));
        EXPECT_THAT(journal, Contains(debug("setGain", "gain:1,cameraID:" + std::to_string(camera) +
                                                           ",func default success")));
    }
}

TEST_F(Gain, IsSetWithoutASign)
{
    for (const int gain : {0, 32768, 65535}) {
        const auto given = static_cast<unsigned short>(gain);
        const std::string text = std::to_string(gain);
        const Journal journal = journalOf([&] {
            controller.setGain(anyHandle, given, 0);
            controller.setGainAndExpo(anyHandle, given, 1, 0);
        });
        EXPECT_THAT(journal, Contains("SetCameraGain(device, 0, " + text + ")"));
        EXPECT_THAT(journal, Contains(debug("setGain",
                                            "gain:" + text + ",cameraID:0,func default success")));
        EXPECT_THAT(journal, Contains("SetCameraExposureAndGain(device, 0, 1, " + text + ")"));
        EXPECT_THAT(journal, Contains(debug("setGainAndExpo", "getGainAndExpo :1 gain: " + text)));
    }
}

TEST_F(Gain, OfTheLibraryIsCutToItsLowSixteenBits)
{
    const std::vector<std::pair<int, unsigned short>> gains{
        {70000, 4464}, {65536, 0}, {65535, 65535}, {-1, 65535}};
    for (const auto &[fromLibrary, expected] : gains) {
        scanner.effects.GetCameraGain = [value = fromLibrary](void *&, int, int &gain) {
            gain = value;
            return accepted;
        };
        scanner.effects.GetCameraExposureAndGain = [value = fromLibrary](void *&, int, double &,
                                                                         int &gain) {
            gain = value;
            return accepted;
        };
        unsigned short gain = 1;
        unsigned short gainBesideExposure = 1;
        double exposure = 0;
        const Journal journal = journalOf([&] {
            controller.getGain(anyHandle, gain, 0);
            controller.getGainAndExpo(anyHandle, gainBesideExposure, exposure, 0);
        });
        EXPECT_EQ(gain, expected);
        EXPECT_EQ(gainBesideExposure, expected);
        EXPECT_THAT(journal, Contains(debug("getGain", "getGain: " + std::to_string(expected))));
    }
}

TEST_F(Gain, IsSetSuccessfullyOnADisconnectedScanner)
{
    DirectLink fresh;
    fresh.scanner.statuses["SetCameraGain"] = refused;
    ErrorCode code = ConnectFailed;
    journalOf([&] { code = fresh.controller.setGain(anyHandle, 1, 0); });
    EXPECT_EQ(code, Success);
}

TEST_F(Exposure, IsWrittenToTheCallerEvenWhenRefused)
{
    scanner.effects.GetCameraExposure = [](void *&, int, double &exposure) {
        exposure = 4.5;
        return refused;
    };
    double exposure = 0;
    ErrorCode code = Success;
    journalOf([&] { code = controller.getExposureTime(anyHandle, exposure, 0); });
    EXPECT_EQ(code, DeviceOperationFailed);
    EXPECT_EQ(exposure, 4.5);
}

TEST_F(Exposure, PassesExtremesOn)
{
    EXPECT_THAT(journalOf([&] { controller.setExopsureTime(anyHandle, -1e300, 0); }),
                Contains("SetCameraExposure(device, 0, -1e+300)"));
    EXPECT_THAT(journalOf([&] {
                    controller.setExopsureTime(anyHandle, std::numeric_limits<double>::infinity(),
                                               0);
                }),
                Contains("SetCameraExposure(device, 0, inf)"));
}

TEST_F(LightSetting, PassesExtremesOn)
{
    constexpr int smallest = std::numeric_limits<int>::min();
    constexpr int largest = std::numeric_limits<int>::max();
    const Journal journal = journalOf([&] {
        controller.setProjectorBrightness(smallest);
        controller.setVideoTriggerPeriod(largest);
        controller.setStrobeDutioRatio(smallest, 0, largest);
        controller.setProjectDutioRatio(-1);
        controller.setDistanceIndicate(largest);
    });
    EXPECT_THAT(journal, Contains("SetProjectorBrightness(device, -2147483648)"));
    EXPECT_THAT(journal, Contains("SetVideoTriggerPeriod(device, 2147483647)"));
    EXPECT_THAT(journal, Contains("SetStrobeDutioRatio(device, -2147483648, 0, 2147483647)"));
    EXPECT_THAT(journal, Contains("SetProjectDutioRatio(device, -1)"));
    EXPECT_THAT(journal, Contains("SetDistanceIndicate(device, 2147483647)"));
}

} // namespace

#include "ScannerFixture.h"

#include <stdexcept>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Control : public Scanner
{
protected:
    static std::vector<std::string> recorded()
    {
        std::vector<std::string> texts;
        for (const Call &call : calls())
            texts.push_back(callText(call));
        return texts;
    }
};

TEST_F(Control, RecordsFunctionOrderAndArguments)
{
    connect();
    SetCameraExposureAndGain(device, -1, 0.1, 70000);
    EnableBlueLaser(device, static_cast<LASERWORKMODE>(5), true);
    DisConnectDevice(device);
    DisConnectDevice(device);
    EXPECT_EQ((std::vector<std::string>{
                  R"(GetCamerasInformation("KV-SIM-0001"))",
                  R"(ConnectDevice("SPECKLE", "", ["KV-SIM-0001-L", "KV-SIM-0001-R", )"
                  R"("KV-SIM-0001-C", "KV-SIM-0001-L"], [0, 0, 1, 0], [0, 1, 2, 0]))",
                  "SetCameraExposureAndGain(device, -1, 0.1, 70000)",
                  "EnableBlueLaser(device, 5, true)",
                  "DisConnectDevice(device)",
                  "DisConnectDevice(null)",
              }),
              recorded());
}

TEST_F(Control, RecordsPointersByTheirAddress)
{
    int context = 0;
    SetStatusCallBackFunction(device, nullptr, &context);
    EXPECT_EQ((Call{"SetStatusCallBackFunction", {"null", "null", addressText(&context)}}),
              calls().back());
}

TEST_F(Control, ClearingTheRecordLeavesTheNumbering)
{
    GetCameraCount("", count);
    clearCalls();
    EXPECT_TRUE(calls().empty());
    EXPECT_EQ(1, callCount("GetCameraCount"));
    EXPECT_EQ(0, callCount("Project"));
}

TEST_F(Control, KeepsTheNewestTenThousandCalls)
{
    for (int i = 0; i < 10001; ++i)
        GetCameraCount("", count);
    SetDistanceIndicate(device, DISTANCESTATUS_SCAN);
    EXPECT_EQ(10000u, calls().size());
    EXPECT_EQ("SetDistanceIndicate", calls().back().function);
    EXPECT_EQ(10001, callCount("GetCameraCount"));
}

TEST_F(Control, AScriptedStatusIsReturnedWithoutDoingAnything)
{
    connect();
    script("SetProjectorBrightness", 1, {3, {}});
    int brightness = 0;
    EXPECT_EQ(3, SetProjectorBrightness(device, 5));
    GetProjectorBrightness(device, brightness);
    EXPECT_EQ(60, brightness);
}

TEST_F(Control, AnAnswerHoldsForItsCallNumberAlone)
{
    connect();
    script("EnableIRLaser", 2, {11, {}});
    EXPECT_EQ(Ok, EnableIRLaser(device, true));
    EXPECT_EQ(11, EnableIRLaser(device, true));
    EXPECT_EQ(Ok, EnableIRLaser(device, true));
}

TEST_F(Control, AnAnswerToANumberedCallGoesBeforeOneToEveryCall)
{
    connect();
    script("EnableIRLaser", 2, {11, {}});
    script("EnableIRLaser", EveryCall, {12, {}});
    EXPECT_EQ(12, EnableIRLaser(device, true));
    EXPECT_EQ(11, EnableIRLaser(device, true));
    EXPECT_EQ(12, EnableIRLaser(device, true));
}

TEST_F(Control, ScriptedOutputsAreWrittenOverTheScannersOwn)
{
    connect();
    script("GetCameraExposureAndGain", 1, {{}, {{"gain", 70000}}});
    double exposure = 0.0;
    int gain = 0;
    EXPECT_EQ(Ok, GetCameraExposureAndGain(device, 0, exposure, gain));
    EXPECT_EQ(8000.0, exposure);
    EXPECT_EQ(70000, gain);
}

TEST_F(Control, ScriptedOutputsAreWrittenOnARefusalToo)
{
    script("GetCamerasInformation", 1,
           {5,
            {{"serials", Texts{"X", std::nullopt}},
             {"a", std::vector<int>{1, 2}},
             {"b", std::vector<int>{}},
             {"flags", std::vector<bool>{false}},
             {"count", -4}}});
    EXPECT_EQ(5, GetCamerasInformation("", serials, a, b, flags, count));
    ASSERT_EQ(2u, serials.size());
    EXPECT_STREQ("X", serials[0]);
    EXPECT_EQ(nullptr, serials[1]);
    EXPECT_EQ((std::vector<int>{1, 2}), a);
    EXPECT_TRUE(b.empty());
    EXPECT_EQ(std::vector<bool>{false}, flags);
    EXPECT_EQ(-4, count);
}

TEST_F(Control, ASnapshotCanBeScriptedWithItsFifthArgumentAndNullBuffers)
{
    connect();
    script("SnapColorImage", 1,
           {Ok,
            {{"images", Texts{"abcdef", std::nullopt}},
             {"dimension1", 3},
             {"dimension2", -2},
             {"fifth", 42},
             {"sixth", 1.5},
             {"seventh", 7}}});
    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    int fifth = 0;
    double sixth = 0.0;
    int seventh = 0;
    ASSERT_EQ(Ok, SnapColorImage(device, images, width, height, fifth, sixth, seventh,
                                 CONTROLROUTE_SCAN));
    ASSERT_EQ(2u, images.size());
    EXPECT_EQ("abcdef", std::string(images[0], images[0] + 6));
    EXPECT_EQ(nullptr, images[1]);
    EXPECT_EQ(3, width);
    EXPECT_EQ(-2, height);
    EXPECT_EQ(42, fifth);
    EXPECT_EQ(1.5, sixth);
    EXPECT_EQ(7, seventh);
}

TEST_F(Control, TheBufferOfUserInformationCanBeFilledReplacedOrTakenAway)
{
    connect();
    script("ReadUserInfomation", 1, {{}, {{"buffer", "scripted"}}});
    script("ReadUserInfomation", 2, {{}, {{"replacement", "elsewhere"}}});
    script("ReadUserInfomation", 3, {9, {{"buffer", nullptr}}});
    auto *buffer = new char[512]();
    const char *original = buffer;
    EXPECT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
    EXPECT_STREQ("scripted", buffer);
    EXPECT_EQ(original, buffer);
    EXPECT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
    EXPECT_STREQ("elsewhere", buffer);
    EXPECT_NE(original, buffer);
    EXPECT_EQ(9, ReadUserInfomation(device, 0, buffer));
    EXPECT_EQ(nullptr, buffer);
}

TEST_F(Control, RefusesToScriptWhatTheLibraryDoesNotHave)
{
    EXPECT_THROW(script("Explode", 1, {}), std::invalid_argument);
    EXPECT_THROW(script("Project", -1, {}), std::invalid_argument);
    EXPECT_THROW(script("Project", 1, {{}, {{"ratio", 1}}}), std::invalid_argument);
    EXPECT_THROW(script("GetCameraGain", 1, {{}, {{"gain", "high"}}}), std::invalid_argument);
}

TEST_F(Control, ResettingForgetsEverything)
{
    connect();
    script("GetCameraCount", EveryCall, {99, {}});
    WriteUserInfomation(device, 0, "x", 1);
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(eventually([] { return account().produced > 0; }));
    reset(smallSetup());
    EXPECT_EQ(0, account().produced);
    EXPECT_TRUE(calls().empty());
    EXPECT_EQ(Ok, GetCameraCount("", count));
    expectRefused(UnknownHandle, DisConnectDevice(device));
    connect();
    std::vector<char> room(512, '?');
    char *buffer = room.data();
    ASSERT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
    EXPECT_STREQ("", buffer);
}

TEST_F(Control, RefusesASetupOutsideItsRangesAndKeepsTheOldOne)
{
    ScannerSetup bad = smallSetup();
    bad.width = 15;
    EXPECT_THROW(reset(bad), std::invalid_argument);
    bad = smallSetup();
    bad.height = 4097;
    EXPECT_THROW(reset(bad), std::invalid_argument);
    bad = smallSetup();
    bad.triggerPeriodMs = 0;
    EXPECT_THROW(reset(bad), std::invalid_argument);
    bad = smallSetup();
    bad.cameras = {CameraKind::Color, CameraKind::Color};
    EXPECT_THROW(reset(bad), std::invalid_argument);
    EXPECT_EQ(160, setup().width);
}

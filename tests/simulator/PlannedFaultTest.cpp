#include "ScannerFixture.h"
#include "StatusCatcher.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <future>
#include <stdexcept>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;
using namespace std::chrono_literals;

class FaultPlan : public Scanner
{
protected:
    FaultPlan() { connect(); }

    static std::chrono::steady_clock::duration timeOf(const std::function<void()> &action)
    {
        const auto start = std::chrono::steady_clock::now();
        action();
        return std::chrono::steady_clock::now() - start;
    }

    /// Starts a scan that nobody stops, with the callback registered before.
    void startScan()
    {
        ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    }
};

TEST_F(FaultPlan, FailsOneCallWithItsStatus)
{
    setFaultPlan(R"({"faults": [{"function": "EnableIRLaser", "call": 2, "status": 3}]})");
    EXPECT_EQ(Ok, EnableIRLaser(device, true));
    EXPECT_EQ(3, EnableIRLaser(device, true));
    EXPECT_EQ(Ok, EnableIRLaser(device, true));
}

TEST_F(FaultPlan, FailsEveryNthCall)
{
    setFaultPlan(R"({"faults": [{"function": "EnableIRLaser", "every": 3, "status": 3}]})");
    for (int call = 1; call <= 9; ++call)
        EXPECT_EQ(call % 3 == 0 ? 3 : 7, EnableIRLaser(device, true)) << call;
}

TEST_F(FaultPlan, FailsEveryCallWhenNoNumberIsGiven)
{
    setFaultPlan(R"({"faults": [{"function": "EnableIRLaser", "status": -1}]})");
    EXPECT_EQ(-1, EnableIRLaser(device, true));
    EXPECT_EQ(-1, EnableIRLaser(device, true));
}

TEST_F(FaultPlan, ADelayedCallIsServedAfterwards)
{
    setFaultPlan(R"({"faults": [{"function": "SetProjectorBrightness", "delayMs": 30}]})");
    EXPECT_GE(timeOf([&] { EXPECT_EQ(Ok, SetProjectorBrightness(device, 11)); }), 30ms);
    int brightness = 0;
    ASSERT_EQ(Ok, GetProjectorBrightness(device, brightness));
    EXPECT_EQ(11, brightness);
}

TEST_F(FaultPlan, AHangingCallReturnsThePlannedStatusWithoutBeingServed)
{
    setFaultPlan(R"({"faults": [
        {"function": "SetProjectorBrightness", "call": 1, "hangMs": 30},
        {"function": "SetProjectorBrightness", "call": 2, "hangMs": 30, "status": 44}]})");
    EXPECT_GE(timeOf([&] { expectRefused(PlannedFault, SetProjectorBrightness(device, 11)); }),
              30ms);
    EXPECT_EQ(44, SetProjectorBrightness(device, 11));
    int brightness = 0;
    ASSERT_EQ(Ok, GetProjectorBrightness(device, brightness));
    EXPECT_EQ(60, brightness);
}

TEST_F(FaultPlan, SetsOutputsOfEveryKind)
{
    setFaultPlan(R"({"faults": [
        {"function": "GetCamerasInformation", "outputs": {
            "serials": ["A", null], "a": [1, -2], "b": [], "flags": [true, false], "count": 9}},
        {"function": "GetCameraExposureAndGain", "outputs": {"exposure": 1, "gain": 70000}},
        {"function": "IsConnectedOnU3", "outputs": {"connected": false}},
        {"function": "GetFirewareVersion", "outputs": {"version": "?"}},
        {"function": "GetCameraSerialNumber", "outputs": {"serial": null}}]})");
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    ASSERT_EQ(2u, serials.size());
    EXPECT_STREQ("A", serials[0]);
    EXPECT_EQ(nullptr, serials[1]);
    EXPECT_EQ((std::vector<int>{1, -2}), a);
    EXPECT_TRUE(b.empty());
    EXPECT_EQ((std::vector<bool>{true, false}), flags);
    EXPECT_EQ(9, count);
    double exposure = 0.0;
    int gain = 0;
    ASSERT_EQ(Ok, GetCameraExposureAndGain(device, 0, exposure, gain));
    EXPECT_EQ(1.0, exposure);
    EXPECT_EQ(70000, gain);
    bool connected = true;
    ASSERT_EQ(Ok, IsConnectedOnU3("", connected));
    EXPECT_FALSE(connected);
    std::string version;
    ASSERT_EQ(Ok, GetFirewareVersion(device, "", "", version));
    EXPECT_EQ("?", version);
    char *serial = version.data();
    ASSERT_EQ(Ok, GetCameraSerialNumber(device, 0, serial));
    EXPECT_EQ(nullptr, serial);
}

TEST_F(FaultPlan, CorruptsTheOutputsOfACall)
{
    setFaultPlan(R"({"faults": [
        {"function": "GetCamerasInformation", "call": 2, "corrupt": true},
        {"function": "GetCameraExposure", "corrupt": true},
        {"function": "GetFirewareVersion", "corrupt": true},
        {"function": "GetCameraResolution", "corrupt": true},
        {"function": "GetCameraSerialNumber", "corrupt": true},
        {"function": "ReadUserInfomation", "corrupt": true}]})");
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    EXPECT_EQ('K', static_cast<char>(~serials[0][0]));
    EXPECT_EQ((std::vector<int>{-1, -1, -2}), a);
    EXPECT_EQ((std::vector<int>{-1, -2, -3}), b);
    EXPECT_EQ((std::vector<bool>{false, false, false}), flags);
    EXPECT_EQ(-4, count);
    double exposure = 0.0;
    ASSERT_EQ(Ok, GetCameraExposure(device, 0, exposure));
    EXPECT_EQ(-8001.0, exposure);
    std::string version;
    ASSERT_EQ(Ok, GetFirewareVersion(device, "", "", version));
    EXPECT_EQ('K', static_cast<char>(~version[0]));
    int width = 0;
    int height = 0;
    ASSERT_EQ(Ok, GetCameraResolution(device, 0, width, height));
    EXPECT_EQ(-161, width);
    EXPECT_EQ(-129, height);
    char *serial = nullptr;
    ASSERT_EQ(Ok, GetCameraSerialNumber(device, 0, serial));
    EXPECT_EQ('K', static_cast<char>(~serial[0]));
    std::vector<char> room(512, '\0');
    char *buffer = room.data();
    ASSERT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
    EXPECT_EQ(0, std::count(room.begin(), room.end(), '\0'));
}

TEST_F(FaultPlan, LosesTheConnectionAtACall)
{
    StatusCatcher events(device);
    setFaultPlan(R"({"faults": [{"function": "Project", "call": 1, "disconnect": true}]})");
    expectRefused(ConnectionLost, Project(device, PROJECTWORKTYPES_SCAN));
    EXPECT_TRUE(events.waitFor({{ConnectionEvent, ConnectionIsLost}}));
    expectRefused(ConnectionLost, Project(device, PROJECTWORKTYPES_SCAN));
}

TEST_F(FaultPlan, LosesTheConnectionAtAFrameAndGetsItBack)
{
    StatusCatcher events(device);
    FrameCatcher catcher(device);
    setFaultPlan(R"({"faults": [{"frame": 3, "disconnect": true, "backAfterMs": 5}]})");
    startScan();
    ASSERT_TRUE(
        events.waitFor({{ConnectionEvent, ConnectionIsLost}, {ConnectionEvent, ConnectionIsBack}}));
    EXPECT_LE(catcher.frames().size(), 2u);
    EXPECT_EQ(1, account().planned);
    EXPECT_EQ(Ok, ReconnectDevice(device));
    setFaultPlan("{}");
    startScan();
    EXPECT_TRUE(catcher.waitFor(6));
}

TEST_F(FaultPlan, DropsEveryNthFrame)
{
    setFaultPlan(R"({"faults": [{"everyFrame": 5, "drop": true}]})");
    FrameCatcher catcher(device);
    for (const Frame &frame : catcher.scan(12))
        EXPECT_NE(0, frame.number % 5);
    EXPECT_GE(account().planned, 2);
    EXPECT_TRUE(account().balances());
}

TEST_F(FaultPlan, CorruptsAFrame)
{
    const Images whole = firstFrame().images;
    setFaultPlan(R"({"faults": [{"frame": 1, "corrupt": true}]})");
    const Images spoiled = firstFrame().images;
    for (std::size_t camera = 0; camera < whole.size(); ++camera) {
        const std::size_t size = whole[camera].size();
        for (std::size_t i = 0; i < size; ++i) {
            const bool middle = i >= size / 3 && i < size / 3 * 2;
            ASSERT_EQ(middle ? 255 - whole[camera][i] : whole[camera][i], spoiled[camera][i]);
        }
    }
}

TEST_F(FaultPlan, AScanCanBeStoppedWhileAFrameHangs)
{
    setFaultPlan(R"({"faults": [{"frame": 1, "delayMs": 600000}]})");
    FrameCatcher catcher(device);
    startScan();
    ASSERT_EQ(Ok, DisConnectDevice(device));
    connect();
    FrameCatcher second(device);
    setFaultPlan("{}");
    second.scan(1);
}

TEST_F(FaultPlan, MayBeReplacedWhileTheScanRuns)
{
    FrameCatcher catcher(device);
    startScan();
    ASSERT_TRUE(catcher.waitFor(1));
    setFaultPlan(R"({"faults": [{"everyFrame": 1, "drop": true}]})");
    const long long planned = account().planned;
    ASSERT_TRUE(eventually([&] { return account().planned > planned + 5; }));
    setFaultPlan("{}");
    EXPECT_TRUE(catcher.waitFor(catcher.frames().size() + 3));
    EXPECT_TRUE(account().balances());
}

TEST_F(FaultPlan, CorruptsEveryByteOfASnapshotAndItsNumbers)
{
    setFaultPlan(R"({"faults": [{"function": "SnapColorImage", "call": 2, "corrupt": true}]})");
    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    int fifth = 0;
    double sixth = 0.0;
    int seventh = 0;
    const auto snap = [&] {
        return SnapColorImage(device, images, width, height, fifth, sixth, seventh,
                              CONTROLROUTE_SCAN);
    };
    ASSERT_EQ(Ok, snap());
    const std::vector<unsigned char> whole(images[2], images[2] + 160 * 128);
    // The first of a connection is the same every time.
    connect();
    ASSERT_EQ(Ok, snap());
    for (std::size_t i = 0; i < whole.size(); ++i)
        ASSERT_EQ(255 - whole[i], images[2][i]) << i;
    EXPECT_EQ(-161, width);
    EXPECT_EQ(-129, height);
    EXPECT_EQ(-1, fifth);
    EXPECT_EQ(-8001.0, sixth);
    EXPECT_EQ(-17, seventh);
}

TEST_F(FaultPlan, ScriptsGoBeforeThePlan)
{
    setFaultPlan(R"({"faults": [{"function": "EnableIRLaser", "status": 3}]})");
    script("EnableIRLaser", 2, {4, {}});
    EXPECT_EQ(3, EnableIRLaser(device, true));
    EXPECT_EQ(4, EnableIRLaser(device, true));
}

TEST_F(FaultPlan, ABadPlanKeepsTheOldOne)
{
    setFaultPlan(R"({"faults": [{"function": "EnableIRLaser", "status": 3}]})");
    EXPECT_THROW(setFaultPlan("nonsense"), std::invalid_argument);
    EXPECT_EQ(3, EnableIRLaser(device, true));
}

TEST_F(FaultPlan, IsReadFromAFile)
{
    const TemporaryFolder folder;
    loadFaultPlan(
        folder.write("plan.json", R"({"faults": [{"function": "EnableIRLaser", "status": 3}]})"));
    EXPECT_EQ(3, EnableIRLaser(device, true));
}

TEST_F(FaultPlan, IsNamedByTheEnvironmentToo)
{
    const TemporaryFolder folder;
    const EnvironmentVariable variable(
        FaultPlanVariable,
        folder.write("plan.json", R"({"faults": [{"function": "GetCameraCount", "status": 3}]})"));
    reset(smallSetup());
    EXPECT_EQ(3, GetCameraCount("", count));
}

#include "ScannerFixture.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <future>
#include <set>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Connection : public Scanner
{
protected:
    static std::vector<std::string> texts(const std::vector<char *> &pointers)
    {
        return {pointers.begin(), pointers.end()};
    }

    const std::vector<std::string> allSerials{"KV-SIM-0001-L", "KV-SIM-0001-R", "KV-SIM-0001-C"};
};

TEST_F(Connection, EnumeratesTheSpecklePairAndTheColorCameraInThatOrder)
{
    ASSERT_EQ(Ok, GetCamerasInformation("KV-SIM-0001", serials, a, b, flags, count));
    EXPECT_EQ(allSerials, texts(serials));
    EXPECT_EQ((std::vector<int>{0, 0, 1}), a);
    EXPECT_EQ((std::vector<int>{0, 1, 2}), b);
    EXPECT_EQ((std::vector<bool>{true, true, true}), flags);
    EXPECT_EQ(3, count);
}

TEST_F(Connection, AnswersToAnEmptyName)
{
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    EXPECT_EQ(allSerials, texts(serials));
}

TEST_F(Connection, ReplacesTheListsItIsGiven)
{
    connect();
    ASSERT_EQ(4u, serials.size());
    ASSERT_EQ(Ok, GetCamerasInformation("KV-SIM-0001", serials, a, b, flags, count));
    EXPECT_EQ(3u, serials.size());
    EXPECT_EQ(3u, a.size());
    EXPECT_EQ(3u, b.size());
    EXPECT_EQ(3u, flags.size());
}

TEST_F(Connection, DoesNotReadTheListsThatItReplaces)
{
    // Whatever a host's variables hold: no text stands there.
    serials = {reinterpret_cast<char *>(1), nullptr};
    ASSERT_EQ(Ok, GetCamerasInformation("KV-SIM-0001", serials, a, b, flags, count));
    EXPECT_EQ(allSerials, texts(serials));
}

TEST_F(Connection, RefusesAnUnknownNameAndLeavesTheListsAlone)
{
    a = {42};
    count = 9;
    expectRefused(UnknownScanner,
                  GetCamerasInformation("KV-SIM-0002", serials, a, b, flags, count));
    EXPECT_EQ(std::vector<int>{42}, a);
    EXPECT_EQ(9, count);
}

TEST_F(Connection, RefusesANullName)
{
    expectRefused(NullArgument, GetCamerasInformation(nullptr, serials, a, b, flags, count));
    expectRefused(NullArgument, GetCameraCount(nullptr, count));
}

TEST_F(Connection, AcceptsTheFirstCameraListedTwice)
{
    connect();
    EXPECT_NE(nullptr, device);
    ASSERT_EQ(Ok, GetConnectCameraCount(device, count));
    EXPECT_EQ(3, count);
}

TEST_F(Connection, RefusesToConnectInAnotherMode)
{
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    expectRefused(UnknownMode, ConnectDevice("SHADOW", "", serials, a, b, device));
    EXPECT_EQ(nullptr, device);
}

TEST_F(Connection, RefusesListsThatWereNotHandedOut)
{
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    a[1] = 7;
    expectRefused(ListMismatch, ConnectDevice("SPECKLE", "", serials, a, b, device));
    a.pop_back();
    expectRefused(ListMismatch, ConnectDevice("SPECKLE", "", serials, a, b, device));
    std::vector<char *> none;
    std::vector<int> empty;
    expectRefused(ListMismatch, ConnectDevice("SPECKLE", "", none, empty, empty, device));
}

TEST_F(Connection, RefusesASerialNumberOfNoCamera)
{
    char other[] = "KV-SIM-0001-X";
    serials = {other};
    a = {0};
    b = {0};
    expectRefused(UnknownScanner, ConnectDevice("SPECKLE", "", serials, a, b, device));
    serials = {nullptr};
    expectRefused(NullArgument, ConnectDevice("SPECKLE", "", serials, a, b, device));
}

TEST_F(Connection, ConnectingAgainGivesANewHandleAndVoidsTheOldOne)
{
    connect();
    void *old = device;
    connect();
    EXPECT_NE(old, device);
    expectRefused(UnknownHandle, GetConnectCameraCount(old, count));
    EXPECT_EQ(Ok, GetConnectCameraCount(device, count));
}

TEST_F(Connection, DisconnectingClearsTheHandle)
{
    connect();
    void *old = device;
    ASSERT_EQ(Ok, DisConnectDevice(device));
    EXPECT_EQ(nullptr, device);
    expectRefused(NotConnected, DisConnectDevice(device));
    expectRefused(UnknownHandle, DisConnectDevice(old));
}

TEST_F(Connection, ClosedCamerasAreRefusedUntilReconnected)
{
    connect();
    double exposure = 0.0;
    ASSERT_EQ(Ok, CloseDeviceCamera(device));
    expectRefused(CamerasClosed, CloseDeviceCamera(device));
    expectRefused(CamerasClosed, GetCameraExposure(device, 0, exposure));
    expectRefused(CamerasClosed, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_EQ(Ok, GetConnectCameraCount(device, count));
    EXPECT_EQ(0, count);
    ASSERT_EQ(Ok, ReconnectDevice(device));
    EXPECT_EQ(Ok, GetCameraExposure(device, 0, exposure));
}

TEST_F(Connection, ReconnectingKeepsTheSettingsAndConnectingAgainDoesNot)
{
    int brightness = 0;
    connect();
    ASSERT_EQ(Ok, SetProjectorBrightness(device, 17));
    ASSERT_EQ(Ok, CloseDeviceCamera(device));
    ASSERT_EQ(Ok, ReconnectDevice(device));
    ASSERT_EQ(Ok, GetProjectorBrightness(device, brightness));
    EXPECT_EQ(17, brightness);
    connect();
    ASSERT_EQ(Ok, GetProjectorBrightness(device, brightness));
    EXPECT_EQ(60, brightness);
}

TEST_F(Connection, LooksAgainForTheScannerOnceItHasWaitedForACallback)
{
    connect();
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> first{true};
    FrameCatcher catcher(device, [&](const Frame &) {
        if (first.exchange(false)) {
            entered.set_value();
            release.get_future().wait();
        }
    });
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    entered.get_future().wait();
    void *other = nullptr;
    std::future<RETSTATUS> connected = std::async(
        std::launch::async, [&] { return ConnectDevice("SPECKLE", "", serials, a, b, other); });
    // The old connection ends before the wait.
    EXPECT_TRUE(eventually([&] { return GetConnectCameraCount(device, count) != Ok; }));
    setAttached(false);
    release.set_value();
    expectRefused(UnknownScanner, connected.get());
    EXPECT_EQ(nullptr, other);
}

TEST_F(Connection, DescribesItsCameras)
{
    connect();
    for (int i = 0; i < 3; ++i) {
        char *serial = nullptr;
        int width = 0;
        int height = 0;
        ASSERT_EQ(Ok, GetCameraSerialNumber(device, i, serial));
        EXPECT_EQ(allSerials[static_cast<std::size_t>(i)], serial);
        ASSERT_EQ(Ok, GetCameraResolution(device, i, width, height));
        EXPECT_EQ(160, width);
        EXPECT_EQ(128, height);
    }
    bool connected = false;
    ASSERT_EQ(Ok, IsConnectedOnU3("KV-SIM-0001", connected));
    EXPECT_TRUE(connected);
    std::string version;
    ASSERT_EQ(Ok, GetFirewareVersion(device, "", "", version));
    EXPECT_EQ("KV-SIM 1.0.0", version);
    ASSERT_EQ(Ok, GetCameraCount("KV-SIM-0001", count));
    EXPECT_EQ(3, count);
}

TEST_F(Connection, RefusesCameraNumbersOutsideTheListAndLeavesTheOutputsAlone)
{
    connect();
    for (int index : {-1, 3, 127}) {
        char *serial = nullptr;
        int width = 5;
        int height = 6;
        expectRefused(UnknownCamera, GetCameraSerialNumber(device, index, serial));
        EXPECT_EQ(nullptr, serial);
        expectRefused(UnknownCamera, GetCameraResolution(device, index, width, height));
        EXPECT_EQ(5, width);
        EXPECT_EQ(6, height);
    }
}

TEST_F(Connection, TextsHandedOutAreTheSameForEveryEnumeration)
{
    connect();
    char *first = serials.front();
    reset(smallSetup());
    ASSERT_EQ(Ok, GetCamerasInformation("", serials, a, b, flags, count));
    EXPECT_EQ(first, serials.front());
}

TEST_F(Connection, EveryRefusalHasATextOfItsOwn)
{
    std::set<std::string> texts;
    for (int status = UnknownScanner; status <= PlannedFault; ++status) {
        char *text = nullptr;
        ASSERT_EQ(Ok, GetStatusDescriptionString(status, text));
        ASSERT_NE(nullptr, text);
        EXPECT_STRNE("unknown status", text) << status;
        EXPECT_TRUE(texts.insert(text).second) << text;
    }
}

TEST_F(Connection, UnknownStatusesHaveATextToo)
{
    for (int status : {-1, 0, 4711}) {
        char *text = nullptr;
        ASSERT_EQ(Ok, GetStatusDescriptionString(status, text));
        EXPECT_STREQ("unknown status", text);
    }
}

class Reset : public Scanner
{
protected:
    Reset() { connect(); }

    /// Sets one thing of each sort.
    void setAll()
    {
        EXPECT_EQ(Ok, SetProjectorBrightness(device, 11));
        EXPECT_EQ(Ok, SetCameraGain(device, 0, 3));
        EXPECT_EQ(Ok, SetVideoTriggerPeriod(device, 7));
        setTurntableAngle(30.0);
        std::string text = "kept";
        EXPECT_EQ(Ok, WriteUserInfomation(device, 0, text.data(), 4));
    }

    std::vector<int> settings()
    {
        int brightness = 0;
        int gain = 0;
        int period = 0;
        EXPECT_EQ(Ok, GetProjectorBrightness(device, brightness));
        EXPECT_EQ(Ok, GetCameraGain(device, 0, gain));
        EXPECT_EQ(Ok, GetVideoTriggerPeriod(device, period));
        return {brightness, gain, period};
    }

    std::string userInformation()
    {
        std::vector<char> room(512);
        char *buffer = room.data();
        EXPECT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
        return buffer;
    }
};

TEST_F(Reset, ConnectingBeginsWithEverySettingAndKeepsTableAndUserInformation)
{
    const FrameCatcher catcher(device);
    setAll();
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    connect();
    const Account before = account();
    EXPECT_EQ((std::vector<int>{60, 16, 2}), settings());
    EXPECT_EQ(30.0, turntableAngle());
    EXPECT_EQ("kept", userInformation());
    // No callback: what a new scan makes is lost, and nothing was made until then.
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    EXPECT_TRUE(eventually([&] { return account().noCallback > before.noCallback; }));
}

TEST_F(Reset, ReconnectingStopsTheTriggerAndKeepsSettingsAndCallbacks)
{
    FrameCatcher catcher(device);
    setAll();
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    ASSERT_TRUE(catcher.waitFor(1));
    ASSERT_EQ(Ok, ReconnectDevice(device));
    const long long produced = account().produced;
    EXPECT_EQ((std::vector<int>{11, 3, 7}), settings());
    EXPECT_EQ(produced, account().produced);
    const std::size_t frames = catcher.frames().size();
    ASSERT_EQ(Ok, EnableVideoTrigger(device, CAMERA_TRIGGER_MODE_NO_COLOR, true));
    EXPECT_TRUE(catcher.waitFor(frames + 1));
}

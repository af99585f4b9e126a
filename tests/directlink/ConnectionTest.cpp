#include "DirectLink.h"

namespace {

using namespace KvSyncTest;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

using Connection = UnconnectedScanner;
using Reconnection = ConnectedScanner;
using Disconnection = ConnectedScanner;

char oneSerial[] = "ONE";

/// A scanner with these lists, which it gives instead of whatever it is handed.
auto cameras(const std::vector<char *> &givenSerials, const std::vector<int> &givenA,
             const std::vector<int> &givenB)
{
    return [=](const char *, auto &serials, auto &a, auto &b, auto &flags, int &) {
        serials = givenSerials;
        a = givenA;
        b = givenB;
        flags = {true};
        return accepted;
    };
}

/// The one entry that begins so.
std::string entry(const Journal &journal, const std::string &start)
{
    for (const std::string &each : journal) {
        if (each.rfind(start, 0) == 0)
            return each;
    }
    return "no " + start;
}

TEST_F(Connection, ScannerThatReportsNoCameraIsNotOpened)
{
    ErrorCode code = Success;
    const Journal journal =
        journalOf([&] { code = controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_EQ(code, ConnectFailed);
    EXPECT_THAT(journal, ElementsAre(R"(GetCamerasInformation("KV", [], [], [], [], 0))",
                                     printed("RetVa: 7    GetCamerasInformation end "
                                             "device_cam_connect\xA3\xBA 0"),
                                     printed(" GetCamerasInformation Failed, ERROR ID: 7"),
                                     glogError(" GetCamerasInformation Failed")));
}

TEST_F(Connection, PrintsTheStatusOfARefusedEnumerationTwice)
{
    scanner.statuses["GetCamerasInformation"] = -12;
    const Journal journal = journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_THAT(journal, Contains(printed("RetVa: -12    GetCamerasInformation end "
                                          "device_cam_connect\xA3\xBA 0")));
    EXPECT_THAT(journal, Contains(printed(" GetCamerasInformation Failed, ERROR ID: -12")));
}

TEST_F(Connection, PrintsTheNumberOfSerialsNotTheCountOfTheLibrary)
{
    scanner.effects.GetCamerasInformation = [](const char *, auto &serials, auto &, auto &, auto &,
                                               int &count) {
        serials = {oneSerial};
        count = 9;
        return accepted;
    };
    EXPECT_THAT(journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); }),
                Contains(printed("RetVa: 7    GetCamerasInformation end "
                                 "device_cam_connect\xA3\xBA 1")));
}

TEST_F(Connection, FillsTheListsThatFollowTheHandleInTheManager)
{
    std::vector<const void *> lists;
    scanner.effects.GetCamerasInformation = [&](const char *, auto &serials, auto &a, auto &b,
                                                auto &flags, int &) {
        lists = {&serials, &a, &b, &flags};
        return refused;
    };
    journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    const char *const head = reinterpret_cast<const char *>(&link.manager) + sizeof(void *);
    constexpr std::size_t list = sizeof(std::vector<int>);
    EXPECT_THAT(lists, ElementsAre(head, head + list, head + 2 * list, head + 3 * list));
}

TEST_F(Connection, OneCameraIsOpenedAsTwoEqualEntries)
{
    scanner.effects.GetCamerasInformation = cameras({oneSerial}, {5}, {6});
    const Journal journal = journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_EQ(entry(journal, "ConnectDevice"),
              R"(ConnectDevice("SPECKLE", "", ["ONE", "ONE"], [5, 5], [6, 6], null))");
}

TEST_F(Connection, SkipsAnEmptyListWhenItRepeatsTheFirstCamera)
{
    scanner.effects.GetCamerasInformation = cameras({oneSerial}, {}, {6});
    const Journal journal = journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_EQ(entry(journal, "ConnectDevice"),
              R"(ConnectDevice("SPECKLE", "", ["ONE", "ONE"], [], [6, 6], null))");
}

TEST_F(Connection, RepeatsTheFirstElementOfEachListWhateverTheirLengths)
{
    scanner.effects.GetCamerasInformation = cameras({oneSerial, nullptr}, {1, 2, 3}, {4});
    const Journal journal = journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_EQ(entry(journal, "ConnectDevice"),
              R"(ConnectDevice("SPECKLE", "", ["ONE", null, "ONE"], [1, 2, 3, 1], [4, 4], null))");
}

TEST_F(Connection, SecondOneAppendsTheFirstCameraOnceMoreIfTheLibraryLeavesTheLists)
{
    link.connect();
    const Journal journal = journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_EQ(entry(journal, "ConnectDevice"),
              R"(ConnectDevice("SPECKLE", "", ["A", "B", "A", "A"], [1, 2, 1, 1], [3, 4, 3, 3], )"
              "device)");
}

TEST_F(Connection, RefusedOneKeepsTheRepeatedCameraForTheNext)
{
    scanner.effects.GetCamerasInformation = cameras({oneSerial}, {5}, {6});
    scanner.statuses["ConnectDevice"] = refused;
    journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    scanner.effects.GetCamerasInformation = nullptr;
    const Journal journal = journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_EQ(journal.front(),
              R"(GetCamerasInformation("KV", ["ONE", "ONE"], [5, 5], [6, 6], [true], 0))");
}

TEST_F(Connection, KeepsAHandleThatARefusingLibraryWrote)
{
    scanner.effects = talkativeScanner();
    scanner.statuses["ConnectDevice"] = refused;
    journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); });
    EXPECT_THAT(journalOf([&] { controller.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(device, 0, 1)"));
}

TEST_F(Connection, NullAndEmptySerialsReachTheScannerAsAnEmptyText)
{
    const std::string empty = R"(GetCamerasInformation("", [], [], [], [], 0))";
    EXPECT_EQ(journalOf([&] { controller.connectDeviceBySerial(anyHandle, QString()); }).front(),
              empty);
    EXPECT_EQ(journalOf([&] { controller.connectDeviceBySerial(anyHandle, ""); }).front(), empty);
}

TEST_F(Connection, SerialEndsAtAZeroByte)
{
    const QString serial = QString::fromLatin1("KV\0X", 4);
    EXPECT_EQ(journalOf([&] { controller.connectDeviceBySerial(anyHandle, serial); }).front(),
              R"(GetCamerasInformation("KV", [], [], [], [], 0))");
}

TEST_F(Reconnection, SucceedsEvenWhenClosingTheCamerasFails)
{
    scanner.statuses["CloseDeviceCamera"] = refused;
    ErrorCode code = ConnectFailed;
    journalOf([&] { code = controller.reconnectDevice(anyHandle); });
    EXPECT_EQ(code, Success);
}

TEST_F(Reconnection, UsesTheHandleThatTheLibraryReplaced)
{
    char other = 0;
    scanner.pointerNames[&other] = "other";
    scanner.effects.ReconnectDevice = [&other](void *&device) {
        device = &other;
        return accepted;
    };
    journalOf([&] { controller.reconnectDevice(anyHandle); });
    EXPECT_THAT(journalOf([&] { controller.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(other, 0, 1)"));
}

TEST_F(Disconnection, LeavesTheHandleToTheLibraryToReset)
{
    scanner.effects.DisConnectDevice = [](void *&device) {
        device = nullptr;
        return accepted;
    };
    journalOf([&] { controller.disconnectDevice(anyHandle); });
    EXPECT_THAT(journalOf([&] { controller.setGain(anyHandle, 1, 0); }),
                Contains("SetCameraGain(null, 0, 1)"));
}

TEST_F(Disconnection, KeepsTheCameras)
{
    journalOf([&] { controller.disconnectDevice(anyHandle); });
    EXPECT_EQ(journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); }).front(),
              R"(GetCamerasInformation("KV", ["A", "B", "A"], [1, 2, 1], [3, 4, 3], )"
              "[true, false], 0)");
}

TEST_F(Disconnection, DetachesTheScanCallbackWithTheManagerAsContext)
{
    EXPECT_THAT(journalOf([&] { controller.disconnectDevice(anyHandle); }),
                Contains("SetScanCallBackFunction(device, null, manager)"));
}

TEST_F(Disconnection, WithoutAConnectionStillAsksTheLibrary)
{
    DirectLink fresh;
    fresh.scanner.statuses["DisConnectDevice"] = refused;
    ErrorCode code = Success;
    const Journal journal = journalOf([&] { code = fresh.controller.disconnectDevice(anyHandle); });
    EXPECT_EQ(code, ConnectFailed);
    EXPECT_THAT(journal, Contains("DisConnectDevice(null)"));
    EXPECT_THAT(journal, Not(Contains(HasSubstr("(device"))));
}

} // namespace

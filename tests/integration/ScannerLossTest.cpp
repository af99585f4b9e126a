// A connection that is lost: what a host hears, what it is refused, and the way back.
#include "ScannerHost.h"
#include "support/RowName.h"

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerLoss : public ScannerHost
{
protected:
    ScannerLoss() { open(); }

    /// Unplugs the scanner and waits until the host has heard of it.
    void unplug()
    {
        Simulator::setAttached(false);
        ASSERT_TRUE(waitForEvents(status, 1));
    }

    /// Opens the scanner anew, without a callback that would tell of a loss.
    void openWithoutStatus()
    {
        call("closeDevices", {scannerHandle});
        Simulator::script("SetStatusCallBackFunction", Simulator::EveryCall, {3, {}});
        open();
    }

    QVariantMap listed() { return call("getRunningDevList", {}).toList().value(0).toMap(); }

    void expectLost(const QString &function, const QVariantList &arguments)
    {
        expectFails(ConnectFailed, lost, function, arguments);
    }

    void expectEnd()
    {
        ASSERT_TRUE(waitForEvents(ended, 1));
        ASSERT_EQ(events(ended).size(), 1u);
        EXPECT_EQ(lastOf(ended).value("reason"), QVariant("connectionLost"));
        EXPECT_EQ(lastOf(ended).value("text"), QVariant(during));
        EXPECT_TRUE(balances(lastOf(ended).value("account").toMap()));
    }

    const QString status = "statusChanged";
    const QString ended = "scanEnded";
    const QString during = "The connection to the scanner was lost during the scan";
    const QString lost = "The connection to the scanner was lost; wait until the scanner is back, "
                         "then call resetDevices";
};

namespace {

struct Row
{
    const char *name;
    const char *plan;
};

const Row rows[] = {
    {"Away", R"({"faults": [{"frame": 3, "disconnect": true}]})"},
    {"BackAtOnce", R"({"faults": [{"frame": 3, "disconnect": true, "backAfterMs": 0}]})"},
    {"BackLater", R"({"faults": [{"frame": 3, "disconnect": true, "backAfterMs": 20}]})"},
    {"AwayFromAHostileOne", R"({"faults": [{"frame": 3, "disconnect": true}], "hostile": true})"},
};

} // namespace

class ScannerLossDuringAScan : public ScannerLoss, public testing::WithParamInterface<Row>
{
protected:
    ScannerLossDuringAScan() { Simulator::setFaultPlan(GetParam().plan); }
};

INSTANTIATE_TEST_SUITE_P(Plans, ScannerLossDuringAScan, testing::ValuesIn(rows), rowName);

TEST_P(ScannerLossDuringAScan, EndsCaptureImageWithWhatCame)
{
    expectThrows(CameraFailed, during, [&] { capture(frames(1000)); });
    expectEnd();
    const auto arrivals = events("frameArrived").size();
    // A machine under load may lose the first two as well.
    EXPECT_LE(arrivals, 2u);
    EXPECT_EQ(lastOf(ended).value("account").toMap().value("delivered"), QVariant(int(arrivals)));
}

TEST_P(ScannerLossDuringAScan, EndsAStream)
{
    execute("startScan");
    expectEnd();
    expectLost("execute", {scannerHandle, "startScan", QVariantList()});
}

TEST_F(ScannerLoss, AStreamEndsEvenIfNoStatusTellsOfIt)
{
    openWithoutStatus();
    execute("startScan");
    ASSERT_TRUE(waitForEvents("frameArrived", 1));
    Simulator::setAttached(false);
    expectEnd();
    EXPECT_TRUE(events(status).empty());
}

TEST_F(ScannerLoss, IsAStatusEventAndNoEndOfAScanIfNoneRuns)
{
    unplug();
    EXPECT_EQ(events(status).at(0).payload,
              (QVariantList{QVariantMap{{"first", 1}, {"second", 0}}}));
    EXPECT_TRUE(events(ended).empty());
}

TEST_F(ScannerLoss, EveryCallSaysSoAlsoWhenTheScannerIsBack)
{
    const QVariantMap none;
    const std::vector<std::pair<QString, QVariantList>> functions = {
        {"openDevices", {QVariantMap{{"serial", QString()}}}},
        {"getProperty", {scannerHandle, "list", QVariant()}},
        {"getProperty", {scannerHandle, "camera0.gain", QVariant()}},
        {"setProperty", {scannerHandle, "camera0.gain", 3}},
        {"resetInterface", {scannerHandle, "light"}},
        {"setFlagBitInterface", {scannerHandle, "infraredLaser", true}},
        {"project", {scannerHandle, "off"}},
        {"captureImage", {scannerHandle, "scan", frames(1)}},
        {"captureImage", {scannerHandle, "color", none}},
        {"turntableRotate", {scannerHandle, "simulator", QVariantMap{{"degrees", 1}}, true}},
        {"execute", {scannerHandle, "info", QVariantList()}},
        {"execute", {scannerHandle, "startScan", QVariantList()}},
        {"execute", {scannerHandle, "Project", QVariantList()}},
        {"execute", {scannerHandle, "readUserInformation", QVariantList{0}}},
    };
    unplug();
    for (const auto &[function, arguments] : functions)
        expectLost(function, arguments);
    Simulator::setAttached(true);
    ASSERT_TRUE(waitForEvents(status, 2));
    for (const auto &[function, arguments] : functions)
        expectLost(function, arguments);
}

TEST_F(ScannerLoss, ACallThatFindsItFirstSaysSo)
{
    openWithoutStatus();
    Simulator::setAttached(false);
    expectLost("setProperty", {scannerHandle, "camera0.gain", 3});
}

TEST_F(ScannerLoss, OpeningOnceMoreFindsItFirst)
{
    openWithoutStatus();
    Simulator::setAttached(false);
    expectLost("openDevices", {QVariantMap{{"serial", QString()}}});
}

TEST_F(ScannerLoss, AScanThatIsStartedFindsItFirst)
{
    openWithoutStatus();
    Simulator::setAttached(false);
    Simulator::setAttached(true); // its cameras are closed now
    expectLost("captureImage", {scannerHandle, "scan", with(frames(1), "periodMs", 2)});
    EXPECT_TRUE(libraryCalls("SetScanCallBackFunction").empty() ||
                libraryCalls("SetScanCallBackFunction").back() ==
                    "SetScanCallBackFunction(device, null, null)");
}

TEST_F(ScannerLoss, TheListTellsTheTruth)
{
    const auto expectListed = [this](bool connected, bool present) {
        const QVariantMap scanner = listed();
        EXPECT_EQ(scanner.value("connected"), QVariant(connected));
        EXPECT_EQ(scanner.value("present"), QVariant(present));
        EXPECT_EQ(scanner.value("handle"), scannerHandle);
        EXPECT_EQ(scanner.value("serial"), QVariant("KV-SIM-0001"));
    };
    expectListed(true, true);
    unplug();
    expectListed(false, false);
    Simulator::setAttached(true);
    expectListed(false, true);
    call("resetDevices", {scannerHandle});
    expectListed(true, true);
}

TEST_F(ScannerLoss, AResetBeforeTheScannerIsBackIsRefused)
{
    unplug();
    expectFails(ConnectFailed,
                "The scanner is not back yet; wait until it is, then call "
                "resetDevices again",
                "resetDevices", {scannerHandle});
    EXPECT_TRUE(libraryCalls("ReconnectDevice").empty());
    expectLost("project", {scannerHandle, "off"});
}

TEST_F(ScannerLoss, AResetOnceTheScannerIsBackRecoversItWithItsSettings)
{
    const QString gain = "camera0.gain";
    call("setProperty", {scannerHandle, gain, 5});
    Simulator::setFaultPlan(R"({"faults": [{"frame": 2, "disconnect": true, "backAfterMs": 20}]})");
    EXPECT_THROW(capture(frames(5)), KvSyncTool::Exception);
    ASSERT_TRUE(waitForEvents(status, 2)); // lost, and back
    Simulator::setFaultPlan("{}");
    call("resetDevices", {scannerHandle});
    EXPECT_EQ(capture(frames(3)).size(), 6);
    EXPECT_EQ(call("getProperty", {scannerHandle, gain, QVariant()}), QVariant(5));
    EXPECT_EQ(listed().value("connected"), QVariant(true));
}

TEST_F(ScannerLoss, AResetThatTheScannerRefusesLeavesItLost)
{
    unplug();
    Simulator::setAttached(true);
    Simulator::script("ReconnectDevice", 1, {3, {}});
    expectFails(ConnectFailed, "The scanner refuses to reconnect", "resetDevices", {scannerHandle});
    expectLost("project", {scannerHandle, "off"});
    call("resetDevices", {scannerHandle});
    call("project", {scannerHandle, "off"});
}

TEST_F(ScannerLoss, ALostScannerCanBeClosedAndOpenedWhenItIsBack)
{
    unplug();
    call("closeDevices", {scannerHandle});
    EXPECT_THROW(open(), KvSyncTool::Exception);
    Simulator::setAttached(true);
    open();
    EXPECT_EQ(capture(frames(1)).size(), 2);
}

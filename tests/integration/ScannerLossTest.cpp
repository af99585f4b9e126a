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

    QVariantMap listed()
    {
        return call(QStringLiteral("getRunningDevList"), {}).toList().value(0).toMap();
    }

    void expectLost(const QString &function, const QVariantList &arguments)
    {
        expectFails(ConnectFailed, lost, function, arguments);
    }

    void expectEnd()
    {
        ASSERT_TRUE(waitForEvents(ended, 1));
        ASSERT_EQ(events(ended).size(), 1u);
        EXPECT_EQ(lastOf(ended).value(QStringLiteral("reason")),
                  QVariant(QStringLiteral("connectionLost")));
        EXPECT_EQ(lastOf(ended).value(QStringLiteral("text")), QVariant(during));
        EXPECT_TRUE(balances(lastOf(ended).value(QStringLiteral("account")).toMap()));
    }

    const QString status = QStringLiteral("statusChanged");
    const QString ended = QStringLiteral("scanEnded");
    const QString during = QStringLiteral("The connection to the scanner was lost during the scan");
    const QString lost =
        QStringLiteral("The connection to the scanner was lost; wait until the scanner is back, "
                       "then call resetDevices");
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
    const auto arrivals = events(QStringLiteral("frameArrived")).size();
    // A machine under load may lose the first two as well.
    EXPECT_LE(arrivals, 2u);
    EXPECT_EQ(
        lastOf(ended).value(QStringLiteral("account")).toMap().value(QStringLiteral("delivered")),
        QVariant(int(arrivals)));
}

TEST_P(ScannerLossDuringAScan, EndsAStream)
{
    execute(QStringLiteral("startScan"));
    expectEnd();
    expectLost(QStringLiteral("execute"),
               {scannerHandle, QStringLiteral("startScan"), QVariantList()});
}

TEST_F(ScannerLoss, AStreamEndsEvenIfNoStatusTellsOfIt)
{
    call(QStringLiteral("closeDevices"), {scannerHandle});
    Simulator::script("SetStatusCallBackFunction", Simulator::EveryCall, {3, {}});
    open();
    execute(QStringLiteral("startScan"));
    ASSERT_TRUE(waitForEvents(QStringLiteral("frameArrived"), 1));
    Simulator::setAttached(false);
    expectEnd();
    EXPECT_TRUE(events(status).empty());
}

TEST_F(ScannerLoss, IsAStatusEventAndNoEndOfAScanIfNoneRuns)
{
    unplug();
    EXPECT_EQ(
        events(status).at(0).payload,
        (QVariantList{QVariantMap{{QStringLiteral("first"), 1}, {QStringLiteral("second"), 0}}}));
    EXPECT_TRUE(events(ended).empty());
}

TEST_F(ScannerLoss, EveryCallSaysSoAlsoWhenTheScannerIsBack)
{
    const QVariantMap none;
    const std::vector<std::pair<QString, QVariantList>> functions = {
        {QStringLiteral("openDevices"), {QVariantMap{{QStringLiteral("serial"), QString()}}}},
        {QStringLiteral("getProperty"), {scannerHandle, QStringLiteral("list"), QVariant()}},
        {QStringLiteral("getProperty"),
         {scannerHandle, QStringLiteral("camera0.gain"), QVariant()}},
        {QStringLiteral("setProperty"), {scannerHandle, QStringLiteral("camera0.gain"), 3}},
        {QStringLiteral("resetInterface"), {scannerHandle, QStringLiteral("light")}},
        {QStringLiteral("setFlagBitInterface"),
         {scannerHandle, QStringLiteral("infraredLaser"), true}},
        {QStringLiteral("project"), {scannerHandle, QStringLiteral("off")}},
        {QStringLiteral("captureImage"), {scannerHandle, QStringLiteral("scan"), frames(1)}},
        {QStringLiteral("captureImage"), {scannerHandle, QStringLiteral("color"), none}},
        {QStringLiteral("turntableRotate"),
         {scannerHandle, QStringLiteral("simulator"), QVariantMap{{QStringLiteral("degrees"), 1}},
          true}},
        {QStringLiteral("execute"), {scannerHandle, QStringLiteral("info"), QVariantList()}},
        {QStringLiteral("execute"), {scannerHandle, QStringLiteral("startScan"), QVariantList()}},
        {QStringLiteral("execute"), {scannerHandle, QStringLiteral("Project"), QVariantList()}},
        {QStringLiteral("execute"),
         {scannerHandle, QStringLiteral("readUserInformation"), QVariantList{0}}},
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
    call(QStringLiteral("closeDevices"), {scannerHandle});
    Simulator::script("SetStatusCallBackFunction", Simulator::EveryCall, {3, {}});
    open();
    Simulator::setAttached(false);
    expectLost(QStringLiteral("setProperty"), {scannerHandle, QStringLiteral("camera0.gain"), 3});
}

TEST_F(ScannerLoss, OpeningOnceMoreFindsItFirst)
{
    call(QStringLiteral("closeDevices"), {scannerHandle});
    Simulator::script("SetStatusCallBackFunction", Simulator::EveryCall, {3, {}});
    open();
    Simulator::setAttached(false);
    expectLost(QStringLiteral("openDevices"), {QVariantMap{{QStringLiteral("serial"), QString()}}});
}

TEST_F(ScannerLoss, AScanThatIsStartedFindsItFirst)
{
    call(QStringLiteral("closeDevices"), {scannerHandle});
    Simulator::script("SetStatusCallBackFunction", Simulator::EveryCall, {3, {}});
    open();
    Simulator::setAttached(false);
    Simulator::setAttached(true); // its cameras are closed now
    expectLost(QStringLiteral("captureImage"), {scannerHandle, QStringLiteral("scan"),
                                                with(frames(1), QStringLiteral("periodMs"), 2)});
    EXPECT_TRUE(libraryCalls("SetScanCallBackFunction").empty() ||
                libraryCalls("SetScanCallBackFunction").back() ==
                    "SetScanCallBackFunction(device, null, null)");
}

TEST_F(ScannerLoss, TheListTellsTheTruth)
{
    const auto expectListed = [this](bool connected, bool present) {
        const QVariantMap scanner = listed();
        EXPECT_EQ(scanner.value(QStringLiteral("connected")), QVariant(connected));
        EXPECT_EQ(scanner.value(QStringLiteral("present")), QVariant(present));
        EXPECT_EQ(scanner.value(QStringLiteral("handle")), scannerHandle);
        EXPECT_EQ(scanner.value(QStringLiteral("serial")), QVariant(QStringLiteral("KV-SIM-0001")));
    };
    expectListed(true, true);
    unplug();
    expectListed(false, false);
    Simulator::setAttached(true);
    expectListed(false, true);
    call(QStringLiteral("resetDevices"), {scannerHandle});
    expectListed(true, true);
}

TEST_F(ScannerLoss, AResetBeforeTheScannerIsBackIsRefused)
{
    unplug();
    expectFails(ConnectFailed,
                QStringLiteral("The scanner is not back yet; wait until it is, then call "
                               "resetDevices again"),
                QStringLiteral("resetDevices"), {scannerHandle});
    EXPECT_TRUE(libraryCalls("ReconnectDevice").empty());
    expectLost(QStringLiteral("project"), {scannerHandle, QStringLiteral("off")});
}

TEST_F(ScannerLoss, AResetOnceTheScannerIsBackRecoversItWithItsSettings)
{
    const QString gain = QStringLiteral("camera0.gain");
    call(QStringLiteral("setProperty"), {scannerHandle, gain, 5});
    Simulator::setFaultPlan(R"({"faults": [{"frame": 2, "disconnect": true, "backAfterMs": 20}]})");
    EXPECT_THROW(capture(frames(5)), KvSyncTool::Exception);
    ASSERT_TRUE(waitForEvents(status, 2)); // lost, and back
    Simulator::setFaultPlan("{}");
    call(QStringLiteral("resetDevices"), {scannerHandle});
    EXPECT_EQ(capture(frames(3)).size(), 6);
    EXPECT_EQ(call(QStringLiteral("getProperty"), {scannerHandle, gain, QVariant()}), QVariant(5));
    EXPECT_EQ(listed().value(QStringLiteral("connected")), QVariant(true));
}

TEST_F(ScannerLoss, AResetThatTheScannerRefusesLeavesItLost)
{
    unplug();
    Simulator::setAttached(true);
    Simulator::script("ReconnectDevice", 1, {3, {}});
    expectFails(ConnectFailed, QStringLiteral("The scanner refuses to reconnect"),
                QStringLiteral("resetDevices"), {scannerHandle});
    expectLost(QStringLiteral("project"), {scannerHandle, QStringLiteral("off")});
    call(QStringLiteral("resetDevices"), {scannerHandle});
    call(QStringLiteral("project"), {scannerHandle, QStringLiteral("off")});
}

TEST_F(ScannerLoss, ALostScannerCanBeClosedAndOpenedWhenItIsBack)
{
    unplug();
    call(QStringLiteral("closeDevices"), {scannerHandle});
    EXPECT_THROW(open(), KvSyncTool::Exception);
    Simulator::setAttached(true);
    open();
    EXPECT_EQ(capture(frames(1)).size(), 2);
}

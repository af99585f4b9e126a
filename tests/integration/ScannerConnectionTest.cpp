#include "ScannerHost.h"

#include <memory>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerConnection : public ScannerHost
{
protected:
    static QVariantMap serial(const QString &text) { return {{"serial", text}}; }

    QVariantMap onlyListed()
    {
        const QVariantList list = call("getRunningDevList", {}).toList();
        EXPECT_EQ(list.size(), 1);
        return list.value(0).toMap();
    }
};

TEST_F(ScannerConnection, ListsTheScannerThatCanBeOpened)
{
    const QVariantMap scanner = onlyListed();
    EXPECT_EQ(scanner.value("serial"), QVariant(QString()));
    EXPECT_EQ(scanner.value("connected"), QVariant(false));
    EXPECT_EQ(scanner.value("present"), QVariant(true));
    EXPECT_EQ(scanner.value("fastUsb"), QVariant(true));
    EXPECT_FALSE(scanner.contains("handle"));
    const QVariantList cameras = scanner.value("cameras").toList();
    ASSERT_EQ(cameras.size(), 3);
    EXPECT_EQ(
        cameras.at(2).toMap(),
        (QVariantMap{{"serial", "KV-SIM-0001-C"}, {"valueA", 1}, {"valueB", 2}, {"flag", true}}));
}

TEST_F(ScannerConnection, ListsTheOpenScannerWithSerialAndHandle)
{
    open();
    const QVariantMap scanner = onlyListed();
    EXPECT_EQ(scanner.value("serial"), QVariant("KV-SIM-0001"));
    EXPECT_EQ(scanner.value("connected"), QVariant(true));
    EXPECT_EQ(scanner.value("present"), QVariant(true));
    EXPECT_EQ(scanner.value("handle"), scannerHandle);
}

TEST_F(ScannerConnection, ListsNothingIfNoScannerHasACamera)
{
    Simulator::ScannerSetup setup = smallSetup();
    setup.cameras.clear();
    Simulator::reset(setup);
    EXPECT_EQ(call("getRunningDevList", {}), QVariant(QVariantList()));
}

TEST_F(ScannerConnection, OpensBySerialNumberWithHandleOne)
{
    open();
    EXPECT_EQ(libraryCalls("ConnectDevice").size(), 1u);
}

TEST_F(ScannerConnection, TakesTheScannerThatIsThereIfTheSerialIsEmpty)
{
    EXPECT_EQ(call("openDevices", {serial(QString())}), scannerHandle);
}

TEST_F(ScannerConnection, SaysThatAnAbsentScannerDoesNotAnswer)
{
    expectFails(ConnectFailed, "No scanner answers to the serial number \"KV-SIM-0002\"",
                "openDevices", {serial("KV-SIM-0002")});
    expectFails(HandleInvalid, "No open device has the handle 1", "resetDevices", {scannerHandle});
}

TEST_F(ScannerConnection, SaysThatAScannerRefusesTheConnection)
{
    Simulator::script("ConnectDevice", Simulator::EveryCall, {3, {}});
    expectFails(ConnectFailed, "The scanner \"KV-SIM-0001\" refuses the connection", "openDevices",
                {serial("KV-SIM-0001")});
}

TEST_F(ScannerConnection, SaysThatAScannerReportsNoCamera)
{
    Simulator::ScannerSetup setup = smallSetup();
    setup.cameras.clear();
    Simulator::reset(setup);
    expectFails(ConnectFailed, "The scanner \"KV-SIM-0001\" reports no camera", "openDevices",
                {serial("KV-SIM-0001")});
}

TEST_F(ScannerConnection, OpensAfterARefusal)
{
    Simulator::script("ConnectDevice", 1, {3, {}});
    EXPECT_THROW(call("openDevices", {serial(QString())}), KvSyncTool::Exception);
    open();
}

TEST_F(ScannerConnection, RefusesToOpenTwice)
{
    open();
    expectFails(ConnectFailed, "The scanner is open already; close handle 1 first", "openDevices",
                {serial("KV-SIM-0001")});
}

TEST_F(ScannerConnection, OpeningNeedsASerialNumber)
{
    expectFails(InvalidParameter, "\"serial\" must be a text, not nothing", "openDevices",
                {QVariantMap()});
    expectFails(InvalidParameter, "\"serial\" must be a text, not 7", "openDevices",
                {QVariantMap{{"serial", 7}}});
    expectFails(InvalidParameter,
                "A scanner of the direct link has no parameter \"port\", but serial", "openDevices",
                {QVariantMap{{"serial", QString()}, {"port", 1}}});
}

TEST_F(ScannerConnection, EveryFunctionRefusesAHandleThatIsNotOpen)
{
    open();
    const QVariant other = QVariant::fromValue<qint64>(2);
    const QString name = "info";
    const std::vector<std::pair<QString, QVariantList>> functions = {
        {"closeDevices", {other}},
        {"resetDevices", {other}},
        {"getProperty", {other, name, QVariant()}},
        {"setProperty", {other, name, QVariant()}},
        {"resetInterface", {other, name}},
        {"setFlagBitInterface", {other, name, true}},
        {"project", {other, name}},
        {"captureImage", {other, "scan", QVariantMap()}},
        {"turntableRotate", {other, name, QVariantMap(), true}},
        {"execute", {other, name, QVariantList()}},
    };
    for (const auto &[function, arguments] : functions)
        expectFails(HandleInvalid, "No open device has the handle 2", function, arguments);
}

TEST_F(ScannerConnection, AClosedScannerCanBeOpenedAgain)
{
    open();
    call("closeDevices", {scannerHandle});
    expectFails(HandleInvalid, "No open device has the handle 1", "closeDevices", {scannerHandle});
    open();
}

TEST_F(ScannerConnection, ClosingLeavesTheScannerDarkAndDisconnected)
{
    open();
    Simulator::clearCalls();
    call("closeDevices", {scannerHandle});
    std::vector<std::string> texts;
    for (const Simulator::Call &each : Simulator::calls())
        texts.push_back(each.function);
    EXPECT_EQ(texts, (std::vector<std::string>{"EnableVideoTrigger", "Project", "EnableIRLaser",
                                               "EnableBlueLaser", "SetStatusCallBackFunction",
                                               "SetScanCallBackFunction", "DisConnectDevice"}));
}

TEST_F(ScannerConnection, AScannerThatRefusesToDisconnectIsClosedAllTheSame)
{
    open();
    Simulator::script("DisConnectDevice", 1, {3, {}});
    expectFails(ConnectFailed, "The scanner refuses to disconnect", "closeDevices",
                {scannerHandle});
    open();
}

TEST_F(ScannerConnection, ResettingReconnectsTheCameras)
{
    open();
    call("resetDevices", {scannerHandle});
    EXPECT_EQ(libraryCalls("ReconnectDevice"), std::vector<std::string>{"ReconnectDevice(device)"});
    Simulator::script("ReconnectDevice", 2, {3, {}});
    expectFails(ConnectFailed, "The scanner refuses to reconnect", "resetDevices", {scannerHandle});
}

TEST_F(ScannerConnection, LoadingThePluginAgainLeavesTheScannerOpen)
{
    open();
    core.loadCommandPlugin("Scanner", QVersionNumber(1, 0));
    EXPECT_EQ(onlyListed().value("connected"), QVariant(true));
}

TEST_F(ScannerConnection, AScannerThatAnEarlierCoreOpenedCountsAsClosed)
{
    const QVersionNumber version(1, 0);
    auto earlier = std::make_unique<KvSyncCore::SyncCore>();
    earlier->init("../../bin/Logic", "../../bin/Device");
    earlier->loadCommandPlugin("Scanner", version);
    earlier->execute("Scanner", "openDevices", {serial("KV-SIM-0001")}, version);
    earlier.reset();
    core.loadCommandPlugin("Scanner", version);
    expectFails(HandleInvalid, "No open device has the handle 1", "closeDevices", {scannerHandle});
    open();
}

TEST_F(ScannerConnection, TellsFactsAboutTheScanner)
{
    open();
    const QVariantMap facts = execute("info").toMap();
    EXPECT_EQ(facts.value("serial"), QVariant("KV-SIM-0001"));
    EXPECT_EQ(facts.value("firmware"), QVariant("KV-SIM 1.0.0"));
    EXPECT_EQ(facts.value("fastUsb"), QVariant(true));
    EXPECT_EQ(facts.value("periodMs"), QVariant(2));
    EXPECT_EQ(facts.value("scanning"), QVariant(false));
    const QVariantList cameras = facts.value("cameras").toList();
    ASSERT_EQ(cameras.size(), 3);
    EXPECT_EQ(
        cameras.at(1).toMap(),
        (QVariantMap{{"camera", 1}, {"serial", "KV-SIM-0001-R"}, {"width", 160}, {"height", 128}}));
}

TEST_F(ScannerConnection, SaysWhichFactTheScannerRefuses)
{
    open();
    const std::vector<std::pair<std::string, QString>> facts = {
        {"GetFirewareVersion", "The scanner does not give its firmware version"},
        {"GetVideoTriggerPeriod", "The scanner does not give its trigger period"},
        {"IsConnectedOnU3", "The scanner does not say how it is connected"},
        {"GetConnectCameraCount", "The scanner does not say how many cameras it has"},
        {"GetCameraSerialNumber", "Camera 0 does not give its serial number"},
        {"GetCameraResolution", "Camera 0 does not give its resolution"},
    };
    for (const auto &[function, text] : facts) {
        const int next = Simulator::callCount(function) + 1;
        Simulator::script(function, next, {3, {}});
        expectThrows(DeviceOperationFailed, text, [&] { execute("info"); });
    }
}

TEST_F(ScannerConnection, UnknownCommandsAreNotServed)
{
    open();
    expectFails(FunctionNotExist, "Scanner 1.0 does not serve the command \"dance\"", "execute",
                {scannerHandle, "dance", QVariantList()});
}

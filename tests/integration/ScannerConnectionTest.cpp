#include "ScannerHost.h"

#include <memory>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerConnection : public ScannerHost
{
protected:
    static QVariantMap serial(const QString &text) { return {{QStringLiteral("serial"), text}}; }

    QVariantMap onlyListed()
    {
        const QVariantList list = call(QStringLiteral("getRunningDevList"), {}).toList();
        EXPECT_EQ(list.size(), 1);
        return list.value(0).toMap();
    }
};

TEST_F(ScannerConnection, ListsTheScannerThatCanBeOpened)
{
    const QVariantMap scanner = onlyListed();
    EXPECT_EQ(scanner.value(QStringLiteral("serial")), QVariant(QString()));
    EXPECT_EQ(scanner.value(QStringLiteral("connected")), QVariant(false));
    EXPECT_EQ(scanner.value(QStringLiteral("present")), QVariant(true));
    EXPECT_EQ(scanner.value(QStringLiteral("fastUsb")), QVariant(true));
    EXPECT_FALSE(scanner.contains(QStringLiteral("handle")));
    const QVariantList cameras = scanner.value(QStringLiteral("cameras")).toList();
    ASSERT_EQ(cameras.size(), 3);
    EXPECT_EQ(cameras.at(2).toMap(),
              (QVariantMap{{QStringLiteral("serial"), QStringLiteral("KV-SIM-0001-C")},
                           {QStringLiteral("valueA"), 1},
                           {QStringLiteral("valueB"), 2},
                           {QStringLiteral("flag"), true}}));
}

TEST_F(ScannerConnection, ListsTheOpenScannerWithSerialAndHandle)
{
    open();
    const QVariantMap scanner = onlyListed();
    EXPECT_EQ(scanner.value(QStringLiteral("serial")), QVariant(QStringLiteral("KV-SIM-0001")));
    EXPECT_EQ(scanner.value(QStringLiteral("connected")), QVariant(true));
    EXPECT_EQ(scanner.value(QStringLiteral("present")), QVariant(true));
    EXPECT_EQ(scanner.value(QStringLiteral("handle")), scannerHandle);
}

TEST_F(ScannerConnection, ListsNothingIfNoScannerHasACamera)
{
    Simulator::ScannerSetup setup = smallSetup();
    setup.cameras.clear();
    Simulator::reset(setup);
    EXPECT_EQ(call(QStringLiteral("getRunningDevList"), {}), QVariant(QVariantList()));
}

TEST_F(ScannerConnection, OpensBySerialNumberWithHandleOne)
{
    open();
    EXPECT_EQ(libraryCalls("ConnectDevice").size(), 1u);
}

TEST_F(ScannerConnection, TakesTheScannerThatIsThereIfTheSerialIsEmpty)
{
    EXPECT_EQ(call(QStringLiteral("openDevices"), {serial(QString())}), scannerHandle);
}

TEST_F(ScannerConnection, SaysThatAnAbsentScannerDoesNotAnswer)
{
    expectFails(ConnectFailed,
                QStringLiteral("No scanner answers to the serial number \"KV-SIM-0002\""),
                QStringLiteral("openDevices"), {serial(QStringLiteral("KV-SIM-0002"))});
    expectFails(HandleInvalid, QStringLiteral("No open device has the handle 1"),
                QStringLiteral("resetDevices"), {scannerHandle});
}

TEST_F(ScannerConnection, SaysThatAScannerRefusesTheConnection)
{
    Simulator::script("ConnectDevice", Simulator::EveryCall, {3, {}});
    expectFails(ConnectFailed, QStringLiteral("The scanner \"KV-SIM-0001\" refuses the connection"),
                QStringLiteral("openDevices"), {serial(QStringLiteral("KV-SIM-0001"))});
}

TEST_F(ScannerConnection, SaysThatAScannerReportsNoCamera)
{
    Simulator::ScannerSetup setup = smallSetup();
    setup.cameras.clear();
    Simulator::reset(setup);
    expectFails(ConnectFailed, QStringLiteral("The scanner \"KV-SIM-0001\" reports no camera"),
                QStringLiteral("openDevices"), {serial(QStringLiteral("KV-SIM-0001"))});
}

TEST_F(ScannerConnection, OpensAfterARefusal)
{
    Simulator::script("ConnectDevice", 1, {3, {}});
    EXPECT_THROW(call(QStringLiteral("openDevices"), {serial(QString())}), KvSyncTool::Exception);
    open();
}

TEST_F(ScannerConnection, RefusesToOpenTwice)
{
    open();
    expectFails(ConnectFailed, QStringLiteral("The scanner is open already; close handle 1 first"),
                QStringLiteral("openDevices"), {serial(QStringLiteral("KV-SIM-0001"))});
}

TEST_F(ScannerConnection, OpeningNeedsASerialNumber)
{
    expectFails(InvalidParameter, QStringLiteral("\"serial\" must be a text, not nothing"),
                QStringLiteral("openDevices"), {QVariantMap()});
    expectFails(InvalidParameter, QStringLiteral("\"serial\" must be a text, not 7"),
                QStringLiteral("openDevices"), {QVariantMap{{QStringLiteral("serial"), 7}}});
    expectFails(
        InvalidParameter,
        QStringLiteral("A scanner of the direct link has no parameter \"port\", but serial"),
        QStringLiteral("openDevices"),
        {QVariantMap{{QStringLiteral("serial"), QString()}, {QStringLiteral("port"), 1}}});
}

TEST_F(ScannerConnection, EveryFunctionRefusesAHandleThatIsNotOpen)
{
    open();
    const QVariant other = QVariant::fromValue<qint64>(2);
    const QString name = QStringLiteral("info");
    const std::vector<std::pair<QString, QVariantList>> functions = {
        {QStringLiteral("closeDevices"), {other}},
        {QStringLiteral("resetDevices"), {other}},
        {QStringLiteral("getProperty"), {other, name, QVariant()}},
        {QStringLiteral("setProperty"), {other, name, QVariant()}},
        {QStringLiteral("resetInterface"), {other, name}},
        {QStringLiteral("setFlagBitInterface"), {other, name, true}},
        {QStringLiteral("project"), {other, name}},
        {QStringLiteral("captureImage"), {other, QStringLiteral("scan"), QVariantMap()}},
        {QStringLiteral("turntableRotate"), {other, name, QVariantMap(), true}},
        {QStringLiteral("execute"), {other, name, QVariantList()}},
    };
    for (const auto &[function, arguments] : functions)
        expectFails(HandleInvalid, QStringLiteral("No open device has the handle 2"), function,
                    arguments);
}

TEST_F(ScannerConnection, AClosedScannerCanBeOpenedAgain)
{
    open();
    call(QStringLiteral("closeDevices"), {scannerHandle});
    expectFails(HandleInvalid, QStringLiteral("No open device has the handle 1"),
                QStringLiteral("closeDevices"), {scannerHandle});
    open();
}

TEST_F(ScannerConnection, ClosingLeavesTheScannerDarkAndDisconnected)
{
    open();
    Simulator::clearCalls();
    call(QStringLiteral("closeDevices"), {scannerHandle});
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
    expectFails(ConnectFailed, QStringLiteral("The scanner refuses to disconnect"),
                QStringLiteral("closeDevices"), {scannerHandle});
    open();
}

TEST_F(ScannerConnection, ResettingReconnectsTheCameras)
{
    open();
    call(QStringLiteral("resetDevices"), {scannerHandle});
    EXPECT_EQ(libraryCalls("ReconnectDevice"), std::vector<std::string>{"ReconnectDevice(device)"});
    Simulator::script("ReconnectDevice", 2, {3, {}});
    expectFails(ConnectFailed, QStringLiteral("The scanner refuses to reconnect"),
                QStringLiteral("resetDevices"), {scannerHandle});
}

TEST_F(ScannerConnection, LoadingThePluginAgainLeavesTheScannerOpen)
{
    open();
    core.loadCommandPlugin(QStringLiteral("Scanner"), QVersionNumber(1, 0));
    EXPECT_EQ(onlyListed().value(QStringLiteral("connected")), QVariant(true));
}

TEST_F(ScannerConnection, AScannerThatAnEarlierCoreOpenedCountsAsClosed)
{
    const QVersionNumber version(1, 0);
    auto earlier = std::make_unique<KvSyncCore::SyncCore>();
    earlier->init(QStringLiteral("../../bin/Logic"), QStringLiteral("../../bin/Device"));
    earlier->loadCommandPlugin(QStringLiteral("Scanner"), version);
    earlier->execute(QStringLiteral("Scanner"), QStringLiteral("openDevices"),
                     {serial(QStringLiteral("KV-SIM-0001"))}, version);
    earlier.reset();
    core.loadCommandPlugin(QStringLiteral("Scanner"), version);
    expectFails(HandleInvalid, QStringLiteral("No open device has the handle 1"),
                QStringLiteral("closeDevices"), {scannerHandle});
    open();
}

TEST_F(ScannerConnection, TellsFactsAboutTheScanner)
{
    open();
    const QVariantMap facts = execute(QStringLiteral("info")).toMap();
    EXPECT_EQ(facts.value(QStringLiteral("serial")), QVariant(QStringLiteral("KV-SIM-0001")));
    EXPECT_EQ(facts.value(QStringLiteral("firmware")), QVariant(QStringLiteral("KV-SIM 1.0.0")));
    EXPECT_EQ(facts.value(QStringLiteral("fastUsb")), QVariant(true));
    EXPECT_EQ(facts.value(QStringLiteral("periodMs")), QVariant(2));
    EXPECT_EQ(facts.value(QStringLiteral("scanning")), QVariant(false));
    const QVariantList cameras = facts.value(QStringLiteral("cameras")).toList();
    ASSERT_EQ(cameras.size(), 3);
    EXPECT_EQ(cameras.at(1).toMap(),
              (QVariantMap{{QStringLiteral("camera"), 1},
                           {QStringLiteral("serial"), QStringLiteral("KV-SIM-0001-R")},
                           {QStringLiteral("width"), 160},
                           {QStringLiteral("height"), 128}}));
}

TEST_F(ScannerConnection, SaysWhichFactTheScannerRefuses)
{
    open();
    const std::vector<std::pair<std::string, QString>> facts = {
        {"GetFirewareVersion", QStringLiteral("The scanner does not give its firmware version")},
        {"GetVideoTriggerPeriod", QStringLiteral("The scanner does not give its trigger period")},
        {"IsConnectedOnU3", QStringLiteral("The scanner does not say how it is connected")},
        {"GetConnectCameraCount",
         QStringLiteral("The scanner does not say how many cameras it has")},
        {"GetCameraSerialNumber", QStringLiteral("Camera 0 does not give its serial number")},
        {"GetCameraResolution", QStringLiteral("Camera 0 does not give its resolution")},
    };
    for (const auto &[function, text] : facts) {
        const int next = Simulator::callCount(function) + 1;
        Simulator::script(function, next, {3, {}});
        expectThrows(DeviceOperationFailed, text, [&] { execute(QStringLiteral("info")); });
    }
}

TEST_F(ScannerConnection, UnknownCommandsAreNotServed)
{
    open();
    expectFails(
        FunctionNotExist, QStringLiteral("Scanner 1.0 does not serve the command \"dance\""),
        QStringLiteral("execute"), {scannerHandle, QStringLiteral("dance"), QVariantList()});
}

#include "PluginDeviceHost.h"

#include <memory>

using namespace KvSyncTest;

class PluginDeviceOpening : public PluginDeviceHost
{
protected:
    /// What the list has of devices of device plug-ins.
    QVariantList listed()
    {
        QVariantList devices;
        const QVariantList all = call("getRunningDevList", {}).toList();
        for (const QVariant &each : all) {
            if (each.toMap().contains("plugin"))
                devices.append(each);
        }
        return devices;
    }
};

TEST_F(PluginDeviceOpening, OpensByPluginVersionAndIndex)
{
    const QVariant handle = openDevice(TurntableAlone);
    EXPECT_EQ(handle.userType(), QMetaType::LongLong);
    EXPECT_GT(handle.toLongLong(), 1);
    EXPECT_EQ(run(handle, "info").toMap(), (QVariantMap{{"plugin", "VirtualScanner"},
                                                        {"version", "1.0"},
                                                        {"index", 2},
                                                        {"name", "Virtual turntable"},
                                                        {"types", QStringList{"motor"}},
                                                        {"handle", handle}}));
}

TEST_F(PluginDeviceOpening, TakesTheNewestBuildOfALongerVersion)
{
    QVariantMap parameters = address(Marker);
    parameters.insert("version", "1.0.77");
    const QVariant handle = call("openDevices", {parameters});
    EXPECT_EQ(run(handle, "info").toMap().value("version"), QVariant("1.0.77"));
    close(handle);
}

TEST_F(PluginDeviceOpening, EachIndexIsTheDeviceThatStandsThere)
{
    const QStringList names = {"Virtual scanner", "Virtual camera", "Virtual turntable",
                               "Virtual marker"};
    // Twice, and in another order than the plug-in makes them.
    for (const int index : {3, 1, 0, 2, 2, 0, 1, 3}) {
        const QVariant handle = openDevice(index);
        EXPECT_EQ(run(handle, "info").toMap().value("name"), QVariant(names.at(index)));
        close(handle);
    }
}

TEST_F(PluginDeviceOpening, ListsTheOpenDevicesBesideTheScannerOfTheDirectLink)
{
    EXPECT_EQ(listed(), QVariantList());
    const QVariant camera = openDevice(CameraAlone);
    const QVariant whole = openDevice(WholeScanner);
    const QVariantList devices = listed();
    ASSERT_EQ(devices.size(), 2);
    EXPECT_EQ(devices.at(0), run(camera, "info"));
    EXPECT_EQ(devices.at(1), run(whole, "info"));
    EXPECT_EQ(devices.at(1).toMap().value("types"),
              QVariant(QStringList{"camera", "projector", "motor", "controller"}));
    EXPECT_EQ(call("getRunningDevList", {}).toList().size(), 3);
    close(camera);
    EXPECT_EQ(listed().size(), 1);
}

TEST_F(PluginDeviceOpening, WorksBesideTheOpenScannerOfTheDirectLink)
{
    open();
    const QVariant handle = openDevice(Marker);
    EXPECT_EQ(execute("info").toMap().value("serial"), QVariant("KV-SIM-0001"));
    EXPECT_EQ(run(handle, "info").toMap().value("name"), QVariant("Virtual marker"));
    close(handle);
    EXPECT_EQ(execute("info").toMap().value("serial"), QVariant("KV-SIM-0001"));
}

TEST_F(PluginDeviceOpening, EnumeratesWhatAPluginHasWithoutKeepingIt)
{
    const QVariantMap plugin{{"plugin", "VirtualScanner"}, {"version", "1.0"}};
    const QVariantList devices =
        run(QVariant::fromValue<qint64>(0), "listDevices", {plugin}).toList();
    ASSERT_EQ(devices.size(), 4);
    EXPECT_EQ(
        devices.at(1).toMap(),
        (QVariantMap{{"index", 1}, {"name", "Virtual camera"}, {"types", QStringList{"camera"}}}));
    EXPECT_EQ(devices.at(3).toMap().value("types"), QVariant(QStringList()));
    EXPECT_EQ(listed(), QVariantList());
}

TEST_F(PluginDeviceOpening, NothingElseIsServedWithoutADevice)
{
    expectFails(FunctionNotExist,
                "Scanner 1.0 does not serve the command \"info\" without a device", "execute",
                {QVariant::fromValue<qint64>(0), "info", QVariantList()});
}

TEST_F(PluginDeviceOpening, NeedsAWholeAddress)
{
    expectFails(InvalidParameter, "\"plugin\" must be a text, not 7", "openDevices",
                {QVariantMap{{"plugin", 7}}});
    expectFails(InvalidParameter, "\"version\" must be a text such as \"1.0\", not nothing",
                "openDevices", {QVariantMap{{"plugin", "VirtualScanner"}}});
    for (const char *const version : {"", "one", "1.0b", "01.0"}) {
        expectFails(InvalidParameter,
                    QStringLiteral("\"version\" must be a text such as \"1.0\", not \"%1\"")
                        .arg(QString::fromLatin1(version)),
                    "openDevices",
                    {QVariantMap{{"plugin", "VirtualScanner"}, {"version", version}}});
    }
    expectFails(InvalidParameter,
                "\"index\" must be a whole number from 0 to 2147483647, not nothing", "openDevices",
                {QVariantMap{{"plugin", "VirtualScanner"}, {"version", "1.0"}}});
}

TEST_F(PluginDeviceOpening, RefusesAnIndexThatThePluginDoesNotHave)
{
    expectFails(InvalidParameter, "\"index\" must be a whole number from 0 to 3, not 4",
                "openDevices", {address(4)});
    expectFails(InvalidParameter, "\"index\" must be a whole number from 0 to 2147483647, not -1",
                "openDevices", {address(-1)});
}

TEST_F(PluginDeviceOpening, SaysThatThereIsNoSuchPlugin)
{
    QVariantMap parameters = address(0);
    parameters.insert("plugin", "Absent");
    expectFails(PluginFileNotExist, "The device plug-in Absent 1.0 cannot be loaded", "openDevices",
                {parameters});
}

TEST_F(PluginDeviceOpening, EveryFunctionRefusesAClosedDevice)
{
    const QVariant handle = openDevice(WholeScanner);
    close(handle);
    const std::vector<std::pair<QString, QVariantList>> functions = {
        {"closeDevices", {handle}},
        {"resetDevices", {handle}},
        {"getProperty", {handle, "info", QVariant()}},
        {"setProperty", {handle, "gain", 1}},
        {"resetInterface", {handle, "light"}},
        {"setFlagBitInterface", {handle, "projectorLed", true}},
        {"project", {handle, "off"}},
        {"captureImage", {handle, "scan", QVariantMap()}},
        {"turntableRotate", {handle, "turntable", QVariantMap(), true}},
        {"execute", {handle, "info", QVariantList()}},
    };
    for (const auto &[function, arguments] : functions)
        expectFails(HandleInvalid,
                    QStringLiteral("No open device has the handle %1").arg(handle.toLongLong()),
                    function, arguments);
}

TEST_F(PluginDeviceOpening, ResettingConnectsTheDeviceAgain)
{
    const QVariant handle = openDevice(CameraAlone);
    set(handle, "vanish", QVariantMap{{"vanished", true}});
    expectFails(vanished, "The device refuses to connect again", "resetDevices", {handle});
    set(handle, "vanish", QVariantMap{{"vanished", false}});
    expectFails(notConnected, "The device does not give the property \"gain\"", "getProperty",
                {handle, "gain", QVariant()});
    call("resetDevices", {handle});
    EXPECT_EQ(get(handle, "gain"), QVariant(0));
}

TEST_F(PluginDeviceOpening, ADeviceThatVanishedCanBeClosed)
{
    const QVariant handle = openDevice(WholeScanner);
    set(handle, "vanish", QVariantMap{{"vanished", true}});
    close(handle);
    EXPECT_EQ(listed(), QVariantList());
}

TEST_F(PluginDeviceOpening, LoadingThePluginAgainLeavesDevicesOpen)
{
    const QVariant handle = openDevice(CameraAlone);
    core.loadCommandPlugin("Scanner", QVersionNumber(1, 0));
    EXPECT_EQ(get(handle, "gain"), QVariant(0));
    EXPECT_EQ(listed().size(), 1);
}

TEST_F(PluginDeviceOpening, DevicesOfAnEarlierCoreAreOpenNoLonger)
{
    const QVersionNumber version(1, 0);
    auto earlier = std::make_unique<KvSyncCore::SyncCore>();
    earlier->init("../../bin/Logic", "../../bin/Device");
    earlier->loadCommandPlugin("Scanner", version);
    const QVariant handle =
        earlier->execute("Scanner", "openDevices", {address(CameraAlone)}, version);
    earlier.reset();
    core.loadCommandPlugin("Scanner", version);
    EXPECT_EQ(listed(), QVariantList());
    expectFails(HandleInvalid,
                QStringLiteral("No open device has the handle %1").arg(handle.toLongLong()),
                "closeDevices", {handle});
    EXPECT_EQ(get(openDevice(CameraAlone), "gain"), QVariant(0));
}

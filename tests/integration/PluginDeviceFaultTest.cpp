// The Scanner plug-in over device plug-ins that are difficult, or wrong.
#include "PluginDeviceHost.h"
#include "fixtures/plugins/PlainDevice.h"
#include "fixtures/plugins/Scripted/DeviceScript.h"
#include "support/ApplicationFolder.h"

#include <stdexcept>

using namespace KvSyncTest;

/// Makes devices in turn, each of which accepts its own index alone, and counts those that live.
class TurningScript : public DeviceScript
{
public:
    int enumDevices() override { return 3; }

    BaseDeviceSpace::DeviceInterface *createDevice() override
    {
        ++living;
        return new OwnIndex(next++ % 3);
    }

    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
    {
        --living;
        delete device;
        return Success;
    }

    int living = 0;

private:
    class OwnIndex : public PlainDevice
    {
    public:
        explicit OwnIndex(int ownIndex)
            : index(ownIndex)
        {
        }

        ErrorCode connectDeviceByIndex(int asked) override
        {
            return asked == index ? Success : DeviceOperationFailed;
        }

    private:
        const int index;
    };

    int next = 0;
};

class ScriptedPluginDevice : public PluginDeviceHost
{
protected:
    ScriptedPluginDevice()
    {
        DeviceScript::use(&script);
        folder.copyModule(deviceFixture("Scripted"), "Scripted.1.0.1.dll");
        host.init("../../bin/Logic", folder.name());
        host.loadCommandPlugin("Scanner", QVersionNumber(1, 0));
    }
    ~ScriptedPluginDevice() override { DeviceScript::use(nullptr); }

    QVariant callHost(const QString &function, const QVariantList &arguments)
    {
        return host.execute("Scanner", function, arguments, QVersionNumber(1, 0));
    }

    TurningScript script;
    ApplicationFolder folder;
    KvSyncCore::SyncCore host; // ends before what the plug-in's devices live in
};

TEST_F(ScriptedPluginDevice, OpeningDeletesTheDevicesThatItMadeInVain)
{
    const QVariantMap parameters{{"plugin", "Scripted"}, {"version", "1.0"}, {"index", 2}};
    const QVariant handle = callHost("openDevices", {parameters});
    EXPECT_EQ(script.living, 1);
    callHost("closeDevices", {handle});
    EXPECT_EQ(script.living, 0);
}

TEST_F(ScriptedPluginDevice, EnumeratingDeletesAllThatItMade)
{
    const QVariantMap parameters{{"plugin", "Scripted"}, {"version", "1.0"}};
    const QVariant devices = callHost(
        "execute", {QVariant::fromValue<qint64>(0), "listDevices", QVariantList{parameters}});
    EXPECT_EQ(devices.toList().size(), 3);
    EXPECT_EQ(script.living, 0);
}

/// Over device plug-ins that are wrong, each in one way.
class FaultyPluginDevice : public PluginDeviceHost
{
protected:
    FaultyPluginDevice()
    {
        for (const char *const name :
             {"BlindCamera", "NullDevice", "RefusesDestroy", "ForeignRoot"}) {
            const QString fixture = QString::fromLatin1(name);
            const QString module =
                fixture == "ForeignRoot" ? commandFixture(fixture) : deviceFixture(fixture);
            folder.copyModule(module, fixture + ".1.0.1.dll");
        }
        core.init("../../bin/Logic", folder.name());
        core.loadCommandPlugin("Scanner", QVersionNumber(1, 0));
    }

    static QVariantMap plugin(const QString &name)
    {
        return {{"plugin", name}, {"version", "1.0"}, {"index", 0}};
    }

    ApplicationFolder folder;
};

TEST_F(FaultyPluginDevice, SaysThatAPluginIsNoDeviceFactory)
{
    expectFails(PluginNotLoaded, "The device plug-in ForeignRoot 1.0 does not tell its devices",
                "openDevices", {plugin("ForeignRoot")});
}

TEST_F(FaultyPluginDevice, SaysThatAPluginMakesNoDevice)
{
    expectFails(ConnectFailed, "The device plug-in NullDevice 1.0 makes no device", "openDevices",
                {plugin("NullDevice")});
}

TEST_F(FaultyPluginDevice, ADeviceThatIsNotDestroyedStaysOpen)
{
    const QVariant handle = call("openDevices", {plugin("RefusesDestroy")});
    expectFails(static_cast<ErrorCode>(0x01F10001),
                "The plug-in RefusesDestroy 1.0 refuses to destroy the device", "closeDevices",
                {handle});
    call("resetDevices", {handle});
    EXPECT_EQ(run(handle, "info").toMap().value("name"), QVariant("plain"));
}

TEST_F(FaultyPluginDevice, SaysThatACameraGivesNoWholeImage)
{
    const QVariant handle = call("openDevices", {plugin("BlindCamera")});
    const QString text = "The camera gave no whole image";
    for (const char *const missing : {"data", "width", "height", "bitDepth"}) {
        set(handle, "missing", missing);
        expectFails(CameraFailed, text, "captureImage",
                    {handle, "scan", QVariantMap{{"frames", 1}}});
    }
    set(handle, "missing", "nothing");
    EXPECT_EQ(capture(handle, {{"frames", 1}}).size(), 1);
}

TEST_F(FaultyPluginDevice, AScanOfACameraThatCannotTellWhetherItIsConnectedFailed)
{
    const QVariant handle = call("openDevices", {plugin("BlindCamera")});
    set(handle, "missing", "data");
    EXPECT_THROW(capture(handle, {{"frames", 1}}), KvSyncTool::Exception);
    EXPECT_EQ(lastOf("scanEnded").value("reason"), QVariant("failed"));
}

TEST_F(FaultyPluginDevice, ACameraThatThrowsWhenItShallRestIsUsedAndClosed)
{
    const QVariant handle = call("openDevices", {plugin("BlindCamera")});
    set(handle, "missing", "rest");
    EXPECT_EQ(capture(handle, {{"frames", 1}}).size(), 1);
    EXPECT_THROW(call("resetDevices", {handle}), std::runtime_error);
    close(handle);
    expectFails(HandleInvalid,
                QStringLiteral("No open device has the handle %1").arg(handle.toLongLong()),
                "closeDevices", {handle});
}

// Motor, projector and controller of a device of a device plug-in.
#include "PluginDeviceHost.h"

#include <chrono>
#include <future>

using namespace KvSyncTest;

class PluginDeviceMotion : public PluginDeviceHost
{
};

class PluginDeviceLight : public PluginDeviceHost
{
protected:
    QVariantMap sequence(const QVariant &handle) { return get(handle, "scan").toMap(); }
};

class PluginDeviceCommands : public PluginDeviceHost
{
};

TEST_F(PluginDeviceMotion, TurnsByAnAngleAndWaitsForTheEnd)
{
    const QVariant handle = openDevice(TurntableAlone);
    turn(handle, "turntable", {{"degrees", 12.5}, {"degreesPerSecond", 720}}, true);
    EXPECT_EQ(positionOf(handle, "turntable"), 12.5);
    turn(handle, "turntable", {{"degrees", -2.5}, {"degreesPerSecond", 720}}, true);
    EXPECT_EQ(positionOf(handle, "turntable"), 10.0);
}

TEST_F(PluginDeviceMotion, TurnsToAnAngle)
{
    const QVariant handle = openDevice(WholeScanner);
    turn(handle, "tilt", {{"degrees", 20}, {"degreesPerSecond", 720}}, false);
    turn(handle, "tilt", {{"degrees", 15}, {"degreesPerSecond", 720}}, false);
    EXPECT_EQ(positionOf(handle, "tilt"), 15.0);
    EXPECT_EQ(positionOf(handle, "turntable"), 0.0);
}

TEST_F(PluginDeviceMotion, TurnsAtTheSpeedThatIsAsked)
{
    const QVariant handle = openDevice(TurntableAlone);
    const auto begin = std::chrono::steady_clock::now();
    turn(handle, "turntable", {{"degrees", 20}, {"degreesPerSecond", 40}}, true);
    // At its own speed the motor takes less than half of that.
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(490));
}

TEST_F(PluginDeviceMotion, LeavesTheSpeedToTheMotor)
{
    const QVariant handle = openDevice(TurntableAlone);
    turn(handle, "turntable", {{"degrees", 1}}, true);
    EXPECT_EQ(positionOf(handle, "turntable"), 1.0);
}

TEST_F(PluginDeviceMotion, MovesBackToItsReference)
{
    const QVariant handle = openDevice(WholeScanner);
    turn(handle, "turntable", {{"degrees", 5}, {"degreesPerSecond", 720}}, true);
    turn(handle, "tilt", {{"degrees", 4}, {"degreesPerSecond", 720}}, true);
    call("resetInterface", {handle, "motor"});
    EXPECT_EQ(positionOf(handle, "turntable"), 0.0);
    EXPECT_EQ(positionOf(handle, "tilt"), 0.0);
}

TEST_F(PluginDeviceMotion, StopsWhereItIs)
{
    const QVariant handle = openDevice(TurntableAlone);
    auto turning = std::async(std::launch::async, [&] {
        turn(handle, "turntable", {{"degrees", 30000}, {"degreesPerSecond", 1}}, true);
    });
    while (positionOf(handle, "turntable") == 0.0)
        std::this_thread::yield();
    run(handle, "stopMotor");
    turning.get();
    EXPECT_LT(positionOf(handle, "turntable"), 30000.0);
}

TEST_F(PluginDeviceMotion, ClosingStopsATurnThatIsUnderWay)
{
    const QVariant handle = openDevice(TurntableAlone);
    auto turning = std::async(std::launch::async, [&] {
        turn(handle, "turntable", {{"degrees", 30000}, {"degreesPerSecond", 1}}, true);
    });
    while (positionOf(handle, "turntable") == 0.0)
        std::this_thread::yield();
    close(handle);
    try {
        turning.get(); // the wait itself was cut short
    } catch (const KvSyncTool::Exception &failure) {
        EXPECT_EQ(failure.code(), HandleInvalid); // or it had not begun
    }
}

TEST_F(PluginDeviceMotion, RefusesWhatIsNoTurn)
{
    const QVariant handle = openDevice(TurntableAlone);
    expectFails(InvalidParameter,
                "\"degrees\" must be a number from -3600000 to 3600000, not nothing",
                "turntableRotate", {handle, "turntable", QVariantMap(), true});
    expectFails(InvalidParameter, "\"degreesPerSecond\" must be a number from 0 to 3600000, not -1",
                "turntableRotate",
                {handle, "turntable", QVariantMap{{"degrees", 1}, {"degreesPerSecond", -1}}, true});
    expectFails(FunctionNotExist, "There is no axis \"roll\", but turntable, tilt, lift",
                "turntableRotate", {handle, "roll", QVariantMap{{"degrees", 1}}, true});
    EXPECT_EQ(positionOf(handle, "turntable"), 0.0);
}

TEST_F(PluginDeviceMotion, PassesTheCodeOnWithWhichTheMotorRefuses)
{
    const QVariant handle = openDevice(TurntableAlone);
    expectFails(static_cast<ErrorCode>(0x01F0000F),
                "The device refuses to turn its tilt by 1 degrees", "turntableRotate",
                {handle, "tilt", QVariantMap{{"degrees", 1}}, true});
    expectFails(badValue, "The device refuses to turn its turntable by 40000 degrees",
                "turntableRotate", {handle, "turntable", QVariantMap{{"degrees", 40000}}, true});
    makeFail(handle, "waitMotorStop", 0x01F20001);
    expectFails(static_cast<ErrorCode>(0x01F20001), "The motor did not come to rest",
                "turntableRotate", {handle, "turntable", QVariantMap{{"degrees", 0}}, true});
    makeFail(handle, "resetMotor", 0x01F20002);
    expectFails(static_cast<ErrorCode>(0x01F20002), "The device refuses to reset its motor",
                "resetInterface", {handle, "motor"});
    makeFail(handle, "stopMotor", 0x01F20003);
    expectFails(static_cast<ErrorCode>(0x01F20003), "The device refuses to stop its motor",
                "execute", {handle, "stopMotor", QVariantList()});
}

TEST_F(PluginDeviceMotion, AnAngleNeedsAnAxisThatTellsItsOwn)
{
    const QVariant handle = openDevice(TurntableAlone);
    expectFails(FunctionNotExist, "The device does not tell the angle of its lift",
                "turntableRotate", {handle, "lift", QVariantMap{{"degrees", 1}}, false});
}

TEST_F(PluginDeviceMotion, ADeviceWithoutAMotorDoesNotTurn)
{
    const QVariant handle = openDevice(CameraAlone);
    const QString text = "The device \"Virtual camera\" has no motor";
    expectFails(FunctionNotExist, text, "turntableRotate",
                {handle, "turntable", QVariantMap{{"degrees", 1}}, true});
    expectFails(FunctionNotExist, text, "resetInterface", {handle, "motor"});
    expectFails(FunctionNotExist, text, "execute", {handle, "stopMotor", QVariantList()});
}

TEST_F(PluginDeviceLight, ProjectingSwitchesTheLightOnAndRunsTheSequence)
{
    const QVariant handle = openDevice(WholeScanner);
    call("project", {handle, "single"});
    EXPECT_EQ(sequence(handle), (QVariantMap{{"on", true}, {"type", 0}}));
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(true));
    call("project", {handle, "continuous"});
    EXPECT_EQ(sequence(handle), (QVariantMap{{"on", true}, {"type", 1}}));
    call("project", {handle, "off"});
    EXPECT_EQ(sequence(handle).value("on"), QVariant(false));
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(false));
}

TEST_F(PluginDeviceLight, ResettingTheLightSwitchesEverythingOff)
{
    const QVariant handle = openDevice(WholeScanner);
    call("project", {handle, "continuous"});
    call("setFlagBitInterface", {handle, "projectorPwm", true});
    EXPECT_EQ(get(handle, "projectorPwm"), QVariant(true));
    call("resetInterface", {handle, "light"});
    EXPECT_EQ(sequence(handle).value("on"), QVariant(false));
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(false));
    EXPECT_EQ(get(handle, "projectorPwm"), QVariant(false));
}

TEST_F(PluginDeviceLight, ResettingTheDeviceDarkensTheProjector)
{
    const QVariant handle = openDevice(WholeScanner);
    call("project", {handle, "continuous"});
    call("setFlagBitInterface", {handle, "projectorPwm", true});
    call("resetDevices", {handle});
    EXPECT_EQ(sequence(handle).value("on"), QVariant(false));
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(false));
    EXPECT_EQ(get(handle, "projectorPwm"), QVariant(false));
}

TEST_F(PluginDeviceLight, FlagsSwitchTheProjector)
{
    const QVariant handle = openDevice(WholeScanner);
    call("setFlagBitInterface", {handle, "projectorLed", true});
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(true));
    EXPECT_EQ(get(handle, "projectorPwm"), QVariant(false));
}

TEST_F(PluginDeviceLight, UnknownNamesAreNotServed)
{
    const QVariant handle = openDevice(WholeScanner);
    expectFails(FunctionNotExist, "There is no pattern \"rings\", but off, single, continuous",
                "project", {handle, "rings"});
    expectFails(FunctionNotExist,
                "There is no flag \"laser\", but projectorPwm, projectorLed, commandChannel",
                "setFlagBitInterface", {handle, "laser", true});
    expectFails(FunctionNotExist, "There is no interface \"door\", but light, motor",
                "resetInterface", {handle, "door"});
}

TEST_F(PluginDeviceLight, PassesTheCodeOnWithWhichTheProjectorRefuses)
{
    const QVariant handle = openDevice(WholeScanner);
    makeFail(handle, "scan", 0x01F20004);
    expectFails(static_cast<ErrorCode>(0x01F20004), "The device refuses to project \"single\"",
                "project", {handle, "single"});
    makeFail(handle, "projectorPWM", 0x01F20005);
    expectFails(static_cast<ErrorCode>(0x01F20005), "The device refuses to switch \"projectorPwm\"",
                "setFlagBitInterface", {handle, "projectorPwm", true});
}

TEST_F(PluginDeviceLight, ADeviceWithoutAProjectorStaysDark)
{
    const QVariant handle = openDevice(CameraAlone);
    const QString text = "The device \"Virtual camera\" has no projector";
    expectFails(FunctionNotExist, text, "project", {handle, "off"});
    expectFails(FunctionNotExist, text, "setFlagBitInterface", {handle, "projectorLed", true});
    expectFails(FunctionNotExist, text, "resetInterface", {handle, "light"});
}

TEST_F(PluginDeviceCommands, ACommandIsSentAndItsAnswerRead)
{
    const QVariant handle = openDevice(WholeScanner);
    run(handle, "sendCommand", {0, QByteArray("ping")});
    EXPECT_EQ(run(handle, "readCommand", {0}), QVariant(QByteArray("pong")));
    run(handle, "sendCommand", {2, "set speed 7"});
    run(handle, "sendCommand", {1, "get speed"});
    EXPECT_EQ(run(handle, "readCommand", {1}), QVariant(QByteArray("7")));
}

TEST_F(PluginDeviceCommands, TheCommandChannelIsReservedForOneThread)
{
    const QVariant handle = openDevice(WholeScanner);
    call("setFlagBitInterface", {handle, "commandChannel", true});
    std::async(std::launch::async, [&] {
        expectFails(static_cast<ErrorCode>(0x01F00011), "The device refuses the command", "execute",
                    {handle, "sendCommand", QVariantList{0, "ping"}});
    }).get();
    call("setFlagBitInterface", {handle, "commandChannel", false});
    std::async(std::launch::async, [&] { run(handle, "sendCommand", {0, "ping"}); }).get();
    EXPECT_EQ(run(handle, "readCommand", {0}), QVariant(QByteArray("pong")));
}

TEST_F(PluginDeviceCommands, FirmwareIsWritten)
{
    const QVariant handle = openDevice(WholeScanner);
    run(handle, "updateFirmware", {1, QByteArray("KVFW\x05") + QByteArray(9000, 'x')});
    const QVariantMap fireware = get(handle, "fireware").toMap();
    EXPECT_EQ(fireware.value("projector").toInt(), 5);
    EXPECT_EQ(fireware.value("bytesWritten").toInt(), 9005);
}

TEST_F(PluginDeviceCommands, APatternIsWrittenAndReadBack)
{
    const QVariant handle = openDevice(WholeScanner);
    const QByteArray pixels("\x01\x02\x03\x04\x05\x06");
    run(handle, "writePattern",
        {QVariantMap{{"major", 1},
                     {"sub", 2},
                     {"index", 3},
                     {"width", 3},
                     {"height", 2},
                     {"data", pixels}}});
    EXPECT_EQ(
        get(handle, "pattern", QVariantMap{{"index", 3}}).toMap(),
        (QVariantMap{{"major", 1}, {"sub", 2}, {"width", 3}, {"height", 2}, {"data", pixels}}));
}

TEST_F(PluginDeviceCommands, PassesTheCodeOnWithWhichTheDeviceRefuses)
{
    const QVariant handle = openDevice(WholeScanner);
    const QVariantMap pattern{{"major", 1}, {"sub", 0},    {"index", 16},
                              {"width", 1}, {"height", 1}, {"data", QByteArray("x")}};
    expectFails(static_cast<ErrorCode>(0x01F0000E), "The device refuses the pattern at place 16",
                "execute", {handle, "writePattern", QVariantList{pattern}});
    expectFails(static_cast<ErrorCode>(0x01F00015), "The device refuses the firmware", "execute",
                {handle, "updateFirmware", QVariantList{0, "no firmware"}});
    expectFails(static_cast<ErrorCode>(0x01F00013), "The device refuses the command", "execute",
                {handle, "sendCommand", QVariantList{0, "dance"}});
    expectFails(static_cast<ErrorCode>(0x01F00014), "The device gives no answer to the command",
                "execute", {handle, "readCommand", QVariantList{2}});
}

TEST_F(PluginDeviceCommands, RefusesArgumentsBeforeTheDeviceSeesThem)
{
    const QVariant handle = openDevice(WholeScanner);
    expectFails(InvalidParameter, "The kind must be a whole number from 0 to 255, not nothing",
                "execute", {handle, "readCommand", QVariantList()});
    expectFails(InvalidParameter, "The command must be bytes, not 7", "execute",
                {handle, "sendCommand", QVariantList{0, 7}});
    expectFails(InvalidParameter, "The firmware must be bytes, not nothing", "execute",
                {handle, "updateFirmware", QVariantList{0}});
    expectFails(InvalidParameter, "\"major\" must be a whole number from 0 to 255, not nothing",
                "execute", {handle, "writePattern", QVariantList()});
}

TEST_F(PluginDeviceCommands, UnknownOnesAndThoseOfTheDirectLinkAreNotServed)
{
    const QVariant handle = openDevice(WholeScanner);
    for (const char *const name : {"dance", "startScan", "Project"})
        expectFails(
            FunctionNotExist,
            QStringLiteral(
                "Scanner 1.0 does not serve the command \"%1\" for devices of device plug-ins")
                .arg(QString::fromLatin1(name)),
            "execute", {handle, name, QVariantList()});
}

TEST_F(PluginDeviceCommands, ADeviceWithoutThemSaysSo)
{
    const QVariant handle = openDevice(CameraAlone);
    for (const char *const name : {"sendCommand", "readCommand", "updateFirmware"})
        expectFails(FunctionNotExist, "The device \"Virtual camera\" has no controller", "execute",
                    {handle, name, QVariantList{0, "x"}});
    expectFails(FunctionNotExist, "The device \"Virtual camera\" has no projector", "execute",
                {handle, "writePattern", QVariantList()});
}

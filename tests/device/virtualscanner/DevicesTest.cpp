// The list of devices, connecting, and faults on order.

#include "device/virtualscanner/VirtualScannerTest.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QStringList>

#include <future>
#include <thread>

using namespace KvSyncTest;
using namespace VirtualScanner;
using namespace BaseDeviceSpace;

using VirtualDevices = VirtualScannerTest;

TEST_F(VirtualDevices, AreFourAndMadeInTurn)
{
    EXPECT_EQ(devices.enumDevice(name, version), qMakePair(Success, 4));
    QStringList names;
    for (int i = 0; i < 5; ++i)
        names.append(devices.name(devices.createDevice(name, version).second).second);
    EXPECT_EQ(names,
              QStringList({QStringLiteral("Virtual scanner"), QStringLiteral("Virtual camera"),
                           QStringLiteral("Virtual turntable"), QStringLiteral("Virtual marker"),
                           QStringLiteral("Virtual scanner")}));
}

TEST_F(VirtualDevices, TellTheirKinds)
{
    EXPECT_EQ(devices.types(create(Scanner)).second,
              CameraDevice | ProjectorDevice | MotorDevice | ControllerDevice);
    EXPECT_EQ(devices.types(create(Camera)).second, DeviceTypes(CameraDevice));
    EXPECT_EQ(devices.types(create(Turntable)).second, DeviceTypes(MotorDevice));
    EXPECT_EQ(devices.types(create(Marker)).second, DeviceTypes());
}

TEST_F(VirtualDevices, OfferExactlyTheCapabilitiesOfTheirKinds)
{
    struct Expectation
    {
        Index index;
        bool camera, projector, motor, controller;
    };
    for (const Expectation &expected : {Expectation{Scanner, true, true, true, true},
                                        Expectation{Camera, true, false, false, false},
                                        Expectation{Turntable, false, false, true, false},
                                        Expectation{Marker, false, false, false, false}}) {
        const DeviceHandle handle = open(expected.index);
        const auto codeFor = [](bool offered) { return offered ? Success : HandleInvalid; };
        EXPECT_EQ(devices.discardFrames(handle, 0), codeFor(expected.camera));
        EXPECT_EQ(devices.projectorPWM(handle, true), codeFor(expected.projector));
        EXPECT_EQ(devices.stopMotor(handle, {}), codeFor(expected.motor));
        EXPECT_EQ(devices.sendCommand(handle, ControllerSpace::ControlCommand, "ping"),
                  codeFor(expected.controller));
    }
}

TEST_F(VirtualDevices, NeedTheConnectionFirst)
{
    const DeviceHandle handle = create(Camera);
    EXPECT_EQ(devices.startStream(handle, 0), NotConnected);
    EXPECT_EQ(codeOfGet(handle, "exposure"), NotConnected);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Camera), Success);
    EXPECT_EQ(devices.startStream(handle, 0), Success);
}

TEST_F(VirtualDevices, ConnectAtTheirOwnIndexAlone)
{
    const DeviceHandle handle = create(Turntable);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Scanner), OtherDevice);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, -1), NoSuchIndex);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, 4), NoSuchIndex);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Turntable), Success);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Turntable), Success);
}

TEST_F(VirtualDevices, TellWhatTheyAre)
{
    const Values info = get(open(Camera), "info");
    EXPECT_EQ(info, (Values{{QStringLiteral("name"), QStringLiteral("Virtual camera")},
                            {QStringLiteral("index"), 1},
                            {QStringLiteral("serial"), QStringLiteral("VS-0002")},
                            {QStringLiteral("types"), int(CameraDevice)},
                            {QStringLiteral("connected"), true}}));
}

TEST_F(VirtualDevices, ListTheirProperties)
{
    EXPECT_EQ(get(create(Marker), "properties").value(QStringLiteral("names")).toStringList(),
              QStringList({QStringLiteral("fail"), QStringLiteral("info"), QStringLiteral("slow"),
                           QStringLiteral("vanish")}));
}

TEST_F(VirtualDevices, RefuseUnknownPropertiesAndTheWrongDirection)
{
    const DeviceHandle handle = open(Camera);
    EXPECT_EQ(codeOfGet(handle, "colour"), UnknownProperty);
    EXPECT_EQ(set(handle, "colour", {}), UnknownProperty);
    EXPECT_EQ(codeOfGet(handle, "fail"), PropertyNotReadable);
    EXPECT_EQ(set(handle, "frame", {}), PropertyNotWritable);
    EXPECT_EQ(codeOfGet(handle, "position"), UnknownProperty); // the motor's
}

TEST_F(VirtualDevices, AreConnectedWithOneHandleAtATime)
{
    const DeviceHandle first = open(Turntable);
    const DeviceHandle second = create(Turntable);
    EXPECT_EQ(devices.connectDeviceByIndex(second, Turntable), DeviceInUse);
    EXPECT_EQ(devices.stopMotor(second, {}), NotConnected);
    EXPECT_EQ(devices.connectDeviceByIndex(first, Turntable), Success); // its own
    EXPECT_EQ(devices.deleteDevice(first), Success);
    EXPECT_EQ(devices.connectDeviceByIndex(second, Turntable), Success);
}

TEST_F(VirtualDevices, LeaveTheirPlaceWhenTheyVanish)
{
    const DeviceHandle first = open(Turntable);
    const DeviceHandle second = create(Turntable);
    ASSERT_EQ(set(first, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    ASSERT_EQ(set(first, "vanish", {{QStringLiteral("vanished"), false}}), Success);
    EXPECT_EQ(devices.connectDeviceByIndex(second, Turntable), Success);
    EXPECT_EQ(devices.connectDeviceByIndex(first, Turntable), DeviceInUse);
}

TEST_F(VirtualDevices, EndWithTheirHandle)
{
    const DeviceHandle handle = open(Scanner);
    EXPECT_EQ(devices.deleteDevice(handle), Success);
    EXPECT_EQ(devices.startStream(handle, 0), HandleInvalid);
    EXPECT_EQ(devices.deleteDevice(handle), HandleInvalid);
}

// Faults on order

TEST_F(VirtualDevices, FailWithTheOrderedCodeUntilItIsCleared)
{
    const DeviceHandle handle = open(Turntable);
    const QString operation = QStringLiteral("stopMotor");
    ASSERT_EQ(set(handle, "fail",
                  {{QStringLiteral("operation"), operation}, {QStringLiteral("code"), 0x01F0ABCD}}),
              Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), static_cast<ErrorCode>(0x01F0ABCD));
    EXPECT_EQ(devices.stopMotor(handle, {}), static_cast<ErrorCode>(0x01F0ABCD));
    EXPECT_EQ(devices.waitMotorStop(handle, {}), Success);
    ASSERT_EQ(set(handle, "fail",
                  {{QStringLiteral("operation"), operation}, {QStringLiteral("code"), 0}}),
              Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), Success);
}

TEST_F(VirtualDevices, FailAsOftenAsOrdered)
{
    const DeviceHandle handle = open(Turntable);
    ASSERT_EQ(set(handle, "fail", {{QStringLiteral("code"), 7}, {QStringLiteral("times"), 2}}),
              Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), static_cast<ErrorCode>(7));
    EXPECT_EQ(devices.waitMotorStop(handle, {}), static_cast<ErrorCode>(7));
    EXPECT_EQ(devices.stopMotor(handle, {}), Success);
}

TEST_F(VirtualDevices, TakeNoSenselessFaults)
{
    const DeviceHandle handle = open(Marker);
    EXPECT_EQ(set(handle, "fail", {}), BadValue);
    EXPECT_EQ(set(handle, "fail", {{QStringLiteral("code"), 7}, {QStringLiteral("times"), 0}}),
              BadValue);
    EXPECT_EQ(set(handle, "slow", {{QStringLiteral("ms"), -1}}), BadValue);
    EXPECT_EQ(set(handle, "slow", {{QStringLiteral("ms"), QStringLiteral("long")}}), BadValue);
    EXPECT_EQ(set(handle, "vanish", {}), BadValue);
}

TEST_F(VirtualDevices, AreSlowOnOrder)
{
    const DeviceHandle handle = open(Turntable);
    ASSERT_EQ(set(handle, "slow",
                  {{QStringLiteral("operation"), QStringLiteral("stopMotor")},
                   {QStringLiteral("ms"), 40}}),
              Success);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(devices.stopMotor(handle, {}), Success);
    EXPECT_GE(timer.elapsed(), 39);
}

TEST_F(VirtualDevices, VanishAndComeBackUnconnected)
{
    const DeviceHandle handle = open(Turntable);
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), DeviceVanished);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Turntable), DeviceVanished);
    EXPECT_EQ(devices.name(handle).first, Success);
    EXPECT_TRUE(get(handle, "vanish").value(QStringLiteral("vanished")).toBool());
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), false}}), Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), NotConnected);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Turntable), Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), Success);
}

TEST_F(VirtualDevices, ThatVanishEndASlowOperation)
{
    const DeviceHandle handle = open(Turntable);
    ASSERT_EQ(set(handle, "slow", {{QStringLiteral("ms"), 60000}}), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [&] { return devices.stopMotor(handle, {}); });
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    EXPECT_EQ(waiting.get(), DeviceVanished);
}

TEST_F(VirtualDevices, ThatVanishForAnInstantEndAWait)
{
    const DeviceHandle handle = open(Turntable);
    ASSERT_EQ(devices.rotate(handle, {{MotorSpace::TurntableAxis, 36000.0, 1.0}}), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [&] { return devices.waitMotorStop(handle, {}); });
    ASSERT_TRUE(isCalled(handle));
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), false}}), Success);
    ASSERT_EQ(devices.connectDeviceByIndex(handle, Turntable), Success);
    ASSERT_EQ(devices.rotate(handle, {{MotorSpace::TurntableAxis, 360.0, 720.0}}), Success);
    EXPECT_EQ(waiting.get(), DeviceVanished);
}

TEST_F(VirtualDevices, ThatDidNotVanishStayConnectedWhenToldToComeBack)
{
    const DeviceHandle handle = open(Turntable);
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), false}}), Success);
    EXPECT_EQ(devices.stopMotor(handle, {}), Success);
}

TEST_F(VirtualDevices, FailToConnectOnOrder)
{
    const DeviceHandle handle = create(Turntable);
    ASSERT_EQ(set(handle, "fail",
                  {{QStringLiteral("operation"), QStringLiteral("connectDeviceByIndex")},
                   {QStringLiteral("code"), 7},
                   {QStringLiteral("times"), 1}}),
              Success);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Turntable), static_cast<ErrorCode>(7));
    EXPECT_EQ(devices.stopMotor(handle, {}), NotConnected);
    EXPECT_EQ(devices.connectDeviceByIndex(handle, Turntable), Success);
}

TEST_F(VirtualDevices, ConnectSlowlyOnOrder)
{
    const DeviceHandle handle = create(Turntable);
    ASSERT_EQ(set(handle, "slow",
                  {{QStringLiteral("operation"), QStringLiteral("connectDeviceByIndex")},
                   {QStringLiteral("ms"), 60000}}),
              Success);
    std::future<ErrorCode> waiting = std::async(
        std::launch::async, [&] { return devices.connectDeviceByIndex(handle, Turntable); });
    ASSERT_TRUE(isCalled(handle));
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    EXPECT_EQ(waiting.get(), DeviceVanished);
}

TEST_F(VirtualDevices, ThatVanishedRememberOnlyWhatIsWrittenForGood)
{
    const DeviceHandle handle = open(Scanner);
    using namespace ControllerSpace;
    using namespace ProjectorSpace;
    ASSERT_EQ(set(handle, "gain", {{QStringLiteral("value"), 9}}), Success);
    ASSERT_EQ(devices.startStream(handle, 0), Success);
    ASSERT_EQ(devices.projectorLEDSwitch(handle, true), Success);
    ASSERT_EQ(devices.writePatternToFlash(handle, StripePattern, DefaultVariant, 4, 2, 1, "ok"),
              Success);
    ASSERT_EQ(devices.rotate(handle, {{MotorSpace::TurntableAxis, 36000.0, 1.0}}), Success);
    ASSERT_EQ(devices.updateFireware(handle, MotorFireware, "KVFW\x05"), Success);
    ASSERT_EQ(devices.sendCommand(handle, ConfigurationCommand, "set fan 3"), Success);
    std::thread([&] { ASSERT_EQ(devices.lockCommandChannel(handle), Success); }).join();

    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    ASSERT_EQ(set(handle, "vanish", {{QStringLiteral("vanished"), false}}), Success);
    ASSERT_EQ(devices.connectDeviceByIndex(handle, Scanner), Success);

    EXPECT_EQ(get(handle, "gain").value(QStringLiteral("value")).toInt(), 0);
    EXPECT_EQ(devices.startStream(handle, 0), Success); // it runs no longer
    bool isOn = true;
    EXPECT_EQ(devices.currentProjectorLEDSwitch(handle, isOn), Success);
    EXPECT_FALSE(isOn);
    EXPECT_EQ(codeOfGet(handle, "pattern", {{QStringLiteral("index"), 4}}), Success);
    EXPECT_EQ(get(handle, "position").value(QStringLiteral("turntable")).toDouble(), 0.0);
    EXPECT_EQ(devices.waitMotorStop(handle, {}), Success);
    EXPECT_EQ(get(handle, "fireware").value(QStringLiteral("motor")).toInt(), 5);
    EXPECT_EQ(devices.lockCommandChannel(handle), Success);
    QByteArray answer;
    EXPECT_EQ(devices.readCommand(handle, ConfigurationCommand, answer), NoAnswer);
    EXPECT_EQ(devices.sendCommand(handle, QueryCommand, "get fan"), UnknownCommand);
}

#include "device/virtualscanner/VirtualScannerTest.h"

#include "KvSyncDevice/MotorInterface.h"

#include <cmath>
#include <future>
#include <limits>

using namespace KvSyncTest;
using namespace VirtualScanner;
using namespace MotorSpace;

namespace {

class VirtualMotors : public VirtualScannerTest
{
protected:
    ErrorCode rotate(AxisType axis, double degrees, double speed = 720.0)
    {
        return devices.rotate(scanner, {{axis, degrees, speed}});
    }

    double position(const char *axis)
    {
        return get(scanner, "position").value(QString::fromLatin1(axis)).toDouble();
    }

    const DeviceHandle scanner = open(Scanner);
};

} // namespace

TEST_F(VirtualMotors, ArriveWhereTheyWereSent)
{
    EXPECT_EQ(rotate(TurntableAxis, 14.4), Success);
    EXPECT_EQ(devices.waitMotorStop(scanner, {TurntableAxis}), Success);
    EXPECT_DOUBLE_EQ(position("turntable"), 14.4);
    EXPECT_EQ(rotate(TurntableAxis, -7.2), Success);
    EXPECT_EQ(devices.waitMotorStop(scanner, {}), Success);
    EXPECT_DOUBLE_EQ(position("turntable"), 7.2);
    EXPECT_DOUBLE_EQ(position("tilt"), 0.0);
}

TEST_F(VirtualMotors, MoveOverTimeAndStopWhereTheyAre)
{
    EXPECT_EQ(rotate(TurntableAxis, 36000.0, 1.0), Success);
    ASSERT_TRUE(eventually([this] { return position("turntable") > 0.0; }));
    EXPECT_EQ(devices.stopMotor(scanner, {TurntableAxis}), Success);
    const double stopped = position("turntable");
    EXPECT_GT(stopped, 0.0);
    EXPECT_LT(stopped, 36000.0);
    EXPECT_EQ(devices.waitMotorStop(scanner, {TurntableAxis}), Success);
    EXPECT_DOUBLE_EQ(position("turntable"), stopped);
}

TEST_F(VirtualMotors, TakeNoSecondMovementWhileMoving)
{
    EXPECT_EQ(rotate(TurntableAxis, 3600.0, 1.0), Success);
    EXPECT_EQ(rotate(TurntableAxis, 1.0), AxisMoving);
    EXPECT_EQ(rotate(TiltAxis, 1.0), Success);
    EXPECT_EQ(devices.stopMotor(scanner, {}), Success);
    EXPECT_EQ(rotate(TurntableAxis, 1.0), Success);
}

TEST_F(VirtualMotors, ReturnToTheirReference)
{
    EXPECT_EQ(rotate(TiltAxis, 3.6), Success);
    EXPECT_EQ(devices.waitMotorStop(scanner, {TiltAxis}), Success);
    EXPECT_EQ(devices.resetMotor(scanner, {TiltAxis}), Success);
    EXPECT_EQ(devices.waitMotorStop(scanner, {TiltAxis}), Success);
    EXPECT_DOUBLE_EQ(position("tilt"), 0.0);
}

TEST_F(VirtualMotors, KeepTheTiltWithinItsLimits)
{
    EXPECT_EQ(rotate(TiltAxis, 45.1), BadValue);
    EXPECT_EQ(rotate(TiltAxis, -45.1), BadValue);
    EXPECT_EQ(rotate(TiltAxis, 45.0), Success);
}

TEST_F(VirtualMotors, RefuseSenselessMovements)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(rotate(TurntableAxis, 1.0, -1.0), BadValue);
    EXPECT_EQ(rotate(TurntableAxis, 1.0, 721.0), BadValue);
    EXPECT_EQ(rotate(TurntableAxis, 1.0, std::nan("")), BadValue);
    EXPECT_EQ(rotate(TurntableAxis, std::nan("")), BadValue);
    EXPECT_EQ(rotate(TurntableAxis, infinity), BadValue);
    EXPECT_EQ(rotate(TurntableAxis, 36001.0), BadValue);
}

TEST_F(VirtualMotors, RefuseSpeedsThatNoClockCountsToTheEnd)
{
    for (const double speed : {0.0099, 1e-300, std::numeric_limits<double>::denorm_min()})
        EXPECT_EQ(rotate(TurntableAxis, 36000.0, speed), BadValue);
    EXPECT_EQ(rotate(TurntableAxis, 36000.0, 0.01), Success);
    EXPECT_EQ(rotate(TurntableAxis, 1.0), AxisMoving);
}

TEST_F(VirtualMotors, ChooseTheirOwnSpeedForZero)
{
    EXPECT_EQ(rotate(TurntableAxis, 1.8, 0.0), Success);
    EXPECT_EQ(devices.waitMotorStop(scanner, {}), Success);
    EXPECT_DOUBLE_EQ(position("turntable"), 1.8);
}

TEST_F(VirtualMotors, MoveNothingWhenOneMovementIsRefused)
{
    EXPECT_EQ(devices.rotate(scanner, {{TurntableAxis, 5.0, 720.0}, {TiltAxis, 90.0, 720.0}}),
              BadValue);
    EXPECT_EQ(devices.rotate(scanner, {{TurntableAxis, 5.0, 720.0}, {LiftAxis, 1.0, 720.0}}),
              NoSuchAxis);
    EXPECT_EQ(devices.rotate(scanner, {{TurntableAxis, 5.0, 1.0}, {TurntableAxis, 5.0, 1.0}}),
              AxisMoving);
    EXPECT_DOUBLE_EQ(position("turntable"), 0.0);
}

TEST_F(VirtualMotors, KnowTheAxesOfTheirKind)
{
    EXPECT_EQ(devices.stopMotor(scanner, {LiftAxis}), NoSuchAxis);
    EXPECT_EQ(devices.resetMotor(scanner, {TiltAxis, LiftAxis}), NoSuchAxis);
    EXPECT_EQ(devices.waitMotorStop(scanner, {LiftAxis}), NoSuchAxis);
    const DeviceHandle turntable = open(Turntable);
    EXPECT_EQ(devices.stopMotor(turntable, {TiltAxis}), NoSuchAxis);
    EXPECT_EQ(devices.stopMotor(turntable, {TurntableAxis}), Success);
}

TEST_F(VirtualMotors, AStopEndsTheWaitOfAnotherThread)
{
    EXPECT_EQ(rotate(TurntableAxis, 36000.0, 1.0), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [this] { return devices.waitMotorStop(scanner, {}); });
    EXPECT_EQ(devices.stopMotor(scanner, {}), Success);
    EXPECT_EQ(waiting.get(), Success);
}

TEST_F(VirtualMotors, AVanishedDeviceEndsTheWaitOfAnotherThread)
{
    EXPECT_EQ(rotate(TurntableAxis, 36000.0, 1.0), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [this] { return devices.waitMotorStop(scanner, {}); });
    EXPECT_EQ(set(scanner, "vanish", {{QStringLiteral("vanished"), true}}), Success);
    EXPECT_EQ(waiting.get(), DeviceVanished);
}

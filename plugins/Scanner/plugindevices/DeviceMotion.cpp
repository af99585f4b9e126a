#include "DeviceMotion.h"

#include "Errors.h"
#include "NamedRow.h"
#include "Parameters.h"

#include <QtCore/QMap>

namespace Scanner {

using BaseDeviceSpace::MotorDevice;
using KvSyncCore::DeviceController;
using MotorSpace::AxisType;

namespace {

constexpr double farthestDegrees = 3600000.0;

struct Axis
{
    QLatin1String name;
    AxisType type;
};

const Axis axes[] = {
    {QLatin1String("turntable"), MotorSpace::TurntableAxis},
    {QLatin1String("tilt"), MotorSpace::TiltAxis},
    {QLatin1String("lift"), MotorSpace::LiftAxis},
};

// No axis named means all that the device has.
const QList<AxisType> allAxes;

double realNumber(const QVariantMap &parameters, const QString &key, double minimum)
{
    return realNumberFrom(parameters.value(key), QStringLiteral("\"%1\"").arg(key), minimum,
                          farthestDegrees);
}

double positionOf(OpenDevice &device, const QString &axis)
{
    QMap<QString, QVariant> values;
    const ErrorCode result = device.call([&](DeviceController &c, qint64 handle) {
        return c.getProperty(handle, QStringLiteral("position"), values);
    });
    if (result != Success || !values.contains(axis))
        raise(FunctionNotExist,
              QStringLiteral("The device does not tell the angle of its %1").arg(axis));
    return values.value(axis).toDouble();
}

void waitForMotor(OpenDevice &device, const QList<AxisType> &waitedFor)
{
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.waitMotorStop(handle, waitedFor);
    }),
          QStringLiteral("The motor did not come to rest"));
}

} // namespace

void rotateAxis(OpenDevice &device, const QString &name, const QVariantMap &parameters,
                bool isRelative)
{
    device.require(MotorDevice);
    const AxisType type = rowNamed(axes, name, QStringLiteral("axis")).type;
    const QString speedKey = QStringLiteral("degreesPerSecond");
    MotorSpace::RotateInfo movement;
    movement.axis = type;
    movement.angleDegrees = realNumber(parameters, QStringLiteral("degrees"), -farthestDegrees);
    if (parameters.contains(speedKey))
        movement.speedDegreesPerSecond = realNumber(parameters, speedKey, 0.0);
    if (!isRelative)
        movement.angleDegrees -= positionOf(device, name);
    check(device.call(
              [&](DeviceController &c, qint64 handle) { return c.rotate(handle, {movement}); }),
          QStringLiteral("The device refuses to turn its %1 by %2 degrees")
              .arg(name)
              .arg(movement.angleDegrees, 0, 'g', 10));
    waitForMotor(device, {type});
}

void resetMotor(OpenDevice &device)
{
    device.require(MotorDevice);
    check(device.call(
              [](DeviceController &c, qint64 handle) { return c.resetMotor(handle, allAxes); }),
          QStringLiteral("The device refuses to reset its motor"));
    waitForMotor(device, allAxes);
}

void stopMotor(OpenDevice &device)
{
    device.require(MotorDevice);
    check(device.call(
              [](DeviceController &c, qint64 handle) { return c.stopMotor(handle, allAxes); }),
          QStringLiteral("The device refuses to stop its motor"));
}

} // namespace Scanner

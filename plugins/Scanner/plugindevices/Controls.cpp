#include "Controls.h"

#include "Errors.h"
#include "Parameters.h"

#include <QtCore/QMap>

namespace Scanner::PluginDevices {

using namespace BaseDeviceSpace;
using KvSyncCore::DeviceController;
using MotorSpace::AxisType;

namespace {

struct Sequence
{
    QLatin1String name;
    ErrorCode (*run)(DeviceController &controller, qint64 handle);
};

template <ProjectorSpace::ScanType type>
ErrorCode start(DeviceController &c, qint64 handle)
{
    const ErrorCode result = c.projectorLEDSwitch(handle, true);
    return result == Success ? c.scan(handle, type, true) : result;
}

ErrorCode darken(DeviceController &c, qint64 handle)
{
    const ErrorCode results[] = {c.scan(handle, ProjectorSpace::SingleScan, false),
                                 c.scan(handle, ProjectorSpace::ContinuousScan, false),
                                 c.projectorLEDSwitch(handle, false)};
    for (const ErrorCode result : results) {
        if (result != Success)
            return result;
    }
    return Success;
}

const Sequence sequences[] = {
    {QLatin1String("off"), darken},
    {QLatin1String("single"), start<ProjectorSpace::SingleScan>},
    {QLatin1String("continuous"), start<ProjectorSpace::ContinuousScan>},
};

ErrorCode reserveChannel(DeviceController &c, qint64 handle, bool on)
{
    return on ? c.lockCommandChannel(handle) : c.unlockCommandChannel(handle);
}

struct Flag
{
    QLatin1String name;
    DeviceType capability;
    ErrorCode (*set)(DeviceController &controller, qint64 handle, bool on);
};

const Flag flags[] = {
    {QLatin1String("projectorPwm"), ProjectorDevice,
     [](DeviceController &c, qint64 handle, bool on) { return c.projectorPWM(handle, on); }},
    {QLatin1String("projectorLed"), ProjectorDevice,
     [](DeviceController &c, qint64 handle, bool on) { return c.projectorLEDSwitch(handle, on); }},
    {QLatin1String("commandChannel"), ControllerDevice, reserveChannel},
};

} // namespace

void projectPattern(Connection &device, const QString &name)
{
    device.require(ProjectorDevice);
    const Sequence &sequence = rowNamed(sequences, name, QStringLiteral("pattern"));
    device.run(QStringLiteral("The device refuses to project \"%1\"").arg(name), sequence.run);
}

void switchFlag(Connection &device, const QString &name, bool on)
{
    const Flag &flag = rowNamed(flags, name, QStringLiteral("flag"));
    device.require(flag.capability);
    device.run(QStringLiteral("The device refuses to switch \"%1\"").arg(name),
               [&](DeviceController &c, qint64 handle) { return flag.set(c, handle, on); });
}

void switchLightOff(Connection &device)
{
    projectPattern(device, QStringLiteral("off"));
    switchFlag(device, QStringLiteral("projectorPwm"), false);
}

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

double positionOf(Connection &device, const QString &axis)
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

void waitForMotor(Connection &device, const QList<AxisType> &waitedFor)
{
    device.run(
        QStringLiteral("The motor did not come to rest"),
        [&](DeviceController &c, qint64 handle) { return c.waitMotorStop(handle, waitedFor); });
}

} // namespace

void rotateAxis(Connection &device, const QString &name, const QVariantMap &parameters,
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
    device.run(QStringLiteral("The device refuses to turn its %1 by %2 degrees")
                   .arg(name)
                   .arg(movement.angleDegrees, 0, 'g', 10),
               [&](DeviceController &c, qint64 handle) { return c.rotate(handle, {movement}); });
    waitForMotor(device, {type});
}

void resetMotor(Connection &device)
{
    device.require(MotorDevice);
    device.run(QStringLiteral("The device refuses to reset its motor"),
               [](DeviceController &c, qint64 handle) { return c.resetMotor(handle, allAxes); });
    waitForMotor(device, allAxes);
}

void stopMotor(Connection &device)
{
    device.require(MotorDevice);
    device.run(QStringLiteral("The device refuses to stop its motor"),
               [](DeviceController &c, qint64 handle) { return c.stopMotor(handle, allAxes); });
}

} // namespace Scanner::PluginDevices

#include "DeviceCommands.h"

#include "DeviceMotion.h"
#include "Errors.h"
#include "Parameters.h"

#include <limits>

namespace Scanner {

using namespace BaseDeviceSpace;
using KvSyncCore::DeviceController;

namespace {

constexpr int highestKind = 255;
constexpr int largest = std::numeric_limits<int>::max();

template <typename Kind>
Kind kindFrom(const QVariantList &arguments)
{
    return static_cast<Kind>(
        wholeNumberFrom(arguments.value(0), QStringLiteral("The kind"), 0, highestKind));
}

QByteArray bytesFrom(const QVariant &value, const QString &name)
{
    if (value.type() != QVariant::ByteArray && value.type() != QVariant::String)
        raise(InvalidParameter, QStringLiteral("%1 must be bytes, not %2").arg(name, shown(value)));
    return value.toByteArray();
}

QVariant sendCommand(OpenDevice &device, const QVariantList &arguments)
{
    device.require(ControllerDevice);
    const auto kind = kindFrom<ControllerSpace::CmdType>(arguments);
    const QByteArray payload = bytesFrom(arguments.value(1), QStringLiteral("The command"));
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.sendCommand(handle, kind, payload);
    }),
          QStringLiteral("The device refuses the command"));
    return {};
}

QVariant readCommand(OpenDevice &device, const QVariantList &arguments)
{
    device.require(ControllerDevice);
    const auto kind = kindFrom<ControllerSpace::CmdType>(arguments);
    QByteArray answer;
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.readCommand(handle, kind, answer);
    }),
          QStringLiteral("The device gives no answer to the command"));
    return answer;
}

QVariant updateFirmware(OpenDevice &device, const QVariantList &arguments)
{
    device.require(ControllerDevice);
    const auto kind = kindFrom<ControllerSpace::FirewareType>(arguments);
    const QByteArray image = bytesFrom(arguments.value(1), QStringLiteral("The firmware"));
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.updateFireware(handle, kind, image);
    }),
          QStringLiteral("The device refuses the firmware"));
    return {};
}

QVariant writePattern(OpenDevice &device, const QVariantList &arguments)
{
    device.require(ProjectorDevice);
    const QVariantMap map = arguments.value(0).toMap();
    const Parameters read(map);
    const auto major = static_cast<ProjectorSpace::MajorPatternType>(
        read.wholeNumber(QStringLiteral("major"), 0, highestKind));
    const auto sub = static_cast<ProjectorSpace::SubPatternType>(
        read.wholeNumber(QStringLiteral("sub"), 0, highestKind));
    const int index = read.wholeNumber(QStringLiteral("index"), 0, largest);
    const int width = read.wholeNumber(QStringLiteral("width"), 1, largest);
    const int height = read.wholeNumber(QStringLiteral("height"), 1, largest);
    const QByteArray data =
        bytesFrom(map.value(QStringLiteral("data")), QStringLiteral("\"data\""));
    check(device.call([&](DeviceController &c, qint64 handle) {
        return c.writePatternToFlash(handle, major, sub, index, width, height, data);
    }),
          QStringLiteral("The device refuses the pattern at place %1").arg(index));
    return {};
}

QVariant stopAxes(OpenDevice &device, const QVariantList &)
{
    stopMotor(device);
    return {};
}

struct Command
{
    QLatin1String name;
    QVariant (*run)(OpenDevice &device, const QVariantList &arguments);
};

const Command commands[] = {
    {QLatin1String("sendCommand"), sendCommand},
    {QLatin1String("readCommand"), readCommand},
    {QLatin1String("updateFirmware"), updateFirmware},
    {QLatin1String("writePattern"), writePattern},
    {QLatin1String("stopMotor"), stopAxes},
};

} // namespace

QVariant runDeviceCommand(OpenDevice &device, const QString &name, const QVariantList &arguments)
{
    for (const Command &command : commands) {
        if (command.name == name)
            return command.run(device, arguments);
    }
    refuse(QStringLiteral("the command \"%1\" for devices of device plug-ins").arg(name));
}

} // namespace Scanner

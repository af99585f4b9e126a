#include "DeviceCommands.h"

#include "CommandInfo.h"
#include "DeviceMotion.h"
#include "Errors.h"
#include "Parameters.h"

#include <limits>
#include <utility>
#include <vector>

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
    CommandInfo info;
    DeviceType capability;
    QVariant (*run)(OpenDevice &device, const QVariantList &arguments);
};

const std::vector<Command> &commands()
{
    static const ParameterInfo kind{"kind", "int", "", std::pair(0, highestKind)};
    static const ParameterInfo bytes{"bytes", "bytes"};
    static const std::vector<Command> table = {
        {{"sendCommand", "list", {kind, bytes}}, ControllerDevice, sendCommand},
        {{"readCommand", "list", {kind}}, ControllerDevice, readCommand},
        {{"updateFirmware", "list", {kind, bytes}}, ControllerDevice, updateFirmware},
        {{"writePattern",
          "map",
          {{"major", "int", "", std::pair(0, highestKind)},
           {"sub", "int", "", std::pair(0, highestKind)},
           {"index", "int", "", std::pair(0, largest)},
           {"width", "int", "px", std::pair(1, largest)},
           {"height", "int", "px", std::pair(1, largest)},
           {"data", "bytes"}}},
         ProjectorDevice,
         writePattern},
        {{"stopMotor", "list"}, MotorDevice, stopAxes},
    };
    return table;
}

} // namespace

QVariantList listDeviceCommands(const OpenDevice &device)
{
    QVariantList list;
    for (const Command &command : commands()) {
        if (device.has(command.capability))
            list.append(command.info.describe());
    }
    return list;
}

QVariant runDeviceCommand(OpenDevice &device, const QString &name, const QVariantList &arguments)
{
    for (const Command &command : commands()) {
        if (name != QLatin1String(command.info.name))
            continue;
        device.require(command.capability);
        return command.run(device, arguments);
    }
    refuse(QStringLiteral("the command \"%1\" for devices of device plug-ins").arg(name));
}

} // namespace Scanner

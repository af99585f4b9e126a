#include "Commands.h"

#include "CommandInfo.h"
#include "Controls.h"
#include "Errors.h"
#include "Parameters.h"

#include <limits>
#include <utility>
#include <vector>

namespace Scanner::PluginDevices {

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

QVariant sendCommand(Connection &device, const QVariantList &arguments)
{
    const auto kind = kindFrom<ControllerSpace::CmdType>(arguments);
    const QByteArray payload = bytesFrom(arguments.value(1), QStringLiteral("The command"));
    device.run(
        QStringLiteral("The device refuses the command"),
        [&](DeviceController &c, qint64 handle) { return c.sendCommand(handle, kind, payload); });
    return {};
}

QVariant readCommand(Connection &device, const QVariantList &arguments)
{
    const auto kind = kindFrom<ControllerSpace::CmdType>(arguments);
    QByteArray answer;
    device.run(
        QStringLiteral("The device gives no answer to the command"),
        [&](DeviceController &c, qint64 handle) { return c.readCommand(handle, kind, answer); });
    return answer;
}

QVariant updateFirmware(Connection &device, const QVariantList &arguments)
{
    const auto kind = kindFrom<ControllerSpace::FirewareType>(arguments);
    const QByteArray image = bytesFrom(arguments.value(1), QStringLiteral("The firmware"));
    device.run(
        QStringLiteral("The device refuses the firmware"),
        [&](DeviceController &c, qint64 handle) { return c.updateFireware(handle, kind, image); });
    return {};
}

QVariant writePattern(Connection &device, const QVariantList &arguments)
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
    device.run(QStringLiteral("The device refuses the pattern at place %1").arg(index),
               [&](DeviceController &c, qint64 handle) {
                   return c.writePatternToFlash(handle, major, sub, index, width, height, data);
               });
    return {};
}

QVariant stopAxes(Connection &device, const QVariantList &)
{
    stopMotor(device);
    return {};
}

struct Command
{
    CommandInfo info;
    DeviceType capability;
    QVariant (*run)(Connection &device, const QVariantList &arguments);
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

QVariantList listCommands(const Connection &device)
{
    QVariantList list;
    for (const Command &command : commands()) {
        if (device.has(command.capability))
            list.append(command.info.describe());
    }
    return list;
}

QVariant runCommand(Connection &device, const QString &name, const QVariantList &arguments)
{
    for (const Command &command : commands()) {
        if (name != QLatin1String(command.info.name))
            continue;
        device.require(command.capability);
        return command.run(device, arguments);
    }
    refuse(QStringLiteral("the command \"%1\" for devices of device plug-ins").arg(name));
}

} // namespace Scanner::PluginDevices

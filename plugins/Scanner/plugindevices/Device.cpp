#include "Device.h"

#include "Capture.h"
#include "CommandInfo.h"
#include "Commands.h"
#include "Controls.h"
#include "Errors.h"
#include "Settings.h"

#include <utility>

namespace Scanner::PluginDevices {

using KvSyncCore::DeviceController;

Device::Device(DeviceController &controller, qint64 deviceHandle,
               const DeviceAddress &deviceAddress, Publish publishEvent)
    : address(deviceAddress)
    , publish(std::move(publishEvent))
    , device(controller, deviceHandle)
{
}

QVariantMap Device::describe() const
{
    return {{QStringLiteral("plugin"), address.plugin},
            {QStringLiteral("version"), address.version.toString()},
            {QStringLiteral("index"), address.index},
            {QStringLiteral("name"), device.name()},
            {QStringLiteral("types"), device.capabilities()},
            {QStringLiteral("handle"), device.handle()}};
}

void Device::abandon()
{
    device.abandon();
}

void Device::close()
{
    check(device.end(),
          QStringLiteral("The plug-in %1 refuses to destroy the device").arg(address.shown()));
}

void Device::reset()
{
    device.run(QStringLiteral("The device refuses to connect again"),
               [this](DeviceController &c, qint64 handle) {
                   device.stopAll();
                   return c.connectDeviceByIndex(handle, address.index);
               });
}

QVariant Device::getProperty(const QString &name, const QVariant &value)
{
    return name == QLatin1String("list") ? QVariant(listSettings(device))
                                         : readSetting(device, name, value);
}

void Device::setProperty(const QString &name, const QVariant &value)
{
    writeSetting(device, name, value);
}

void Device::resetInterface(const QString &name)
{
    struct Interface
    {
        QLatin1String name;
        void (*reset)(Connection &device);
    };
    static const Interface interfaces[] = {
        {QLatin1String("light"), switchLightOff},
        {QLatin1String("motor"), resetMotor},
    };
    rowNamed(interfaces, name, QStringLiteral("interface")).reset(device);
}

void Device::setFlag(const QString &name, bool on)
{
    switchFlag(device, name, on);
}

void Device::project(const QString &pattern)
{
    projectPattern(device, pattern);
}

QVariantList Device::capture(const QString &kind, const QVariantMap &parameters)
{
    const std::unique_lock<std::mutex> lock(capturing, std::try_to_lock);
    if (!lock)
        raise(CameraFailed, QStringLiteral("A scan is running already"));
    if (kind == QLatin1String("scan"))
        return captureScan(device, parameters, publish);
    if (kind == QLatin1String("color"))
        return captureSnapshot(device, parameters);
    refuse(QStringLiteral("images of the kind \"%1\"").arg(kind));
}

void Device::rotate(const QString &name, const QVariantMap &parameters, bool isRelative)
{
    rotateAxis(device, name, parameters, isRelative);
}

QVariant Device::execute(const QString &command, const QVariantList &arguments)
{
    static const CommandInfo info{"info", "list"};
    if (command == QLatin1String(info.name))
        return describe();
    if (command == QLatin1String(listingCommand().name))
        return QVariantList{listingCommand().describe(), info.describe()} + listCommands(device);
    return runCommand(device, command, arguments);
}

} // namespace Scanner::PluginDevices

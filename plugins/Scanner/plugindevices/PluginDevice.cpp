#include "PluginDevice.h"

#include "CommandInfo.h"
#include "DeviceCapture.h"
#include "DeviceCommands.h"
#include "DeviceLight.h"
#include "DeviceMotion.h"
#include "DeviceSettings.h"
#include "Errors.h"
#include "NamedRow.h"

#include <utility>

namespace Scanner {

using KvSyncCore::DeviceController;

PluginDevice::PluginDevice(DeviceController &controller, qint64 deviceHandle,
                           const DeviceAddress &deviceAddress, Publish publishEvent)
    : address(deviceAddress)
    , publish(std::move(publishEvent))
    , device(controller, deviceHandle)
{
}

QVariantMap PluginDevice::describe() const
{
    return {{QStringLiteral("plugin"), address.plugin},
            {QStringLiteral("version"), address.version.toString()},
            {QStringLiteral("index"), address.index},
            {QStringLiteral("name"), device.name()},
            {QStringLiteral("types"), device.capabilities()},
            {QStringLiteral("handle"), device.handle()}};
}

void PluginDevice::abandon()
{
    device.abandon();
}

void PluginDevice::close()
{
    check(device.end(),
          QStringLiteral("The plug-in %1 refuses to destroy the device").arg(address.shown()));
}

void PluginDevice::reset()
{
    check(device.call([this](DeviceController &c, qint64 handle) {
        device.rest();
        return c.connectDeviceByIndex(handle, address.index);
    }),
          QStringLiteral("The device refuses to connect again"));
}

QVariant PluginDevice::getProperty(const QString &name, const QVariant &value)
{
    return name == QLatin1String("list") ? QVariant(listSettings(device))
                                         : readSetting(device, name, value);
}

void PluginDevice::setProperty(const QString &name, const QVariant &value)
{
    writeSetting(device, name, value);
}

void PluginDevice::resetInterface(const QString &name)
{
    struct Interface
    {
        QLatin1String name;
        void (*reset)(OpenDevice &device);
    };
    static const Interface interfaces[] = {
        {QLatin1String("light"), switchProjectorOff},
        {QLatin1String("motor"), resetMotor},
    };
    rowNamed(interfaces, name, QStringLiteral("interface")).reset(device);
}

void PluginDevice::setFlag(const QString &name, bool on)
{
    switchDeviceFlag(device, name, on);
}

void PluginDevice::project(const QString &pattern)
{
    runProjector(device, pattern);
}

QVariantList PluginDevice::capture(const QString &kind, const QVariantMap &parameters)
{
    const std::unique_lock<std::mutex> lock(capturing, std::try_to_lock);
    if (!lock)
        raise(CameraFailed, QStringLiteral("A scan is running already"));
    if (kind == QLatin1String("scan"))
        return captureFrames(device, parameters, publish);
    if (kind == QLatin1String("color"))
        return captureColor(device, parameters);
    refuse(QStringLiteral("images of the kind \"%1\"").arg(kind));
}

void PluginDevice::rotate(const QString &name, const QVariantMap &parameters, bool isRelative)
{
    rotateAxis(device, name, parameters, isRelative);
}

QVariant PluginDevice::execute(const QString &command, const QVariantList &arguments)
{
    static const CommandInfo info{"info", "list"};
    if (command == QLatin1String(info.name))
        return describe();
    if (command == QLatin1String(listingCommand().name))
        return QVariantList{listingCommand().describe(), info.describe()} +
               listDeviceCommands(device);
    return runDeviceCommand(device, command, arguments);
}

} // namespace Scanner

#include "ScannerPlugin.h"

#include "CommandInfo.h"
#include "Errors.h"

using namespace Scanner;

namespace {

constexpr qint64 noDevice = 0;

std::thread startThread(std::function<void()> body)
{
    return std::thread(std::move(body));
}

} // namespace

ScannerPlugin::ScannerPlugin()
    : link(std::make_shared<DirectLink::Device>(publisher(), startThread))
    , plugins(publisher())
{
}

void ScannerPlugin::setDeviceController(KvSyncCore::DeviceController *controller)
{
    link->setController(controller);
    plugins.setController(controller);
}

QVariantList ScannerPlugin::getRunningDevList()
{
    return link->list() + plugins.list();
}

qint64 ScannerPlugin::openDevices(const QVariantMap &parameters)
{
    if (parameters.contains(QStringLiteral("plugin")))
        return plugins.open(parameters);
    link->open(parameters);
    return DirectLink::Connection::handle;
}

void ScannerPlugin::closeDevices(qint64 handle)
{
    const std::shared_ptr<DeviceFunctions> closing = device(handle);
    closing->close();
    plugins.remove(closing);
}

void ScannerPlugin::resetDevices(qint64 handle)
{
    device(handle)->reset();
}

QVariant ScannerPlugin::getProperty(qint64 handle, const QString &name, const QVariant &value)
{
    return device(handle)->getProperty(name, value);
}

void ScannerPlugin::setProperty(qint64 handle, const QString &name, const QVariant &value)
{
    device(handle)->setProperty(name, value);
}

void ScannerPlugin::resetInterface(qint64 handle, const QString &name)
{
    device(handle)->resetInterface(name);
}

void ScannerPlugin::setFlagBitInterface(qint64 handle, const QString &name, bool flag)
{
    device(handle)->setFlag(name, flag);
}

void ScannerPlugin::project(qint64 handle, const QString &pattern)
{
    device(handle)->project(pattern);
}

QVariantList ScannerPlugin::captureImage(qint64 handle, const QString &kind,
                                         const QVariantMap &parameters)
{
    return device(handle)->capture(kind, parameters);
}

void ScannerPlugin::turntableRotate(qint64 handle, const QString &name,
                                    const QVariantMap &parameters, bool flag)
{
    device(handle)->rotate(name, parameters, flag);
}

QVariant ScannerPlugin::execute(qint64 handle, const QString &command,
                                const QVariantList &arguments)
{
    if (handle == noDevice)
        return executeWithoutDevice(command, arguments);
    return device(handle)->execute(command, arguments);
}

// A shared pointer, since another thread may close the device meanwhile.
std::shared_ptr<DeviceFunctions> ScannerPlugin::device(qint64 handle)
{
    if (handle == DirectLink::Connection::handle) {
        link->requireOpen();
        return link;
    }
    if (std::shared_ptr<DeviceFunctions> found = plugins.find(handle))
        return found;
    raiseNotOpen(handle);
}

QVariant ScannerPlugin::executeWithoutDevice(const QString &command, const QVariantList &arguments)
{
    static const CommandInfo listDevices{
        "listDevices", "map", {{"plugin", "text"}, {"version", "text"}}};
    if (command == QLatin1String(listDevices.name))
        return plugins.enumerate(arguments.value(0).toMap());
    if (command == QLatin1String(listingCommand().name))
        return QVariantList{listingCommand().describe(), listDevices.describe()};
    refuse(QStringLiteral("the command \"%1\" without a device").arg(command));
}

Publish ScannerPlugin::publisher()
{
    return [this](const QString &name, const QVariantList &payload) {
        Q_EMIT sendSignals(true, QStringLiteral("Scanner"), name, payload, QVersionNumber(1, 0));
    };
}

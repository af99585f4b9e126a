#include "ScannerPlugin.h"

#include "Capture.h"
#include "Commands.h"
#include "Errors.h"
#include "Light.h"
#include "Parameters.h"
#include "Snapshot.h"
#include "Turntable.h"
#include "UserInformation.h"

#include <new>

using namespace Scanner;

namespace {

/// Lets events that are under way finish, on every path.
struct QuietEnd
{
    EventThread &events;

    ~QuietEnd() { events.waitUntilIdle(); }
};

[[noreturn]] void refuse(const QString &what)
{
    raise(FunctionNotExist, QStringLiteral("Scanner 1.0 does not serve %1").arg(what));
}

} // namespace

ScannerPlugin::ScannerPlugin()
    : stream(link, receiver, events, publisher())
    , settings(link)
{
}

void ScannerPlugin::setDeviceController(KvSyncCore::DeviceController *controller)
{
    link.setController(controller);
}

QVariantList ScannerPlugin::getRunningDevList()
{
    return link.list();
}

qint64 ScannerPlugin::openDevices(const QVariantMap &parameters)
{
    if (parameters.contains(QStringLiteral("plugin")))
        refuse(QStringLiteral("devices of device plug-ins"));
    const QString serial = Parameters(parameters).text(QStringLiteral("serial"));
    link.open(serial, reinterpret_cast<void *>(&ScannerPlugin::receiveStatus), this);
    settings.forget();
    return DirectLink::handle;
}

void ScannerPlugin::closeDevices(qint64 handle)
{
    link.requireOpen(handle);
    const QuietEnd end{events};
    receiver.cancel(QStringLiteral("The scanner was closed during the scan"));
    stream.stop();
    link.close(handle);
}

void ScannerPlugin::resetDevices(qint64 handle)
{
    link.reset(handle);
}

QVariant ScannerPlugin::getProperty(qint64 handle, const QString &name, const QVariant &)
{
    link.requireOpen(handle);
    return name == QLatin1String("list") ? settings.list() : settings.read(name);
}

void ScannerPlugin::setProperty(qint64 handle, const QString &name, const QVariant &value)
{
    link.requireOpen(handle);
    settings.write(name, value);
}

void ScannerPlugin::resetInterface(qint64 handle, const QString &name)
{
    link.requireOpen(handle);
    if (name == QLatin1String("light"))
        switchLightOff(link);
    else if (name == QLatin1String("settings"))
        settings.restoreAll();
    else
        settings.restore(name);
}

void ScannerPlugin::setFlagBitInterface(qint64 handle, const QString &name, bool flag)
{
    link.requireOpen(handle);
    switchFlag(link, name, flag);
}

void ScannerPlugin::project(qint64 handle, const QString &pattern)
{
    link.requireOpen(handle);
    projectPattern(link, pattern);
}

QVariantList ScannerPlugin::captureImage(qint64 handle, const QString &kind,
                                         const QVariantMap &parameters)
{
    link.requireOpen(handle);
    if (kind == QLatin1String("scan"))
        return captureScan(link, receiver, parameters, publisher());
    if (kind == QLatin1String("color"))
        return captureSnapshot(link, parameters);
    refuse(QStringLiteral("images of the kind \"%1\"").arg(kind));
}

void ScannerPlugin::turntableRotate(qint64 handle, const QString &name,
                                    const QVariantMap &parameters, bool flag)
{
    link.requireOpen(handle);
    rotateTurntable(name, parameters, flag);
}

QVariant ScannerPlugin::execute(qint64 handle, const QString &command,
                                const QVariantList &arguments)
{
    struct Row
    {
        QLatin1String name;
        QVariant (ScannerPlugin::*run)(const QVariantList &arguments);
    };
    static const Row rows[] = {
        {QLatin1String("startScan"), &ScannerPlugin::startScan},
        {QLatin1String("stopScan"), &ScannerPlugin::stopScan},
        {QLatin1String("info"), &ScannerPlugin::info},
        {QLatin1String("readUserInformation"), &ScannerPlugin::readUserInformation},
        {QLatin1String("writeUserInformation"), &ScannerPlugin::writeUserInformation},
    };
    link.requireOpen(handle);
    for (const Row &row : rows) {
        if (row.name == command)
            return (this->*row.run)(arguments);
    }
    if (isLinkCommand(command))
        return runLinkCommand(link, command, arguments.value(0).toMap());
    refuse(QStringLiteral("the command \"%1\"").arg(command));
}

QVariant ScannerPlugin::startScan(const QVariantList &arguments)
{
    stream.start(arguments.value(0).toMap());
    return {};
}

QVariant ScannerPlugin::stopScan(const QVariantList &)
{
    receiver.cancel(QStringLiteral("The scan was stopped before its last frame"));
    return stream.stop();
}

QVariant ScannerPlugin::info(const QVariantList &)
{
    QVariantMap facts = link.facts();
    facts.insert(QStringLiteral("scanning"), receiver.isReceiving());
    return facts;
}

QVariant ScannerPlugin::readUserInformation(const QVariantList &arguments)
{
    return Scanner::readUserInformation(link, arguments);
}

QVariant ScannerPlugin::writeUserInformation(const QVariantList &arguments)
{
    return Scanner::writeUserInformation(link, arguments);
}

void ScannerPlugin::receiveStatus(const void *const &context, const unsigned char &first,
                                  const unsigned char &second)
{
    // The library holds the context as the pointer that open gave it, and only passes it through.
    auto *const self = static_cast<ScannerPlugin *>(const_cast<void *>(context));
    const QVariantList payload{QVariantMap{{QStringLiteral("first"), int(first)},
                                           {QStringLiteral("second"), int(second)}}};
    try {
        self->events.post(
            [self, payload] { self->publish(QStringLiteral("statusChanged"), payload); });
    } catch (const std::bad_alloc &) {
        // Nothing may be thrown into the library.
    }
}

void ScannerPlugin::publish(const QString &name, const QVariantList &payload)
{
    Q_EMIT sendSignals(true, QStringLiteral("Scanner"), name, payload, QVersionNumber(1, 0));
}

Publish ScannerPlugin::publisher()
{
    return [this](const QString &name, const QVariantList &payload) { publish(name, payload); };
}

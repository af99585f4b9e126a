#include "ScannerPlugin.h"

#include "Capture.h"
#include "Errors.h"
#include "Parameters.h"

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
    refuse(QStringLiteral("the property \"%1\"").arg(name));
}

void ScannerPlugin::setProperty(qint64 handle, const QString &name, const QVariant &)
{
    link.requireOpen(handle);
    refuse(QStringLiteral("the property \"%1\"").arg(name));
}

void ScannerPlugin::resetInterface(qint64 handle, const QString &name)
{
    link.requireOpen(handle);
    refuse(QStringLiteral("a reset of \"%1\"").arg(name));
}

void ScannerPlugin::setFlagBitInterface(qint64 handle, const QString &name, bool)
{
    link.requireOpen(handle);
    refuse(QStringLiteral("the flag \"%1\"").arg(name));
}

void ScannerPlugin::project(qint64 handle, const QString &pattern)
{
    link.requireOpen(handle);
    refuse(QStringLiteral("the pattern \"%1\"").arg(pattern));
}

QVariantList ScannerPlugin::captureImage(qint64 handle, const QString &kind,
                                         const QVariantMap &parameters)
{
    link.requireOpen(handle);
    if (kind != QLatin1String("scan"))
        refuse(QStringLiteral("images of the kind \"%1\"").arg(kind));
    return captureScan(link, receiver, parameters, publisher());
}

void ScannerPlugin::turntableRotate(qint64 handle, const QString &name, const QVariantMap &, bool)
{
    link.requireOpen(handle);
    refuse(QStringLiteral("the turntable \"%1\"").arg(name));
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
    };
    link.requireOpen(handle);
    for (const Row &row : rows) {
        if (row.name == command)
            return (this->*row.run)(arguments);
    }
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

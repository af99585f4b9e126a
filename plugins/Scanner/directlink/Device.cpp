#include "Device.h"

#include "Capture.h"
#include "Commands.h"
#include "Controls.h"
#include "Errors.h"
#include "Parameters.h"
#include "SimulatorTurntable.h"

#include <system_error>
#include <utility>

namespace Scanner::DirectLink {

namespace {

/// Lets events that are under way finish, on every path.
struct IdleAtExit
{
    EventThread &events;

    ~IdleAtExit() { events.waitUntilIdle(); }
};

} // namespace

Device::Device(Publish publishEvent, EventThread::Maker threadMaker)
    : publish(std::move(publishEvent))
    , stream(link, receiver, events, publish, [this] { endScanIfLost(); })
    , settings(link)
    , events(std::move(threadMaker))
{
}

void Device::setController(KvSyncCore::DeviceController *controller)
{
    link.setController(controller);
}

void Device::open(const QVariantMap &parameters)
{
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A scanner of the direct link"), {QStringLiteral("serial")});
    const QString serial = read.text(QStringLiteral("serial"));
    startThread();
    link.open(serial, reinterpret_cast<void *>(&Device::receiveStatus), this);
    settings.forget();
}

QVariantList Device::list()
{
    return link.list();
}

void Device::requireOpen()
{
    link.requireOpen(Connection::handle);
}

void Device::startThread()
{
    try {
        events.start();
    } catch (const std::system_error &) {
        raise(ConnectFailed,
              QStringLiteral("The thread for the scanner's events cannot be started: %1")
                  .arg(thrownText()));
    }
}

void Device::close()
{
    const IdleAtExit guard{events};
    endScanQuietly(QStringLiteral("The scanner was closed during the scan"));
    link.close(Connection::handle);
}

void Device::reset()
{
    endScanQuietly(QStringLiteral("The scanner was reset during the scan"));
    link.reset(Connection::handle);
}

QVariant Device::getProperty(const QString &name, const QVariant &)
{
    return name == QLatin1String("list") ? settings.list() : settings.read(name);
}

void Device::setProperty(const QString &name, const QVariant &value)
{
    settings.write(name, value);
}

void Device::resetInterface(const QString &name)
{
    if (name == QLatin1String("light"))
        switchLightOff(link);
    else if (name == QLatin1String("settings"))
        settings.restoreAll();
    else
        settings.restore(name);
}

void Device::setFlag(const QString &name, bool on)
{
    switchFlag(link, name, on);
}

void Device::project(const QString &pattern)
{
    projectPattern(link, pattern);
}

QVariantList Device::capture(const QString &kind, const QVariantMap &parameters)
{
    if (kind == QLatin1String("scan"))
        return captureScan(link, receiver, parameters, publish);
    if (kind == QLatin1String("color"))
        return captureSnapshot(link, parameters);
    refuse(QStringLiteral("images of the kind \"%1\"").arg(kind));
}

void Device::rotate(const QString &name, const QVariantMap &parameters, bool isRelative)
{
    link.requireConnection();
    rotateSimulatorTurntable(name, parameters, isRelative);
}

const std::vector<Device::Command> &Device::ownCommands()
{
    static const ParameterInfo address{"address", "int", "", addressRange};
    static const std::vector<Command> commands = {
        {listingCommand(), &Device::listCommands},
        {{"info", "list"}, &Device::info},
        {{"startScan", "map", ScanRequest::parameters()}, &Device::startScan},
        {{"stopScan", "list"}, &Device::stopScan},
        {{"readUserInformation", "list", {address}}, &Device::readUserInformation},
        {{"writeUserInformation", "list", {address, {"text", "text"}}},
         &Device::writeUserInformation},
    };
    return commands;
}

QVariant Device::execute(const QString &command, const QVariantList &arguments)
{
    for (const Command &own : ownCommands()) {
        if (command == QLatin1String(own.info.name))
            return (this->*own.run)(arguments);
    }
    if (hasCommand(command))
        return runCommand(link, command, arguments.value(0).toMap());
    refuse(QStringLiteral("the command \"%1\"").arg(command));
}

QVariant Device::listCommands(const QVariantList &)
{
    QVariantList list;
    for (const Command &own : ownCommands())
        list.append(own.info.describe());
    for (const CommandInfo &command : commandTable())
        list.append(command.describe());
    return list;
}

QVariant Device::startScan(const QVariantList &arguments)
{
    stream.start(arguments.value(0).toMap());
    return {};
}

QVariant Device::stopScan(const QVariantList &)
{
    return endScan(QStringLiteral("The scan was stopped before its last frame")).toMap();
}

QVariant Device::info(const QVariantList &)
{
    QVariantMap facts = link.facts();
    facts.insert(QStringLiteral("scanning"), receiver.isReceiving());
    return facts;
}

QVariant Device::readUserInformation(const QVariantList &arguments)
{
    return DirectLink::readUserInformation(link, arguments);
}

QVariant Device::writeUserInformation(const QVariantList &arguments)
{
    return DirectLink::writeUserInformation(link, arguments);
}

/// Whatever scan runs. One that captureImage runs ends in its own thread.
FrameAccount Device::endScan(const QString &text)
{
    const ScanEnd end{EndReason::Stopped, text};
    FrameAccount account = stream.stop(end);
    receiver.cancel(end);
    return account;
}

void Device::endScanQuietly(const QString &text)
{
    try {
        endScan(text);
    } catch (const KvSyncTool::Exception &) {
        // What comes next stops the scanner too, or fails with a reason of its own.
    }
}

void Device::endScanIfLost()
{
    link.ifLost([this] { receiver.cancel(lostConnection()); });
    stream.finish();
}

void Device::passStatus()
{
    // The event may say that the connection was lost: a slot must find the scan ended.
    endScanIfLost();
    publish(QStringLiteral("statusChanged"), {status.pop()});
}

void Device::receiveStatus(const void *const &context, const unsigned char &first,
                           const unsigned char &second) noexcept
{
    runLogged("A status event of the scanner", [&] {
        // The library holds the context as the pointer that open gave it, and only passes it on.
        auto *const self = static_cast<Device *>(const_cast<void *>(context));
        if (self->status.push(first, second))
            self->events.post([self] { self->passStatus(); });
    });
}

} // namespace Scanner::DirectLink

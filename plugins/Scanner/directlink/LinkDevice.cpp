#include "LinkDevice.h"

#include "Capture.h"
#include "Commands.h"
#include "Errors.h"
#include "Light.h"
#include "Parameters.h"
#include "Snapshot.h"
#include "Thrown.h"
#include "Turntable.h"
#include "UserInformation.h"

#include <system_error>
#include <utility>

namespace Scanner {

namespace {

/// Lets events that are under way finish, on every path.
struct QuietEnd
{
    EventThread &events;

    ~QuietEnd() { events.waitUntilIdle(); }
};

} // namespace

LinkDevice::LinkDevice(Publish publishEvent, EventThread::Maker threadMaker)
    : publish(std::move(publishEvent))
    , stream(link, receiver, events, publish, [this] { endScanIfLost(); })
    , settings(link)
    , events(std::move(threadMaker))
{
}

void LinkDevice::setController(KvSyncCore::DeviceController *controller)
{
    link.setController(controller);
}

void LinkDevice::open(const QVariantMap &parameters)
{
    const Parameters read(parameters);
    read.allowOnly(QStringLiteral("A scanner of the direct link"), {QStringLiteral("serial")});
    const QString serial = read.text(QStringLiteral("serial"));
    startThread();
    link.open(serial, reinterpret_cast<void *>(&LinkDevice::receiveStatus), this);
    settings.forget();
}

QVariantList LinkDevice::list()
{
    return link.list();
}

void LinkDevice::requireOpen()
{
    link.requireOpen(DirectLink::handle);
}

void LinkDevice::startThread()
{
    try {
        events.start();
    } catch (const std::system_error &) {
        raise(ConnectFailed,
              QStringLiteral("The thread for the scanner's events cannot be started: %1")
                  .arg(thrownText()));
    }
}

void LinkDevice::close()
{
    const QuietEnd end{events};
    endScanQuietly(QStringLiteral("The scanner was closed during the scan"));
    link.close(DirectLink::handle);
}

void LinkDevice::reset()
{
    endScanQuietly(QStringLiteral("The scanner was reset during the scan"));
    link.reset(DirectLink::handle);
}

QVariant LinkDevice::getProperty(const QString &name, const QVariant &)
{
    return name == QLatin1String("list") ? settings.list() : settings.read(name);
}

void LinkDevice::setProperty(const QString &name, const QVariant &value)
{
    settings.write(name, value);
}

void LinkDevice::resetInterface(const QString &name)
{
    if (name == QLatin1String("light"))
        switchLightOff(link);
    else if (name == QLatin1String("settings"))
        settings.restoreAll();
    else
        settings.restore(name);
}

void LinkDevice::setFlag(const QString &name, bool on)
{
    switchFlag(link, name, on);
}

void LinkDevice::project(const QString &pattern)
{
    projectPattern(link, pattern);
}

QVariantList LinkDevice::capture(const QString &kind, const QVariantMap &parameters)
{
    if (kind == QLatin1String("scan"))
        return captureScan(link, receiver, parameters, publish);
    if (kind == QLatin1String("color"))
        return captureSnapshot(link, parameters);
    refuse(QStringLiteral("images of the kind \"%1\"").arg(kind));
}

void LinkDevice::rotate(const QString &name, const QVariantMap &parameters, bool isRelative)
{
    link.requireConnection();
    rotateTurntable(name, parameters, isRelative);
}

const std::vector<LinkDevice::Command> &LinkDevice::ownCommands()
{
    static const ParameterInfo address{"address", "int", "", addressRange};
    static const std::vector<Command> commands = {
        {listingCommand(), &LinkDevice::listCommands},
        {{"info", "list"}, &LinkDevice::info},
        {{"startScan", "map", ScanRequest::parameters()}, &LinkDevice::startScan},
        {{"stopScan", "list"}, &LinkDevice::stopScan},
        {{"readUserInformation", "list", {address}}, &LinkDevice::readUserInformation},
        {{"writeUserInformation", "list", {address, {"text", "text"}}},
         &LinkDevice::writeUserInformation},
    };
    return commands;
}

QVariant LinkDevice::execute(const QString &command, const QVariantList &arguments)
{
    for (const Command &own : ownCommands()) {
        if (command == QLatin1String(own.info.name))
            return (this->*own.run)(arguments);
    }
    if (isLinkCommand(command))
        return runLinkCommand(link, command, arguments.value(0).toMap());
    refuse(QStringLiteral("the command \"%1\"").arg(command));
}

QVariant LinkDevice::listCommands(const QVariantList &)
{
    QVariantList list;
    for (const Command &own : ownCommands())
        list.append(own.info.describe());
    for (const CommandInfo &command : linkCommands())
        list.append(command.describe());
    return list;
}

QVariant LinkDevice::startScan(const QVariantList &arguments)
{
    stream.start(arguments.value(0).toMap());
    return {};
}

QVariant LinkDevice::stopScan(const QVariantList &)
{
    return endScan(QStringLiteral("The scan was stopped before its last frame")).toMap();
}

QVariant LinkDevice::info(const QVariantList &)
{
    QVariantMap facts = link.facts();
    facts.insert(QStringLiteral("scanning"), receiver.isReceiving());
    return facts;
}

QVariant LinkDevice::readUserInformation(const QVariantList &arguments)
{
    return Scanner::readUserInformation(link, arguments);
}

QVariant LinkDevice::writeUserInformation(const QVariantList &arguments)
{
    return Scanner::writeUserInformation(link, arguments);
}

/// Whatever scan runs. One that captureImage runs ends in its own thread.
FrameAccount LinkDevice::endScan(const QString &text)
{
    const ScanEnd end{EndReason::Stopped, text};
    const FrameAccount account = stream.stop(end);
    receiver.cancel(end);
    return account;
}

void LinkDevice::endScanQuietly(const QString &text)
{
    try {
        endScan(text);
    } catch (const KvSyncTool::Exception &) {
        // What comes next stops the scanner too, or fails with a reason of its own.
    }
}

void LinkDevice::endScanIfLost()
{
    link.ifLost([this] { receiver.cancel(lostConnection()); });
    stream.finish();
}

void LinkDevice::passStatus()
{
    // It may tell that the connection was lost; whoever hears of it finds that settled.
    endScanIfLost();
    publish(QStringLiteral("statusChanged"), {status.pop()});
}

void LinkDevice::receiveStatus(const void *const &context, const unsigned char &first,
                               const unsigned char &second) noexcept
{
    runLogged("A status event of the scanner", [&] {
        // The library holds the context as the pointer that open gave it, and only passes it on.
        auto *const self = static_cast<LinkDevice *>(const_cast<void *>(context));
        if (self->status.push(first, second))
            self->events.post([self] { self->passStatus(); });
    });
}

} // namespace Scanner

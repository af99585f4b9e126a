#include "VirtualController.h"

namespace VirtualScanner {

namespace {

constexpr char firewareMark[] = "KVFW";
constexpr int markBytes = 4;

bool isFirewareType(ControllerSpace::FirewareType type)
{
    return type >= ControllerSpace::ControllerFireware && type <= ControllerSpace::MotorFireware;
}

bool isFirewareImage(const QByteArray &image)
{
    return image.startsWith(firewareMark) && image.size() > markBytes &&
           image.size() <= VirtualController::largestFirewareBytes;
}

} // namespace

VirtualController::VirtualController(DeviceGate &deviceGate, PropertyTable &properties)
    : gate(deviceGate)
{
    properties.add(QStringLiteral("fireware"),
                   [this](Values &values) { return getFireware(values); });
}

ErrorCode VirtualController::updateFireware(ControllerSpace::FirewareType type,
                                            const QByteArray &image)
{
    ErrorCode code = gate.run("updateFireware", [&] { return beginUpdate(type, image); });
    if (code != Success)
        return code;
    code = writeAllSteps();
    const DeviceGate::Lock lock = gate.lockAlways();
    updating = false;
    if (code == Success)
        firewareVersions.insert(type, static_cast<unsigned char>(image.at(markBytes)));
    return code;
}

ErrorCode VirtualController::sendCommand(ControllerSpace::CmdType type, const QByteArray &payload)
{
    return gate.run("sendCommand", [&] {
        return isChannelFree() ? execute(type, payload.simplified().split(' ')) : ChannelBusy;
    });
}

ErrorCode VirtualController::readCommand(ControllerSpace::CmdType type, QByteArray &answer)
{
    return gate.run("readCommand", [&] {
        if (!isChannelFree())
            return ChannelBusy;
        if (!answers.contains(type))
            return NoAnswer;
        answer = answers.take(type);
        return Success;
    });
}

ErrorCode VirtualController::lockCommandChannel()
{
    return gate.run("lockCommandChannel", [&] {
        // Its own holder is refused, too: one unlock gives the channel back.
        if (updating || channelOwner != std::thread::id())
            return ChannelBusy;
        channelOwner = std::this_thread::get_id();
        return Success;
    });
}

ErrorCode VirtualController::unlockCommandChannel()
{
    return gate.run("unlockCommandChannel", [&] {
        if (channelOwner != std::this_thread::get_id())
            return ChannelNotLocked;
        channelOwner = std::thread::id();
        return Success;
    });
}

bool VirtualController::isChannelFree() const
{
    return !updating &&
           (channelOwner == std::thread::id() || channelOwner == std::this_thread::get_id());
}

ErrorCode VirtualController::beginUpdate(ControllerSpace::FirewareType type,
                                         const QByteArray &image)
{
    if (!isChannelFree())
        return ChannelBusy;
    if (!isFirewareType(type) || !isFirewareImage(image))
        return BadFirewareImage;
    updating = true;
    bytesTotal = image.size();
    bytesWritten = 0;
    return Success;
}

ErrorCode VirtualController::writeAllSteps()
{
    // One pass of the gate a step: other threads read the progress in between.
    bool isComplete = false;
    while (!isComplete) {
        const ErrorCode code = gate.run("firewareStep", [&] {
            bytesWritten = qMin(bytesWritten + firewareStepBytes, bytesTotal);
            isComplete = bytesWritten == bytesTotal;
            return Success;
        });
        if (code != Success)
            return code;
    }
    return Success;
}

ErrorCode VirtualController::execute(ControllerSpace::CmdType type, const QList<QByteArray> &words)
{
    switch (type) {
    case ControllerSpace::ControlCommand:
        return control(words);
    case ControllerSpace::QueryCommand:
        return query(words);
    case ControllerSpace::ConfigurationCommand:
        return configure(words);
    }
    return UnknownCommand;
}

ErrorCode VirtualController::control(const QList<QByteArray> &words)
{
    const bool isReset = words == QList<QByteArray>{"reset"};
    if (!isReset && words != QList<QByteArray>{"ping"})
        return UnknownCommand;
    if (isReset)
        settings.clear();
    answers.insert(ControllerSpace::ControlCommand, isReset ? "done" : "pong");
    return Success;
}

ErrorCode VirtualController::query(const QList<QByteArray> &words)
{
    QByteArray answer;
    if (words == QList<QByteArray>{"version"})
        answer = QByteArray::number(firewareVersions.value(ControllerSpace::ControllerFireware));
    else if (words.size() == 2 && words.first() == "get" && settings.contains(words.last()))
        answer = settings.value(words.last());
    else
        return UnknownCommand;
    answers.insert(ControllerSpace::QueryCommand, answer);
    return Success;
}

ErrorCode VirtualController::configure(const QList<QByteArray> &words)
{
    if (words.size() != 3 || words.first() != "set")
        return UnknownCommand;
    settings.insert(words.at(1), words.at(2));
    answers.insert(ControllerSpace::ConfigurationCommand, "done");
    return Success;
}

ErrorCode VirtualController::getFireware(Values &values)
{
    return gate.run("getProperty", [&] {
        values.insert(QStringLiteral("updating"), updating);
        values.insert(QStringLiteral("bytesTotal"), bytesTotal);
        values.insert(QStringLiteral("bytesWritten"), bytesWritten);
        const auto versionOf = [this](ControllerSpace::FirewareType type) {
            return firewareVersions.value(type);
        };
        values.insert(QStringLiteral("controller"), versionOf(ControllerSpace::ControllerFireware));
        values.insert(QStringLiteral("projector"), versionOf(ControllerSpace::ProjectorFireware));
        values.insert(QStringLiteral("motor"), versionOf(ControllerSpace::MotorFireware));
        return Success;
    });
}

} // namespace VirtualScanner

#include "VirtualController.h"

#include <atomic>

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

// The calling thread's number. The system's own id will not do: it names another thread once the
// first has ended.
quint64 callerNumber()
{
    static std::atomic<quint64> last{0};
    thread_local const quint64 own = ++last;
    return own;
}

} // namespace

VirtualController::VirtualController(DeviceGate &deviceGate, PropertyTable &properties)
    : gate(deviceGate)
{
    gate.onLoss([this] { forget(); });
    properties.add(QStringLiteral("fireware"),
                   [this](Values &values) { return getFireware(values); });
}

ErrorCode VirtualController::updateFireware(ControllerSpace::FirewareType type,
                                            const QByteArray &image)
{
    return gate.runWaiting("updateFireware", [&](DeviceGate::Call &call) {
        ErrorCode code = beginUpdate(type, image);
        if (code != Success)
            return code;
        code = writeAllSteps(call);
        if (call.isOver())
            return code; // forgotten with everything else; another update may be on its way
        updating = false;
        if (code == Success)
            firewareVersions.insert(type, static_cast<unsigned char>(image.at(markBytes)));
        return code;
    });
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
        if (updating || channelOwner != nobody)
            return ChannelBusy;
        channelOwner = callerNumber();
        return Success;
    });
}

ErrorCode VirtualController::unlockCommandChannel()
{
    return gate.run("unlockCommandChannel", [&] {
        if (channelOwner != callerNumber())
            return ChannelNotLocked;
        channelOwner = nobody;
        return Success;
    });
}

bool VirtualController::isChannelFree() const
{
    return !updating && (channelOwner == nobody || channelOwner == callerNumber());
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

ErrorCode VirtualController::writeAllSteps(DeviceGate::Call &call)
{
    // One pass of the gate a step: other threads read the progress in between.
    while (bytesWritten < bytesTotal) {
        const ErrorCode code = gate.passAgain(call, "firewareStep");
        if (code != Success)
            return code;
        bytesWritten = qMin(bytesWritten + firewareStepBytes, bytesTotal);
    }
    return Success;
}

void VirtualController::forget()
{
    channelOwner = nobody;
    settings.clear();
    answers.clear();
    updating = false;
    bytesTotal = 0;
    bytesWritten = 0;
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

#include "Simulator.h"

#include "FaultPlan.h"
#include "Platform.h"

#include <iostream>
#include <stdexcept>

namespace Tessel3SyncSimulator {

Simulator::Simulator()
{
    stayLoaded();
    readEnvironment();
}

Simulator &Simulator::instance()
{
    static Simulator &only = *new Simulator;
    return only;
}

void Simulator::readEnvironment()
{
    plan = Script();
    planError.clear();
    const auto planFile = pathFromEnvironment(FaultPlanVariable);
    try {
        if (planFile)
            plan = loadFaultPlan(*planFile);
    } catch (const std::invalid_argument &error) {
        planError = error.what();
        std::cerr << "Tessel3Sync simulator: " << planError << std::endl;
    }
    const auto informationFile = pathFromEnvironment(UserInformationVariable);
    userInformation = informationFile ? UserInformation(*informationFile) : UserInformation();
}

void Simulator::reset(Lock &lock, const ScannerSetup &newSetup)
{
    disconnect(lock);
    setup = newSetup;
    attached = true;
    backAt.reset();
    tableDegrees = 0.0;
    recorder = CallRecorder();
    script = Script();
    frames.clearAccount();
    readEnvironment();
}

void *Simulator::connect(const std::vector<CameraKind> &cameras)
{
    connection = Connection();
    connection.handle = &handles.emplace_back();
    connection.camerasOpen = true;
    connection.trigger.periodMs = setup.triggerPeriodMs;
    for (CameraKind kind : cameras)
        connection.cameras.push_back({kind, CameraSettings()});
    return connection.handle;
}

void Simulator::disconnect(Lock &lock)
{
    connection = Connection();
    frames.wake();
    frames.awaitIdle(lock);
}

RETSTATUS Simulator::checkHandle(void *handle) const
{
    if (!handle)
        return refusal(NotConnected);
    return handle == connection.handle ? Success : refusal(UnknownHandle);
}

void Simulator::startTrigger(int mode)
{
    Trigger &trigger = connection.trigger;
    trigger.enabled = true;
    trigger.lingering = false;
    trigger.mode = mode;
    trigger.session = ++sessions;
    trigger.frame = 0;
    tableTurns = {{1, tableDegrees}};
    frames.start();
}

void Simulator::stopTrigger()
{
    connection.trigger.enabled = false;
    connection.trigger.lingering = false;
    frames.wake();
}

void Simulator::switchTriggerOff()
{
    const bool lingering = isHostile() && connection.trigger.runs() && connection.callbacks.scan;
    stopTrigger();
    connection.trigger.lingering = lingering;
}

void Simulator::detach(std::optional<int> backAfterMs)
{
    backAt.reset();
    if (backAfterMs)
        backAt = std::chrono::steady_clock::now() + std::chrono::milliseconds(*backAfterMs);
    if (attached) {
        attached = false;
        connection.camerasOpen = false;
        stopTrigger();
        sendStatus(ConnectionEvent, ConnectionIsLost);
    }
    frames.start();
}

void Simulator::attach()
{
    backAt.reset();
    if (attached)
        return;
    attached = true;
    sendStatus(ConnectionEvent, ConnectionIsBack);
}

void Simulator::sendStatus(unsigned char first, unsigned char second)
{
    if (!connection.handle)
        return;
    connection.events.push_back({first, second});
    frames.start();
}

void Simulator::turnTable(double degrees)
{
    tableDegrees = degrees;
    tableTurns[connection.trigger.frame + 1] = degrees;
}

double Simulator::tableDegreesAt(int frame) const
{
    const auto next = tableTurns.upper_bound(frame);
    return next == tableTurns.begin() ? tableDegrees : std::prev(next)->second;
}

const Answer *Simulator::answerTo(const std::string &function, int call) const
{
    const Answer *scripted = script.find(function, call);
    return scripted ? scripted : plan.find(function, call);
}

const FrameFault *Simulator::faultOf(int frame) const
{
    const FrameFault *scripted = script.find(frame);
    return scripted ? scripted : plan.find(frame);
}

bool Simulator::isHostile() const
{
    return script.hostile || plan.hostile;
}

} // namespace Tessel3SyncSimulator

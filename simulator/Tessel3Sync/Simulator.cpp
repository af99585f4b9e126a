#include "Simulator.h"

#include "FaultPlan.h"
#include "PlanScanner.h"
#include "Platform.h"

#include <algorithm>
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
    setup = ScannerSetup();
    const auto planFile = pathFromEnvironment(FaultPlanVariable);
    const auto scanner = textFromEnvironment(ScannerVariable);
    try {
        const FaultPlan planned = planFile ? loadFaultPlan(*planFile, setup) : FaultPlan();
        ScannerSetup described = planned.scanner.value_or(setup);
        if (scanner)
            described = setupFromVariable(*scanner, described);
        setup = described;
        plan = planned.script;
    } catch (const std::invalid_argument &error) {
        planError = error.what();
        std::cerr << "Tessel3Sync simulator: " << planError << std::endl;
    }
    const auto informationFile = pathFromEnvironment(UserInformationVariable);
    userInformation = informationFile ? UserInformation(*informationFile) : UserInformation();
}

Lock Simulator::enter()
{
    Lock lock(mutex);
    catchUp();
    return lock;
}

void Simulator::catchUp()
{
    // In the order of time: what comes first is told first.
    for (auto change = nextChange(); change && *change <= now(); change = nextChange()) {
        if (scan)
            scan->clock.advance(*change);
        if (backAt == change)
            attach();
        else
            sendPlanned();
    }
    if (scan)
        scan->clock.advance(now());
}

void Simulator::sendPlanned()
{
    const StatusBytes event = connection.plannedEvents.begin()->second;
    connection.plannedEvents.erase(connection.plannedEvents.begin());
    sendStatus(event.first, event.second);
}

void Simulator::pass(Lock &lock, int milliseconds)
{
    time->pass(lock, std::chrono::milliseconds(milliseconds));
    catchUp();
}

void Simulator::useForTests(TimeSource &otherTime, PictureSource &otherPictures)
{
    time = &otherTime;
    frames.usePictures(otherPictures);
}

void Simulator::reset(Lock &lock)
{
    disconnectAll(lock);
    attached = true;
    backAt.reset();
    tableDegrees = 0.0;
    tableTurns.clear();
    recorder = CallRecorder();
    script = Script();
    counted = Account();
    readEnvironment();
}

void *Simulator::connect(const std::vector<CameraKind> &cameras)
{
    endSession();
    connection = Connection();
    connection.handle = &handles.emplace_back();
    connection.camerasOpen = true;
    connection.triggerPeriodMs = setup.triggerPeriodMs;
    for (CameraKind kind : cameras)
        connection.cameras.push_back({kind, CameraSettings()});
    connection.begun = now();
    planEvents();
    return connection.handle;
}

void Simulator::usePlan(const Script &planned)
{
    plan = planned;
    if (connection.handle)
        planEvents();
}

/// What is past already does not come any more.
void Simulator::planEvents()
{
    connection.plannedEvents.clear();
    for (const auto &[afterMs, event] : plan.timedEvents()) {
        const TimePoint moment = connection.begun + std::chrono::milliseconds(afterMs);
        if (moment >= now())
            connection.plannedEvents.emplace(moment, event);
    }
    time->wake(frames);
}

void Simulator::disconnect(Lock &lock)
{
    endSession();
    connection = Connection();
    frames.awaitCallback(lock);
    catchUp();
}

void Simulator::disconnectAll(Lock &lock)
{
    do {
        disconnect(lock);
    } while (connection.handle);
}

RETSTATUS Simulator::checkHandle(void *handle) const
{
    if (!handle)
        return refusal(NotConnected);
    return handle == connection.handle ? Success : refusal(UnknownHandle);
}

void Simulator::setScanCallback(Lock &lock, Tessel3Sync::ScanCallBack function, void *context)
{
    connection.callbacks.scan = function;
    connection.callbacks.scanContext = context;
    if (!function && scan && scan->lingering)
        endSession();
    frames.awaitCallback(lock);
}

void Simulator::setStatusCallback(Lock &lock, Tessel3Sync::StatusCallBack function, void *context)
{
    connection.callbacks.status = function;
    connection.callbacks.statusContext = context;
    frames.awaitCallback(lock);
}

void Simulator::setTriggerPeriod(int milliseconds)
{
    connection.triggerPeriodMs = milliseconds;
    if (scan)
        scan->clock.setPeriod(now(), std::chrono::milliseconds(milliseconds));
    time->wake(frames);
}

void Simulator::startTrigger(int mode)
{
    endSession();
    tableTurns.clear();
    const std::chrono::milliseconds period(connection.triggerPeriodMs);
    scan = std::make_shared<ScanSession>(mode, SessionClock(now(), period, *this, counted));
    time->wake(frames);
}

void Simulator::stopTrigger()
{
    endSession();
    time->wake(frames);
}

void Simulator::switchTriggerOff()
{
    if (scan && isHostile() && connection.callbacks.scan)
        scan->lingering = true;
    else
        stopTrigger();
}

void Simulator::endSession()
{
    if (scan)
        scan->clock.stop(now());
    scan.reset();
}

void Simulator::detach(std::optional<int> backAfterMs)
{
    backAt.reset();
    if (backAfterMs)
        backAt = now() + std::chrono::milliseconds(*backAfterMs);
    if (attached) {
        attached = false;
        connection.camerasOpen = false;
        endSession();
        sendStatus(ConnectionEvent, ConnectionIsLost);
    }
    time->wake(frames);
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
    time->wake(frames);
}

std::optional<TimePoint> Simulator::nextChange() const
{
    const auto &planned = connection.plannedEvents;
    if (planned.empty())
        return backAt;
    return std::min(planned.begin()->first, backAt.value_or(TimePoint::max()));
}

std::optional<StatusBytes> Simulator::takeEvent()
{
    if (connection.events.empty())
        return std::nullopt;
    const StatusBytes event = connection.events.front();
    connection.events.pop_front();
    return event;
}

Shot Simulator::shot() const
{
    const bool color = scan && scan->mode != Tessel3Sync::CAMERA_TRIGGER_MODE_NO_COLOR;
    Shot shot;
    shot.width = setup.width;
    shot.height = setup.height;
    shot.seed = setup.seed;
    shot.tableDegrees = tableDegrees;
    shot.purpose = color ? Purpose::ColorScan : Purpose::Scan;
    shot.light = connection.light;
    shot.cameras.reserve(connection.cameras.size());
    for (const ConnectedCamera &camera : connection.cameras) {
        if (color || camera.kind != CameraKind::Color)
            shot.cameras.push_back(camera);
    }
    return shot;
}

Shot Simulator::takeDown(int first, int last)
{
    tableTurns.takeDown(first, last, tableDegrees);
    for (int frame = first; frame <= last; ++frame) {
        for (const StatusBytes &event : plan.eventsAt(frame))
            sendStatus(event.first, event.second);
    }
    return shot();
}

FrameFault Simulator::faultOf(int frame) const
{
    const FrameFault *scripted = script.find(frame);
    const FrameFault *fault = scripted ? scripted : plan.find(frame);
    return fault ? *fault : FrameFault();
}

const Answer *Simulator::answerTo(const std::string &function, int call) const
{
    const Answer *scripted = script.find(function, call);
    return scripted ? scripted : plan.find(function, call);
}

} // namespace Tessel3SyncSimulator

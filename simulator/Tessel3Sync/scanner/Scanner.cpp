#include "scanner/Scanner.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

Scanner::Scanner(TimeSource &timeSource, const ScanPlan &scanPlan)
    : time(&timeSource)
    , plan(scanPlan)
{
}

void Scanner::reset()
{
    disconnect();
    attached = true;
    backAt.reset();
    tableDegrees = 0.0;
    tableHistory.clear();
    counted = Account();
}

void Scanner::catchUp()
{
    // In the order of time: what comes first is reported first.
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

void Scanner::sendPlanned()
{
    const StatusBytes event = connection.plannedEvents.begin()->second;
    connection.plannedEvents.erase(connection.plannedEvents.begin());
    sendStatus(event);
}

void *Scanner::connect(const std::vector<CameraKind> &cameras)
{
    endSession();
    connection = Connection();
    connection.handle = &handles.emplace_back();
    connection.begun = now();
    connection.camerasOpen = true;
    connection.triggerPeriodMs = scannerSetup.triggerPeriodMs;
    for (CameraKind kind : cameras)
        connection.cameras.push_back({kind, CameraSettings()});
    planEvents();
    return connection.handle;
}

void Scanner::disconnect()
{
    endSession();
    connection = Connection();
}

void Scanner::planEvents()
{
    connection.plannedEvents.clear();
    if (!isConnected())
        return;
    for (const auto &[afterMs, event] : plan.timedEvents()) {
        const TimePoint due = connection.begun + std::chrono::milliseconds(afterMs);
        if (due >= now())
            connection.plannedEvents.emplace(due, event);
    }
    time->wake();
}

void Scanner::detach(std::optional<int> backAfterMs)
{
    backAt.reset();
    if (backAfterMs)
        backAt = now() + std::chrono::milliseconds(*backAfterMs);
    if (attached) {
        attached = false;
        connection.camerasOpen = false;
        endSession();
        sendStatus({ConnectionEvent, ConnectionIsLost});
    }
    time->wake();
}

void Scanner::attach()
{
    backAt.reset();
    if (attached)
        return;
    attached = true;
    sendStatus({ConnectionEvent, ConnectionIsBack});
}

void Scanner::sendStatus(const StatusBytes &event)
{
    if (!isConnected())
        return;
    connection.events.push_back(event);
    time->wake();
}

void Scanner::setScanCallback(Tessel3Sync::ScanCallBack function, void *context)
{
    connection.callbacks.scan = function;
    connection.callbacks.scanContext = context;
    if (!function && scan && scan->lingering)
        endSession();
}

void Scanner::setStatusCallback(Tessel3Sync::StatusCallBack function, void *context)
{
    connection.callbacks.status = function;
    connection.callbacks.statusContext = context;
}

void Scanner::openCameras()
{
    endSession();
    connection.camerasOpen = true;
}

void Scanner::closeCameras()
{
    endSession();
    connection.camerasOpen = false;
}

ConnectedCamera *Scanner::camera(int index)
{
    const bool exists = index >= 0 && index < cameraCount();
    return exists ? &connection.cameras[static_cast<std::size_t>(index)] : nullptr;
}

const ConnectedCamera *Scanner::colorCamera() const
{
    const auto found =
        std::find_if(connection.cameras.begin(), connection.cameras.end(),
                     [](const auto &camera) { return camera.kind == CameraKind::Color; });
    return found == connection.cameras.end() ? nullptr : &*found;
}

void Scanner::setTriggerPeriod(int milliseconds)
{
    connection.triggerPeriodMs = milliseconds;
    if (scan)
        scan->clock.setPeriod(now(), std::chrono::milliseconds(milliseconds));
    time->wake();
}

void Scanner::enableTrigger(int mode)
{
    endSession();
    tableHistory.clear();
    const std::chrono::milliseconds period(connection.triggerPeriodMs);
    scan = std::make_shared<ScanSession>(mode, SessionClock(now(), period, *this, counted));
    time->wake();
}

void Scanner::disableTrigger()
{
    if (scan && isHostile() && connection.callbacks.scan)
        scan->lingering = true;
    else
        endSession();
}

void Scanner::endSession()
{
    if (scan)
        scan->clock.stop(now());
    scan.reset();
}

std::optional<TimePoint> Scanner::nextChange() const
{
    const auto &planned = connection.plannedEvents;
    if (planned.empty())
        return backAt;
    return std::min(planned.begin()->first, backAt.value_or(TimePoint::max()));
}

std::optional<StatusBytes> Scanner::takeEvent()
{
    if (connection.events.empty())
        return std::nullopt;
    const StatusBytes event = connection.events.front();
    connection.events.pop_front();
    return event;
}

Shot Scanner::recordDue(int first, int last)
{
    tableHistory.record(first, last, tableDegrees);
    for (int frame = first; frame <= last; ++frame) {
        for (const StatusBytes &event : plan.eventsAt(frame))
            sendStatus(event);
    }
    return shot();
}

/// Without purpose and cameras.
Shot Scanner::plainShot() const
{
    Shot shot;
    shot.width = scannerSetup.width;
    shot.height = scannerSetup.height;
    shot.seed = scannerSetup.seed;
    shot.tableDegrees = tableDegrees;
    shot.light = connection.light;
    return shot;
}

Shot Scanner::shot() const
{
    const bool color = scan && scan->mode != Tessel3Sync::CAMERA_TRIGGER_MODE_NO_COLOR;
    Shot shot = plainShot();
    shot.purpose = color ? Purpose::ColorScan : Purpose::Scan;
    shot.cameras.reserve(connection.cameras.size());
    for (const ConnectedCamera &camera : connection.cameras) {
        if (color || camera.kind != CameraKind::Color)
            shot.cameras.push_back(camera);
    }
    return shot;
}

Shot Scanner::nextSnapshot(const ConnectedCamera &camera, bool strobe)
{
    Shot shot = plainShot();
    shot.frame = ++connection.snapshots;
    shot.purpose = Purpose::Snapshot;
    shot.light.strobeRoute = strobe;
    shot.light.strobeState = strobe;
    shot.cameras = {camera};
    return shot;
}

} // namespace Tessel3SyncSimulator

// The scan session: callbacks, what lights and triggers, and when.
#include "Ranges.h"
#include "Request.h"

using namespace Tessel3SyncSimulator;

RETSTATUS Tessel3Sync::SetScanCallBackFunction(void *&device, ScanCallBack function, void *context)
{
    return Request("SetScanCallBackFunction", device)
        .with(reinterpret_cast<const void *>(function), context)
        .evenIfLost()
        .run([&](Simulator &simulator, Lock &lock) {
            simulator.setScanCallback(lock, function, context);
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetStatusCallBackFunction(void *&device, StatusCallBack function,
                                                 void *context)
{
    return Request("SetStatusCallBackFunction", device)
        .with(reinterpret_cast<const void *>(function), context)
        .evenIfLost()
        .run([&](Simulator &simulator, Lock &lock) {
            simulator.setStatusCallback(lock, function, context);
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetStrobeControlledByTrigger(void *&device, CONTROLROUTE route,
                                                    STROBE_STATE state)
{
    return Request("SetStrobeControlledByTrigger", device)
        .with(static_cast<int>(route), static_cast<int>(state))
        .run([&](Simulator &simulator, Lock &) {
            if (!isIn(0, route, MaximumControlRoute) || !isIn(0, state, MaximumStrobeState))
                return refusal(OutOfRange);
            simulator.connection.light.strobeRoute = route;
            simulator.connection.light.strobeState = state;
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetDistanceIndicate(void *&device, DISTANCESTATUS status)
{
    return Request("SetDistanceIndicate", device)
        .with(static_cast<int>(status))
        .run([&](Simulator &simulator, Lock &) {
            return setIfIn(0, status, MaximumDistanceStatus,
                           simulator.connection.light.distanceIndication);
        });
}

RETSTATUS Tessel3Sync::Project(void *&device, PROJECTWORKTYPES type)
{
    return Request("Project", device)
        .with(static_cast<int>(type))
        .run([&](Simulator &simulator, Lock &) {
            return setIfIn(ProjectorOff, type, ProjectorStripes,
                           simulator.connection.light.projection);
        });
}

RETSTATUS Tessel3Sync::EnableIRLaser(void *&device, bool enable)
{
    return Request("EnableIRLaser", device).with(enable).run([&](Simulator &simulator, Lock &) {
        simulator.connection.light.infrared = enable;
        return Success;
    });
}

RETSTATUS Tessel3Sync::EnableBlueLaser(void *&device, LASERWORKMODE mode, bool enable)
{
    return Request("EnableBlueLaser", device)
        .with(static_cast<int>(mode), enable)
        .run([&](Simulator &simulator, Lock &) {
            LightSettings &light = simulator.connection.light;
            const RETSTATUS status =
                setIfIn(LaserOneLine, mode, LaserCrossedLines, light.laserMode);
            if (status == Success)
                light.blueLaser = enable;
            return status;
        });
}

RETSTATUS Tessel3Sync::EnableVideoTrigger(void *&device, CAMERA_TRIGGER_MODE mode, bool enable)
{
    return Request("EnableVideoTrigger", device)
        .with(static_cast<int>(mode), enable)
        .needsCameras()
        .run([&](Simulator &simulator, Lock &) {
            // Hosts switch off in another mode than they switched on in.
            if (!enable) {
                simulator.switchTriggerOff();
                return Success;
            }
            if (!isIn(0, mode, MaximumTriggerMode))
                return refusal(OutOfRange);
            simulator.startTrigger(mode);
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetVideoTriggerPeriod(void *&device, int period)
{
    return Request("SetVideoTriggerPeriod", device)
        .with(period)
        .run([&](Simulator &simulator, Lock &) {
            if (!isIn(1, period, MaximumTriggerPeriodMs))
                return refusal(OutOfRange);
            simulator.setTriggerPeriod(period);
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetVideoTriggerPeriod(void *&device, int &period)
{
    return Request("GetVideoTriggerPeriod", device)
        .out("period", period)
        .run([&](Simulator &simulator, Lock &) {
            period = simulator.connection.triggerPeriodMs;
            return Success;
        });
}

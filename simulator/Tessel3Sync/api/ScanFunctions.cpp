// The scan session: callbacks, what lights and triggers, and when.
#include "api/Request.h"

using namespace Tessel3SyncSimulator;

RETSTATUS Tessel3Sync::SetScanCallBackFunction(void *&device, ScanCallBack function, void *context)
{
    return Request(call<indexOf("SetScanCallBackFunction")>(), device)
        .with(reinterpret_cast<const void *>(function), context)
        .evenIfLost()
        .run([&](Scanner &scanner, Lock &lock) {
            scanner.setScanCallback(function, context);
            SimulatedLibrary::instance().awaitCallback(lock);
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetStatusCallBackFunction(void *&device, StatusCallBack function,
                                                 void *context)
{
    return Request(call<indexOf("SetStatusCallBackFunction")>(), device)
        .with(reinterpret_cast<const void *>(function), context)
        .evenIfLost()
        .run([&](Scanner &scanner, Lock &lock) {
            scanner.setStatusCallback(function, context);
            SimulatedLibrary::instance().awaitCallback(lock);
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetStrobeControlledByTrigger(void *&device, CONTROLROUTE route,
                                                    STROBE_STATE state)
{
    return Request(call<indexOf("SetStrobeControlledByTrigger")>(), device)
        .with(static_cast<int>(route), static_cast<int>(state))
        .run([&](Scanner &scanner, Lock &) {
            if (!isIn(0, route, MaximumControlRoute) || !isIn(0, state, MaximumStrobeState))
                return refusal(OutOfRange);
            scanner.light().strobeRoute = route;
            scanner.light().strobeState = state;
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetDistanceIndicate(void *&device, DISTANCESTATUS status)
{
    return Request(call<indexOf("SetDistanceIndicate")>(), device)
        .with(static_cast<int>(status))
        .run([&](Scanner &scanner, Lock &) {
            return setIfIn(0, status, MaximumDistanceStatus, scanner.light().distanceIndication);
        });
}

RETSTATUS Tessel3Sync::Project(void *&device, PROJECTWORKTYPES type)
{
    return Request(call<indexOf("Project")>(), device)
        .with(static_cast<int>(type))
        .run([&](Scanner &scanner, Lock &) {
            return setIfIn(ProjectorOff, type, ProjectorStripes, scanner.light().projection);
        });
}

RETSTATUS Tessel3Sync::EnableIRLaser(void *&device, bool enable)
{
    return Request(call<indexOf("EnableIRLaser")>(), device)
        .with(enable)
        .run([&](Scanner &scanner, Lock &) {
            scanner.light().infrared = enable;
            return Success;
        });
}

RETSTATUS Tessel3Sync::EnableBlueLaser(void *&device, LASERWORKMODE mode, bool enable)
{
    return Request(call<indexOf("EnableBlueLaser")>(), device)
        .with(static_cast<int>(mode), enable)
        .run([&](Scanner &scanner, Lock &) {
            LightSettings &light = scanner.light();
            const RETSTATUS status =
                setIfIn(LaserOneLine, mode, LaserCrossedLines, light.laserMode);
            if (status == Success)
                light.blueLaser = enable;
            return status;
        });
}

RETSTATUS Tessel3Sync::EnableVideoTrigger(void *&device, CAMERA_TRIGGER_MODE mode, bool enable)
{
    return Request(call<indexOf("EnableVideoTrigger")>(), device)
        .with(static_cast<int>(mode), enable)
        .needsCameras()
        .run([&](Scanner &scanner, Lock &) {
            // Hosts disable the trigger in another mode than they enabled it in.
            if (!enable) {
                scanner.disableTrigger();
                return Success;
            }
            if (!isIn(0, mode, MaximumTriggerMode))
                return refusal(OutOfRange);
            scanner.enableTrigger(mode);
            return Success;
        });
}

RETSTATUS Tessel3Sync::SetVideoTriggerPeriod(void *&device, int period)
{
    return Request(call<indexOf("SetVideoTriggerPeriod")>(), device)
        .with(period)
        .run([&](Scanner &scanner, Lock &) {
            if (!isIn(1, period, MaximumTriggerPeriodMs))
                return refusal(OutOfRange);
            scanner.setTriggerPeriod(period);
            return Success;
        });
}

RETSTATUS Tessel3Sync::GetVideoTriggerPeriod(void *&device, int &period)
{
    return Request(call<indexOf("GetVideoTriggerPeriod")>(period), device)
        .run([&](Scanner &scanner, Lock &) {
            period = scanner.triggerPeriod();
            return Success;
        });
}

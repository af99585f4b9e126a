#include "Simulator.h"

#include "Platform.h"

namespace Tessel3SyncSimulator {

Simulator::Simulator()
{
    stayLoaded();
}

Simulator &Simulator::instance()
{
    static Simulator &only = *new Simulator;
    return only;
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
    stopTrigger();
    connection = Connection();
    frames.awaitIdle(lock);
}

RETSTATUS Simulator::checkHandle(void *handle) const
{
    if (!handle)
        return refusal(NotConnected);
    if (handle != connection.handle)
        return refusal(UnknownHandle);
    return attached ? Success : refusal(ConnectionLost);
}

void Simulator::startTrigger(int mode)
{
    Trigger &trigger = connection.trigger;
    trigger.enabled = true;
    trigger.mode = mode;
    trigger.session = ++sessions;
    trigger.frame = 0;
    frames.start();
}

void Simulator::stopTrigger()
{
    connection.trigger.enabled = false;
    frames.wake();
}

void Simulator::reset(Lock &lock, const ScannerSetup &newSetup)
{
    disconnect(lock);
    setup = newSetup;
    attached = true;
    tableDegrees = 0.0;
    userInformation.clear();
    recorder = CallRecorder();
    script = Script();
    frames.clearAccount();
}

} // namespace Tessel3SyncSimulator

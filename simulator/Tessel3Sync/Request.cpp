#include "Request.h"

namespace Tessel3SyncSimulator {

namespace {

std::string deviceText(const Simulator &simulator, void *device)
{
    return device && device == simulator.connection.handle ? "device" : addressText(device);
}

} // namespace

Request::Request(const char *function)
{
    call.function = function;
}

Request::Request(const char *function, void *handle)
    : Request(function)
{
    device = handle;
}

Request &Request::needsCameras()
{
    cameras = true;
    return *this;
}

RETSTATUS Request::check(const Simulator &simulator) const
{
    const RETSTATUS status = device ? simulator.checkHandle(*device) : Success;
    if (status == Success && cameras && !simulator.connection.camerasOpen)
        return refusal(CamerasClosed);
    return status;
}

RETSTATUS Request::run(const Body &body)
{
    Simulator &simulator = Simulator::instance();
    Lock lock(simulator.mutex);
    if (device)
        call.arguments.insert(call.arguments.begin(), deviceText(simulator, *device));
    const int number = simulator.recorder.record(call);

    const Answer *scripted = simulator.script.find(call.function, number);
    const Answer answer = scripted ? *scripted : Answer();
    RETSTATUS status = Success;
    if (answer.status) {
        status = refusal(*answer.status);
    } else {
        status = check(simulator);
        if (status == Success)
            status = body(simulator, lock);
    }
    for (const auto &[name, value] : answer.outputs)
        outputs.at(name)(value);
    return status;
}

} // namespace Tessel3SyncSimulator

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

Request &Request::evenIfLost()
{
    whileLost = true;
    return *this;
}

Request &Request::evenWithoutPlan()
{
    withoutPlan = true;
    return *this;
}

RETSTATUS Request::check(const Simulator &simulator) const
{
    if (!device)
        return Success;
    const RETSTATUS status = simulator.checkHandle(*device);
    if (status != Success)
        return status;
    if (!simulator.isAttached() && !whileLost)
        return refusal(ConnectionLost);
    if (cameras && !simulator.connection.camerasOpen)
        return refusal(CamerasClosed);
    return Success;
}

RETSTATUS Request::run(const Body &body)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    if (device)
        call.arguments.insert(call.arguments.begin(), deviceText(simulator, *device));
    const int number = simulator.recorder.record(call);
    if (!simulator.planError.empty() && !withoutPlan)
        return refusal(BadFaultPlan);

    // A copy: the script may change while the call waits.
    const Answer *planned = simulator.answerTo(call.function, number);
    const Answer answer = planned ? *planned : Answer();
    if (answer.delayMs > 0)
        simulator.pass(lock, answer.delayMs);
    if (answer.disconnect)
        simulator.detach(answer.backAfterMs);
    const RETSTATUS status = serve(simulator, lock, answer, body);
    for (const auto &[name, value] : answer.outputs)
        outputs.at(name).write(value);
    return status;
}

RETSTATUS Request::serve(Simulator &simulator, Lock &lock, const Answer &answer, const Body &body)
{
    if (answer.status)
        return refusal(*answer.status);
    RETSTATUS status = check(simulator);
    if (status == Success)
        status = body(simulator, lock);
    if (status == Success && answer.corrupt) {
        for (const auto &[name, output] : outputs)
            output.spoil();
    }
    return status;
}

} // namespace Tessel3SyncSimulator

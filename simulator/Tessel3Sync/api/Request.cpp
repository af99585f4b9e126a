#include "api/Request.h"

namespace Tessel3SyncSimulator {

Request::Request(CalledFunction calledFunction)
    : called(std::move(calledFunction))
    , recorded{std::string(called.function->name), {}}
{
}

Request::Request(CalledFunction calledFunction, void *handle)
    : Request(std::move(calledFunction))
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

RETSTATUS Request::check(const Scanner &scanner) const
{
    if (!device)
        return Success;
    if (!*device)
        return refusal(NotConnected);
    if (!scanner.isConnectedAs(*device))
        return refusal(UnknownHandle);
    if (!scanner.isAttached() && !whileLost)
        return refusal(ConnectionLost);
    if (cameras && !scanner.areCamerasOpen())
        return refusal(CamerasClosed);
    return Success;
}

RETSTATUS Request::run(const Body &body)
{
    LockedLibrary library;
    Scanner &scanner = library->scanner();
    if (device) {
        const bool isOpen = scanner.isConnectedAs(*device);
        recorded.arguments.insert(recorded.arguments.begin(),
                                  isOpen ? "device" : addressText(*device));
    }
    const int number = library->recorder().record(recorded);
    if (!library->planError().empty() && !withoutPlan)
        return refusal(BadFaultPlan);

    const Answer answer = library->answerTo(recorded.function, number);
    if (answer.delayMs > 0)
        library->pass(library.lock(), answer.delayMs);
    if (answer.disconnect)
        scanner.detach(answer.backAfterMs);
    const RETSTATUS status = serve(scanner, library.lock(), answer, body);
    for (const auto &[output, value] : answer.outputs)
        write(output, value);
    return status;
}

RETSTATUS Request::serve(Scanner &scanner, Lock &lock, const Answer &answer, const Body &body)
{
    if (answer.status)
        return refusal(*answer.status);
    RETSTATUS status = check(scanner);
    if (status == Success)
        status = body(scanner, lock);
    if (status == Success && answer.corrupt) {
        for (const BoundOutput &output : called.outputs)
            output.corrupt();
    }
    return status;
}

void Request::write(const std::string &output, const Value &value)
{
    if (const Output *found = findOutput(*called.function, output))
        called.outputs[static_cast<std::size_t>(found - called.function->outputs)].write(value);
}

} // namespace Tessel3SyncSimulator

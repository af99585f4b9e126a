// One call of the library on its way: recorded, then answered by the script or by the scanner.
#ifndef TESSEL3SYNCSIMULATOR_REQUEST_H
#define TESSEL3SYNCSIMULATOR_REQUEST_H

#include "api/Outputs.h"
#include "api/SimulatedLibrary.h"
#include "api/Status.h"

#include <functional>
#include <optional>

namespace Tessel3SyncSimulator {

class Request
{
public:
    /// What the scanner itself does. Called with the simulator's mutex held.
    using Body = std::function<RETSTATUS(Scanner &scanner, Lock &lock)>;

    /// A call that needs no connection.
    explicit Request(CalledFunction called);

    /// A call over a connection: refused unless the handle is that of an open one.
    Request(CalledFunction called, void *handle);

    /// Names the inputs, in order.
    template <typename... Inputs>
    Request &with(const Inputs &...inputs)
    {
        (recorded.arguments.push_back(argumentText(inputs)), ...);
        return *this;
    }

    /// Has the call refused while the cameras are closed.
    Request &needsCameras();

    /// Lets the call through even if the connection to the scanner is lost.
    Request &evenIfLost();

    /// Lets the call through even if the fault plan cannot be used.
    Request &evenWithoutPlan();

    RETSTATUS run(const Body &body);

    /// Whether the connection is as the call needs it; for a body that released the mutex, too.
    RETSTATUS check(const Scanner &scanner) const;

private:
    RETSTATUS serve(Scanner &scanner, Lock &lock, const Answer &answer, const Body &body);
    void write(const std::string &output, const Value &value);

    CalledFunction called;
    Call recorded;
    std::optional<void *> device;
    bool cameras = false;
    bool whileLost = false;
    bool withoutPlan = false;
};

} // namespace Tessel3SyncSimulator

#endif

// One call of the library on its way: recorded, answered by the script or by the scanner.
#ifndef TESSEL3SYNCSIMULATOR_REQUEST_H
#define TESSEL3SYNCSIMULATOR_REQUEST_H

#include "CallRecorder.h"
#include "Outputs.h"
#include "Simulator.h"

#include <functional>
#include <map>
#include <optional>

namespace Tessel3SyncSimulator {

class Request
{
public:
    /// What the scanner itself does; called with the simulator's mutex held.
    using Body = std::function<RETSTATUS(Simulator &, Lock &)>;

    /// A call that needs no connection.
    explicit Request(const char *function);

    /// A call over a connection: refused unless the handle is that of an open one.
    Request(const char *function, void *handle);

    /// Names the inputs, in order.
    template <typename... Inputs>
    Request &with(const Inputs &...inputs)
    {
        (call.arguments.push_back(argumentText(inputs)), ...);
        return *this;
    }

    /// Names an output, by which it can be scripted.
    template <typename Target>
    Request &out(const char *name, Target &target)
    {
        outputs[name] = {[&target](const Value &value) { assign(target, value); },
                         [&target] { corrupt(target); }};
        return *this;
    }

    /// Has the call refused while the cameras are closed.
    Request &needsCameras();

    /// Lets the call through though the connection to the scanner is lost.
    Request &evenIfLost();

    /// Lets the call through though the fault plan cannot be used.
    Request &evenWithoutPlan();

    RETSTATUS run(const Body &body);

    /// Whether the connection is as the call needs it; for a body that released the mutex, too.
    RETSTATUS check(const Simulator &simulator) const;

private:
    struct Output
    {
        std::function<void(const Value &)> write;
        std::function<void()> spoil;
    };

    RETSTATUS serve(Simulator &simulator, Lock &lock, const Answer &answer, const Body &body);
    Call call;
    std::optional<void *> device;
    bool cameras = false;
    bool whileLost = false;
    bool withoutPlan = false;
    std::map<std::string, Output> outputs;
};

} // namespace Tessel3SyncSimulator

#endif

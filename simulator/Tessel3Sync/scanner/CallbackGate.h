// Where host code is called: one callback at a time, with the simulator's mutex released.
#ifndef TESSEL3SYNCSIMULATOR_CALLBACKGATE_H
#define TESSEL3SYNCSIMULATOR_CALLBACKGATE_H

#include "scanner/Lock.h"

#include <condition_variable>
#include <functional>
#include <thread>

namespace Tessel3SyncSimulator {

/// All operations are called with the simulator's mutex held.
class CallbackGate
{
public:
    /// Calls back, on this thread or, as a hostile library would, on another.
    void call(Lock &lock, bool elsewhere, const std::function<void()> &callback);

    /// Waits for the callback that is running, if any, unless called from it.
    void await(Lock &lock);

    /// Whether the calling thread is inside a callback.
    bool isHere() const;

private:
    void callElsewhere(std::mutex &mutex, const std::function<void()> &callback);

    std::condition_variable ended;
    bool runs = false;
    std::thread::id thread;       ///< of the callback that runs or ran last
    unsigned long long begun = 0; ///< so many so far
};

} // namespace Tessel3SyncSimulator

#endif

// Where host code is called: one callback at a time, with the simulator's mutex released.
#ifndef TESSEL3SYNCSIMULATOR_CALLBACKGATE_H
#define TESSEL3SYNCSIMULATOR_CALLBACKGATE_H

#include "scanner/TimeSource.h"

#include <condition_variable>
#include <functional>
#include <thread>

namespace Tessel3SyncSimulator {

/// All operations are called with the simulator's mutex held.
class CallbackGate
{
public:
    /// Runs a callback on this thread or, as a hostile library would, on another.
    void call(Lock &lock, bool onOtherThread, const std::function<void()> &callback);

    /// Waits for the callback that is running, if any, unless called from it.
    void await(Lock &lock);

private:
    void callOnOtherThread(std::mutex &mutex, const std::function<void()> &callback);
    bool isInCallback() const;

    std::condition_variable finished;
    bool running = false;
    std::thread::id thread;       ///< of the callback that is running or ran last
    unsigned long long count = 0; ///< of callbacks that were started
};

} // namespace Tessel3SyncSimulator

#endif

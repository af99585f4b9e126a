// The thread that makes frames and calls the host back.
//
// One thread, begun by the first trigger and kept, idle between scans, until the process ends. So a
// callback may end its own scan or connection without anyone having to wait for the thread that
// runs it. Nothing waits for the thread at the end of the process either (on Windows it is gone by
// then), and nothing that it uses is ever destroyed.
#ifndef TESSEL3SYNCSIMULATOR_FRAMESOURCE_H
#define TESSEL3SYNCSIMULATOR_FRAMESOURCE_H

#include "Lock.h"
#include "Picture.h"

#include <Tessel3SyncSimulator/Control.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <thread>

namespace Tessel3SyncSimulator {

class Simulator;

/// All operations are called with the simulator's mutex held.
class FrameSource
{
public:
    explicit FrameSource(Simulator &simulator);

    /// Makes the thread run and look at the trigger.
    void start();

    /// Makes the thread, if it runs, look at the trigger.
    void wake();

    /// Waits for the callback that is running, if any, unless called from it.
    void awaitCallback(Lock &lock);

    /// Waits likewise, and for the picture that is being made.
    void awaitIdle(Lock &lock);

    const Account &account() const { return counted; }
    void clearAccount() { counted = Account(); }

private:
    using Clock = std::chrono::steady_clock;
    using Cause = long long Account::*;

    bool calledFromCallback() const;
    void run();
    void work(Lock &lock);
    void beginSession(Lock &lock);
    void makeFrame(Lock &lock);
    bool takePicture(Lock &lock, const Shot &shot);
    void deliver(Lock &lock, const Shot &shot);
    void callBack(Lock &lock, const std::function<void()> &callback);

    void drop(Cause cause);
    void dropOverdue(Cause cause);
    Shot nextShot() const;

    Simulator &simulator;
    std::condition_variable changed;
    std::thread thread;

    std::thread::id callbackThread;   ///< of the callback that is running, else no thread's
    unsigned long long callbacks = 0; ///< begun so far
    bool takingPicture = false;

    Account counted;
    int session = 0;                     ///< of the trigger that the thread is following
    std::chrono::milliseconds period{0}; ///< likewise
    Clock::time_point lastTick;          ///< when the last frame was due
    Picture picture;
};

} // namespace Tessel3SyncSimulator

#endif

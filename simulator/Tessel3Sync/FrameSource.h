// The thread that makes frames and calls the host back.
//
// One thread, begun by the first trigger and kept, idle between scans, until the process ends. So a
// callback may end its own scan or connection without anyone having to wait for the thread that
// runs it. Nothing waits for the thread at the end of the process either (on Windows it is gone by
// then), and nothing that it uses is ever destroyed.
#ifndef TESSEL3SYNCSIMULATOR_FRAMESOURCE_H
#define TESSEL3SYNCSIMULATOR_FRAMESOURCE_H

#include "CallbackGate.h"
#include "Lock.h"
#include "Picture.h"

#include <Tessel3SyncSimulator/Control.h>

#include <chrono>
#include <condition_variable>
#include <thread>

namespace Tessel3SyncSimulator {

class Simulator;

/// All operations are called with the simulator's mutex held.
class FrameSource
{
public:
    explicit FrameSource(Simulator &owner);

    /// Makes the thread run and look at the trigger.
    void start();

    /// Makes the thread, if it runs, look at the trigger.
    void wake();

    /// Waits for the callback that is running, if any, unless called from it.
    void awaitCallback(Lock &lock);

    /// Waits likewise, and for the frame that is being made.
    void awaitIdle(Lock &lock);

    const Account &account() const { return counted; }
    void clearAccount() { counted = Account(); }

private:
    using Clock = std::chrono::steady_clock;
    using Cause = long long Account::*;

    void run();
    void work(Lock &lock);
    void idle(Lock &lock);
    void deliverEvent(Lock &lock);

    bool follows() const;
    void followTrigger(Lock &lock);
    void beginSession(Lock &lock);
    Clock::time_point nextDue();
    Shot nextShot() const;
    FrameFault nextFrame();
    void makeFrame(Lock &lock);
    bool takePicture(Lock &lock, const Shot &shot);
    void deliver(Lock &lock, const Shot &shot);

    void drop(Cause cause);
    bool dropIfPlanned(const FrameFault &fault);
    void dropOverdue(Cause cause);

    Simulator &simulator;
    std::condition_variable changed;
    std::thread thread;

    CallbackGate gate;
    bool makingFrame = false;

    Account counted;
    int session = 0;                     ///< of the trigger that the thread is following
    std::chrono::milliseconds period{0}; ///< likewise
    Clock::time_point lastTick;          ///< when the last frame was due
    int burst = 0;                       ///< frames that are to come together
    Picture picture;
};

} // namespace Tessel3SyncSimulator

#endif

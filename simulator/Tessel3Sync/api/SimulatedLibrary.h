// The library as a whole, one for the process: the scanner with its thread, what is scripted for
// it, and the record of its calls.
//
// One mutex guards everything. It is released while host code runs, while pictures are made, and
// while a call waits.
#ifndef TESSEL3SYNCSIMULATOR_SIMULATEDLIBRARY_H
#define TESSEL3SYNCSIMULATOR_SIMULATEDLIBRARY_H

#include "api/UserBlocks.h"
#include "scanner/FrameThread.h"
#include "scanner/Pictures.h"
#include "scanner/RealTime.h"
#include "scanner/Scanner.h"
#include "script/CallRecorder.h"
#include "script/FaultPlan.h"

#include <string>

namespace Tessel3SyncSimulator {

/// The mutex must be held for every operation except instance() and enter(): LockedLibrary holds
/// it.
class SimulatedLibrary final : private ScanPlan
{
public:
    /// Never destroyed: its thread may outlive the end of main().
    static SimulatedLibrary &instance();

    ~SimulatedLibrary() = delete;
    SimulatedLibrary(const SimulatedLibrary &) = delete;
    SimulatedLibrary &operator=(const SimulatedLibrary &) = delete;

    /// Locks the mutex and does what has become due.
    Lock enter();

    Scanner &scanner() { return onlyScanner; }
    CallRecorder &recorder() { return calls; }
    UserBlocks &userBlocks() { return blocks; }

    /// Lets time pass within a call, with the mutex released.
    void pass(Lock &lock, int milliseconds);

    /// Waits for the callback that is running, if any, unless called from it; releases the mutex
    /// meanwhile. To be called when a callback was replaced or a connection was ended.
    void awaitCallback(Lock &lock);

    /// Ends the connection, and any that another thread opens meanwhile. Waits for a callback.
    void disconnectAll(Lock &lock);

    /// Starts over with the scanner and the plan of the environment. Waits for a callback.
    void reset(Lock &lock);

    // What is scripted, by the control header and by the fault plan. The former takes precedence.

    Script &script() { return scripted; }
    void usePlan(const Script &replacement);
    Answer answerTo(const std::string &function, int call) const;

    /// Why the environment's plan cannot be used; empty if it can.
    const std::string &planError() const { return error; }

    /// Replaces time and pictures, before anything else has happened.
    void useForTests(TimeSource &otherTime, PictureSource &otherPictures);

private:
    SimulatedLibrary();

    void readEnvironment();

    // What the scanner asks
    FrameFault faultOf(int frame) const override;
    bool isHostile() const override { return scripted.hostile || plan.hostile; }
    std::vector<StatusBytes> eventsAt(int frame) const override;
    std::multimap<int, StatusBytes> timedEvents() const override;

    std::mutex mutex;
    RealTime realTime{mutex};
    TimeSource *time = &realTime;
    Scanner onlyScanner{realTime, *this};
    Pictures pictures;
    FrameThread frames{onlyScanner, pictures};

    Script scripted;
    Script plan;
    std::string error;
    CallRecorder calls;
    UserBlocks blocks;
};

/// The library with its mutex held.
class LockedLibrary
{
public:
    SimulatedLibrary *operator->() const { return &library; }

    /// For operations that release the mutex.
    Lock &lock() { return held; }

private:
    SimulatedLibrary &library = SimulatedLibrary::instance();
    Lock held = library.enter();
};

} // namespace Tessel3SyncSimulator

#endif

// Where the simulator's time comes from. Tests replace it by a time that they move themselves.
#ifndef TESSEL3SYNCSIMULATOR_TIMESOURCE_H
#define TESSEL3SYNCSIMULATOR_TIMESOURCE_H

#include <chrono>
#include <mutex>
#include <optional>

namespace Tessel3SyncSimulator {

/// The simulator's one mutex, held.
using Lock = std::unique_lock<std::mutex>;

using TimePoint = std::chrono::steady_clock::time_point;
using Duration = std::chrono::steady_clock::duration;

/// What is done concurrently with the host's calls, step by step.
class Work
{
public:
    virtual ~Work() = default;

    /// Does the next thing there is to do, releasing the lock where it takes time. Returns when to
    /// look again: a time that may be past, or none if only a wake can bring more to do. Whoever
    /// released the lock returns a past one, since everything may have changed meanwhile.
    virtual std::optional<TimePoint> step(Lock &lock) = 0;
};

/// All operations but now() are called with the simulator's mutex held.
class TimeSource
{
public:
    virtual ~TimeSource() = default;

    virtual TimePoint now() const = 0;

    /// Lets time pass within a call, with the lock released.
    virtual void pass(Lock &lock, Duration duration) = 0;

    /// Names the work to be woken. Called once, before the first wake.
    virtual void serve(Work &work) = 0;

    /// Has the work look again soon, on a thread other than the caller's.
    virtual void wake() = 0;
};

} // namespace Tessel3SyncSimulator

#endif

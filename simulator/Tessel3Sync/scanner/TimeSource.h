// Where the simulator's time comes from. Tests replace it by one that they move themselves.
#ifndef TESSEL3SYNCSIMULATOR_TIMESOURCE_H
#define TESSEL3SYNCSIMULATOR_TIMESOURCE_H

#include "scanner/Lock.h"

#include <chrono>
#include <optional>

namespace Tessel3SyncSimulator {

using TimePoint = std::chrono::steady_clock::time_point;
using Duration = std::chrono::steady_clock::duration;

/// What goes on beside the host's calls, step by step.
class Work
{
public:
    virtual ~Work() = default;

    /// Does the next thing there is to do, releasing the lock where it takes time. Returns when to
    /// look again: a moment that may be past, or none if only a wake can bring more to do. Whoever
    /// released the lock returns a past one, since the world may be another.
    virtual std::optional<TimePoint> step(Lock &lock) = 0;
};

/// All operations but now() are called with the simulator's mutex held.
class TimeSource
{
public:
    virtual ~TimeSource() = default;

    virtual TimePoint now() const = 0;

    /// Lets time pass within a call, the lock released.
    virtual void pass(Lock &lock, Duration duration) = 0;

    /// Has the work look again soon, on a thread beside the caller's.
    virtual void wake(Work &work) = 0;
};

} // namespace Tessel3SyncSimulator

#endif

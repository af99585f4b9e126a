#ifndef KVSYNC_TESTS_SIMULATOR_CLOCK_VIRTUALTIME_H
#define KVSYNC_TESTS_SIMULATOR_CLOCK_VIRTUALTIME_H

#include "scanner/TimeSource.h"

#include <functional>
#include <map>

/// A time that passes only where a test lets it. One thread does everything: whoever lets time pass
/// (the test, a callback that takes long, a picture that is made, a call with a planned delay) does
/// what falls into that time: the scanner's work, unless it is what takes so long, and what the
/// test has scheduled, unless a call is waiting.
class VirtualTime final : public Tessel3SyncSimulator::TimeSource
{
public:
    using TimePoint = Tessel3SyncSimulator::TimePoint;

    /// Milliseconds since the test began.
    int ms() const;

    /// Lets time pass until a moment, which may be past.
    void passUntil(int moment);
    void pass(int milliseconds) { passUntil(ms() + milliseconds); }

    /// Has something done at a moment.
    void at(int moment, std::function<void()> action);

    TimePoint now() const override { return current; }
    void pass(Tessel3SyncSimulator::Lock &lock, Tessel3SyncSimulator::Duration duration) override;
    void serve(Tessel3SyncSimulator::Work &served) override { work = &served; }
    void wake() override { workAt = current; }

private:
    void run(TimePoint until);
    void doWork();
    void doAction();

    // Some time after the clock's zero, as a running machine's is.
    const TimePoint start{std::chrono::hours(1000)};
    TimePoint current = start;
    Tessel3SyncSimulator::Work *work = nullptr;
    TimePoint workAt = TimePoint::max();
    std::multimap<TimePoint, std::function<void()>> actions;
    int restless = 0; ///< so much was done without time passing
    bool working = false;
    bool calling = false;
};

#endif

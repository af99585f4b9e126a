// The clock of one scan session, from enabling the trigger to disabling it.
//
// It numbers the frames, knows when each is due and what held at that time, and keeps it until it
// ends: delivered, or dropped for one cause. It starts paused, and is paused whenever a scene is
// prepared, which is no part of the scanner's time.
#ifndef TESSEL3SYNCSIMULATOR_SESSIONCLOCK_H
#define TESSEL3SYNCSIMULATOR_SESSIONCLOCK_H

#include "scanner/PictureSource.h"
#include "scanner/TimeSource.h"

#include <Tessel3SyncSimulator/Control.h>

#include <deque>
#include <memory>
#include <optional>

namespace Tessel3SyncSimulator {

/// Frames that wait for a slow host, or for a slow simulator; older ones are dropped.
constexpr int BufferedFrames = 4;

/// How many frames a hostile scanner holds back to send them together, by the first of them.
int burstLength(std::uint32_t seed, int firstFrame);

/// What a clock asks when frames have become due: how things are, and have been since it asked
/// last. So whoever changes any of it lets the clock advance first.
class DueConditions
{
public:
    /// Records what the frames from the first to the last show.
    virtual Shot recordDue(int first, int last) = 0;
    virtual FrameFault faultOf(int frame) const = 0;
    virtual bool isHostile() const = 0;
    virtual bool isHostBusy() const = 0;

protected:
    ~DueConditions() = default;
};

struct DueFrame
{
    int number;
    int reportedNumber;                ///< the number that the host gets
    std::shared_ptr<const Shot> shown; ///< when it was due; without the frame's number
    FrameFault fault;
};

class SessionClock
{
public:
    using Cause = long long Account::*;

    /// Frames that end are added to the account.
    SessionClock(TimePoint now, Duration framePeriod, DueConditions &asked, Account &counted);

    /// Counts time up to now: what has become due is kept, what finds no room is dropped.
    void advance(TimePoint now);

    /// The next frame is due one new period from now; the same period again changes nothing.
    void setPeriod(TimePoint now, Duration newPeriod);

    void pause(TimePoint now);
    void resume(TimePoint now);
    bool isPaused() const { return pausedSince.has_value(); }

    /// When the next frame is due; none while the clock is paused.
    std::optional<TimePoint> nextDue() const;

    /// The current frame: the oldest one that waits, unless the one before it has not ended yet.
    /// Null if there is none.
    const DueFrame *takeNext(TimePoint now);

    /// When the planned delay of the current frame is over.
    TimePoint currentReady() const { return readyAt; }

    // Each ends the current frame. What a plan drops counts as planned, whatever the cause.
    void deliver();
    void drop(Cause cause);

    /// Ends every frame that is due by now.
    void stop(TimePoint now);

private:
    TimePoint scannerTime(TimePoint now) const;
    void addDue(const std::shared_ptr<const Shot> &shown);
    int reportedNumber(Numbering numbering);
    void dropOldest();
    Cause causeOfWaiting() const;
    void countDropped(const DueFrame &frame, Cause cause);

    DueConditions &conditions;
    Account &account;
    Duration period;

    Duration pausedFor{0};                ///< in all, until it was resumed last
    std::optional<TimePoint> pausedSince; ///< while it is paused

    TimePoint next; ///< when the next frame is due, in the scanner's time
    int number = 0; ///< of the last frame that became due
    int skipped = 0;
    bool swapped = false;   ///< the last frame's number, with the next one's
    int burstRemaining = 0; ///< frames still to come before those held back are sent
    int heldBack = 0;       ///< of the newest frames that wait

    std::deque<DueFrame> waiting;
    std::optional<DueFrame> current;
    TimePoint readyAt;
};

} // namespace Tessel3SyncSimulator

#endif

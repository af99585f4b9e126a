// The clock of one scan session: from the trigger's going on to its going off.
//
// It gives out the frame numbers, knows when each frame is due and what was so at that moment, and
// keeps it until it ends: delivered, or dropped for one cause. It begins standing still, and stands
// still whenever a scene is made ready, which is no part of the scanner's time.
#ifndef TESSEL3SYNCSIMULATOR_SESSIONCLOCK_H
#define TESSEL3SYNCSIMULATOR_SESSIONCLOCK_H

#include "scanner/Shot.h"
#include "scanner/TimeSource.h"

#include <Tessel3SyncSimulator/Control.h>

#include <deque>
#include <memory>
#include <optional>

namespace Tessel3SyncSimulator {

/// Frames that wait for a slow host, or for a slow simulator; older ones are lost.
constexpr int BufferedFrames = 4;

/// How many frames a hostile scanner holds back to send them together, by the first of them.
int burstLength(std::uint32_t seed, int firstFrame);

/// What a clock asks when frames have become due: how things stand, and have stood since it asked
/// last. So whoever changes any of it lets the clock advance first.
class DueConditions
{
public:
    /// Takes down what the frames from the first to the last show.
    virtual Shot takeDown(int first, int last) = 0;
    virtual FrameFault faultOf(int frame) const = 0;
    virtual bool isHostile() const = 0;
    virtual bool isHostBusy() const = 0;

protected:
    ~DueConditions() = default;
};

struct DueFrame
{
    int number;
    int told;                          ///< the number that it is delivered with
    std::shared_ptr<const Shot> shown; ///< at its moment; the frame's number is not in it
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

    void standStill(TimePoint now);
    void goOn(TimePoint now);
    bool standsStill() const { return stoodSince.has_value(); }

    /// When the next frame is due; none while the clock stands still.
    std::optional<TimePoint> nextDue() const;

    /// Takes the oldest frame in hand, if none is, for its planned delay at least. Null if there is
    /// no frame.
    const DueFrame *takeUp(TimePoint now);

    /// When the delay of the frame in hand is over.
    TimePoint handReady() const { return readyAt; }

    // Each ends the frame in hand. What a plan drops counts as planned, whatever the cause.
    void deliver();
    void drop(Cause cause);

    /// Ends every frame that is due by now.
    void stop(TimePoint now);

private:
    TimePoint scannerTime(TimePoint now) const;
    void becomeDue(const std::shared_ptr<const Shot> &shown);
    int numberTold(Numbering numbering);
    void makeRoom();
    Cause lateness() const;
    void countDropped(const DueFrame &frame, Cause cause);

    DueConditions &conditions;
    Account &account;
    Duration period;

    Duration stood{0};                   ///< so long in all until it went on last
    std::optional<TimePoint> stoodSince; ///< while it stands still

    TimePoint next; ///< when the next frame is due, in the scanner's time
    int number = 0; ///< of the last frame that became due
    int skipped = 0;
    bool swapped = false; ///< the last frame's number, with the next one's
    int burst = 0;        ///< so many frames are still to come together with it
    int held = 0;         ///< so many of the newest frames are held back until then

    std::deque<DueFrame> waiting;
    std::optional<DueFrame> hand;
    TimePoint readyAt;
};

} // namespace Tessel3SyncSimulator

#endif

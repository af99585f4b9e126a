#include "scanner/SessionClock.h"

#include "render/Random.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

int burstLength(std::uint32_t seed, int firstFrame)
{
    const auto frame = static_cast<std::uint32_t>(firstFrame);
    return 1 + static_cast<int>(hash(seed, frame) % BufferedFrames);
}

SessionClock::SessionClock(TimePoint now, Duration framePeriod, DueConditions &asked,
                           Account &counted)
    : conditions(asked)
    , account(counted)
    , period(std::max<Duration>(framePeriod, std::chrono::milliseconds(1)))
    , pausedSince(now)
    , next(now + period)
{
}

TimePoint SessionClock::scannerTime(TimePoint now) const
{
    return pausedSince.value_or(now) - pausedFor;
}

void SessionClock::advance(TimePoint now)
{
    const TimePoint then = scannerTime(now);
    if (then < next)
        return;
    const int last = number + 1 + static_cast<int>((then - next) / period);
    const auto shown = std::make_shared<const Shot>(conditions.recordDue(number + 1, last));
    next += (last - number) * period;
    while (number < last)
        addDue(shown);
}

void SessionClock::addDue(const std::shared_ptr<const Shot> &shown)
{
    ++number;
    if (burstRemaining == 0)
        burstRemaining = conditions.isHostile() ? burstLength(shown->seed, number) : 1;
    --burstRemaining;
    heldBack = burstRemaining == 0 ? 0 : heldBack + 1;
    const FrameFault fault = conditions.faultOf(number);
    waiting.push_back({number, reportedNumber(fault.numbering), shown, fault});
    if (waiting.size() > BufferedFrames)
        dropOldest();
}

/// To be asked once for each frame, in order.
int SessionClock::reportedNumber(Numbering numbering)
{
    skipped += numbering == Numbering::Skipped ? 1 : 0;
    int reported = number + skipped - (swapped ? 1 : 0);
    swapped = numbering == Numbering::Swapped;
    reported += swapped ? 1 : 0;
    return numbering == Numbering::Twice ? reported - 1 : reported;
}

/// A planned loss of the connection stays, since it must happen.
void SessionClock::dropOldest()
{
    auto lost = std::find_if(waiting.begin(), waiting.end(),
                             [](const DueFrame &frame) { return !frame.fault.disconnect; });
    if (lost == waiting.end())
        --lost;
    if (std::distance(lost, waiting.end()) <= heldBack)
        --heldBack;
    countDropped(*lost, causeOfWaiting());
    waiting.erase(lost);
}

SessionClock::Cause SessionClock::causeOfWaiting() const
{
    if (conditions.isHostBusy())
        return &Account::hostSlow;
    return current && current->fault.delayMs > 0 ? &Account::planned : &Account::simulatorSlow;
}

void SessionClock::setPeriod(TimePoint now, Duration newPeriod)
{
    if (newPeriod == period)
        return;
    advance(now);
    period = newPeriod;
    next = scannerTime(now) + period;
    burstRemaining = 0;
    heldBack = 0;
}

void SessionClock::pause(TimePoint now)
{
    advance(now);
    if (!pausedSince)
        pausedSince = now;
}

void SessionClock::resume(TimePoint now)
{
    if (pausedSince)
        pausedFor += now - *pausedSince;
    pausedSince.reset();
}

std::optional<TimePoint> SessionClock::nextDue() const
{
    return isPaused() ? std::nullopt : std::make_optional(next + pausedFor);
}

const DueFrame *SessionClock::takeNext(TimePoint now)
{
    if (!current && static_cast<int>(waiting.size()) > heldBack) {
        current = std::move(waiting.front());
        waiting.pop_front();
        readyAt = now + std::chrono::milliseconds(current->fault.delayMs);
    }
    return current ? &*current : nullptr;
}

void SessionClock::deliver()
{
    ++account.produced;
    ++account.delivered;
    current.reset();
}

void SessionClock::drop(Cause cause)
{
    countDropped(*current, cause);
    current.reset();
}

void SessionClock::stop(TimePoint now)
{
    advance(now);
    if (current)
        drop(&Account::stopped);
    for (const DueFrame &frame : waiting)
        countDropped(frame, &Account::stopped);
    waiting.clear();
}

void SessionClock::countDropped(const DueFrame &frame, Cause cause)
{
    ++account.produced;
    const bool planned = frame.fault.drop || frame.fault.disconnect;
    ++(account.*(planned ? &Account::planned : cause));
}

} // namespace Tessel3SyncSimulator

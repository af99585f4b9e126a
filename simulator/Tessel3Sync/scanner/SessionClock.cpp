#include "scanner/SessionClock.h"

#include "render/Random.h"

#include <algorithm>

namespace Tessel3SyncSimulator {

int burstLength(std::uint32_t seed, int firstFrame)
{
    const auto frame = static_cast<std::uint32_t>(firstFrame);
    return 1 + static_cast<int>(scramble(seed, frame) % BufferedFrames);
}

SessionClock::SessionClock(TimePoint now, Duration framePeriod, DueConditions &asked,
                           Account &counted)
    : conditions(asked)
    , account(counted)
    , period(std::max<Duration>(framePeriod, std::chrono::milliseconds(1)))
    , stoodSince(now)
    , next(now + period)
{
}

TimePoint SessionClock::scannerTime(TimePoint now) const
{
    return stoodSince.value_or(now) - stood;
}

void SessionClock::advance(TimePoint now)
{
    const TimePoint then = scannerTime(now);
    if (then < next)
        return;
    const int last = number + 1 + static_cast<int>((then - next) / period);
    const auto shown = std::make_shared<const Shot>(conditions.takeDown(number + 1, last));
    next += (last - number) * period;
    while (number < last)
        becomeDue(shown);
}

void SessionClock::becomeDue(const std::shared_ptr<const Shot> &shown)
{
    ++number;
    if (burst == 0)
        burst = conditions.isHostile() ? burstLength(shown->seed, number) : 1;
    --burst;
    held = burst == 0 ? 0 : held + 1;
    const FrameFault fault = conditions.faultOf(number);
    waiting.push_back({number, numberTold(fault.numbering), shown, fault});
    if (waiting.size() > BufferedFrames)
        makeRoom();
}

/// To be asked once for each frame, in order.
int SessionClock::numberTold(Numbering numbering)
{
    skipped += numbering == Numbering::Skipped ? 1 : 0;
    int told = number + skipped - (swapped ? 1 : 0);
    swapped = numbering == Numbering::Swapped;
    told += swapped ? 1 : 0;
    return numbering == Numbering::Twice ? told - 1 : told;
}

/// The oldest goes; a planned loss of the connection stays, since it must come to pass.
void SessionClock::makeRoom()
{
    auto lost = std::find_if(waiting.begin(), waiting.end(),
                             [](const DueFrame &frame) { return !frame.fault.disconnect; });
    if (lost == waiting.end())
        --lost;
    if (std::distance(lost, waiting.end()) <= held)
        --held;
    countDropped(*lost, lateness());
    waiting.erase(lost);
}

/// Who is to blame that frames wait.
SessionClock::Cause SessionClock::lateness() const
{
    if (conditions.isHostBusy())
        return &Account::hostSlow;
    return hand && hand->fault.delayMs > 0 ? &Account::planned : &Account::simulatorSlow;
}

void SessionClock::setPeriod(TimePoint now, Duration newPeriod)
{
    if (newPeriod == period)
        return;
    advance(now);
    period = newPeriod;
    next = scannerTime(now) + period;
    burst = 0;
    held = 0;
}

void SessionClock::standStill(TimePoint now)
{
    advance(now);
    if (!stoodSince)
        stoodSince = now;
}

void SessionClock::goOn(TimePoint now)
{
    if (stoodSince)
        stood += now - *stoodSince;
    stoodSince.reset();
}

std::optional<TimePoint> SessionClock::nextDue() const
{
    return standsStill() ? std::nullopt : std::make_optional(next + stood);
}

const DueFrame *SessionClock::takeUp(TimePoint now)
{
    if (!hand && static_cast<int>(waiting.size()) > held) {
        hand = std::move(waiting.front());
        waiting.pop_front();
        readyAt = now + std::chrono::milliseconds(hand->fault.delayMs);
    }
    return hand ? &*hand : nullptr;
}

void SessionClock::deliver()
{
    ++account.produced;
    ++account.delivered;
    hand.reset();
}

void SessionClock::drop(Cause cause)
{
    countDropped(*hand, cause);
    hand.reset();
}

void SessionClock::stop(TimePoint now)
{
    advance(now);
    if (hand)
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

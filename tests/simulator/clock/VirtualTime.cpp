#include "VirtualTime.h"

#include "api/SimulatedLibrary.h"

#include <stdexcept>

using namespace Tessel3SyncSimulator;
using std::chrono::milliseconds;

namespace {

constexpr int mostStepsAtOnce = 100000;

} // namespace

int VirtualTime::ms() const
{
    return static_cast<int>(std::chrono::duration_cast<milliseconds>(current - start).count());
}

void VirtualTime::passUntil(int moment)
{
    run(start + milliseconds(moment));
}

void VirtualTime::at(int moment, std::function<void()> action)
{
    actions.emplace(start + milliseconds(moment), std::move(action));
}

void VirtualTime::pass(Lock &lock, Duration duration)
{
    lock.unlock();
    run(current + duration);
    lock.lock();
}

void VirtualTime::run(TimePoint until)
{
    for (;;) {
        // What had to wait is for now.
        const TimePoint nextWork = working ? TimePoint::max() : std::max(current, workAt);
        const TimePoint nextAction = calling || actions.empty()
                                         ? TimePoint::max()
                                         : std::max(current, actions.begin()->first);
        const TimePoint next = std::min(nextWork, nextAction);
        if (next > until)
            break;
        restless = next > current ? 0 : restless + 1;
        if (restless > mostStepsAtOnce)
            throw std::logic_error("the scanner's work does not come to rest");
        current = next;
        if (nextWork <= nextAction)
            doWork();
        else
            doAction();
    }
    current = std::max(current, until);
}

void VirtualTime::doWork()
{
    workAt = TimePoint::max();
    working = true;
    Lock lock = SimulatedLibrary::instance().enter();
    const auto again = work->step(lock);
    working = false;
    if (again)
        workAt = std::min(workAt, *again);
}

void VirtualTime::doAction()
{
    const auto action = actions.begin()->second;
    actions.erase(actions.begin());
    calling = true;
    action();
    calling = false;
}

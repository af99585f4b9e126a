#include "scanner/RealTime.h"

namespace Tessel3SyncSimulator {

RealTime::RealTime(std::mutex &guard)
    : mutex(guard)
{
}

TimePoint RealTime::now() const
{
    return std::chrono::steady_clock::now();
}

void RealTime::pass(Lock &lock, Duration duration)
{
    lock.unlock();
    std::this_thread::sleep_for(duration);
    lock.lock();
}

void RealTime::wake()
{
    if (!thread.joinable())
        thread = std::thread([this] { run(); });
    woken.notify_all();
}

void RealTime::run()
{
    Lock lock(mutex);
    for (;;)
        await(lock, work->step(lock));
}

void RealTime::await(Lock &lock, std::optional<TimePoint> until)
{
    if (!until)
        woken.wait(lock);
    else if (now() < *until)
        woken.wait_until(lock, *until);
}

} // namespace Tessel3SyncSimulator

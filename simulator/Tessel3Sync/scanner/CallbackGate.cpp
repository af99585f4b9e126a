#include "scanner/CallbackGate.h"

namespace Tessel3SyncSimulator {

void CallbackGate::call(Lock &lock, bool elsewhere, const std::function<void()> &callback)
{
    ++begun;
    runs = true;
    thread = std::this_thread::get_id();
    lock.unlock();
    if (elsewhere)
        callElsewhere(*lock.mutex(), callback);
    else
        callback();
    lock.lock();
    runs = false;
    ended.notify_all();
}

void CallbackGate::callElsewhere(std::mutex &mutex, const std::function<void()> &callback)
{
    std::thread([&] {
        {
            const Lock lock(mutex);
            thread = std::this_thread::get_id();
        }
        callback();
    }).join();
}

void CallbackGate::await(Lock &lock)
{
    if (isHere())
        return;
    // A later one is not waited for: it knows of what the caller has changed.
    const auto running = begun;
    ended.wait(lock, [&] { return !runs || begun != running; });
}

bool CallbackGate::isHere() const
{
    return runs && thread == std::this_thread::get_id();
}

} // namespace Tessel3SyncSimulator

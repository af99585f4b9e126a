#include "scanner/CallbackGate.h"

namespace Tessel3SyncSimulator {

void CallbackGate::call(Lock &lock, bool onOtherThread, const std::function<void()> &callback)
{
    ++count;
    running = true;
    thread = std::this_thread::get_id();
    lock.unlock();
    if (onOtherThread)
        callOnOtherThread(*lock.mutex(), callback);
    else
        callback();
    lock.lock();
    running = false;
    finished.notify_all();
}

void CallbackGate::callOnOtherThread(std::mutex &mutex, const std::function<void()> &callback)
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
    if (isInCallback())
        return;
    // Not for a later one: it knows of what the caller has changed.
    const auto awaited = count;
    finished.wait(lock, [&] { return !running || count != awaited; });
}

/// Whether the calling thread is inside a callback.
bool CallbackGate::isInCallback() const
{
    return running && thread == std::this_thread::get_id();
}

} // namespace Tessel3SyncSimulator

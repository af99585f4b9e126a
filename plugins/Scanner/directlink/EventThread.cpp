#include "EventThread.h"

#include "Errors.h"

#include <utility>

namespace Scanner::DirectLink {

EventThread::EventThread(Maker threadMaker)
    : maker(std::move(threadMaker))
{
}

EventThread::~EventThread()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ending = true;
    }
    changed.notify_one();
    if (thread.joinable())
        thread.join();
}

void EventThread::start()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!thread.joinable())
        thread = maker([this] { run(); });
}

void EventThread::post(std::function<void()> event)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        waiting.push_back(std::move(event));
    }
    changed.notify_one();
}

void EventThread::whenQuiet(std::chrono::milliseconds quiet, std::function<void()> check)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        quietTime = quiet;
        quietCheck.swap(check);
    }
    changed.notify_one();
}

void EventThread::waitUntilIdle()
{
    std::unique_lock<std::mutex> lock(mutex);
    if (!thread.joinable() || thread.get_id() == std::this_thread::get_id())
        return;
    idle.wait(lock, [this] { return waiting.empty() && !isRunningTask; });
}

void EventThread::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (Task task = nextTask(lock)) {
        isRunningTask = true;
        lock.unlock();
        runLogged("A slot of a Scanner event", task);
        task = nullptr; // what it holds is destroyed without the lock
        lock.lock();
        isRunningTask = false;
        if (waiting.empty())
            idle.notify_all();
    }
}

/// An event, or the check if none came for a while; none at the end.
EventThread::Task EventThread::nextTask(std::unique_lock<std::mutex> &lock)
{
    while (waiting.empty()) {
        if (ending)
            return nullptr;
        if (!quietCheck)
            changed.wait(lock);
        else if (changed.wait_for(lock, quietTime) == std::cv_status::timeout && waiting.empty() &&
                 !ending)
            return quietCheck;
    }
    Task event = std::move(waiting.front());
    waiting.pop_front();
    return event;
}

} // namespace Scanner::DirectLink

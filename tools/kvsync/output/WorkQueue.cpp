#include "output/WorkQueue.h"

#include <utility>

namespace KvSyncCli {

WorkQueue::WorkQueue(int threadCount, int mostWaiting)
    : most(static_cast<std::size_t>(mostWaiting))
{
    threads.reserve(static_cast<std::size_t>(threadCount));
    try {
        for (int i = 0; i < threadCount; ++i)
            threads.emplace_back(&WorkQueue::run, this);
    } catch (...) {
        // Fewer do it too.
        if (threads.empty())
            throw;
    }
}

WorkQueue::~WorkQueue()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = true;
        waiting.clear();
    }
    changed.notify_all();
    for (std::thread &thread : threads)
        thread.join();
}

void WorkQueue::post(std::function<void()> job)
{
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return waiting.size() < most; });
        waiting.push_back(std::move(job));
    }
    changed.notify_all();
}

bool WorkQueue::hasFailed() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return failure != nullptr;
}

void WorkQueue::finish()
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return waiting.empty() && running == 0; });
    if (failure)
        std::rethrow_exception(failure);
}

void WorkQueue::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return isEnding || !waiting.empty(); });
        if (waiting.empty())
            return;
        ++running;
        {
            const std::function<void()> job = std::move(waiting.front());
            waiting.pop_front();
            lock.unlock();
            changed.notify_all();
            runOne(job);
        }
        lock.lock();
        --running;
        changed.notify_all();
    }
}

void WorkQueue::runOne(const std::function<void()> &job)
{
    try {
        job();
    } catch (...) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!failure)
            failure = std::current_exception();
    }
}

} // namespace KvSyncCli

#include "EventThread.h"

#include <KvSyncTool/ToolLogger.h>
#include <QtCore/QDebug>

#include <exception>
#include <utility>

namespace Scanner {

namespace {

void runOne(const std::function<void()> &event)
{
    try {
        event();
    } catch (const std::exception &thrown) {
        qCCritical(KvSyncTool::ToolLogger).nospace()
            << "A slot of a Scanner event threw: " << thrown.what();
    }
}

} // namespace

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

void EventThread::post(std::function<void()> event)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        waiting.push_back(std::move(event));
        if (!thread.joinable())
            thread = std::thread(&EventThread::run, this);
    }
    changed.notify_one();
}

void EventThread::waitUntilIdle()
{
    std::unique_lock<std::mutex> lock(mutex);
    if (thread.get_id() == std::this_thread::get_id())
        return;
    idle.wait(lock, [this] { return waiting.empty() && !isRunningEvent; });
}

void EventThread::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ending || !waiting.empty(); });
        if (waiting.empty())
            return;
        {
            const std::function<void()> event = std::move(waiting.front());
            waiting.pop_front();
            isRunningEvent = true;
            lock.unlock();
            runOne(event);
        }
        lock.lock();
        isRunningEvent = false;
        if (waiting.empty())
            idle.notify_all();
    }
}

} // namespace Scanner

#ifndef SCANNER_EVENTTHREAD_H
#define SCANNER_EVENTTHREAD_H

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace Scanner {

/// Runs events one after another on a thread of its own, which starts with the first of them. Host
/// slots run on the thread that emits: this is how they never keep the library's threads waiting.
class EventThread
{
public:
    EventThread() = default;
    EventThread(const EventThread &) = delete;
    EventThread &operator=(const EventThread &) = delete;
    /// Runs what is waiting, then ends the thread.
    ~EventThread();

    /// From any thread; returns at once. What an event throws is logged: nobody could catch it.
    void post(std::function<void()> event);
    /// Waits until every event that was posted has run; returns at once on the event thread.
    void waitUntilIdle();

private:
    void run();

    std::mutex mutex;
    std::condition_variable changed;
    std::condition_variable idle;
    std::deque<std::function<void()>> waiting;
    bool isRunningEvent = false;
    bool ending = false;
    std::thread thread;
};

} // namespace Scanner

#endif

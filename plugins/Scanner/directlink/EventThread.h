#ifndef SCANNER_DIRECTLINK_EVENTTHREAD_H
#define SCANNER_DIRECTLINK_EVENTTHREAD_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace Scanner::DirectLink {

/// Runs events one after another on a thread of its own. Host slots run on the thread that emits:
/// this is how they never keep the library's threads waiting. What an event throws, of whatever
/// type, is logged: nobody could catch it.
class EventThread
{
public:
    /// How a thread is made; it may throw std::system_error.
    using Maker = std::function<std::thread(std::function<void()> body)>;

    explicit EventThread(Maker threadMaker);
    EventThread(const EventThread &) = delete;
    EventThread &operator=(const EventThread &) = delete;
    /// Runs what is waiting, then ends the thread.
    ~EventThread();

    /// Starts the thread unless it runs; throws what its maker throws.
    void start();
    /// From any thread; returns at once. Events wait until the thread is started.
    void post(std::function<void()> event);
    /// Runs `check` whenever no event came for so long, until another call; an empty one ends that.
    void whenQuiet(std::chrono::milliseconds quiet, std::function<void()> check);
    /// Waits until every event that was posted has run; returns at once on the event thread, and if
    /// it was never started.
    void waitUntilIdle();

private:
    using Task = std::function<void()>;

    void run();
    Task nextTask(std::unique_lock<std::mutex> &lock);

    const Maker maker;
    std::mutex mutex;
    std::condition_variable changed;
    std::condition_variable idle;
    std::deque<Task> waiting;
    std::chrono::milliseconds quietTime{0};
    Task quietCheck;
    bool isRunningTask = false;
    bool ending = false;
    std::thread thread;
};

} // namespace Scanner::DirectLink

#endif

#ifndef KVSYNC_WORKQUEUE_H
#define KVSYNC_WORKQUEUE_H

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace KvSyncCli {

/// Runs jobs on a few threads, while a bounded number of further ones waits.
class WorkQueue
{
public:
    WorkQueue(int threadCount, int mostWaiting);
    /// Waits for the jobs that run; those that wait are dropped.
    ~WorkQueue();
    WorkQueue(const WorkQueue &) = delete;
    WorkQueue &operator=(const WorkQueue &) = delete;

    /// Waits for room.
    void post(std::function<void()> job);
    /// Whether a job threw.
    bool hasFailed() const;
    /// Waits until all are done. Throws what the first job that failed threw.
    void finish();

private:
    void run();
    void runOne(const std::function<void()> &job);

    const std::size_t most;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    int running = 0;
    bool isEnding = false;
    std::exception_ptr failure;
    std::vector<std::thread> threads;
};

} // namespace KvSyncCli

#endif

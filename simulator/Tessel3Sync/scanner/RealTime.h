#ifndef TESSEL3SYNCSIMULATOR_REALTIME_H
#define TESSEL3SYNCSIMULATOR_REALTIME_H

#include "scanner/TimeSource.h"

#include <condition_variable>
#include <thread>

namespace Tessel3SyncSimulator {

/// The time of the real world, and the one thread that does the work in it.
///
/// The thread is started by the first wake and kept, idle between scans, until the process ends. So
/// a callback may end its own scan or connection without anyone having to wait for the thread that
/// runs it. Nothing waits for the thread at the end of the process either (on Windows it is gone by
/// then), and nothing that it uses is ever destroyed.
class RealTime final : public TimeSource
{
public:
    explicit RealTime(std::mutex &guard);

    TimePoint now() const override;
    void pass(Lock &lock, Duration duration) override;
    void serve(Work &served) override { work = &served; }
    void wake() override;

private:
    void run();
    void await(Lock &lock, std::optional<TimePoint> until);

    std::mutex &mutex;
    Work *work = nullptr;
    std::condition_variable woken;
    std::thread thread;
};

} // namespace Tessel3SyncSimulator

#endif

#include "output/WorkQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>

using KvSyncCli::WorkQueue;

namespace {

std::string failureOf(WorkQueue &queue)
{
    try {
        queue.finish();
    } catch (const std::runtime_error &failure) {
        return failure.what();
    }
    return "none";
}

} // namespace

TEST(WorkQueue, FinishWaitsForEveryJob)
{
    WorkQueue queue(3, 2);
    std::atomic<int> done{0};
    for (int i = 0; i < 100; ++i)
        queue.post([&done] { ++done; });
    EXPECT_EQ(failureOf(queue), "none");
    EXPECT_EQ(done, 100);
    EXPECT_FALSE(queue.hasFailed());
}

TEST(WorkQueue, JobsRunAtTheSameTime)
{
    WorkQueue queue(2, 2);
    std::promise<void> begun;
    std::atomic<bool> met{false};
    queue.post([&] {
        begun.get_future().wait();
        met = true;
    });
    queue.post([&] { begun.set_value(); });
    EXPECT_EQ(failureOf(queue), "none");
    EXPECT_TRUE(met);
}

TEST(WorkQueue, FinishThrowsTheFirstFailureOnceTheOtherJobsAreDone)
{
    WorkQueue queue(1, 3);
    std::atomic<int> done{0};
    queue.post([] { throw std::runtime_error("first"); });
    queue.post([] { throw std::runtime_error("second"); });
    queue.post([&done] { ++done; });
    EXPECT_EQ(failureOf(queue), "first");
    EXPECT_TRUE(queue.hasFailed());
    EXPECT_EQ(done, 1);
}

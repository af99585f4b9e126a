#include "directlink/Callbacks.h"

#include <gtest/gtest.h>
#include <vector>

using namespace Scanner;
using namespace Scanner::DirectLink;
using std::chrono::milliseconds;

namespace {

Frame frameOf(int number)
{
    return {std::chrono::steady_clock::now(), {Image{0, number, 1, 1, QByteArray(1, 'x')}}, true};
}

void take(FrameQueue &queue, const std::vector<int> &numbers)
{
    for (const int number : numbers)
        queue.take(frameOf(number));
}

std::vector<int> takeOut(FrameQueue &queue)
{
    std::vector<int> numbers;
    while (const auto frame = queue.next(milliseconds(0)))
        numbers.push_back(frame->number());
    return numbers;
}

int count(const FrameQueue &queue, const QString &key)
{
    return queue.account().toMap().value(key).toInt();
}

int droppedBy(const FrameQueue &queue, const QString &cause)
{
    return queue.account().toMap().value(QStringLiteral("causes")).toMap().value(cause).toInt();
}

const QString produced = QStringLiteral("produced");
const QString delivered = QStringLiteral("delivered");
const QString dropped = QStringLiteral("dropped");
const QString disordered = QStringLiteral("disordered");
const QString lost = QStringLiteral("lost");
const QString hostSlow = QStringLiteral("hostSlow");
const QString stopped = QStringLiteral("stopped");

} // namespace

TEST(FrameQueue, HoldsEightFramesAndDropsTheOthersForTheSlowHost)
{
    FrameQueue queue(withoutEnd);
    take(queue, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    EXPECT_EQ(takeOut(queue), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
    take(queue, {11});
    EXPECT_EQ(takeOut(queue), std::vector<int>{11});
    EXPECT_EQ(droppedBy(queue, hostSlow), 2);
    EXPECT_EQ(count(queue, delivered), 9);
    EXPECT_EQ(count(queue, produced), 11);
}

TEST(FrameQueue, CountsNumbersThatAreMissingBeforeAndBetween)
{
    FrameQueue queue(withoutEnd);
    take(queue, {3, 7});
    takeOut(queue);
    EXPECT_EQ(droppedBy(queue, lost), 5);
    EXPECT_EQ(count(queue, dropped), 5);
    EXPECT_EQ(count(queue, produced), 7);
    EXPECT_EQ(count(queue, disordered), 0);
}

TEST(FrameQueue, DeliversFramesWhoseNumbersAreRepeatedOrSwappedAndBalances)
{
    FrameQueue queue(withoutEnd);
    const std::vector<int> numbers{1, 1, 3, 2, 4, 0, -5};
    take(queue, numbers);
    EXPECT_EQ(takeOut(queue), numbers);
    EXPECT_EQ(count(queue, disordered), 4);
    EXPECT_EQ(count(queue, produced), count(queue, delivered) + count(queue, dropped));
    EXPECT_EQ(droppedBy(queue, lost), 0);
}

TEST(FrameQueue, DropsFramesThatAreNotWhole)
{
    FrameQueue queue(2);
    queue.take({{}, {}, false});
    Frame halfOne = frameOf(1);
    halfOne.isWhole = false;
    queue.take(halfOne);
    take(queue, {2, 3});
    EXPECT_EQ(takeOut(queue), (std::vector<int>{2, 3}));
    EXPECT_EQ(droppedBy(queue, QStringLiteral("unusable")), 2);
}

TEST(FrameQueue, TakesAsManyAsWereAskedForAndCountsNoneAfterThem)
{
    FrameQueue queue(2);
    take(queue, {1, 2, 3, 9});
    EXPECT_EQ(takeOut(queue), (std::vector<int>{1, 2}));
    EXPECT_EQ(count(queue, QStringLiteral("frames")), 2);
    EXPECT_EQ(count(queue, produced), 2);
}

TEST(FrameQueue, AStoppedScanGivesNoFrameMoreAndCountsThoseThatWaited)
{
    FrameQueue queue(withoutEnd);
    take(queue, {1, 2});
    queue.cancel({EndReason::Stopped, QStringLiteral("stopped")});
    EXPECT_TRUE(takeOut(queue).empty());
    take(queue, {3});
    queue.close();
    EXPECT_EQ(droppedBy(queue, stopped), 2);
    EXPECT_EQ(count(queue, produced), 2);
}

TEST(FrameQueue, AScanWhoseConnectionIsLostGivesWhatCameBefore)
{
    FrameQueue queue(withoutEnd);
    take(queue, {1, 2});
    queue.cancel({EndReason::ConnectionLost, QStringLiteral("lost")});
    take(queue, {3});
    EXPECT_EQ(takeOut(queue), (std::vector<int>{1, 2}));
}

TEST(FrameQueue, TheFirstEndThatIsToldHolds)
{
    FrameQueue queue(withoutEnd);
    EXPECT_FALSE(queue.cancelled());
    queue.cancel({EndReason::Stopped, QStringLiteral("first")});
    queue.cancel({EndReason::Failed, QStringLiteral("second")});
    EXPECT_EQ(queue.cancelled()->text, QStringLiteral("first"));
}

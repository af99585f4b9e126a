// What a scanner that loses frames and patience does to a host.
#include "ScannerHost.h"

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerFault : public ScannerHost
{
protected:
    ScannerFault() { open(); }

    QVariantMap lastProgress() const { return lastOf(QStringLiteral("progress")); }

    static void expectBalanced()
    {
        const Simulator::Account account = Simulator::account();
        EXPECT_TRUE(account.balances());
    }
};

TEST_F(ScannerFault, DroppedFramesAreCountedAndReplacedByLaterOnes)
{
    Simulator::setFaultPlan(R"({"faults": [{"everyFrame": 3, "drop": true}]})");
    const QVariantList images = capture(frames(8));
    EXPECT_EQ(images.size(), 16);
    const int last = images.last().toMap().value(QStringLiteral("frame")).toInt();
    EXPECT_GE(last, 11); // 3, 6 and 9 are missing
    EXPECT_EQ(lastProgress().value(QStringLiteral("dropped")), QVariant(last - 8));
    EXPECT_EQ(lastProgress().value(QStringLiteral("produced")), QVariant(last));
    EXPECT_GE(droppedBy(lastProgress(), QStringLiteral("lost")), 3);
    EXPECT_TRUE(balances(lastProgress()));
    expectBalanced();
}

TEST_F(ScannerFault, FramesDroppedBeforeTheFirstAreCounted)
{
    Simulator::setFaultPlan(
        R"({"faults": [{"frame": 1, "drop": true}, {"frame": 2, "drop": true}]})");
    const QVariantList images = capture(frames(1));
    const int first = images.first().toMap().value(QStringLiteral("frame")).toInt();
    EXPECT_GE(first, 3);
    EXPECT_EQ(lastProgress().value(QStringLiteral("dropped")), QVariant(first - 1));
}

TEST_F(ScannerFault, ALateFrameIsWaitedFor)
{
    Simulator::setFaultPlan(R"({"faults": [{"frame": 2, "delayMs": 600}]})");
    EXPECT_EQ(capture(frames(2)).size(), 4);
}

TEST_F(ScannerFault, StatusEventsReachTheHostOnAThreadOfThePluginsOwn)
{
    Simulator::sendStatus(Simulator::DistanceEvent, Simulator::DistanceTooFar);
    ASSERT_TRUE(waitForEvents(QStringLiteral("statusChanged"), 1));
    const ReceivedEvent event = events(QStringLiteral("statusChanged")).at(0);
    EXPECT_EQ(event.payload, (QVariantList{QVariantMap{{QStringLiteral("first"), 2},
                                                       {QStringLiteral("second"), 3}}}));
    EXPECT_NE(event.thread, std::this_thread::get_id());
}

TEST_F(ScannerFault, HostileCallbacksEndWithEveryScan)
{
    Simulator::setHostile(true);
    for (int round = 0; round < 50; ++round) {
        const QVariantList images = capture(frames(3));
        ASSERT_EQ(images.size(), 6);
        execute(QStringLiteral("startScan"));
        execute(QStringLiteral("stopScan"));
    }
    expectBalanced();
}

// What a scanner that loses frames and patience does to a host.
#include "ScannerHost.h"

#include <future>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerFault : public ScannerHost
{
protected:
    ScannerFault() { open(); }

    QVariantMap lastProgress() const { return lastOf("progress"); }

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
    const int last = images.last().toMap().value("frame").toInt();
    EXPECT_GE(last, 11); // 3, 6 and 9 are missing
    EXPECT_EQ(lastProgress().value("dropped"), QVariant(last - 8));
    EXPECT_EQ(lastProgress().value("produced"), QVariant(last));
    EXPECT_GE(droppedBy(lastProgress(), "lost"), 3);
    EXPECT_TRUE(balances(lastProgress()));
    expectBalanced();
}

TEST_F(ScannerFault, FramesDroppedBeforeTheFirstAreCounted)
{
    Simulator::setFaultPlan(
        R"({"faults": [{"frame": 1, "drop": true}, {"frame": 2, "drop": true}]})");
    const QVariantList images = capture(frames(1));
    const int first = images.first().toMap().value("frame").toInt();
    EXPECT_GE(first, 3);
    EXPECT_EQ(lastProgress().value("dropped"), QVariant(first - 1));
}

TEST_F(ScannerFault, ALateFrameIsWaitedFor)
{
    Simulator::setFaultPlan(R"({"faults": [{"frame": 2, "delayMs": 600}]})");
    EXPECT_EQ(capture(frames(2)).size(), 4);
}

TEST_F(ScannerFault, StatusEventsReachTheHostOnAThreadOfThePluginsOwn)
{
    Simulator::sendStatus(Simulator::DistanceEvent, Simulator::DistanceTooFar);
    ASSERT_TRUE(waitForEvents("statusChanged", 1));
    const ReceivedEvent event = events("statusChanged").at(0);
    EXPECT_EQ(event.payload, (QVariantList{QVariantMap{{"first", 2}, {"second", 3}}}));
    EXPECT_NE(event.thread, std::this_thread::get_id());
}

TEST_F(ScannerFault, AtMost64StatusChangesWaitForASlowHostAndTheOthersAreCounted)
{
    constexpr int sent = 200;
    const QString status = "statusChanged";
    std::promise<void> released;
    std::shared_future<void> release = released.get_future().share();
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == status && events(status).size() == 1)
            release.wait();
    };
    Simulator::sendStatus(Simulator::ButtonEvent, 0);
    ASSERT_TRUE(waitForEvents(status, 1));
    for (int number = 1; number < sent; ++number)
        Simulator::sendStatus(Simulator::ButtonEvent, static_cast<unsigned char>(number));
    capture(frames(1)); // comes after them on the library's thread
    released.set_value();
    ASSERT_TRUE(waitForEvents(status, 1 + 64));
    call("closeDevices", {scannerHandle}); // none comes after it
    const auto arrived = events(status);
    ASSERT_EQ(arrived.size(), 1u + 64u);
    const QVariantMap oldest = arrived.at(1).payload.value(0).toMap();
    EXPECT_EQ(oldest.value("dropped"), QVariant(sent - 1 - 64));
    EXPECT_EQ(oldest.value("second"), QVariant(sent - 64));
    EXPECT_EQ(arrived.back().payload,
              (QVariantList{QVariantMap{{"first", 3}, {"second", sent - 1}}}));
}

TEST_F(ScannerFault, HostileCallbacksEndWithEveryScan)
{
    Simulator::setHostile(true);
    for (int round = 0; round < 50; ++round) {
        const QVariantList images = capture(frames(3));
        ASSERT_EQ(images.size(), 6);
        execute("startScan");
        execute("stopScan");
    }
    expectBalanced();
}

// How frames flow to the host while a scan runs, what is counted, and how its end is told.
#include "ScannerHost.h"
#include "support/LogCapture.h"

#include <future>
#include <stdexcept>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerFlow : public ScannerHost
{
protected:
    ScannerFlow() { open(); }

    static QVariantMap unkept(int count) { return with(frames(count), "keep", false); }

    static int frameOf(const ReceivedEvent &event)
    {
        return event.payload.value(0).toMap().value("frame").toInt();
    }

    void expectEnd(const QString &reason, const QString &text)
    {
        ASSERT_TRUE(waitForEvents(ended, 1));
        ASSERT_EQ(events(ended).size(), 1u);
        EXPECT_EQ(lastOf(ended).value("reason"), QVariant(reason));
        EXPECT_EQ(lastOf(ended).value("text"), QVariant(text));
        EXPECT_TRUE(balances(lastOf(ended).value("account").toMap()));
    }

    const QString arrived = "frameArrived";
    const QString ended = "scanEnded";
};

TEST_F(ScannerFlow, WithoutKeepTheImagesComeByEventsAlone)
{
    EXPECT_EQ(capture(unkept(3)), QVariantList());
    const auto arrivals = events(arrived);
    ASSERT_EQ(arrivals.size(), 3u);
    for (const ReceivedEvent &arrival : arrivals) {
        ASSERT_EQ(arrival.payload.size(), 2);
        for (const QVariant &image : arrival.payload)
            EXPECT_EQ(image.toMap().value("data").toByteArray().size(), 160 * 128);
    }
}

TEST_F(ScannerFlow, MoreThanTenThousandFramesCanBeAskedFor)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name == arrived)
            execute("stopScan");
    };
    EXPECT_THROW(capture(unkept(1000000)), KvSyncTool::Exception);
    expectEnd("stopped", "The scan was stopped before its last frame");
    EXPECT_EQ(lastOf(ended).value("account").toMap().value("frames"), QVariant(1000000));
}

TEST_F(ScannerFlow, AtMostEightFramesWaitForASlowHostAndTheOthersAreCounted)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name == arrived && events(arrived).size() == 1)
            awaitDeliveries(30);
    };
    capture(unkept(12));
    const auto arrivals = events(arrived);
    ASSERT_EQ(arrivals.size(), 12u);
    const QVariantMap account = lastOf("progress");
    EXPECT_TRUE(balances(account));
    EXPECT_EQ(account.value("delivered"), QVariant(12));
    EXPECT_EQ(account.value("produced"), QVariant(frameOf(arrivals.back())));
    const int slow = droppedBy(account, "hostSlow");
    EXPECT_GE(slow, 30 - 8);
    // The slot's first frame, and the eight that waited, came before those that were dropped.
    EXPECT_GT(frameOf(arrivals.at(9)) - frameOf(arrivals.at(8)), slow);
}

TEST_F(ScannerFlow, TheAccountAgreesWithTheScanners)
{
    Simulator::setFaultPlan(R"({"faults": [{"everyFrame": 3, "drop": true}]})");
    capture(unkept(20));
    const QVariantMap account = lastOf(ended).value("account").toMap();
    const int produced = account.value("produced").toInt();
    EXPECT_TRUE(balances(account));
    EXPECT_EQ(produced, frameOf(events(arrived).back()));
    EXPECT_EQ(account.value("disordered"), QVariant(0));
    EXPECT_GE(droppedBy(account, "lost"), produced / 3);
    EXPECT_LE(produced, Simulator::account().produced);
    EXPECT_LE(20 + droppedBy(account, "hostSlow"), Simulator::account().delivered);
}

TEST_F(ScannerFlow, TellsWhenEachFrameArrived)
{
    const auto begin = std::chrono::steady_clock::now();
    const QVariantList images = capture(frames(3));
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    double last = 0.0;
    for (int i = 0; i < images.size(); i += 2) {
        const QVariant time = images.at(i).toMap().value("timeMs");
        EXPECT_EQ(images.at(i + 1).toMap().value("timeMs"), time);
        EXPECT_GT(time.toDouble(), last);
        last = time.toDouble();
    }
    EXPECT_LT(last, took.count());
}

TEST_F(ScannerFlow, ACompleteScanIsToldOnTheCallingThreadWithTheScannerAtRest)
{
    bool hasAgain = false;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name != ended || hasAgain)
            return;
        hasAgain = true;
        EXPECT_EQ(capture(frames(1)).size(), 2);
    };
    capture(frames(2));
    ASSERT_EQ(events(ended).size(), 2u);
    const ReceivedEvent first = events(ended).front();
    EXPECT_EQ(first.thread, std::this_thread::get_id());
    const QVariantMap end = first.payload.value(0).toMap();
    EXPECT_EQ(end.value("reason"), QVariant("complete"));
    EXPECT_EQ(end.value("text"), QVariant(QString()));
    const QVariantMap account = end.value("account").toMap();
    EXPECT_EQ(account.value("frames"), QVariant(2));
    EXPECT_EQ(account.value("delivered"), QVariant(2));
    EXPECT_TRUE(balances(account));
}

TEST_F(ScannerFlow, AScanThatFellSilentFailed)
{
    Simulator::setFaultPlan(R"({"faults": [{"everyFrame": 1, "drop": true}]})");
    EXPECT_THROW(capture(with(frames(2), "timeoutMs", 50)), KvSyncTool::Exception);
    expectEnd("failed", "The scanner fell silent: 0 of 2 frames came, then none for 50 ms");
}

TEST_F(ScannerFlow, WhateverASlotThrowsEndsTheScanAsFailedAndReachesTheCaller)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name == arrived)
            throw 7;
    };
    EXPECT_THROW(capture(frames(2)), int);
    expectEnd("failed", "something that is no exception");
    reaction = nullptr;
    EXPECT_EQ(capture(frames(1)).size(), 2);
}

TEST_F(ScannerFlow, WhatASlotThrowsAtTheEndIsLoggedAndTheImagesAreKept)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name == ended)
            throw 7;
    };
    LogCapture log;
    EXPECT_EQ(capture(frames(2)).size(), 4);
    EXPECT_EQ(log.lines(Channel::QtCritical),
              std::vector<LogLine>{
                  criticalLine("A slot of the Scanner event scanEnded threw: something that is "
                               "no exception")});
}

TEST_F(ScannerFlow, AScanThatNeverBeganDoesNotEnd)
{
    EXPECT_THROW(capture(frames(0)), KvSyncTool::Exception);
    Simulator::script("SetScanCallBackFunction", 1, {3, {}});
    EXPECT_THROW(capture(frames(1)), KvSyncTool::Exception);
    EXPECT_TRUE(events(ended).empty());
}

TEST_F(ScannerFlow, ClosingAndResettingEndAScan)
{
    struct Row
    {
        QString function;
        QString text;
    };
    const Row rows[] = {
        {"resetDevices", "The scanner was reset during the scan"},
        {"closeDevices", "The scanner was closed during the scan"},
    };
    std::size_t ends = 0;
    for (const Row &row : rows) {
        reaction = [&](const ReceivedEvent &event) {
            if (event.name == arrived)
                call(row.function, {scannerHandle});
        };
        expectThrows(CameraFailed, row.text, [&] { capture(frames(100)); });
        ASSERT_EQ(events(ended).size(), ++ends);
        EXPECT_EQ(lastOf(ended).value("text"), QVariant(row.text));
        EXPECT_EQ(lastOf(ended).value("reason"), QVariant("stopped"));
    }
}

TEST_F(ScannerFlow, TheEndOfAStreamComesAfterItsFramesWithTheAccountThatStoppingAnswers)
{
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 3));
    const QVariantMap account = execute("stopScan").toMap();
    expectEnd("stopped", "The scan was stopped before its last frame");
    EXPECT_EQ(lastOf(ended).value("account"), QVariant(account));
    EXPECT_EQ(account.value("delivered"), QVariant(int(events(arrived).size())));
    EXPECT_EQ(events(ended).front().thread, events(arrived).front().thread);
}

TEST_F(ScannerFlow, FramesThatWaitWhenAStreamIsStoppedAreCountedAsStopped)
{
    std::promise<void> stopped;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == arrived && events(arrived).size() == 1)
            stopped.get_future().wait();
    };
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 1));
    awaitDeliveries(20);
    const QVariantMap account = execute("stopScan").toMap();
    stopped.set_value();
    EXPECT_EQ(account.value("delivered"), QVariant(1));
    EXPECT_EQ(droppedBy(account, "stopped"), 8);
    EXPECT_GE(droppedBy(account, "hostSlow"), 20 - 8 - 1);
    EXPECT_TRUE(balances(account));
    call("closeDevices", {scannerHandle});
    EXPECT_EQ(events(arrived).size(), 1u);
}

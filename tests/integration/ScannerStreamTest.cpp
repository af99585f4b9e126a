#include "ScannerHost.h"
#include "support/LogCapture.h"

#include <future>
#include <stdexcept>

using namespace KvSyncTest;

class ScannerStream : public ScannerHost
{
protected:
    ScannerStream() { open(); }

    const QString arrived = "frameArrived";
};

TEST_F(ScannerStream, FramesArriveAsEventsUntilStopped)
{
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 3));
    const QVariantMap account = execute("stopScan").toMap();
    EXPECT_GE(account.value("delivered").toInt(), 3);
    EXPECT_EQ(events(arrived).at(0).payload.size(), 2);
    EXPECT_EQ(libraryCalls("SetScanCallBackFunction").back(),
              "SetScanCallBackFunction(device, null, null)");
}

TEST_F(ScannerStream, ItsAccountTellsWhatTheHostMissed)
{
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 5));
    const QVariantMap account = execute("stopScan").toMap();
    call("closeDevices", {scannerHandle});
    const auto caught = events(arrived);
    const int last = lastOf(arrived).value("frame").toInt();
    EXPECT_EQ(account.value("delivered"), QVariant(int(caught.size())));
    EXPECT_GE(account.value("produced").toInt(), last);
    EXPECT_EQ(account.value("frames"), QVariant(0));
    EXPECT_TRUE(balances(account));
}

TEST_F(ScannerStream, EventsComeOnAThreadOfThePluginsOwn)
{
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 1));
    execute("stopScan");
    EXPECT_NE(events(arrived).at(0).thread, std::this_thread::get_id());
}

TEST_F(ScannerStream, ASlotMayStopIt)
{
    std::promise<void> stopped;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name != arrived)
            return;
        execute("stopScan");
        stopped.set_value();
    };
    execute("startScan");
    stopped.get_future().wait();
    call("closeDevices", {scannerHandle});
    EXPECT_EQ(events(arrived).size(), 1u);
}

TEST_F(ScannerStream, ASlotMayCloseTheScanner)
{
    std::promise<void> closed;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name != arrived)
            return;
        call("closeDevices", {scannerHandle});
        closed.set_value();
    };
    execute("startScan");
    closed.get_future().wait();
    open();
}

TEST_F(ScannerStream, WhatASlotThrowsIsLoggedWhateverItIsAndTheScanGoesOn)
{
    int count = 0;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name != arrived)
            return;
        switch (count++) {
        case 0:
            throw KvSyncTool::Exception(CameraFailed, "slot");
        case 1:
            throw std::runtime_error("standard");
        case 2:
            throw 7;
        default:
            return;
        }
    };
    LogCapture log;
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 5));
    call("closeDevices", {scannerHandle});
    const QString threw = "A slot of a Scanner event threw: ";
    EXPECT_EQ(log.lines(Channel::QtCritical),
              (std::vector<LogLine>{criticalLine(threw + "slot"), criticalLine(threw + "standard"),
                                    criticalLine(threw + "something that is no exception")}));
}

TEST_F(ScannerStream, NoEventComesAfterTheScannerWasClosed)
{
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 1));
    call("closeDevices", {scannerHandle});
    const std::size_t atTheEnd = events(arrived).size();
    open();
    call("closeDevices", {scannerHandle});
    EXPECT_EQ(events(arrived).size(), atTheEnd);
}

TEST_F(ScannerStream, TakesTheParametersOfAScan)
{
    execute("startScan", {QVariantMap{{"periodMs", 4}, {"color", true}}});
    ASSERT_TRUE(waitForEvents(arrived, 1));
    execute("stopScan");
    EXPECT_EQ(events(arrived).at(0).payload.size(), 3);
    EXPECT_EQ(libraryCalls("SetVideoTriggerPeriod").back(), "SetVideoTriggerPeriod(device, 4)");
    expectThrows(InvalidParameter, "\"periodMs\" must be a whole number from 1 to 60000, not 0",
                 [&] {
                     execute("startScan", {QVariantMap{{"periodMs", 0}}});
                 });
}

TEST_F(ScannerStream, ASecondOneIsRefusedAndLeavesTheFirstRunning)
{
    execute("startScan");
    expectThrows(CameraFailed, "A scan is running already", [&] { execute("startScan"); });
    EXPECT_TRUE(waitForEvents(arrived, 3));
    execute("stopScan");
}

TEST_F(ScannerStream, StoppingWithoutAScanCountsNothing)
{
    const QVariantMap account = execute("stopScan").toMap();
    EXPECT_EQ(account.value("delivered"), QVariant(0));
    EXPECT_EQ(account.value("produced"), QVariant(0));
    EXPECT_TRUE(events("scanEnded").empty());
}

TEST_F(ScannerStream, ASlowHostLosesFramesAndNothingElse)
{
    std::mutex gate;
    std::condition_variable released;
    bool mayGoOn = false;
    reaction = [&](const ReceivedEvent &event) {
        std::unique_lock<std::mutex> lock(gate);
        if (event.name == arrived)
            released.wait(lock, [&] { return mayGoOn; });
    };
    execute("startScan");
    ASSERT_TRUE(waitForEvents(arrived, 1));
    // While the slot holds the first, the library is never kept waiting and delivers on.
    awaitDeliveries(20);
    {
        const std::lock_guard<std::mutex> lock(gate);
        mayGoOn = true;
    }
    released.notify_all();
    ASSERT_TRUE(waitForEvents(arrived, 15));
    const QVariantMap account = execute("stopScan").toMap();
    EXPECT_GE(droppedBy(account, "hostSlow"), 10);
    EXPECT_TRUE(balances(account));
    call("closeDevices", {scannerHandle}); // while the slot's gate is there
}

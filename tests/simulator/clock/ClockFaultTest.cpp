// Fault plans in a time of the test's own.
#include "ClockFixture.h"

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class PlannedFaults : public VirtualScanner
{
};

TEST_F(PlannedFaults, APlannedLossOfTheConnectionWaitsForItsDelayThoughItsFrameIsOverdue)
{
    setFaultPlan(R"({"faults": [{"frame": 2, "delayMs": 60, "disconnect": true}]})");
    int lostAt = 0;
    takeFrames([&](const ReceivedFrame &) { time.pass(200); });
    takeEvents([&] { lostAt = time.ms(); });
    switchOn();
    time.pass(400);
    EXPECT_EQ((Numbers{1}), numbers());
    EXPECT_EQ(210 + 60, lostAt);
    // Twenty were due while the host held the first frame: sixteen too many for the buffers. Five
    // more overflowed in the delay, and four waited when the connection was lost.
    EXPECT_EQ((Counted{1, 0, 16, 0, 4, 6}), counted());
    EXPECT_EQ(27, account().produced);
}

TEST_F(PlannedFaults, ADelayedFrameLosesTheConnectionOnlyAfterItsDelay)
{
    setFaultPlan(R"({"faults": [{"frame": 1, "delayMs": 60, "disconnect": true}]})");
    int lostAt = 0;
    takeEvents([&] { lostAt = time.ms(); });
    switchOn();
    time.pass(69);
    EXPECT_EQ(0, lostAt);
    time.pass(1);
    EXPECT_EQ(70, lostAt);
    // Frames 2 to 7 were due meanwhile: two were too many for the buffers.
    EXPECT_EQ((Counted{0, 0, 0, 0, 4, 3}), counted());
}

TEST_F(PlannedFaults, ADelayedFrameHoldsUpThoseBehindIt)
{
    setFaultPlan(R"({"faults": [{"frame": 1, "delayMs": 80}, {"frame": 12, "hangMs": 10}]})");
    takeFrames();
    switchOn();
    time.pass(135);
    EXPECT_EQ((Numbers{1, 6, 7, 8, 9, 10, 11, 13}), numbers());
    EXPECT_EQ(90, frames[0].at);
    EXPECT_EQ(130, frames[7].at);
    EXPECT_EQ((Counted{8, 0, 0, 0, 0, 5}), counted());
}

TEST_F(PlannedFaults, AScannerComesBackWhenItIsPlannedTo)
{
    setFaultPlan(R"({"faults": [{"frame": 1, "disconnect": true, "backAfterMs": 50}]})");
    takeEvents();
    switchOn();
    time.pass(59);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{1, 0}}), events);
    time.pass(1);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{1, 0}, {1, 1}}), events);
}

TEST_F(PlannedFaults, LoseTheConnectionAtTheirFrameThoughNobodyListens)
{
    setFaultPlan(R"({"faults": [{"frame": 3, "disconnect": true}]})");
    switchOn();
    time.pass(100);
    EXPECT_EQ((Counted{0, 2, 0, 0, 0, 1}), counted());
    EXPECT_EQ(ConnectionLost, static_cast<int>(ReconnectDevice(device)));
}

TEST_F(PlannedFaults, LoseNoConnectionOnceTheScanHasEnded)
{
    setFaultPlan(R"({"faults": [{"frame": 1, "delayMs": 600000, "disconnect": true}]})");
    switchOn();
    time.pass(15);
    switchOff();
    time.pass(600000);
    EXPECT_EQ((Counted{0, 0, 0, 0, 0, 1}), counted());
    EXPECT_EQ(Ok, ReconnectDevice(device));
}

TEST_F(PlannedFaults, LetOtherCallsBeServedWhileOneHangs)
{
    setFaultPlan(R"({"faults": [{"function": "EnableIRLaser", "hangMs": 300}]})");
    int servedAt = 0;
    time.at(100, [&] {
        EXPECT_EQ(Ok, SetProjectorBrightness(device, 1));
        servedAt = time.ms();
    });
    EXPECT_EQ(PlannedFault, static_cast<int>(EnableIRLaser(device, true)));
    EXPECT_EQ(300, time.ms());
    EXPECT_EQ(100, servedAt);
}

TEST_F(PlannedFaults, AreThoseOfTheMomentAtWhichTheFrameWasDue)
{
    takeFrames([&](const ReceivedFrame &frame) { time.pass(frame.number == 1 ? 30 : 0); });
    switchOn();
    time.at(15, [] { setFaultPlan(R"({"faults": [{"everyFrame": 1, "drop": true}]})"); });
    time.at(35, [] { setFaultPlan("{}"); });
    time.pass(55);
    EXPECT_EQ((Numbers{1, 4, 5}), numbers());
    EXPECT_EQ((Counted{3, 0, 0, 0, 0, 2}), counted());
}

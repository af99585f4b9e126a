// Status events of fault plans, in a time of the test's own.
#include "ClockFixture.h"

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

using Events = std::vector<std::pair<int, int>>;

class PlannedEvents : public VirtualScanner
{
};

TEST_F(PlannedEvents, ComeBeforeTheirFrameInEveryScan)
{
    setFaultPlan(R"({"events": [{"button": 2, "frame": 2}, {"distance": "tooFar", "frame": 2}]})");
    takeFrames();
    std::vector<std::size_t> framesBefore;
    takeEvents([&] { framesBefore.push_back(frames.size()); });
    for (int scan = 0; scan < 2; ++scan) {
        switchOn();
        time.pass(55);
        switchOff();
    }
    EXPECT_EQ((Events{{3, 2}, {2, 3}, {3, 2}, {2, 3}}), events);
    EXPECT_EQ((std::vector<std::size_t>{1, 1, 6, 6}), framesBefore);
}

TEST_F(PlannedEvents, ComeWithEveryNthFrame)
{
    setFaultPlan(R"({"events": [{"button": 255, "everyFrame": 2}]})");
    takeEvents();
    switchOn();
    time.pass(55);
    EXPECT_EQ((Events{{3, 255}, {3, 255}}), events);
}

TEST_F(PlannedEvents, ComeThoughTheirFrameIsDropped)
{
    setFaultPlan(R"({"faults": [{"frame": 1, "drop": true}],
                     "events": [{"distance": "right", "frame": 1}]})");
    takeEvents();
    switchOn();
    time.pass(15);
    EXPECT_EQ((Events{{2, 2}}), events);
}

TEST_F(PlannedEvents, ComeSoLongAfterEachConnectingWithAScanOrWithout)
{
    setFaultPlan(R"({"events": [{"distance": "tooNear", "afterMs": 70},
                                {"button": 1, "afterMs": 30}]})");
    for (const bool scans : {false, true}) {
        connect();
        ASSERT_EQ(Ok, SetVideoTriggerPeriod(device, 1000));
        std::vector<int> times;
        const int begin = time.ms();
        events.clear();
        takeEvents([&] { times.push_back(time.ms() - begin); });
        if (scans)
            switchOn();
        time.pass(200);
        EXPECT_EQ((Events{{3, 1}, {2, 1}}), events);
        EXPECT_EQ((std::vector<int>{30, 70}), times);
        switchOff();
    }
}

TEST_F(PlannedEvents, EndWithTheConnection)
{
    setFaultPlan(R"({"events": [{"button": 1, "afterMs": 30}]})");
    connect();
    takeEvents();
    time.pass(20);
    connect();
    takeEvents();
    time.pass(29);
    EXPECT_EQ(Events(), events);
    time.pass(1);
    EXPECT_EQ((Events{{3, 1}}), events);
}

TEST_F(PlannedEvents, ComeInTheOrderOfTheirMomentsWhateverTheHostIsDoing)
{
    setFaultPlan(R"({"events": [{"button": 1, "frame": 3}, {"button": 2, "afterMs": 35},
                                {"button": 3, "afterMs": 25}, {"button": 4, "frame": 4}]})");
    connect();
    takeFrames([&](const ReceivedFrame &frame) { time.pass(frame.number == 1 ? 100 : 0); });
    takeEvents();
    switchOn();
    time.pass(200);
    EXPECT_EQ((Events{{3, 3}, {3, 1}, {3, 2}, {3, 4}}), events);
}

TEST_F(PlannedEvents, AreThoseOfThePlanThatHolds)
{
    setFaultPlan(R"({"events": [{"button": 1, "afterMs": 30}]})");
    connect();
    takeEvents();
    time.pass(20);
    setFaultPlan(R"({"events": [{"button": 2, "afterMs": 10}, {"button": 3, "afterMs": 50}]})");
    time.pass(29);
    EXPECT_EQ(Events(), events);
    time.pass(1);
    EXPECT_EQ((Events{{3, 3}}), events);
}

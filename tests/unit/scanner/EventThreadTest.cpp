#include "directlink/EventThread.h"

#include <QtCore/QtGlobal>

#include <future>
#include <gtest/gtest.h>
#include <system_error>
#include <vector>

using Scanner::DirectLink::EventThread;

namespace {

std::thread start(std::function<void()> body)
{
    return std::thread(std::move(body));
}

void throwAtEveryLine(QtMsgType, const QMessageLogContext &, const QString &)
{
    throw 7;
}

} // namespace

TEST(EventThread, RunsEventsInTurnOnAThreadOfItsOwn)
{
    std::vector<int> order;
    std::thread::id thread;
    EventThread events(start);
    events.start();
    events.post([&] { order.push_back(1); });
    events.post([&] {
        order.push_back(2);
        thread = std::this_thread::get_id();
    });
    events.waitUntilIdle();
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(EventThread, AThreadThatCannotBeStartedIsAnErrorOfTheStartAndEventsWaitForTheNext)
{
    bool isRefusing = true;
    int run = 0;
    EventThread events([&](std::function<void()> body) {
        if (isRefusing)
            throw std::system_error(std::make_error_code(std::errc::no_child_process));
        return start(std::move(body));
    });
    EXPECT_THROW(events.start(), std::system_error);
    events.post([&] { ++run; });
    events.waitUntilIdle(); // nothing runs that could be waited for
    isRefusing = false;
    events.start();
    events.waitUntilIdle();
    EXPECT_EQ(run, 1);
}

TEST(EventThread, StartingItAgainMakesNoSecondThread)
{
    int made = 0;
    EventThread events([&](std::function<void()> body) {
        ++made;
        return start(std::move(body));
    });
    events.start();
    events.start();
    EXPECT_EQ(made, 1);
}

TEST(EventThread, OutlivesWhatAnEventThrowsAlsoWhenTheLogThrows)
{
    const QtMessageHandler before = qInstallMessageHandler(throwAtEveryLine);
    bool hasRun = false;
    {
        EventThread events(start);
        events.start();
        events.post([] { throw 7; });
        events.post([&] { hasRun = true; });
        events.waitUntilIdle();
    }
    qInstallMessageHandler(before);
    EXPECT_TRUE(hasRun);
}

TEST(EventThread, ChecksWhenItIsQuietUntilToldToStop)
{
    int checks = 0;
    std::promise<void> second;
    EventThread events(start);
    events.start();
    const std::chrono::milliseconds quiet(1);
    events.whenQuiet(quiet, [&] {
        if (++checks == 2) {
            events.whenQuiet(quiet, nullptr);
            second.set_value();
        }
    });
    second.get_future().wait();
    events.post([] {});
    events.waitUntilIdle();
    EXPECT_EQ(checks, 2);
}

TEST(EventThread, RunsWhatIsWaitingBeforeItEnds)
{
    int run = 0;
    {
        EventThread events(start);
        events.start();
        for (int i = 0; i < 100; ++i)
            events.post([&] { ++run; });
    }
    EXPECT_EQ(run, 100);
}

#include "integration/HostFixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>

#include <thread>

namespace {

using namespace KvSyncTest;
using KvSyncCore::SyncCore;

const char signalText[] = "2sendSignals(bool, QString, QString, QVariantList, QVersionNumber)";

const Event event{true,
                  QStringLiteral("D\u00e9mo \u6f22"),
                  "frame arrived",
                  {1, "two", QVariantMap{{"three", 3.5}}, QByteArray("\0x", 2)},
                  QVersionNumber{1, 2, 3, 4}};

class SignalRelay : public HostFixture
{
protected:
    /// Every arrival at a slot of the host that is connected directly, with its thread.
    void listen()
    {
        QObject::connect(
            &core, &SyncCore::sendSignals, &core,
            [this](bool isPub, const QString &pluginName, const QString &signalName,
                   const QVariantList &list, const QVersionNumber &version) {
                arrived.push_back({isPub, pluginName, signalName, list, version});
                threads.push_back(std::this_thread::get_id());
            },
            Qt::DirectConnection);
    }

    std::vector<Event> arrived;
    std::vector<std::thread::id> threads;
};

TEST_F(SignalRelay, HandsOnAllFiveArgumentsUntouched)
{
    RecorderControl &demo = loadDemo();
    listen();
    demo.emitEvent(event);
    ASSERT_EQ(arrived.size(), 1U);
    EXPECT_EQ(arrived[0], event);
    EXPECT_EQ(arrived[0].version.segmentCount(), 4);
    EXPECT_EQ(arrived[0].list.at(0).userType(), static_cast<int>(QMetaType::Int));
}

TEST_F(SignalRelay, HandsOnEmptyArgumentsToo)
{
    RecorderControl &demo = loadDemo();
    listen();
    demo.emitEvent({});
    ASSERT_EQ(arrived.size(), 1U);
    EXPECT_EQ(arrived[0], Event());
    EXPECT_TRUE(arrived[0].version.isNull());
}

TEST_F(SignalRelay, RunsTheHostsSlotBeforeTheEmissionReturnsOnItsThread)
{
    RecorderControl &demo = loadDemo();
    listen();
    demo.emitEvent(event);
    EXPECT_EQ(threads, std::vector{std::this_thread::get_id()});
}

TEST_F(SignalRelay, FromAWorkerThreadRunsTheHostsSlotThereWithAllFiveArguments)
{
    RecorderControl &demo = loadDemo();
    listen();
    demo.emitEventFromWorker(event);
    // The worker has ended, and no event loop has run here.
    ASSERT_EQ(arrived, std::vector{event});
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST_F(SignalRelay, KeepsTheOrderOfEmissions)
{
    RecorderControl &demo = loadDemo();
    listen();
    std::vector<Event> emitted;
    for (int i = 0; i < 20; ++i) {
        emitted.push_back(event);
        emitted.back().list = {i};
        if (i % 2)
            demo.emitEvent(emitted.back());
        else
            demo.emitEventFromWorker(emitted.back());
    }
    EXPECT_EQ(arrived, emitted);
}

TEST_F(SignalRelay, ArrivesAtTheHostBeforeSlotsThatAreConnectedToThePluginLater)
{
    loadDemo();
    std::vector<QString> order;
    QObject::connect(core.getCommandPlugin("Demo", {}), &CommandInterface::sendSignals,
                     [&] { order.push_back("behind the core's back"); });
    QObject::connect(&core, &SyncCore::sendSignals, [&] { order.push_back("relayed"); });
    control().emitEvent(event);
    EXPECT_EQ(order, (std::vector<QString>{"relayed", "behind the core's back"}));
}

TEST_F(SignalRelay, ComesFromTheFacadeAndNotFromWhatStandsBehindIt)
{
    RecorderControl &demo = loadDemo();
    QSignalSpy spy(&core, signalText);
    struct Receiver : QObject
    {
        QObject *seen = nullptr;
        void take() { seen = sender(); }
    } receiver;
    QObject::connect(&core, &SyncCore::sendSignals, &receiver, &Receiver::take);
    demo.emitEvent(event);
    EXPECT_EQ(receiver.seen, &core);
    EXPECT_EQ(spy.size(), 1);
}

TEST_F(SignalRelay, ReachesAHostThatConnectsByTextWithEitherSpelling)
{
    RecorderControl &demo = loadDemo();
    QSignalSpy withBlanks(&core, signalText);
    QSignalSpy withOneBlankLess(
        &core, "2sendSignals(bool, QString, QString, QVariantList,QVersionNumber)");
    demo.emitEvent(event);
    EXPECT_EQ(withBlanks.size(), 1);
    EXPECT_EQ(withOneBlankLess.size(), 1);
    EXPECT_EQ(withBlanks.at(0).at(4).value<QVersionNumber>(), event.version);
}

TEST_F(SignalRelay, QueuedFromAWorkerThreadArrivesWholeInTheReceiversThread)
{
    RecorderControl &demo = loadDemo();
    SyncCore receiver;
    ASSERT_TRUE(QObject::connect(&core, signalText, &receiver, signalText, Qt::QueuedConnection));
    std::vector<Event> taken;
    std::thread::id thread;
    QObject::connect(&receiver, &SyncCore::sendSignals,
                     [&](bool isPub, const QString &pluginName, const QString &signalName,
                         const QVariantList &list, const QVersionNumber &version) {
                         taken.push_back({isPub, pluginName, signalName, list, version});
                         thread = std::this_thread::get_id();
                     });
    demo.emitEventFromWorker(event);
    EXPECT_TRUE(taken.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(taken, std::vector{event});
    EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST_F(SignalRelay, OfAPluginLoadedTwiceReachesTheHostTwice)
{
    loadDemo();
    RecorderControl &demo = loadDemo();
    listen();
    demo.emitEvent(event);
    EXPECT_EQ(arrived, (std::vector{event, event}));
}

TEST_F(SignalRelay, OfAPluginLoadedUnderSeveralVersionsOfOneLineReachesTheHostOnceForEach)
{
    core.loadCommandPlugin("Demo", {1});
    core.loadCommandPlugin("Demo", {1, 0});
    core.loadCommandPlugin("Demo", {1, 0, 7});
    listen();
    control().emitEvent(event);
    EXPECT_EQ(arrived, (std::vector{event, event, event}));
}

TEST_F(SignalRelay, OfSeveralPluginsMeetsInOneSignal)
{
    folder.copyModule(commandFixture("Recorder"), "Other.1.0.1.dll");
    loadDemo();
    core.loadCommandPlugin("Other", {1, 0});
    listen();
    qobject_cast<RecorderControl *>(core.getCommandPlugin("Other", {}))->emitEvent(event);
    control().emitEvent({});
    EXPECT_EQ(arrived, (std::vector{event, Event()}));
}

TEST_F(SignalRelay, EndsWithTheFacade)
{
    auto brief = std::make_unique<SyncCore>();
    brief->init(folder.name(), "Device");
    brief->loadCommandPlugin("Demo", {1, 0});
    auto *const demo = qobject_cast<RecorderControl *>(brief->getCommandPlugin("Demo", {1, 0}));
    int arrivals = 0;
    QObject::connect(brief.get(), &SyncCore::sendSignals, [&] { ++arrivals; });
    brief.reset();
    demo->emitEvent(event);
    EXPECT_EQ(arrivals, 0);
}

TEST_F(SignalRelay, ReachesEveryFacadeThatLoadedThePlugin)
{
    RecorderControl &demo = loadDemo();
    SyncCore second;
    second.init(folder.name(), "Device");
    second.loadCommandPlugin("Demo", {1, 0});
    int arrivals = 0;
    QObject::connect(&second, &SyncCore::sendSignals, [&] { ++arrivals; });
    listen();
    demo.emitEvent(event);
    EXPECT_EQ(arrived.size(), 1U);
    EXPECT_EQ(arrivals, 1);
}

} // namespace

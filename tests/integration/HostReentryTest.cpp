// Plug-ins that use the core while the core runs them.

#include "fixtures/plugins/CallsWhenMade/WhenMade.h"
#include "integration/HostFixture.h"

#include <stdexcept>

namespace {

using namespace KvSyncTest;
using KvSyncCore::SyncCore;

class HostReentry : public HostFixture
{
protected:
    HostReentry()
    {
        folder.copyModule(commandFixture("Recorder"), "Other.2.0.1.dll");
        folder.copyModule(commandFixture("CallsWhenMade"), "Made.1.0.1.dll");
    }

    RecorderControl &other()
    {
        return *qobject_cast<RecorderControl *>(core.getCommandPlugin("Other", {}));
    }

    void loadMade() { core.loadCommandPlugin("Made", {1, 0}); }

    void expectMadeIsNotLoaded()
    {
        expectThrows(PluginNotLoaded, "Made.0.0 plugin is not exist",
                     [this] { core.getCommandPlugin("Made", {}); });
    }
};

TEST_F(HostReentry, FromAFunctionMayLoadAndCallAnotherPlugin)
{
    RecorderControl &demo = loadDemo();
    demo.doInside([this] {
        core.loadCommandPlugin("Other", {2, 0});
        core.execute("Other", "project", {5, "grid"}, {});
    });
    const QVariantList arguments{1, "command", QVariantList{2}};
    demo.answerWith("answer");
    EXPECT_EQ(execute("execute", arguments), QVariant("answer"));
    ASSERT_EQ(demo.takeCalls().size(), 1);
    EXPECT_EQ(other().takeCalls().value(0).arguments, (QVariantList{Q_INT64_C(5), "grid"}));
}

TEST_F(HostReentry, FromAFunctionMayCallThePluginItself)
{
    RecorderControl &demo = loadDemo();
    bool isInside = false;
    demo.doInside([&] {
        if (!std::exchange(isInside, true))
            execute("closeDevices", {9});
    });
    execute("resetDevices", {8});
    const QVector<RecordedCall> calls = demo.takeCalls();
    ASSERT_EQ(calls.size(), 2);
    EXPECT_EQ(calls[0].function, "resetDevices");
    EXPECT_EQ(calls[1].function, "closeDevices");
}

TEST_F(HostReentry, FromTheHandoverFindsThePluginLoaded)
{
    RecorderControl &demo = loadDemo();
    CommandInterface *found = nullptr;
    demo.doInside([&] {
        core.loadCommandPlugin("Other", {2, 0});
        found = core.getCommandPlugin("Demo", {1, 0});
    });
    core.loadCommandPlugin("Demo", {1, 0});
    EXPECT_EQ(qobject_cast<RecorderControl *>(found), &demo);
    EXPECT_EQ(other().controllers().size(), 1);
}

TEST_F(HostReentry, AnEventOfTheHandoverDoesNotReachTheFacadeThatIsLoading)
{
    RecorderControl &demo = loadDemo();
    int arrivals = 0;
    SyncCore second;
    second.init(folder.name(), "Device");
    QObject::connect(&second, &SyncCore::sendSignals, [&] { ++arrivals; });
    demo.doInside([&] { demo.emitEvent({}); });
    second.loadCommandPlugin("Demo", {1, 0});
    EXPECT_EQ(arrivals, 0);
    second.loadCommandPlugin("Demo", {1, 0});
    EXPECT_EQ(arrivals, 1);
}

TEST_F(HostReentry, FromAConstructorMayLoadAnotherPluginAndFindsItselfNotLoadedYet)
{
    {
        const WhenMade inside([this] {
            core.loadCommandPlugin("Other", {2, 0});
            expectMadeIsNotLoaded();
        });
        loadMade();
    }
    EXPECT_NE(core.getCommandPlugin("Made", {1, 0}), nullptr);
    EXPECT_EQ(other().controllers().size(), 1);
}

TEST_F(HostReentry, ThatFailsInAConstructorFailsTheLoading)
{
    {
        const WhenMade inside([this] { core.loadCommandPlugin("Nobody", {1, 0}); });
        expectThrows(PluginFileNotExist, folder.path() + " is no exist dll",
                     [this] { loadMade(); });
    }
    expectMadeIsNotLoaded();
    EXPECT_NO_THROW(loadMade());
}

// What constructors throw

TEST_F(HostReentry, AToolExceptionOfAConstructorReachesTheHostUnloggedAndStoresNothing)
{
    {
        const WhenMade inside([] { throw KvSyncTool::Exception(CameraFailed, "no camera"); });
        expectThrows(CameraFailed, "no camera", [this] { loadMade(); });
    }
    EXPECT_EQ(log.lines(),
              std::vector{debugLine("load device plugin " + folder.filePath("Made.1.0.1.dll"))});
    expectMadeIsNotLoaded();
}

TEST_F(HostReentry, ANumberThatAConstructorThrowsReachesTheHostAndStoresNothing)
{
    {
        const WhenMade inside([] { throw 7; });
        try {
            loadMade();
            FAIL() << "nothing thrown";
        } catch (int number) {
            EXPECT_EQ(number, 7);
        }
    }
    expectMadeIsNotLoaded();
    EXPECT_NO_THROW(loadMade());
}

// What the handover throws

TEST_F(HostReentry, WhatTheFirstHandoverThrowsLeavesThePluginLoaded)
{
    RecorderControl &demo = loadDemo();
    SyncCore second;
    second.init(folder.name(), "Device");
    demo.failWith(Failure::ToolException);
    expectThrows(CameraFailed, "the plug-in's own words", [&] {
        second.loadCommandPlugin("Demo", {1, 0});
    });
    EXPECT_EQ(qobject_cast<RecorderControl *>(second.getCommandPlugin("Demo", {1, 0})), &demo);
    demo.failWith(Failure::Integer);
    EXPECT_THROW(second.loadCommandPlugin("Demo", {1, 0}), int);
}

} // namespace

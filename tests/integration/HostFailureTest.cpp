#include "integration/HostFixture.h"

#include "support/CriticalLinesOff.h"

#include <stdexcept>

namespace {

using namespace KvSyncTest;
using KvSyncCore::SyncCore;

/// A failure that begins below the facade: it passes through with nothing added to the log.
struct PassedRow
{
    const char *name;
    void (*act)(SyncCore &core);
    ErrorCode code;
    const char *text; ///< "%1" is the path of the test's folder
    const char *operation;
};

const PassedRow passed[] = {
    {"LoadWithEmptyName",
     [](SyncCore &core) {
         core.loadCommandPlugin("", {1, 0});
     },
     InvalidParameter, "plugin name or version is null", "load("},
    {"LoadWithNullVersion", [](SyncCore &core) { core.loadCommandPlugin("Demo", {}); },
     InvalidParameter, "plugin name or version is null", "load("},
    {"LoadWithoutFile", [](SyncCore &core) { core.loadCommandPlugin("Demo", {7}); },
     PluginFileNotExist, "%1 is no exist dll", "loadSpecifyVersionPlugin("},
    {"GetOfAnUnloadedPlugin",
     [](SyncCore &core) {
         core.getCommandPlugin("Demo", {1, 0});
     },
     PluginNotLoaded, "Demo.1.0 plugin is not exist", "getCommandInterface("},
    {"GetWithNullVersion", [](SyncCore &core) { core.getCommandPlugin("Demo", {}); },
     PluginNotLoaded, "Demo.0.0 plugin is not exist", "getCommandInterface("},
    {"UnknownFunctionOfAnUnloadedPlugin",
     [](SyncCore &core) {
         core.execute("Demo", "no such function", {}, {1, 0});
     },
     PluginNotLoaded, "Demo.1.0 plugin is not exist", "getCommandInterface("},
    {"TooFewArgumentsForAnUnloadedPlugin",
     [](SyncCore &core) {
         core.execute("Demo", "openDevices", {}, {1, 0});
     },
     PluginNotLoaded, "Demo.1.0 plugin is not exist", "getCommandInterface("},
};

class PassedFailure : public HostFixture, public ::testing::WithParamInterface<PassedRow>
{
protected:
    QString text() const { return QString(GetParam().text).replace("%1", folder.path()); }
    void expectFailure()
    {
        expectThrows(GetParam().code, text(), [this] { GetParam().act(core); });
    }
};

TEST_P(PassedFailure, ReachesTheHostUnchangedAndIsLoggedOnce)
{
    expectFailure();
    ASSERT_EQ(log.lines(Channel::QtCritical), std::vector{criticalLine(text())});
    expectWrittenBy(log.lines(Channel::QtCritical).front(),
                    std::string("KvSyncCore::CommandManager::") + GetParam().operation,
                    "CommandManager.cpp");
}

TEST_P(PassedFailure, LeavesTheGlogChannelSilent)
{
    expectFailure();
    for (const LogLine &line : log.lines())
        EXPECT_TRUE(line.channel == Channel::QtDebug || line.channel == Channel::QtCritical);
}

TEST_P(PassedFailure, LeavesTheHostAbleToLoad)
{
    expectFailure();
    EXPECT_EQ(loadDemo().controllers().size(), 1);
}

TEST_P(PassedFailure, IsThrownThoughCriticalLinesAreOff)
{
    const CriticalLinesOff off;
    expectFailure();
    EXPECT_EQ(log.lines(Channel::QtCritical), std::vector<LogLine>());
}

INSTANTIATE_TEST_SUITE_P(SyncCore, PassedFailure, ::testing::ValuesIn(passed), rowName);

class ForeignRoot : public HostFixture, public ::testing::WithParamInterface<const char *>
{
protected:
    ForeignRoot() { folder.copyModule(commandFixture(GetParam()), "Odd.2.1.1.dll"); }
    void expectRefused()
    {
        expectThrows(PluginLoadFailed, "Odd.2.1 is not a command plug-in", [this] {
            core.loadCommandPlugin("Odd", {2, 1, 5});
        });
    }
};

TEST_P(ForeignRoot, IsRefusedAndTheFacadeLogsNothing)
{
    expectRefused();
    EXPECT_EQ(log.lines(),
              std::vector{debugLine("load device plugin " + folder.filePath("Odd.2.1.1.dll"))});
}

TEST_P(ForeignRoot, StaysStoredAndIsRefusedAgain)
{
    expectRefused();
    log.clear();
    expectRefused();
    EXPECT_EQ(log.lines(), std::vector{findLine("Odd.2.1")});
}

TEST_P(ForeignRoot, IsHandedOutAsNull)
{
    expectRefused();
    EXPECT_EQ(core.getCommandPlugin("Odd", {2, 1}), nullptr);
    EXPECT_EQ(core.getCommandPlugin("Odd", {}), nullptr);
}

TEST_P(ForeignRoot, IsRefusedByExecuteWhateverTheFunction)
{
    expectRefused();
    for (const char *function : {"getRunningDevList", "no such function"}) {
        log.clear();
        const QString text = "Odd.2.1 is not a command plug-in";
        expectThrows(PluginLoadFailed, text, [&] { core.execute("Odd", function, {}, {}); });
        EXPECT_EQ(log.lines(), (std::vector{findLine("Odd.2.1"), criticalLine(text)}));
        expectWrittenBy(log.lines().back(), "KvSyncCore::CommandManager::execute(",
                        "CommandDispatch.cpp");
    }
}

TEST_P(ForeignRoot, IsRefusedByExecuteThoughCriticalLinesAreOff)
{
    expectRefused();
    const CriticalLinesOff off;
    expectThrows(PluginLoadFailed, "Odd.2.1 is not a command plug-in", [&] {
        core.execute("Odd", "execute", {}, {2, 1});
    });
    EXPECT_EQ(log.lines(Channel::QtCritical), std::vector<LogLine>());
}

INSTANTIATE_TEST_SUITE_P(SyncCore, ForeignRoot, ::testing::Values("ForeignRoot", "OtherVersion"),
                         [](const auto &row) { return std::string(row.param); });

class HostFailure : public HostFixture
{
};

TEST_F(HostFailure, WhatAConstructorThrowsReachesTheHostAndNothingIsStored)
{
    folder.copyModule(commandFixture("ConstructorThrows"), "Odd.1.0.1.dll");
    try {
        core.loadCommandPlugin("Odd", {1, 0});
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(), "the scanner is switched off");
    }
    expectThrows(PluginNotLoaded, "Odd.1.0 plugin is not exist", [this] {
        core.getCommandPlugin("Odd", {1, 0});
    });
    EXPECT_NO_THROW(core.loadCommandPlugin("Odd", {1, 0}));
}

TEST_F(HostFailure, WhatTheHandoverThrowsReachesTheHostAndTheEventsAreNotConnected)
{
    RecorderControl &demo = loadDemo();
    int arrivals = 0;
    QObject::connect(&core, &SyncCore::sendSignals, [&] { ++arrivals; });
    demo.failWith(Failure::StandardException);
    EXPECT_THROW(core.loadCommandPlugin("Demo", {1, 0}), std::runtime_error);
    EXPECT_EQ(demo.controllers().size(), 2);
    demo.emitEvent({});
    EXPECT_EQ(arrivals, 1);
}

} // namespace

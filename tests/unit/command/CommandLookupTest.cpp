#include "unit/command/CommandManagerFixture.h"

namespace {

using namespace KvSyncTest;

class CommandLookup : public CommandManagerFixture
{
};

TEST_F(CommandLookup, WritesTheKeyBeforeItSearches)
{
    provide({"Demo.1.0.1.dll"});
    manager.load("Demo", {1, 0});
    log.clear();
    manager.getCommandInterface("Demo", {1});
    expectLog({findLine("Demo.1.0")});
}

TEST_F(CommandLookup, OfAVersionThatWasNotLoadedFailsAfterThatLine)
{
    provide({"Demo.1.0.1.dll"});
    manager.load("Demo", {1, 0});
    log.clear();
    expectNotLoaded("Demo", {2}, "Demo.2.0");
    expectLog({findLine("Demo.2.0"), criticalLine("Demo.2.0 plugin is not exist")});
    for (const LogLine &line : log.lines())
        expectWrittenBy(line, "KvSyncCore::CommandManager::getCommandInterface(",
                        "CommandManager.cpp");
}

TEST_F(CommandLookup, OfAnotherNameFails)
{
    provide({"Demo.1.0.1.dll"});
    manager.load("Demo", {1, 0});
    expectNotLoaded("demo", {1, 0}, "demo.1.0");
}

TEST_F(CommandLookup, OfANullVersionWithNothingLoadedAsksForZeroZero)
{
    expectNotLoaded("Demo", {}, "Demo.0.0");
}

TEST_F(CommandLookup, OfANullVersionNeverLeavesTheName)
{
    provide({"Other.1.0.1.dll"});
    manager.load("Other", {1, 0});
    expectNotLoaded("Demo", {}, "Demo.0.0");
}

TEST_F(CommandLookup, OfVersionZeroIsNotThatOfANullVersion)
{
    provide({"Demo.1.0.1.dll"});
    manager.load("Demo", {1, 0});
    expectNotLoaded("Demo", QVersionNumber(0), "Demo.0.0");
}

struct LoadOrder
{
    std::vector<QVersionNumber> versions;
    QVersionNumber highest;
};

class NullVersion : public CommandManagerFixture, public ::testing::WithParamInterface<LoadOrder>
{
};

TEST_P(NullVersion, FindsTheHighestThatWasLoaded)
{
    // All files first: Windows does not let go of one that is loaded.
    for (const QVersionNumber &version : GetParam().versions)
        provide(
            {QString("Demo.%1.%2.1.dll").arg(version.majorVersion()).arg(version.minorVersion())});
    for (const QVersionNumber &version : GetParam().versions)
        manager.load("Demo", version);
    EXPECT_EQ(manager.getCommandInterface("Demo", {}),
              manager.getCommandInterface("Demo", GetParam().highest));
}

const LoadOrder loadOrders[] = {
    {{{1, 0}, {2, 3}}, {2, 3}},
    {{{2, 3}, {1, 0}}, {2, 3}},
    {{{1, 9}, {1, 10}, {1, 2}}, {1, 10}},
    {{{1}, {1, 0, 5}, {0, 9}}, {1, 0}},
    {{{-2, 1}}, {-2, 1}},
    {{{-2, 1}, {-1}}, {-1}},
};
INSTANTIATE_TEST_SUITE_P(LoadOrders, NullVersion, ::testing::ValuesIn(loadOrders));

} // namespace

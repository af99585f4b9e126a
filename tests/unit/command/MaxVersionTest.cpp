#include "unit/command/CommandManagerFixture.h"

#include <QtCore/QPluginLoader>
#include <QtCore/QPointer>

namespace {

using namespace KvSyncTest;

class MaxVersion : public CommandManagerFixture
{
};

TEST_F(MaxVersion, LoadsTheHighestMajorMinorAndBuild)
{
    provide({"Demo.2.10.4.dll"});
    for (const char *lower : {"Demo.1.99.99.dll", "Demo.2.9.99.dll", "Demo.2.10.3.dll"})
        folder.writeText(lower);
    EXPECT_NE(manager.loadMaxVersionPlugin("Demo"), nullptr);
    expectLog({loadLine("Demo.2.10.4.dll")});
    expectWrittenBy(log.lines().front(), "KvSyncCore::CommandManager::loadMaxVersionPlugin(",
                    "CommandManager.cpp");
}

TEST_F(MaxVersion, StandsInTheLineOfLoadingByItsCleanPath)
{
    provide({"Demo.1.0.1.dll"});
    manager.setPluginDirPath(folder.name() + "/./");
    EXPECT_NE(manager.loadMaxVersionPlugin("Demo"), nullptr);
    expectLog({loadLine("Demo.1.0.1.dll")});
}

TEST_F(MaxVersion, IsFoundUnderTheVersionOfItsFile)
{
    provide({"Demo.2.10.4.dll"});
    CommandInterface *const plugin = manager.loadMaxVersionPlugin("Demo");
    EXPECT_EQ(manager.getCommandInterface("Demo", {2, 10}), plugin);
    EXPECT_EQ(manager.getCommandInterface("Demo", {}), plugin);
    EXPECT_EQ(manager.load("Demo", {2, 10}), plugin);
}

TEST_F(MaxVersion, IsLoadedAnewByEveryCall)
{
    provide({"Demo.1.0.1.dll"});
    CommandInterface *const plugin = manager.load("Demo", {1, 0});
    log.clear();
    EXPECT_EQ(manager.loadMaxVersionPlugin("Demo"), plugin);
    EXPECT_EQ(manager.loadMaxVersionPlugin("Demo"), plugin);
    expectLog({loadLine("Demo.1.0.1.dll"), loadLine("Demo.1.0.1.dll")});
}

TEST_F(MaxVersion, ReplacesTheEntryOfAnOlderBuild)
{
    provide({"Demo.1.0.1.dll"});
    CommandInterface *const older = manager.load("Demo", {1, 0});
    provide({"Demo.1.0.2.dll"});
    CommandInterface *const newer = manager.loadMaxVersionPlugin("Demo");
    EXPECT_NE(newer, older);
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 0}), newer);
    // The replaced one stays alive.
    EXPECT_EQ(older->execute(0, "anything", {}), QVariant());
}

TEST_F(MaxVersion, StaysWhenTheHostUnloadsWhatItHadLoadedItself)
{
    provide({"Demo.1.0.1.dll"});
    QPluginLoader loaderOfHost(folder.filePath("Demo.1.0.1.dll"));
    ASSERT_TRUE(loaderOfHost.load());
    const QPointer<CommandInterface> plugin(manager.loadMaxVersionPlugin("Demo"));
    EXPECT_FALSE(loaderOfHost.unload()) << "nobody else counts as a user";
    EXPECT_TRUE(plugin);
}

TEST_F(MaxVersion, IgnoresFilesWithFewerParts)
{
    folder.writeText("Demo.9.9.dll");
    provide({"Demo.1.0.1.dll"});
    EXPECT_NE(manager.loadMaxVersionPlugin("Demo"), nullptr);
}

TEST_F(MaxVersion, OfADottedNameIsReadFromTheShiftedParts)
{
    provide({"my.Demo.3.4.5.dll"});
    CommandInterface *const plugin = manager.loadMaxVersionPlugin("my.Demo");
    EXPECT_EQ(manager.getCommandInterface("my.Demo", {0, 3}), plugin);
    expectNotLoaded("my.Demo", {3, 4}, "my.Demo.3.4");
}

} // namespace

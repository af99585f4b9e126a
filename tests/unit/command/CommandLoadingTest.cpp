#include "unit/command/CommandManagerFixture.h"

#include <cstdlib>

namespace {

using namespace KvSyncTest;

class CommandLoading : public CommandManagerFixture
{
};

TEST_F(CommandLoading, TakesVersionOneForOneZero)
{
    provide({"Demo.1.0.4.dll"});
    CommandInterface *const plugin = manager.load("Demo", {1});
    EXPECT_NE(plugin, nullptr);
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 0}), plugin);
}

TEST_F(CommandLoading, OfNamesThatDifferOnlyBeyondLatin1YieldsOnePlugin)
{
    provide({"Xemo.1.0.1.dll"});
    CommandInterface *const plugin = manager.load(QStringLiteral("\u0414emo"), {1, 0});
    EXPECT_EQ(manager.load(QStringLiteral("\u0416emo"), {1, 0}), plugin);
}

TEST_F(CommandLoading, GivesEveryThirdSegmentTheSameLibraryWithoutTouchingTheDisk)
{
    provide({"Demo.1.0.4.dll"});
    CommandInterface *const plugin = manager.load("Demo", {1});
    log.clear();
    manager.setPluginDirPath("no such folder");
    EXPECT_EQ(manager.load("Demo", {1, 0, 99}), plugin);
    expectLog({findLine("Demo.1.0")});
}

TEST_F(CommandLoading, KeepsALoadedPluginThoughANewerBuildHasArrived)
{
    provide({"Demo.1.0.1.dll"});
    CommandInterface *const plugin = manager.load("Demo", {1, 0});
    provide({"Demo.1.0.2.dll"});
    EXPECT_EQ(manager.load("Demo", {1, 0}), plugin);
}

TEST_F(CommandLoading, GivesEachVersionLineAnObjectOfItsOwn)
{
    provide({"Demo.1.0.1.dll", "Demo.1.1.1.dll", "Demo.2.0.1.dll"});
    CommandInterface *const first = manager.load("Demo", {1, 0});
    CommandInterface *const second = manager.load("Demo", {1, 1});
    CommandInterface *const third = manager.load("Demo", {2, 0});
    EXPECT_NE(first, second);
    EXPECT_NE(second, third);
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 0}), first);
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 1}), second);
    EXPECT_EQ(manager.getCommandInterface("Demo", {2, 0}), third);
}

TEST_F(CommandLoading, KeepsWhatIsLoadedWhenTheDirectoryChanges)
{
    provide({"Demo.1.0.1.dll"});
    CommandInterface *const plugin = manager.load("Demo", {1, 0});
    ApplicationFolder other;
    manager.setPluginDirPath(other.name());
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 0}), plugin);
    expectThrows(PluginFileNotExist, other.path() + " is no exist dll", [&] {
        manager.load("Demo", {2, 0});
    });
}

TEST_F(CommandLoading, WritesItsLineFromTheOperationThatLoads)
{
    provide({"Demo.1.0.1.dll"});
    manager.load("Demo", {1, 0});
    manager.load("Demo", {1, 0});
    expectLog({loadLine("Demo.1.0.1.dll"), findLine("Demo.1.0")});
    expectWrittenBy(log.lines().at(0), "KvSyncCore::CommandManager::loadSpecifyVersionPlugin(",
                    "CommandManager.cpp");
    expectWrittenBy(log.lines().at(1), "KvSyncCore::CommandManager::getCommandInterface(",
                    "CommandManager.cpp");
}

TEST_F(CommandLoading, LeavesThePluginAliveWhenTheManagerGoes)
{
    provide({"Demo.1.0.1.dll"});
    CommandInterface *plugin = nullptr;
    {
        KvSyncCore::CommandManager brief;
        brief.setPluginDirPath(folder.name());
        plugin = brief.load("Demo", {1, 0});
    }
    EXPECT_EQ(plugin->execute(0, "anything", {}), QVariant());
    // The same file yields the same object: it was never unloaded.
    EXPECT_EQ(manager.load("Demo", {1, 0}), plugin);
}

#if defined(Q_OS_LINUX)
// Qt unloads, at the end, every library that no loader is left for.
TEST_F(CommandLoading, KeepsThePluginsObjectBeyondTheEndOfTheProgram)
{
    folder.copyModule(commandFixture("NeverDeleted"), "Demo.1.0.1.dll");
    const auto loadAndEnd = [this] {
        {
            KvSyncCore::CommandManager brief;
            brief.setPluginDirPath(folder.name());
            brief.load("Demo", {1, 0});
        }
        std::exit(0);
    };
    EXPECT_EXIT(loadAndEnd(), ::testing::ExitedWithCode(0), "");
}
#endif

} // namespace

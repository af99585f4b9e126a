#include "unit/command/CommandManagerFixture.h"

#include "support/CriticalLinesOff.h"
#include "support/UnloadableFiles.h"

#include <functional>

namespace {

using namespace KvSyncTest;

class UnloadableCommandFile : public CommandManagerFixture,
                              public ::testing::WithParamInterface<UnloadableFile>
{
protected:
    UnloadableCommandFile() { GetParam().provide(folder, "Demo.1.0.2.dll"); }

    QString loaderText() const { return loaderError(folder.filePath("Demo.1.0.2.dll")); }

    void expectRefused(const std::function<void()> &load)
    {
        expectThrows(PluginLoadFailed, loaderText(), load);
    }
};

TEST_P(UnloadableCommandFile, ThrowsTheLoadersOwnWords)
{
    EXPECT_FALSE(loaderText().isEmpty());
    expectRefused([this] { manager.load("Demo", {1, 0}); });
}

TEST_P(UnloadableCommandFile, IsLoggedAfterTheLoadingLine)
{
    expectRefused([this] { manager.load("Demo", {1, 0}); });
    expectLog({loadLine("Demo.1.0.2.dll"), criticalLine(loaderText())});
    for (const LogLine &line : log.lines())
        expectWrittenBy(line, "KvSyncCore::CommandManager::loadSpecifyVersionPlugin(",
                        "CommandManager.cpp");
}

TEST_P(UnloadableCommandFile, OfTheHighestVersionIsLoggedByItsOwnOperation)
{
    expectRefused([this] { manager.loadMaxVersionPlugin("Demo"); });
    expectLog({loadLine("Demo.1.0.2.dll"), criticalLine(loaderText())});
    for (const LogLine &line : log.lines())
        expectWrittenBy(line, "KvSyncCore::CommandManager::loadMaxVersionPlugin(",
                        "CommandManager.cpp");
}

TEST_P(UnloadableCommandFile, ThrowsTheSameWhenCriticalLinesAreOff)
{
    const CriticalLinesOff off;
    expectRefused([this] { manager.load("Demo", {1, 0}); });
    expectRefused([this] { manager.loadMaxVersionPlugin("Demo"); });
    EXPECT_EQ(log.lines(Channel::QtCritical), std::vector<LogLine>());
}

TEST_P(UnloadableCommandFile, IsNotTriedAroundByAnOlderBuild)
{
    provide({"Demo.1.0.1.dll"});
    expectRefused([this] { manager.load("Demo", {1, 0}); });
}

TEST_P(UnloadableCommandFile, StoresNothingAndANewerBuildLoads)
{
    expectRefused([this] { manager.load("Demo", {1, 0}); });
    expectNotLoaded("Demo", {1, 0}, "Demo.1.0");
    expectNotLoaded("Demo", {}, "Demo.0.0");
    provide({"Demo.1.0.3.dll"});
    EXPECT_NE(manager.load("Demo", {1, 0}), nullptr);
}

INSTANTIATE_TEST_SUITE_P(CommandManager, UnloadableCommandFile,
                         ::testing::ValuesIn(unloadableFiles), rowName);

#if defined(Q_OS_LINUX)
// Windows says only that some module was not found.
TEST_F(CommandManagerFixture, AMissingLibraryStandsInTheFailureByName)
{
    folder.copyModule(commandFixture("MissingLibrary"), "Demo.1.0.1.dll");
    try {
        manager.load("Demo", {1, 0});
        FAIL() << "loaded";
    } catch (const KvSyncTool::Exception &exception) {
        EXPECT_TRUE(exception.message().contains("libAbsentLibrary")) << exception.what();
    }
}
#endif

} // namespace

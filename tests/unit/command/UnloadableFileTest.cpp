#include "unit/command/CommandManagerFixture.h"

#include "support/CriticalLinesOff.h"

#include <QtCore/QPluginLoader>

#include <functional>

namespace {

using namespace KvSyncTest;

struct UnloadableRow
{
    const char *name;
    void (*provide)(ApplicationFolder &folder, const QString &fileName);
};

const UnloadableRow unloadables[] = {
    {"TextFile",
     [](ApplicationFolder &folder, const QString &fileName) { folder.writeText(fileName); }},
    {"EmptyFile",
     [](ApplicationFolder &folder, const QString &fileName) { folder.writeText(fileName, ""); }},
    {"TruncatedModule",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.writeTruncated(commandFixture("Recorder"), fileName);
     }},
    {"MissingLibrary",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.copyModule(commandFixture("MissingLibrary"), fileName);
     }},
    {"NullRoot",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.copyModule(commandFixture("NullRoot"), fileName);
     }},
};

class UnloadableFile : public CommandManagerFixture,
                       public ::testing::WithParamInterface<UnloadableRow>
{
protected:
    UnloadableFile() { GetParam().provide(folder, "Demo.1.0.2.dll"); }

    /// What Qt itself says of the file.
    QString loaderText() const
    {
        QPluginLoader loader(folder.filePath("Demo.1.0.2.dll"));
        EXPECT_EQ(loader.instance(), nullptr);
        return loader.errorString();
    }

    void expectRefused(const std::function<void()> &load)
    {
        expectThrows(PluginLoadFailed, loaderText(), load);
    }
};

TEST_P(UnloadableFile, ThrowsTheLoadersOwnWords)
{
    EXPECT_FALSE(loaderText().isEmpty());
    expectRefused([this] { manager.load("Demo", {1, 0}); });
}

TEST_P(UnloadableFile, IsLoggedAfterTheLoadingLine)
{
    expectRefused([this] { manager.load("Demo", {1, 0}); });
    expectLog({loadLine("Demo.1.0.2.dll"), criticalLine(loaderText())});
    for (const LogLine &line : log.lines())
        expectWrittenBy(line, "KvSyncCore::CommandManager::loadSpecifyVersionPlugin(",
                        "CommandManager.cpp");
}

TEST_P(UnloadableFile, OfTheHighestVersionIsLoggedByItsOwnOperation)
{
    expectRefused([this] { manager.loadMaxVersionPlugin("Demo"); });
    expectLog({loadLine("Demo.1.0.2.dll"), criticalLine(loaderText())});
    for (const LogLine &line : log.lines())
        expectWrittenBy(line, "KvSyncCore::CommandManager::loadMaxVersionPlugin(",
                        "CommandManager.cpp");
}

TEST_P(UnloadableFile, ThrowsTheSameWhenCriticalLinesAreOff)
{
    const CriticalLinesOff off;
    expectRefused([this] { manager.load("Demo", {1, 0}); });
    expectRefused([this] { manager.loadMaxVersionPlugin("Demo"); });
    EXPECT_EQ(log.lines(Channel::QtCritical), std::vector<LogLine>());
}

TEST_P(UnloadableFile, IsNotTriedAroundByAnOlderBuild)
{
    provide({"Demo.1.0.1.dll"});
    expectRefused([this] { manager.load("Demo", {1, 0}); });
}

TEST_P(UnloadableFile, StoresNothingAndANewerBuildLoads)
{
    expectRefused([this] { manager.load("Demo", {1, 0}); });
    expectNotLoaded("Demo", {1, 0}, "Demo.1.0");
    expectNotLoaded("Demo", {}, "Demo.0.0");
    provide({"Demo.1.0.3.dll"});
    EXPECT_NE(manager.load("Demo", {1, 0}), nullptr);
}

INSTANTIATE_TEST_SUITE_P(CommandManager, UnloadableFile, ::testing::ValuesIn(unloadables), rowName);

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

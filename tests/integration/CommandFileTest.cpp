// Which file loadCommandPlugin takes.

#include "integration/HostFixture.h"
#include "support/LocaleCodec.h"
#include "support/PluginFileChoices.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QPluginLoader>
#include <QtCore/QPointer>

namespace {

using namespace KvSyncTest;

const QVersionNumber version(1, 0);

class CommandFile : public HostFixture
{
protected:
    void put(const QString &fileName) { folder.copyModule(commandFixture("Recorder"), fileName); }

    void expectLoads(const QString &fileName, const QString &name = "Part",
                     const QVersionNumber &asked = version)
    {
        log.clear();
        EXPECT_NO_THROW(core.loadCommandPlugin(name, asked));
        EXPECT_EQ(log.lines(),
                  std::vector{debugLine("load device plugin " + folder.filePath(fileName))});
    }

    void expectNoFile(const QString &name)
    {
        expectThrows(PluginFileNotExist, folder.path() + " is no exist dll",
                     [&] { core.loadCommandPlugin(name, version); });
    }
};

// Choice

class CommandFileChoice : public CommandFile, public ::testing::WithParamInterface<PluginFileChoice>
{
protected:
    void get() { core.getCommandPlugin(GetParam().plugin, GetParam().version); }

    const LocaleCodec utf8{"UTF-8"};
};

TEST_P(CommandFileChoice, IsThatOfTheTable)
{
    const auto &[name, plugin, asked, key, files, taken] = GetParam();
    provideFiles(GetParam(), folder.path(), commandFixture("Recorder"));
    if (taken.isEmpty())
        expectNoFile(plugin);
    else
        expectLoads(taken, plugin, asked);
}

TEST_P(CommandFileChoice, IsKeptUnderItsKey)
{
    const auto &[name, plugin, asked, key, files, taken] = GetParam();
    expectThrows(PluginNotLoaded, key + " plugin is not exist", [this] { get(); });
    if (taken.isEmpty())
        return;
    provideFiles(GetParam(), folder.path(), commandFixture("Recorder"));
    core.loadCommandPlugin(plugin, asked);
    EXPECT_NE(core.getCommandPlugin(plugin, asked), nullptr);
    EXPECT_NE(core.getCommandPlugin(plugin, {}), nullptr);
    EXPECT_EQ(log.lines().back(), findLine(key));
}

INSTANTIATE_TEST_SUITE_P(SyncCore, CommandFileChoice, ::testing::ValuesIn(pluginFileChoices()),
                         rowName);

TEST_F(CommandFile, NeedNotBeExecutable)
{
    put("Part.1.0.1.dll");
    ASSERT_TRUE(QFile::setPermissions(folder.filePath("Part.1.0.1.dll"), QFile::ReadOwner));
    expectLoads("Part.1.0.1.dll");
}

#ifdef Q_OS_UNIX

TEST_F(CommandFile, IsFoundThroughALinkToItsFolder)
{
    folder.makeFolder("below");
    put("below/Part.1.0.1.dll");
    ASSERT_TRUE(QFile::link(folder.filePath("below"), folder.filePath("link")));
    core.init(folder.name() + "/link", "Device");
    expectLoads("link/Part.1.0.1.dll");
}

#endif

// The folder

class CommandFolder : public CommandFile
{
protected:
    QString missing(const QString &name) const
    {
        return QCoreApplication::applicationDirPath() + "/" + name + " is no exist path";
    }
};

TEST_F(CommandFolder, WithAFileInItsPlaceDoesNotExist)
{
    folder.writeText("file");
    core.init(folder.name() + "/file", "Device");
    expectThrows(PathNotExist, missing(folder.name() + "/file"),
                 [this] { core.loadCommandPlugin("Part", version); });
}

TEST_F(CommandFolder, ThatIsEmptyExistsAndHoldsNoFile)
{
    folder.makeFolder("50%s%n");
    core.init(folder.name() + "/50%s%n", "Device");
    expectThrows(PluginFileNotExist, folder.path() + "/50%s%n is no exist dll",
                 [this] { core.loadCommandPlugin("Part", version); });
}

TEST_F(CommandFolder, StandsInFailuresAsItWasGivenAndCleanInTheLineOfLoading)
{
    core.init(folder.name() + "/./", "Device");
    expectThrows(PluginFileNotExist, folder.path() + "/./ is no exist dll",
                 [this] { core.loadCommandPlugin("Part", version); });
    put("Part.1.0.1.dll");
    expectLoads("Part.1.0.1.dll");
}

TEST_F(CommandFolder, IsAskedForAgainByEachLoadingThatFailed)
{
    core.init(folder.name() + "/later", "Device");
    expectThrows(PathNotExist, missing(folder.name() + "/later"),
                 [this] { core.loadCommandPlugin("Part", version); });
    folder.makeFolder("later");
    put("later/Part.1.0.1.dll");
    expectLoads("later/Part.1.0.1.dll");
}

// Loaders of the host's own

TEST_F(CommandFile, ThatTheHostHadLoadedStaysWhenTheHostUnloadsIt)
{
    put("Part.1.0.1.dll");
    QPluginLoader loaderOfHost(folder.filePath("Part.1.0.1.dll"));
    ASSERT_TRUE(loaderOfHost.load());
    core.loadCommandPlugin("Part", version);
    const QPointer<CommandInterface> part(core.getCommandPlugin("Part", version));
    EXPECT_FALSE(loaderOfHost.unload()) << "nobody else counts as a user";
    ASSERT_TRUE(part);
    EXPECT_NO_THROW(core.execute("Part", "closeDevices", {1}, version));
}

} // namespace

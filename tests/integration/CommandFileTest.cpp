// Which file loadCommandPlugin takes.

#include "integration/HostFixture.h"
#include "support/LocaleCodec.h"

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
    /// Files that do not load: were one of them taken, loading would fail.
    void putDecoys(const QStringList &fileNames)
    {
        for (const QString &fileName : fileNames)
            folder.writeText(fileName);
    }

    void put(const QString &fileName) { folder.copyModule(commandFixture("Recorder"), fileName); }

    void expectLoads(const QString &fileName, const QString &name = "Part",
                     const QVersionNumber &asked = version)
    {
        log.clear();
        EXPECT_NO_THROW(core.loadCommandPlugin(name, asked));
        EXPECT_EQ(log.lines(),
                  std::vector{debugLine("load device plugin " + folder.filePath(fileName))});
    }

    void expectNoFile(const QString &name = "Part")
    {
        expectThrows(PluginFileNotExist, folder.path() + " is no exist dll",
                     [&] { core.loadCommandPlugin(name, version); });
    }
};

// Builds

TEST_F(CommandFile, WithABuildBeyondThirtyTwoBitsCountsAsBuildZero)
{
    put("Part.1.0.1.dll");
    putDecoys(
        {"Part.1.0.2147483648.dll", "Part.1.0.4294967297.dll", "Part.1.0.9223372036854775808.dll"});
    expectLoads("Part.1.0.1.dll");
}

TEST_F(CommandFile, WithTheLargestIntAsBuildIsTheHighest)
{
    put("Part.1.0.2147483647.dll");
    putDecoys({"Part.1.0.2147483646.dll", "Part.1.0.2147483648.dll"});
    expectLoads("Part.1.0.2147483647.dll");
}

TEST_F(CommandFile, WithAnEmptyBuildCountsAsBuildZero)
{
    put("Part.1.0.1.dll");
    putDecoys({"Part.1.0..dll"});
    expectLoads("Part.1.0.1.dll");
}

TEST_F(CommandFile, WithABuildOfSeveralPartsIsComparedByTheFirst)
{
    put("Part.1.0.5.1.dll");
    putDecoys({"Part.1.0.4.99.dll"});
    expectLoads("Part.1.0.5.1.dll");
}

TEST_F(CommandFile, IsComparedByItsBuildAlone)
{
    put("Part.1.0.5.dll");
    putDecoys({"P.9.9.1.0.1.dll"});
    expectLoads("Part.1.0.5.dll", "P*");
}

TEST_F(CommandFile, OfVersionZeroIsFoundByAVersionOfOneZero)
{
    put("Part.0.0.1.dll");
    expectLoads("Part.0.0.1.dll", "Part", QVersionNumber(0));
}

// Names

struct NameRow
{
    const char *name;
    QString pluginName;
    QString fileName;
};

class CommandFileName : public CommandFile, public ::testing::WithParamInterface<NameRow>
{
protected:
    const LocaleCodec utf8{"UTF-8"};
};

TEST_P(CommandFileName, LeadsToTheFileAndToThePlugin)
{
    const auto &[row, pluginName, fileName] = GetParam();
    put(fileName);
    expectLoads(fileName, pluginName);
    EXPECT_NE(core.getCommandPlugin(pluginName, version), nullptr);
    EXPECT_EQ(core.execute(pluginName, "getRunningDevList", {}, {}), QVariant(QVariantList()));
}

const NameRow names[] = {
    {"PercentSigns", "50%s%n", "50%s%n.1.0.1.dll"},
    {"Wildcards", "P?r*", "Part.1.0.1.dll"},
    {"SetOfLetters", "P[ao]rt", "Part.1.0.1.dll"},
    {"OtherCase", "part", "PART.1.0.1.DLL"},
    {"LetterOfLatin1", QStringLiteral("P\u00e4rt"), QStringLiteral("P\ufffdrt.1.0.1.dll")},
    {"LetterBeyondLatin1", QStringLiteral("\u041fart"), QStringLiteral("\u041fart.1.0.1.dll")},
};
INSTANTIATE_TEST_SUITE_P(Names, CommandFileName, ::testing::ValuesIn(names), rowName);

TEST_F(CommandFile, IsNotLookedForInAnotherFolderByItsName)
{
    folder.makeFolder("below");
    put("below/Part.1.0.1.dll");
    expectNoFile("below/Part");
}

// What is no file

TEST_F(CommandFile, IsNotShadowedByAFolderNamedLikeAHigherBuild)
{
    put("Part.1.0.1.dll");
    folder.makeFolder("Part.1.0.2.dll");
    expectLoads("Part.1.0.1.dll");
}

TEST_F(CommandFile, NeedNotBeExecutable)
{
    put("Part.1.0.1.dll");
    ASSERT_TRUE(QFile::setPermissions(folder.filePath("Part.1.0.1.dll"), QFile::ReadOwner));
    expectLoads("Part.1.0.1.dll");
}

#ifdef Q_OS_UNIX

TEST_F(CommandFile, ThatIsHiddenIsNotSeen)
{
    put(".Part.1.0.1.dll");
    expectNoFile(".Part");
}

TEST_F(CommandFile, ThatIsALinkIsLoadedUnderItsOwnName)
{
    put("elsewhere.bin");
    ASSERT_TRUE(QFile::link(folder.filePath("elsewhere.bin"), folder.filePath("Part.1.0.1.dll")));
    expectLoads("Part.1.0.1.dll");
}

TEST_F(CommandFile, ThatIsALinkToNothingIsNotSeen)
{
    ASSERT_TRUE(QFile::link(folder.filePath("gone.bin"), folder.filePath("Part.1.0.1.dll")));
    expectNoFile();
}

TEST_F(CommandFile, ThatIsALinkToAFolderIsNotSeen)
{
    folder.makeFolder("below");
    ASSERT_TRUE(QFile::link(folder.filePath("below"), folder.filePath("Part.1.0.1.dll")));
    expectNoFile();
}

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

// "kvsync plugins why --load" over plug-ins that do the worst to whoever loads them.
#include "PluginFolders.h"

#include "support/ApplicationFolder.h"

#include <QtCore/QProcess>

using namespace KvSyncTest;

namespace {

class KvsyncPluginsTrial : public ::testing::Test
{
protected:
    QJsonObject loaded(const char *fixture, const QStringList &options = loadPatiently())
    {
        const QString path = folders.logicFile(QStringLiteral("Demo.1.0.1.dll"));
        copyFile(commandFixture(QString::fromUtf8(fixture)), path);
        return folders.why(path, options);
    }

    PluginFolders folders;
};

} // namespace

TEST_F(KvsyncPluginsTrial, PluginThatEndsItsProcessBadlyIsTold)
{
    const QJsonObject file = loaded("AbortsWhenMade");
    EXPECT_EQ(codes(file), "load-failed");
#if defined(_WIN32)
    EXPECT_EQ(firstText(file), "the process that loaded it ended with status 3");
#else
    EXPECT_EQ(firstText(file), "the process that loaded it crashed");
#endif
}

TEST_F(KvsyncPluginsTrial, PluginThatEndsItsProcessAsIfAllWereWellIsTold)
{
    const QJsonObject file = loaded("ExitsWhenMade");
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_EQ(firstText(file), "the process that loaded it ended before it was loaded");
}

TEST_F(KvsyncPluginsTrial, PluginThatHangsIsGivenUp)
{
    const QJsonObject file =
        loaded("HangsWhenMade",
               {QStringLiteral("--load"), QStringLiteral("--timeout"), QStringLiteral("300")});
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_EQ(firstText(file), "the process that loaded it did not end within 300 ms");
}

TEST_F(KvsyncPluginsTrial, PluginMayPrintAsMuchAsItLikes)
{
    const QJsonObject file = loaded("PrintsWhenMade");
    EXPECT_EQ(codes(file), "");
    EXPECT_EQ(warnings(file), "");
}

TEST_F(KvsyncPluginsTrial, PluginThatHarmsItsHostAtTheEndLoadsWithAWarning)
{
    const QJsonObject file = loaded("AbortsAtExit");
    EXPECT_EQ(codes(file), "");
#if defined(_WIN32)
    EXPECT_EQ(warnings(file),
              "harms-host: the process that had loaded it ended with status 3 at its end");
#else
    EXPECT_EQ(warnings(file), "harms-host: the process that had loaded it crashed at its end");
#endif
}

TEST_F(KvsyncPluginsTrial, LimitOutsideItsRangeIsAWrongCommandLine)
{
    const Outcome outcome =
        folders.run({QStringLiteral("plugins"), QStringLiteral("--timeout"), QStringLiteral("0")});
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(KvsyncPluginsTrial, NoHelpShowsTheCommandOfTheOtherProcess)
{
    const Outcome outcome = runKvsync({QStringLiteral("plugins"), QStringLiteral("--help")});
    EXPECT_TRUE(outcome.output.contains(QStringLiteral("why"))) << outcome.output.toStdString();
    EXPECT_FALSE(outcome.output.contains(QStringLiteral("trial"))) << outcome.output.toStdString();
}

#if !defined(_WIN32)
TEST_F(KvsyncPluginsTrial, UndefinedVariableKeepsItFromLoading)
{
    const QJsonObject file = loaded("LacksData");
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_NE(firstText(file).find("undefined symbol: kvSyncTestAbsentNumber"), std::string::npos)
        << firstText(file);
}

TEST_F(KvsyncPluginsTrial, UndefinedFunctionIsAWarningForItLoadsUntilItIsCalled)
{
    const QJsonObject file = loaded("LacksFunction");
    EXPECT_EQ(codes(file), "");
    EXPECT_EQ(warnings(file).find("harms-host: Cannot load library "), 0u) << warnings(file);
    EXPECT_NE(warnings(file).find("undefined symbol: "), std::string::npos) << warnings(file);
}
#endif

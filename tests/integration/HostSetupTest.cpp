#include "integration/HostFixture.h"

#include <QtCore/QCoreApplication>

namespace {

using namespace KvSyncTest;
using KvSyncCore::SyncCore;

QString missing(const QString &directory)
{
    return QCoreApplication::applicationDirPath() + "/" + directory + " is no exist path";
}

struct RefusedRow
{
    const char *name;
    QString command;
    QString device;
    const char *text;
};

class RefusedDirectories : public HostFixture, public ::testing::WithParamInterface<RefusedRow>
{
protected:
    void expectRefused()
    {
        expectThrows(InvalidParameter, QString::fromUtf8(GetParam().text),
                     [this] { core.init(GetParam().command, GetParam().device); });
    }
};

TEST_P(RefusedDirectories, ThrowAndNothingIsLogged)
{
    expectRefused();
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_P(RefusedDirectories, LeaveThePreviousOnesInForce)
{
    core.init("commands", "devices");
    expectRefused();
    expectThrows(PathNotExist, missing("commands"), [this] { core.loadCommandPlugin("X", {1}); });
    core.init(folder.name(), "devices");
    expectRefused();
    EXPECT_EQ(loadDemo().loadDevicePlugin("X", {1}), PathNotExist);
    EXPECT_EQ(log.lines(Channel::QtCritical).back(), criticalLine(missing("devices")));
}

const RefusedRow refused[] = {
    {"Equal", "a", "a", "Plug-in path  a and Plug-in path a cannot be the same or null"},
    {"EmptyCommand", "", "b", "Plug-in path   and Plug-in path b cannot be the same or null"},
    {"EmptyDevice", "a", "", "Plug-in path  a and Plug-in path  cannot be the same or null"},
    {"PercentSigns", "50%s%n", "50%s%n",
     "Plug-in path  50%s%n and Plug-in path 50%s%n cannot be the same or null"},
    {"BothEmpty", "", "", "Plug-in path   and Plug-in path  cannot be the same or null"},
    {"EqualBeyondLatin1", QStringLiteral("\u00e9\u0414"), QStringLiteral("\u00e9\u0414"),
     "Plug-in path  \xef\xbf\xbd? and Plug-in path \xef\xbf\xbd? cannot be the same or null"},
};
INSTANTIATE_TEST_SUITE_P(SyncCore, RefusedDirectories, ::testing::ValuesIn(refused), rowName);

class HostSetup : public HostFixture
{
};

TEST_F(HostSetup, AcceptsDirectoriesThatDifferInCaseAlone)
{
    EXPECT_NO_THROW(core.init("A", "a"));
    EXPECT_NO_THROW(core.init("a", "A"));
}

TEST_F(HostSetup, AcceptsDirectoriesThatLookAlikeOnlyInTheText)
{
    // Both read "?" in Latin-1, but they differ.
    EXPECT_NO_THROW(core.init(QStringLiteral("\u0414"), QStringLiteral("\u0416")));
}

TEST_F(HostSetup, LogsNothingWhenItIsAccepted)
{
    core.init("a", "b");
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(HostSetup, LooksIntoLogicAndDeviceWithoutIt)
{
    SyncCore fresh;
    expectThrows(PathNotExist, missing("Logic"), [&] { fresh.loadCommandPlugin("X", {1}); });
    fresh.init(folder.name(), "Device");
    EXPECT_EQ(loadDemo().loadDevicePlugin("X", {1}), PathNotExist);
    EXPECT_EQ(log.lines(Channel::QtCritical).back(), criticalLine(missing("Device")));
}

TEST_F(HostSetup, TakesTheCommandDirectoryFirst)
{
    core.init("commands", "devices");
    expectThrows(PathNotExist, missing("commands"), [this] { core.loadCommandPlugin("X", {1}); });
}

TEST_F(HostSetup, MayBeRepeatedAndTouchesNoLoadedPlugin)
{
    loadDemo();
    CommandInterface *const plugin = core.getCommandPlugin("Demo", {1, 0});
    core.init("commands", "devices");
    EXPECT_EQ(core.getCommandPlugin("Demo", {1, 0}), plugin);
    expectThrows(PathNotExist, missing("commands"), [this] { core.loadCommandPlugin("X", {1}); });
    EXPECT_EQ(control().loadDevicePlugin("X", {1}), PathNotExist);
    EXPECT_EQ(log.lines(Channel::QtCritical).back(), criticalLine(missing("devices")));
}

TEST_F(HostSetup, GivesTheFacadeNoParent)
{
    EXPECT_EQ(core.parent(), nullptr);
}

} // namespace

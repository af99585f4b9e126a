#include "unit/command/CommandManagerFixture.h"

#include "support/CriticalLinesOff.h"

#include <QtCore/QCoreApplication>

#include <functional>

namespace {

using namespace KvSyncTest;
using KvSyncCore::CommandManager;

/// One way to fail. "%1" in a text is the path of the test's folder, "%2" the application's.
struct FailureRow
{
    const char *name;
    std::function<void(CommandManager &)> act;
    ErrorCode code;
    const char *text;
    const char *logged;
    const char *operation;
    bool looksUp = false; ///< a debug line of the lookup comes first
};

void loadFrom(CommandManager &manager, const QString &directory)
{
    manager.setPluginDirPath(directory);
    manager.load("Demo", {1, 0});
}

const FailureRow failures[] = {
    {"EmptyDirectory", [](CommandManager &manager) { manager.setPluginDirPath(QString()); },
     InvalidParameter, "", "plugin path is null", "setPluginDirPath("},
    {"EmptyName",
     [](CommandManager &manager) {
         manager.load("", {1, 0});
     },
     InvalidParameter, "plugin name or version is null", nullptr, "load("},
    {"NullVersion", [](CommandManager &manager) { manager.load("Demo", {}); }, InvalidParameter,
     "plugin name or version is null", nullptr, "load("},
    {"MissingDirectory", [](CommandManager &manager) { loadFrom(manager, "nowhere/./x"); },
     PathNotExist, "%2/nowhere/./x is no exist path", nullptr, "loadSpecifyVersionPlugin("},
    {"AbsoluteDirectory", [](CommandManager &manager) { loadFrom(manager, "/tmp"); }, PathNotExist,
     "%2//tmp is no exist path", nullptr, "loadSpecifyVersionPlugin("},
    {"DirectoryInLatin1",
     [](CommandManager &manager) { loadFrom(manager, QStringLiteral("\u00e9\u0414")); },
     PathNotExist, "%2/\xef\xbf\xbd? is no exist path", nullptr, "loadSpecifyVersionPlugin("},
    {"DirectoryWithPercentSigns", [](CommandManager &manager) { loadFrom(manager, "50%s%n"); },
     PathNotExist, "%2/50%s%n is no exist path", nullptr, "loadSpecifyVersionPlugin("},
    {"DefaultDirectory",
     [](CommandManager &) {
         CommandManager fresh;
         fresh.load("Demo", {1, 0});
     },
     PathNotExist, "%2/Logic is no exist path", nullptr, "loadSpecifyVersionPlugin("},
    {"OtherName",
     [](CommandManager &manager) {
         manager.load("Demonstration", {1, 0});
     },
     PluginFileNotExist, "%1 is no exist dll", nullptr, "loadSpecifyVersionPlugin("},
    {"OtherVersion",
     [](CommandManager &manager) {
         manager.load("Demo", {1, 2});
     },
     PluginFileNotExist, "%1 is no exist dll", nullptr, "loadSpecifyVersionPlugin("},
    {"FolderInsteadOfAFile",
     [](CommandManager &manager) {
         manager.load("Folder", {1, 0});
     },
     PluginFileNotExist, "%1 is no exist dll", nullptr, "loadSpecifyVersionPlugin("},
    {"LookupOfAnUnknownPlugin",
     [](CommandManager &manager) {
         manager.getCommandInterface("Demo", {1, 2, 3});
     },
     PluginNotLoaded, "Demo.1.2 plugin is not exist", nullptr, "getCommandInterface(", true},
    {"HighestVersionOfAMissingDirectory",
     [](CommandManager &manager) {
         manager.setPluginDirPath("nowhere");
         manager.loadMaxVersionPlugin("Demo");
     },
     PathNotExist, "%2/nowhere is no exist path", nullptr, "loadMaxVersionPlugin("},
    {"HighestVersionOfAnotherName",
     [](CommandManager &manager) { manager.loadMaxVersionPlugin("Demonstration"); },
     PluginFileNotExist, "%1 is no exist dll", nullptr, "loadMaxVersionPlugin("},
    {"HighestVersionOfAnEmptyName",
     [](CommandManager &manager) { manager.loadMaxVersionPlugin(""); }, PluginFileNotExist,
     "%1 is no exist dll", nullptr, "loadMaxVersionPlugin("},
};

class EachFailure : public CommandManagerFixture, public ::testing::WithParamInterface<FailureRow>
{
protected:
    EachFailure()
    {
        provide({"Demo.1.0.1.dll"});
        folder.makeFolder("Folder.1.0.1.dll");
    }

    QString filledIn(const char *text) const
    {
        return QString::fromUtf8(text)
            .replace("%1", folder.path())
            .replace("%2", QCoreApplication::applicationDirPath());
    }

    QString text() const { return filledIn(GetParam().text); }
    QString logged() const { return GetParam().logged ? filledIn(GetParam().logged) : text(); }
};

TEST_P(EachFailure, ThrowsItsCodeAndText)
{
    expectThrows(GetParam().code, text(), [this] { GetParam().act(manager); });
}

TEST_P(EachFailure, IsLoggedOnceAsCriticalByTheOperationThatFailed)
{
    expectThrows(GetParam().code, text(), [this] { GetParam().act(manager); });
    std::vector<LogLine> expected{criticalLine(logged())};
    if (GetParam().looksUp)
        expected.insert(expected.begin(), findLine("Demo.1.2"));
    expectLog(expected);
    expectWrittenBy(log.lines().back(),
                    std::string("KvSyncCore::CommandManager::") + GetParam().operation,
                    "CommandManager.cpp");
}

TEST_P(EachFailure, ThrowsTheSameAndLogsNothingWhenCriticalLinesAreOff)
{
    const CriticalLinesOff off;
    expectThrows(GetParam().code, text(), [this] { GetParam().act(manager); });
    EXPECT_EQ(log.lines(Channel::QtCritical), std::vector<LogLine>());
}

TEST_P(EachFailure, StoresNothing)
{
    expectThrows(GetParam().code, text(), [this] { GetParam().act(manager); });
    for (const char *name : {"Demo", "Demonstration", "Folder", ""})
        expectNotLoaded(name, {}, QString(name) + ".0.0");
    expectNotLoaded("Demo", {1, 0}, "Demo.1.0");
}

TEST_P(EachFailure, LeavesWhatIsLoadedLoaded)
{
    CommandInterface *const plugin = manager.load("Demo", {1, 0});
    // Some rows succeed once Demo 1.0 is loaded: what counts here is what stays.
    try {
        GetParam().act(manager);
    } catch (const KvSyncTool::Exception &) {
    }
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 0}), plugin);
    EXPECT_EQ(manager.getCommandInterface("Demo", {}), plugin);
}

INSTANTIATE_TEST_SUITE_P(CommandManager, EachFailure, ::testing::ValuesIn(failures), rowName);

class DirectorySetting : public CommandManagerFixture
{
};

TEST_F(DirectorySetting, ThatIsEmptyLeavesThePreviousOneInForce)
{
    provide({"Demo.1.0.1.dll"});
    expectThrows(InvalidParameter, "", [this] { manager.setPluginDirPath(""); });
    EXPECT_NE(manager.load("Demo", {1, 0}), nullptr);
}

TEST_F(DirectorySetting, ThatIsAcceptedIsNotLookedUpAndNotLogged)
{
    manager.setPluginDirPath("nowhere");
    expectLog({});
}

} // namespace

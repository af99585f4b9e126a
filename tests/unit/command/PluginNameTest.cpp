#include "unit/command/CommandManagerFixture.h"

#include "support/LocaleCodec.h"

namespace {

using namespace KvSyncTest;

/// A plug-in that is asked for as `name`, and the file that is found for it.
struct NameRow
{
    const char *name;
    QString pluginName;
    QString fileName;
    QString key;
};

class EachName : public CommandManagerFixture, public ::testing::WithParamInterface<NameRow>
{
protected:
    const LocaleCodec utf8{"UTF-8"};
};

TEST_P(EachName, FindsItsFileAndIsKeptUnderItsKey)
{
    const auto &[row, pluginName, fileName, key] = GetParam();
    provide({fileName});
    CommandInterface *const plugin = manager.load(pluginName, {1, 0});
    EXPECT_NE(plugin, nullptr);
    EXPECT_EQ(manager.getCommandInterface(pluginName, {1, 0}), plugin);
    EXPECT_EQ(manager.getCommandInterface(pluginName, {}), plugin);
    expectLog({loadLine(fileName), findLine(key), findLine(key)});
}

TEST_P(EachName, StandsInTheFailureAsItsKey)
{
    expectNotLoaded(GetParam().pluginName, {1, 0}, GetParam().key);
}

// Names go through Latin-1, whose bytes are then read as UTF-8.
const NameRow names[] = {
    {"Blanks", "My Demo", "My Demo.1.0.1.dll", "My Demo.1.0"},
    {"Dots", "my.Demo", "my.Demo.1.0.1.dll", "my.Demo.1.0"},
    {"OtherCase", "demo", "DEMO.1.0.1.dll", "demo.1.0"},
    {"PercentSign", "50%d", "50%d.1.0.1.dll", "50%d.1.0"},
    {"Wildcard", "D?m*", "Demo.1.0.1.dll", "D?m*.1.0"},
    {"LetterOfLatin1", QStringLiteral("D\u00e9mo"), QStringLiteral("D\ufffdmo.1.0.1.dll"),
     QStringLiteral("D\ufffdmo.1.0")},
    {"LetterBeyondLatin1", QStringLiteral("\u0414emo"), QStringLiteral("\u0414emo.1.0.1.dll"),
     "?emo.1.0"},
    {"LetterBeyondLatin1MatchesAny", QStringLiteral("\u0414emo"), "Xemo.1.0.1.dll", "?emo.1.0"},
};
INSTANTIATE_TEST_SUITE_P(CommandManager, EachName, ::testing::ValuesIn(names), rowName);

class PluginName : public CommandManagerFixture
{
protected:
    const LocaleCodec utf8{"UTF-8"};
};

TEST_F(PluginName, WithALetterOfLatin1DoesNotFindTheFileOfThatName)
{
    provide({QStringLiteral("D\u00e9mo.1.0.1.dll")});
    expectThrows(PluginFileNotExist, folder.path() + " is no exist dll", [this] {
        manager.load(QStringLiteral("D\u00e9mo"), {1, 0});
    });
}

TEST_F(PluginName, WithADotShiftsThePartsSoThatBuildsAreNotCompared)
{
    // Part 3 is the minor number now, equal in both: the one that is listed first is taken.
    provide({"my.Demo.1.0.1.dll"});
    folder.writeText("my.Demo.1.0.2.dll");
    EXPECT_NE(manager.load("my.Demo", {1, 0}), nullptr);
    expectLog({loadLine("my.Demo.1.0.1.dll")});
}

TEST_F(PluginName, ThatDiffersOnlyBeyondLatin1SharesOneLibrary)
{
    provide({"Xemo.1.0.1.dll"});
    CommandInterface *const plugin = manager.load(QStringLiteral("\u0414emo"), {1, 0});
    EXPECT_EQ(manager.load(QStringLiteral("\u0416emo"), {1, 0}), plugin);
}

TEST_F(PluginName, WithAHigherBuildElsewhereIsFoundByItsPrefixAlone)
{
    provide({"Demo.1.0.1.dll"});
    folder.writeText("Demo.1.0.1.dll.old");
    folder.writeText("Demo2.1.0.9.dll");
    folder.writeText("MyDemo.1.0.9.dll");
    EXPECT_NE(manager.load("Demo", {1, 0}), nullptr);
    expectLog({loadLine("Demo.1.0.1.dll")});
}

} // namespace

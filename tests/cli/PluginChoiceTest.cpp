// The file that the core takes is the one that kvsync calls selected.

#include "PluginFolders.h"

#include "support/ApplicationFolder.h"
#include "support/LocaleCodec.h"
#include "support/PluginFileChoices.h"
#include "support/RowName.h"

#include <QtCore/QJsonArray>

using namespace KvSyncTest;

namespace {

class KvsyncPluginChoice : public ::testing::TestWithParam<PluginFileChoice>
{
protected:
    /// The selected files that kvsync reads as the choice's plug-in and version. It goes by what is
    /// there: a wildcard asks for the plug-in of the file that is taken.
    QStringList selected() const
    {
        const PluginFileChoice &choice = GetParam();
        const QString version = QStringLiteral("%1.%2")
                                    .arg(choice.version.majorVersion())
                                    .arg(choice.version.minorVersion());
        const QString plugin = choice.taken.isEmpty() ? choice.plugin : choice.taken.split('.')[0];
        QStringList found;
        const QJsonObject all = folders.run({"plugins", "--json"}).json();
        for (const QJsonValue &file : all.value("folders")[0]["files"].toArray())
            if (file["selected"].toBool() && file["name"] == plugin && file["version"] == version)
                found.append(file["file"].toString());
        return found;
    }

    const LocaleCodec utf8{"UTF-8"};
    PluginFolders folders;
};

/// Without those that kvsync cannot know: no file tells that its name holds a dot.
std::vector<PluginFileChoice> choicesForKvsync()
{
    std::vector<PluginFileChoice> choices;
    for (const PluginFileChoice &choice : pluginFileChoices())
        if (!choice.plugin.contains('.'))
            choices.push_back(choice);
    return choices;
}

} // namespace

TEST_P(KvsyncPluginChoice, SelectsTheFileThatTheCoreTakes)
{
    const QString taken = GetParam().taken;
    provideFiles(GetParam(), folders.logicFile(""), commandFixture("Recorder"));
    EXPECT_EQ(selected(), taken.isEmpty() ? QStringList() : QStringList{taken});
}

INSTANTIATE_TEST_SUITE_P(Files, KvsyncPluginChoice, ::testing::ValuesIn(choicesForKvsync()),
                         rowName);

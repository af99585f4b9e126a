// A plug-in file that kvsync may not read.

#include "PluginFolders.h"

#include "support/ApplicationFolder.h"
#include "support/Unprivileged.h"

using namespace KvSyncTest;

namespace {

#if defined(_WIN32)
constexpr char systemsReason[] = "";
#else
constexpr char systemsReason[] = "Permission denied";
#endif

class KvsyncPluginsUnreadable : public ::testing::Test
{
protected:
    KvsyncPluginsUnreadable() { copyFile(commandFixture("Recorder"), path); }

    QJsonObject why() const
    {
        return unprivileged([this] { return folders.why(path); });
    }

    PluginFolders folders;
    const QString path = folders.logicFile("Demo.1.0.1.dll");
};

} // namespace

TEST_F(KvsyncPluginsUnreadable, FileIsTakenAndFailsWithTheSystemsReason)
{
    const UnreadableFile unreadable(path);
    const QJsonObject file = why();
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_EQ(firstText(file).find(std::string("it cannot be read: ") + systemsReason), 0u)
        << firstText(file);
    EXPECT_TRUE(file.value("selected").toBool());
    EXPECT_FALSE(file.value("loads").toBool(true));
}

TEST_F(KvsyncPluginsUnreadable, SameFileLoadsInTheSameProcessOnceItIsReadable)
{
    EXPECT_EQ(codes(why()), "");
}

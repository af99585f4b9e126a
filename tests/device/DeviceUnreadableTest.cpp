// A plug-in file, and a folder of them, that the process may not read.

#include "device/support/DeviceTest.h"
#include "support/Unprivileged.h"

#include <QtCore/QFile>

namespace {

using namespace KvSyncTest;

class UnreadableDeviceFile : public DeviceTest
{
protected:
    UnreadableDeviceFile() { copyFixture("Scripted", "Camera.2.1.3.dll"); }

    QString file() const { return folder.filePath("Camera.2.1.3.dll"); }

    ErrorCode load()
    {
        log.clear();
        return unprivileged([this] { return manager->loadDevicePlugin("Camera", {2, 1}); });
    }
};

TEST_F(UnreadableDeviceFile, IsChosenAndFailsToLoadWithTheSystemsReason)
{
    const UnreadableFile unreadable(file());
    EXPECT_EQ(load(), PluginLoadFailed);
    const std::vector<LogLine> lines = log.lines(Channel::QtCritical);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(log.lines(Channel::GlogError), std::vector{glogErrorLine(lines.front().text)});
#ifdef Q_OS_UNIX
    EXPECT_TRUE(lines.front().text.endsWith("ermission denied")) << lines.front();
#endif
}

TEST_F(UnreadableDeviceFile, LoadsForTheSameUserOnceItIsReadable)
{
    {
        const UnreadableFile unreadable(file());
        EXPECT_EQ(load(), PluginLoadFailed);
    }
    EXPECT_EQ(load(), Success);
}

#ifdef Q_OS_UNIX

// Unlike a file, a folder is not named as unreadable: it exists, and nothing is found in it.
TEST_F(UnreadableDeviceFile, InAFolderThatMayNotBeListedIsNotThere)
{
    const QFile::Permissions closed = QFile::WriteOwner | QFile::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), closed));
    EXPECT_EQ(load(), PluginFileNotExist);
    EXPECT_EQ(log.lines(), std::vector{criticalLine(folder.path() + " is no exist dll")});
    // To be deleted, it must be listed.
    EXPECT_TRUE(QFile::setPermissions(folder.path(), closed | QFile::ReadOwner));
}

#endif

} // namespace

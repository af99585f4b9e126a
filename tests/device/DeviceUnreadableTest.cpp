// A plug-in file, and a folder of them, that the process may not read. Root reads everything, so
// the load runs in a child process that has given root's rights up; on Windows the file is held
// open, unshared.

#include "device/support/DeviceTest.h"

#include <QtCore/QFile>

#include <iostream>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace KvSyncTest;

namespace {

class UnreadableDeviceFile : public DeviceTest
{
protected:
    UnreadableDeviceFile()
    {
        copyFixture(QStringLiteral("Scripted"), QStringLiteral("Camera.2.1.3.dll"));
    }

    QString file() const { return folder.filePath(QStringLiteral("Camera.2.1.3.dll")); }

    ErrorCode load()
    {
        log.clear();
        return manager->loadDevicePlugin(QStringLiteral("Camera"), QVersionNumber(2, 1));
    }

    /// The load's result and what it logged as critical.
    std::string report()
    {
        const ErrorCode code = load();
        std::string text = std::to_string(code);
        for (const LogLine &line : log.lines(Channel::QtCritical))
            text += '|' + line.text.toStdString();
        return text;
    }
};

} // namespace

#ifdef Q_OS_WIN

TEST_F(UnreadableDeviceFile, FailsToLoadWithTheSystemsReason)
{
    const HANDLE held = CreateFileW(reinterpret_cast<const wchar_t *>(file().utf16()), GENERIC_READ,
                                    0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(load(), PluginLoadFailed);
    EXPECT_EQ(log.lines(Channel::QtCritical).size(), 1u);
    EXPECT_EQ(log.lines(Channel::GlogError).size(), 1u);
    CloseHandle(held);
    EXPECT_EQ(load(), Success);
}

#else

namespace {

// Root without capabilities is a user like any other, and the way to the tests stays open, also
// below a folder of root's own, which a change of the user would close. It is this thread alone,
// which is the one that loads: a sanitizer's own thread need not follow.
bool becomeUnprivileged()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    return syscall(SYS_capset, &header, none) == 0;
}

} // namespace

TEST_F(UnreadableDeviceFile, IsChosenAndFailsToLoadWithTheSystemsReason)
{
    ASSERT_TRUE(QFile::setPermissions(file(), QFile::Permissions()));
    const auto loadUnprivileged = [this] {
        if (!becomeUnprivileged())
            std::cerr << "cannot become an unprivileged user";
        else
            std::cerr << report();
        std::cerr << std::endl;
        std::_Exit(0);
    };
    const std::string expected = std::to_string(PluginLoadFailed) + "\\|.*ermission denied";
    EXPECT_EXIT(loadUnprivileged(), ::testing::ExitedWithCode(0), expected);
}

TEST_F(UnreadableDeviceFile, LoadsForTheSameUserOnceItIsReadable)
{
    ASSERT_TRUE(QFile::setPermissions(file(), QFile::ReadOwner));
    const auto loadUnprivileged = [this] {
        std::cerr << (becomeUnprivileged() ? "code " + report() : "cannot") << std::endl;
        std::_Exit(0);
    };
    EXPECT_EXIT(loadUnprivileged(), ::testing::ExitedWithCode(0), "code 0\n");
}

// Unlike a file, a folder is not named as unreadable: it exists, and nothing is found in it.
TEST_F(UnreadableDeviceFile, InAFolderThatMayNotBeListedIsNotThere)
{
    const QFile::Permissions closed = QFile::WriteOwner | QFile::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), closed));
    const auto loadUnprivileged = [this] {
        std::cerr << (becomeUnprivileged() ? report() : "cannot") << std::endl;
        std::_Exit(0);
    };
    const std::string expected = std::to_string(PluginFileNotExist) + "\\|" +
                                 folder.path().toStdString() + " is no exist dll\n";
    EXPECT_EXIT(loadUnprivileged(), ::testing::ExitedWithCode(0), expected);
    // To be deleted, it must be listed.
    EXPECT_TRUE(QFile::setPermissions(folder.path(), closed | QFile::ReadOwner));
}

#endif

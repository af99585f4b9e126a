#include "support/Unprivileged.h"

#include <QtCore/QFile>
#include <gtest/gtest.h>

#include <thread>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <linux/capability.h>
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace KvSyncTest {

#ifdef Q_OS_WIN

void runUnprivileged(const std::function<void()> &function)
{
    function();
}

UnreadableFile::UnreadableFile(const QString &path)
    : filePath(path)
    , handle(CreateFileW(reinterpret_cast<const wchar_t *>(path.utf16()), GENERIC_READ, 0, nullptr,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
{
    EXPECT_NE(handle, INVALID_HANDLE_VALUE);
}

UnreadableFile::~UnreadableFile()
{
    CloseHandle(handle);
}

#else

namespace {

// Root without capabilities is a user like any other, and the way to the tests stays open, also
// below a folder of root's own, which a change of the user would close.
bool giveUpRootsRights()
{
    // A program that root starts has all capabilities again, without this.
    if (geteuid() == 0)
        prctl(PR_SET_SECUREBITS, SECBIT_NOROOT);
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    return syscall(SYS_capset, &header, none) == 0;
}

} // namespace

void runUnprivileged(const std::function<void()> &function)
{
    // Capabilities are each thread's own, so these go with the thread.
    std::thread([&] {
        if (giveUpRootsRights())
            function();
        else
            ADD_FAILURE() << "cannot become an unprivileged user";
    }).join();
}

UnreadableFile::UnreadableFile(const QString &path)
    : filePath(path)
{
    EXPECT_TRUE(QFile::setPermissions(filePath, QFile::Permissions()));
}

UnreadableFile::~UnreadableFile()
{
    EXPECT_TRUE(QFile::setPermissions(filePath, QFile::ReadOwner));
}

#endif

} // namespace KvSyncTest

// A plug-in file that kvsync may not read. Root reads everything, so on Linux kvsync runs without
// root's rights; on Windows another process holds the file, unshared.

#include "PluginFolders.h"

#include "support/ApplicationFolder.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

#if defined(_WIN32)
#include <windows.h>
#else
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <unistd.h>
#endif

using namespace KvSyncTest;

namespace {

#if defined(_WIN32)

using UnprivilegedProcess = QProcess;

class ClosedFile
{
public:
    explicit ClosedFile(const QString &path)
        : handle(CreateFileW(reinterpret_cast<const wchar_t *>(path.utf16()), GENERIC_READ, 0,
                             nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }
    ~ClosedFile() { CloseHandle(handle); }
    Q_DISABLE_COPY(ClosedFile)

private:
    const HANDLE handle;
};

constexpr char systemsReason[] = "";

#else

/// Root is then a user like any other: the way to kvsync stays open, also below a folder of root's
/// own, which a change of the user would close.
class UnprivilegedProcess : public QProcess
{
protected:
    void setupChildProcess() override
    {
        if (geteuid() == 0 && prctl(PR_SET_SECUREBITS, SECBIT_NOROOT) != 0)
            _exit(125);
    }
};

class ClosedFile
{
public:
    explicit ClosedFile(const QString &path)
    {
        EXPECT_TRUE(QFile::setPermissions(path, QFile::Permissions()));
    }
};

constexpr char systemsReason[] = "Permission denied";

#endif

class KvsyncPluginsUnreadable : public ::testing::Test
{
protected:
    KvsyncPluginsUnreadable() { copyFile(commandFixture(QStringLiteral("Recorder")), path); }

    QJsonObject why() const
    {
        UnprivilegedProcess process;
        const Outcome outcome = folders.run(
            {QStringLiteral("plugins"), QStringLiteral("why"), path, QStringLiteral("--json")},
            process);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        return outcome.json();
    }

    PluginFolders folders;
    const QString path = folders.logicFile(QStringLiteral("Demo.1.0.1.dll"));
};

} // namespace

TEST_F(KvsyncPluginsUnreadable, FileIsTakenAndFailsWithTheSystemsReason)
{
    const ClosedFile closed(path);
    const QJsonObject file = why();
    EXPECT_EQ(codes(file), "load-failed");
    EXPECT_EQ(firstText(file).find(std::string("it cannot be read: ") + systemsReason), 0u)
        << firstText(file);
    EXPECT_TRUE(file.value(QStringLiteral("selected")).toBool());
    EXPECT_FALSE(file.value(QStringLiteral("loads")).toBool(true));
}

TEST_F(KvsyncPluginsUnreadable, SameFileLoadsInTheSameProcessOnceItIsReadable)
{
    EXPECT_EQ(codes(why()), "");
}

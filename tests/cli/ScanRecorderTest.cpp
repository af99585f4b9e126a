// What a recorder makes of events, without a scanner.
#include "session/ScanRecorder.h"

#include "Kvsync.h"
#include "session/Interruption.h"
#include "session/ServiceSession.h"
#include "support/Unprivileged.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <thread>

using namespace KvSyncCli;
using namespace KvSyncTest;

namespace {

/// While it lives, the file cannot be removed.
class UnremovableFile
{
public:
#ifdef Q_OS_WIN
    explicit UnremovableFile(const QString &path)
        : held(path)
    {
    }

private:
    const UnreadableFile held;
#else
    explicit UnremovableFile(const QString &path)
        : folder(QFileInfo(path).path())
    {
        EXPECT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    }
    ~UnremovableFile()
    {
        EXPECT_TRUE(
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    UnremovableFile(const UnremovableFile &) = delete;
    UnremovableFile &operator=(const UnremovableFile &) = delete;

private:
    const QString folder;
#endif
};

PluginEvent frame()
{
    const QVariantMap image{{"frame", 1},    {"camera", 0},   {"width", 2},
                            {"height", 2},   {"bitDepth", 8}, {"data", QByteArray("gray")},
                            {"timeMs", 10.0}};
    return {true, "Scanner", "frameArrived", {image}, QVersionNumber(1, 0)};
}

} // namespace

TEST(ScanRecorder, AFailureWhileAnEventIsHandledIsKeptAndEndsTheRecording)
{
    const QTemporaryDir temporary;
    const QString earlier = temporary.filePath("frame-00009-camera-0.png");
    writeFile(earlier, "earlier");
    Interruption interruption;
    ScanFolder folder(temporary.path(), true);
    ScanRecorder recorder(interruption, folder);
    {
        const UnremovableFile unremovable(earlier);
        runUnprivileged([&recorder] { EXPECT_NO_THROW(recorder.onEvent(frame())); });
    }
    EXPECT_TRUE(QFileInfo::exists(earlier));
    recorder.onEvent(frame());
    EXPECT_EQ(recorder.record().frames, 0);
    EXPECT_TRUE(QFileInfo::exists(earlier));
}

TEST(ScanRecorder, AFrameIsWrittenWhenItsEventComes)
{
    const QTemporaryDir temporary;
    Interruption interruption;
    ScanFolder folder(temporary.path(), false);
    ScanRecorder recorder(interruption, folder);
    recorder.onEvent(frame());
    EXPECT_EQ(recorder.record().frames, 1);
    while (!QFileInfo::exists(temporary.filePath("frame-00001-camera-0.png")))
        std::this_thread::yield();
}

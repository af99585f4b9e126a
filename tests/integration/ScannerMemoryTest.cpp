// A scan whose images are not kept needs the memory of a few frames, however many it takes. It
// stands in a program of its own, since the peak is the whole process's, and keeps no frame itself.
// For a scan of another length: KVSYNC_SCAN_FRAMES=10000 ScannerMemoryTest
#include "PeakMemory.h"

#include <KvSyncCore/SyncCore.h>
#include <Tessel3SyncSimulator/Control.h>

#include <QtCore/QVariant>

#include <gtest/gtest.h>
#include <iostream>

using KvSyncCore::SyncCore;
using KvSyncTest::peakResidentBytes;

namespace {

constexpr qint64 megabyte = 1 << 20;
constexpr qint64 bound = 300 * megabyte;
constexpr int defaultFrames = 300; // of 2.5 MiB: more than twice the bound

int framesAskedFor()
{
    const int asked = qEnvironmentVariableIntValue("KVSYNC_SCAN_FRAMES");
    return asked > 0 ? asked : defaultFrames;
}

} // namespace

TEST(ScannerMemory, AScanThatKeepsNoImageNeedsTheMemoryOfAFewFrames)
{
    Tessel3SyncSimulator::reset(Tessel3SyncSimulator::ScannerSetup());
    SyncCore core;
    core.init("../../bin/Logic", "../../bin/Device");
    core.loadCommandPlugin("Scanner", QVersionNumber(1, 0));
    const auto call = [&](const QString &function, const QVariantList &arguments) {
        return core.execute("Scanner", function, arguments, QVersionNumber(1, 0));
    };
    qint64 bytes = 0;
    QObject::connect(&core, &SyncCore::sendSignals, &core,
                     [&](bool, const QString &, const QString &, const QVariantList &payload,
                         const QVersionNumber &) {
                         for (const QVariant &image : payload)
                             bytes += image.toMap().value("data").toByteArray().size();
                     });

    const int frames = framesAskedFor();
    const QVariant handle = call("openDevices", {QVariantMap{{"serial", QString()}}});
    call("captureImage",
         {handle, "scan",
          QVariantMap{{"frames", frames}, {"keep", false}, {"periodMs", 1}, {"timeoutMs", 60000}}});
    call("closeDevices", {handle});

    EXPECT_EQ(bytes, qint64(frames) * 2 * 1280 * 1024); // of two cameras
    std::cout << frames << " frames, " << bytes / megabyte << " MiB; at most "
              << peakResidentBytes() / megabyte << " MiB resident\n";
    ASSERT_GT(peakResidentBytes(), megabyte);
    EXPECT_LT(peakResidentBytes(), bound);
}

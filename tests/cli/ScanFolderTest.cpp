// What "kvsync scan" leaves in its folder, however it ends.
#include "Kvsync.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <algorithm>

using namespace KvSyncTest;

class KvsyncScanFolder : public testing::Test
{
protected:
    QString out() const { return folder.filePath("scan"); }
    QString inside(const QString &file) const { return out() + QLatin1Char('/') + file; }

    QStringList scan(int frames, const QStringList &further = {}) const
    {
        return QStringList{"scan", "--frames", QString::number(frames), "--out", out()} +
               patiently() + further;
    }

    static void expectSuccess(const QStringList &words)
    {
        const Outcome outcome = runKvsync(words);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    }

    void expectRefused(const QStringList &words, const QString &what = "an earlier scan") const
    {
        expectWrongValue(words, QString("kvsync: InvalidParameter (0x01000009): %1 holds %2; "
                                        "--overwrite replaces it")
                                    .arg(out(), what));
    }

    QTemporaryDir folder;
};

TEST_F(KvsyncScanFolder, TheRecordTellsWhatWasAskedAndWhatCame)
{
    expectSuccess(scan(3, {"--set", "camera0.gain=7", "--turntable", "12.5", "--period", "50",
                           "--switch", "blueLaser=on", "--project", "flat"}));
    const QJsonObject record = recordIn(out());
    EXPECT_EQ(record.value("asked"),
              QJsonValue(QJsonObject{{"frames", 3},
                                     {"periodMs", 50},
                                     {"timeoutMs", 60000},
                                     {"color", false},
                                     {"serial", ""},
                                     {"set", QJsonObject{{"camera0.gain", 7}}},
                                     {"turntableDegrees", 12.5},
                                     {"switch", QJsonObject{{"blueLaser", true}}},
                                     {"pattern", "flat"}}));
    EXPECT_EQ(record.value("reason"), QJsonValue("complete"));
    EXPECT_EQ(record.value("text"), QJsonValue(""));
    EXPECT_EQ(record.value("settings").toObject().value("camera0.gain"), QJsonValue(7));
    EXPECT_EQ(record.value("settings").toObject().value("camera1.gain"), QJsonValue(16));
    EXPECT_EQ(record.value("device").toObject().value("firmware"), QJsonValue("KV-SIM 1.0.0"));
    const auto time = [&](const QString &key) {
        return QDateTime::fromString(record.value(key).toString(), Qt::ISODateWithMs);
    };
    EXPECT_TRUE(time("began").isValid());
    EXPECT_GT(time("ended"), time("began"));
    expectImages(out(), record);
}

TEST_F(KvsyncScanFolder, TheRateIsCountedOverTheIntervalsBetweenFrames)
{
    expectSuccess(scan(4, {"--period", "50"}));
    const QJsonObject record = recordIn(out());
    const QJsonArray images = record.value("images").toArray();
    ASSERT_EQ(images.size(), 8);
    QList<double> times;
    for (int i = 0; i < images.size(); i += 2) {
        times.append(images.at(i).toObject().value("timeMs").toDouble());
        EXPECT_EQ(images.at(i + 1).toObject().value("timeMs").toDouble(), times.last());
    }
    EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
    EXPECT_GT(times.first(), 0.0);
    const double seconds = (times.last() - times.first()) / 1000.0;
    EXPECT_DOUBLE_EQ(record.value("seconds").toDouble(), seconds);
    EXPECT_DOUBLE_EQ(record.value("framesPerSecond").toDouble(), 3.0 / seconds);
}

TEST_F(KvsyncScanFolder, AnEarlierScanIsRefusedUnlessItShallBeReplaced)
{
    expectSuccess(scan(2));
    const QByteArray earlier = contentOf(inside("scan.json"));
    expectRefused(scan(1));
    EXPECT_EQ(contentOf(inside("scan.json")), earlier);

    writeFile(inside("notes.txt"), "mine");
    writeFile(inside("frame-00009-camera-0.png.AbcDef"), "half");
    expectSuccess(scan(1, {"--overwrite"}));
    expectImages(out(), recordIn(out()));
    EXPECT_EQ(recordIn(out()).value("delivered"), QJsonValue(1));
    EXPECT_EQ(contentOf(inside("notes.txt")), "mine");
}

TEST_F(KvsyncScanFolder, ImagesWithoutARecordAreAnEarlierScanToo)
{
    ASSERT_TRUE(QDir().mkpath(out()));
    writeFile(inside("frame-00001-camera-0.png"), "image");
    expectRefused(scan(1));
    EXPECT_EQ(contentOf(inside("frame-00001-camera-0.png")), "image");
}

TEST_F(KvsyncScanFolder, AScanThatIsRefusedLeavesTheEarlierOne)
{
    expectSuccess(scan(1));
    const QJsonObject earlier = recordIn(out());
    const QStringList refused[] = {scan(0, {"--overwrite"}),
                                   scan(1, {"--overwrite", "--project", "zigzag"}),
                                   scan(1, {"--overwrite", "--serial", "other"})};
    for (const QStringList &words : refused) {
        EXPECT_NE(runKvsync(words).exitCode, 0);
        EXPECT_EQ(recordIn(out()), earlier);
        expectImages(out(), earlier);
    }
}

TEST_F(KvsyncScanFolder, AScanThatIsRefusedLeavesNoFolder)
{
    const QStringList refused[] = {scan(0), scan(1, {"--set", "foo=1"}),
                                   scan(1, {"--serial", "other"})};
    for (const QStringList &words : refused) {
        EXPECT_NE(runKvsync(words).exitCode, 0);
        EXPECT_FALSE(QFileInfo::exists(out()));
    }
}

TEST_F(KvsyncScanFolder, AScanThatIsRefusedLeavesAFolderThatWasThere)
{
    ASSERT_TRUE(QDir().mkpath(out()));
    EXPECT_EQ(runKvsync(scan(0)).exitCode, 2);
    EXPECT_TRUE(QDir(out()).isEmpty());
    EXPECT_TRUE(QFileInfo::exists(out()));
}

TEST_F(KvsyncScanFolder, TwoProcessesNeverShareIt)
{
    QProcess first;
    first.start(kvsyncProgram(), scan(2, {"--period", "60000"}));
    while (!QFileInfo::exists(inside("scan.json")))
        ASSERT_FALSE(first.waitForFinished(5)) << first.readAllStandardError().toStdString();
    EXPECT_EQ(recordIn(out()).value("reason"), QJsonValue("running"));
    expectFailure(scan(1, {"--overwrite"}),
                  QString("kvsync: PathNotExist (0x01000001): %1 cannot be written: process %2 "
                          "scans into it")
                      .arg(out())
                      .arg(first.processId()));
    first.kill();
    ASSERT_TRUE(first.waitForFinished());
    // The lock of a process that is gone holds nobody up, but its record is one.
    EXPECT_TRUE(QFileInfo::exists(inside("scan.lock")));
    expectRefused(scan(1), "a scan that was cut short");
    expectSuccess(scan(1, {"--overwrite"}));
}

#ifdef Q_OS_LINUX
// A file size that no image fits in is what a full disk looks like.
TEST_F(KvsyncScanFolder, AFullDiskEndsTheScanAndLeavesNoHalfFile)
{
    const QStringList quoted = scan(50, {"--period", "20"});
    QProcess shell;
    shell.start("/bin/sh",
                QStringList{"-c", "ulimit -f 1000; exec \"$0\" \"$@\"", kvsyncProgram()} + quoted);
    ASSERT_TRUE(shell.waitForFinished(60000));
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 1);
    const QString errors = QString::fromUtf8(shell.readAllStandardError());
    EXPECT_TRUE(
        errors.startsWith("kvsync: DeviceOperationFailed (0x010F0000): " + inside("frame-")))
        << errors.toStdString();
    EXPECT_TRUE(errors.endsWith(" cannot be written: File too large\n")) << errors.toStdString();
    const QJsonObject record = recordIn(out());
    EXPECT_EQ(record.value("reason"), QJsonValue("failed"));
    EXPECT_TRUE(errors.contains(record.value("text").toString()));
    EXPECT_LT(record.value("delivered").toInt(), 50);
    EXPECT_EQ(record.value("images"), QJsonValue(QJsonArray()));
    expectImages(out(), record);
}

// Images and record so small that only the last, buffered bytes find no room.
TEST_F(KvsyncScanFolder, ADiskThatIsFullFromTheStartLeavesNoHalfFile)
{
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TESSEL3SYNC_SIMULATOR_SCANNER", R"({"width": 64, "height": 48})");
    shell.setProcessEnvironment(environment);
    shell.start("/bin/sh", QStringList{"-c", "ulimit -f 1; exec \"$0\" \"$@\"", kvsyncProgram(),
                                       "scanner", "snap", "--out", out()});
    ASSERT_TRUE(shell.waitForFinished(60000));
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 1);
    const QString errors = QString::fromUtf8(shell.readAllStandardError());
    EXPECT_TRUE(errors.endsWith(" cannot be written: File too large\n")) << errors.toStdString();
    EXPECT_FALSE(QFileInfo::exists(out()));
}
#endif

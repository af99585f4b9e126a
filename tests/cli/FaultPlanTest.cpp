// "kvsync scan --plan": every kind of fault ends with the right code and text, or does no harm.
#include "Kvsync.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

using namespace KvSyncTest;

class KvsyncFaultPlan : public testing::Test
{
protected:
    /// The arguments of a scan of four frames under a plan of these faults. Small images, far
    /// enough apart, so that frame 2 comes on a busy machine too.
    QStringList scan(const QString &faults, const QStringList &further = {})
    {
        return scanUnder(
            QStringLiteral(
                R"({"scanner": {"width": 128, "height": 96, "triggerPeriodMs": 100}, "faults": [%1]})")
                .arg(faults),
            further);
    }

    QStringList scanUnder(const QString &content, const QStringList &further = {})
    {
        const QString plan = folder.filePath(QStringLiteral("plan.json"));
        writeFile(plan, content.toUtf8());
        return QStringList{QStringLiteral("scan"),
                           QStringLiteral("--frames"),
                           QStringLiteral("4"),
                           QStringLiteral("--out"),
                           folder.path(),
                           QStringLiteral("--plan"),
                           plan,
                           QStringLiteral("--overwrite"),
                           QStringLiteral("--json")} +
               (further.isEmpty() ? patiently() : further);
    }

    QJsonObject summaryUnder(const QString &faults)
    {
        const Outcome outcome = runKvsync(scan(faults));
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        const QJsonObject summary = outcome.json();
        EXPECT_EQ(summary.value(QStringLiteral("balanced")), QJsonValue(true));
        EXPECT_EQ(summary.value(QStringLiteral("delivered")), QJsonValue(4));
        return summary;
    }

    static QString hashOfFirstImage(const QJsonObject &summary)
    {
        const QJsonObject image =
            summary.value(QStringLiteral("images")).toArray().at(0).toObject();
        EXPECT_EQ(image.value(QStringLiteral("frame")), QJsonValue(1));
        return image.value(QStringLiteral("sha256")).toString();
    }

    QTemporaryDir folder;
};

TEST_F(KvsyncFaultPlan, ARefusedCallEndsTheScanWithItsCodeAndText)
{
    struct Row
    {
        QString fault;
        QString failure;
    };
    const Row rows[] = {
        {QStringLiteral(R"({"function": "GetCamerasInformation", "status": 3})"),
         QStringLiteral("ConnectFailed (0x010D000A): No scanner answers to the serial number "
                        "\"\"")},
        {QStringLiteral(R"({"function": "GetCamerasInformation", "outputs": {"serials": []}})"),
         QStringLiteral("ConnectFailed (0x010D000A): The scanner \"\" reports no camera")},
        {QStringLiteral(R"({"function": "ConnectDevice", "status": 3})"),
         QStringLiteral("ConnectFailed (0x010D000A): The scanner \"\" refuses the connection")},
        {QStringLiteral(R"({"function": "ConnectDevice", "hangMs": 300})"),
         QStringLiteral("ConnectFailed (0x010D000A): The scanner \"\" refuses the connection")},
        {QStringLiteral(R"({"function": "GetVideoTriggerPeriod", "disconnect": true})"),
         QStringLiteral("ConnectFailed (0x010D000A): The connection to the scanner was lost; wait "
                        "until the scanner is back, then call resetDevices")},
        {QStringLiteral(R"({"function": "SetScanCallBackFunction", "call": 1, "status": 3})"),
         QStringLiteral("CameraFailed (0x01080000): The scanner refuses the scan callback")},
        {QStringLiteral(R"({"function": "EnableVideoTrigger", "call": 1, "status": 3})"),
         QStringLiteral("CommandFailed (0x010D0009): The scanner refuses to start its trigger")},
    };
    for (const Row &row : rows)
        expectFailure(scan(row.fault), QStringLiteral("kvsync: ") + row.failure);
}

TEST_F(KvsyncFaultPlan, ARefusedDisconnectionIsToldThoughAllFramesCame)
{
    const Outcome outcome = runKvsync(
        scan(QStringLiteral(R"({"function": "DisConnectDevice", "hangMs": 300, "status": 3})")));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors.toStdString(),
              "kvsync: ConnectFailed (0x010D000A): The scanner refuses to disconnect\n");
    EXPECT_EQ(recordIn(folder.path()).value(QStringLiteral("delivered")), QJsonValue(4));
    EXPECT_EQ(recordIn(folder.path()).value(QStringLiteral("reason")),
              QJsonValue(QStringLiteral("failed")));
}

TEST_F(KvsyncFaultPlan, AScanThatGetsNoFrameEndsInTime)
{
    const QStringList timeout{QStringLiteral("--timeout"), QStringLiteral("700")};
    for (const QString &fault : {QStringLiteral(R"({"everyFrame": 1, "drop": true})"),
                                 QStringLiteral(R"({"everyFrame": 1, "hangMs": 10})")})
        expectFailure(scan(fault, timeout),
                      QStringLiteral("kvsync: CameraFailed (0x01080000): The scanner fell silent: "
                                     "0 of 4 frames came, then none for 700 ms"));
}

TEST_F(KvsyncFaultPlan, AConnectionThatIsLostAndBackAtOnceIsLostForTheScan)
{
    expectFailure(scan(QStringLiteral(R"({"frame": 1, "disconnect": true, "backAfterMs": 0})")),
                  QStringLiteral("kvsync: CameraFailed (0x01080000): The connection to the scanner "
                                 "was lost during the scan"));
}

TEST_F(KvsyncFaultPlan, ALostConnectionEndsTheScanAndKeepsWhatCame)
{
    // A frame that is still on its way may be lost with the connection.
    const Outcome outcome = runKvsync(
        scan(QStringLiteral(R"({"frame": 3, "disconnect": true})"),
             patiently() + QStringList{QStringLiteral("--period"), QStringLiteral("1000")}));
    EXPECT_EQ(outcome.exitCode, 1);
    const QString failure = QStringLiteral("CameraFailed (0x01080000): The connection to the "
                                           "scanner was lost during the scan");
    EXPECT_EQ(outcome.errors.toStdString(), "kvsync: " + failure.toStdString() + "\n");
    const QJsonObject record = recordIn(folder.path());
    EXPECT_EQ(record.value(QStringLiteral("reason")), QJsonValue(QStringLiteral("connectionLost")));
    EXPECT_EQ(record.value(QStringLiteral("text")), QJsonValue(failure));
    EXPECT_EQ(record.value(QStringLiteral("requested")), QJsonValue(4));
    const int delivered = record.value(QStringLiteral("delivered")).toInt();
    EXPECT_LE(delivered, 2);
    EXPECT_EQ(record.value(QStringLiteral("images")).toArray().size(),
              2 * delivered); // two cameras
    if (delivered > 0) {
        EXPECT_EQ(outcome.json(), record);
    }
    expectImages(folder.path(), record);
}

TEST_F(KvsyncFaultPlan, DroppedFramesAreInTheAccount)
{
    const QJsonObject summary = summaryUnder(QStringLiteral(R"({"everyFrame": 2, "drop": true})"));
    EXPECT_GE(summary.value(QStringLiteral("dropped")).toInt(), 3); // 2, 4 and 6
}

TEST_F(KvsyncFaultPlan, ANumberThatComesTwiceOverwritesNoImage)
{
    const QJsonObject summary = summaryUnder(QStringLiteral(R"({"frame": 2, "number": "twice"})"));
    QStringList files;
    for (const QJsonValue &image : summary.value(QStringLiteral("images")).toArray())
        if (image.toObject().value(QStringLiteral("frame")) == QJsonValue(1))
            files.append(image.toObject().value(QStringLiteral("file")).toString());
    EXPECT_EQ(files, (QStringList{QStringLiteral("frame-00001-camera-0.png"),
                                  QStringLiteral("frame-00001-camera-1.png"),
                                  QStringLiteral("frame-00001-camera-0-image-3.png"),
                                  QStringLiteral("frame-00001-camera-1-image-4.png")}));
    expectImages(folder.path(), summary);

    summaryUnder(QString()); // removes them
    expectImages(folder.path(), recordIn(folder.path()));
}

TEST_F(KvsyncFaultPlan, AnImageWithoutPixelsEndsNoScanAndHasNoFile)
{
    const QJsonObject summary = summaryUnder(QStringLiteral(R"({"frame": 2, "nullImage": 0})"));
    expectImages(folder.path(), summary);
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("frame-00002-camera-0.png"))));
}

TEST_F(KvsyncFaultPlan, AFrameThatLacksAnImageIsWarnedOf)
{
    const QJsonObject summary = summaryUnder(QStringLiteral(R"({"frame": 2, "missingImage": 1})"));
    EXPECT_EQ(summary.value(QStringLiteral("warnings")),
              QJsonValue(QJsonArray{
                  QStringLiteral("frames dropped for lack of an image or its pixels: 1")}));
}

TEST_F(KvsyncFaultPlan, AnImageOfAnotherSizeIsWarnedOf)
{
    QStringList words = scan(QStringLiteral(R"({"frame": 2, "width": 64})"));
    words.removeAll(QStringLiteral("--json"));
    const QString warning = QStringLiteral(
        "images of another size than the cameras have: 2, the first of frame 2, camera 0");
    const Outcome outcome = runKvsync(words);
    EXPECT_TRUE(outcome.output.contains(QStringLiteral("warning: %1\n").arg(warning)))
        << outcome.output.toStdString();
    EXPECT_EQ(recordIn(folder.path()).value(QStringLiteral("warnings")),
              QJsonValue(QJsonArray{warning}));
}

TEST_F(KvsyncFaultPlan, ASoundScanWarnsOfNothing)
{
    EXPECT_EQ(summaryUnder(QString()).value(QStringLiteral("warnings")), QJsonValue(QJsonArray()));
}

TEST_F(KvsyncFaultPlan, AScanWithoutFramesReplacesTheEarlierOneToo)
{
    summaryUnder(QString());
    const Outcome outcome = runKvsync(scan(QStringLiteral(R"({"everyFrame": 1, "drop": true})"),
                                           {QStringLiteral("--timeout"), QStringLiteral("700")}));
    EXPECT_EQ(outcome.exitCode, 1);
    const QJsonObject record = recordIn(folder.path());
    EXPECT_EQ(record.value(QStringLiteral("reason")), QJsonValue(QStringLiteral("failed")));
    EXPECT_EQ(record.value(QStringLiteral("images")), QJsonValue(QJsonArray()));
    expectImages(folder.path(), record);
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("contact-sheet.png"))));
}

TEST_F(KvsyncFaultPlan, LateFramesAreWaitedFor)
{
    summaryUnder(QStringLiteral(R"({"frame": 2, "delayMs": 400})"));
}

TEST_F(KvsyncFaultPlan, CorruptFramesShowInTheHashes)
{
    const QString sound = hashOfFirstImage(summaryUnder(QString()));
    const QString corrupt =
        hashOfFirstImage(summaryUnder(QStringLiteral(R"({"frame": 1, "corrupt": true})")));
    EXPECT_NE(sound, corrupt);
}

TEST_F(KvsyncFaultPlan, ThePlanDescribesTheScanner)
{
    const Outcome outcome = runKvsync(scanUnder(QStringLiteral(
        R"({"scanner": {"width": 64, "height": 48, "cameras": ["right"], "triggerPeriodMs": 5}})")));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    const QJsonArray images = outcome.json().value(QStringLiteral("images")).toArray();
    ASSERT_EQ(images.size(), 4); // of one camera
    EXPECT_EQ(images.at(0).toObject().value(QStringLiteral("width")), QJsonValue(64));
    EXPECT_EQ(images.at(0).toObject().value(QStringLiteral("height")), QJsonValue(48));
}

#ifndef Q_OS_WIN
TEST_F(KvsyncFaultPlan, APlanThroughAPipeIsRefused)
{
    QProcess process; // its standard input is a pipe
    const Outcome outcome =
        runKvsync({QStringLiteral("scan"), QStringLiteral("--frames"), QStringLiteral("1"),
                   QStringLiteral("--out"), folder.filePath(QStringLiteral("scan")),
                   QStringLiteral("--plan"), QStringLiteral("/dev/stdin")},
                  process);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.errors.toStdString(), "kvsync: InvalidParameter (0x01000009): The fault plan "
                                            "/dev/stdin is not a regular file\n");
}
#endif

TEST_F(KvsyncFaultPlan, AFileThatIsNotThereIsTold)
{
    const Outcome outcome = runKvsync({QStringLiteral("scan"), QStringLiteral("--frames"),
                                       QStringLiteral("1"), QStringLiteral("--out"), folder.path(),
                                       QStringLiteral("--plan"), QStringLiteral("missing.json")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.errors.startsWith(
        QStringLiteral("kvsync: PathNotExist (0x01000001): The fault plan missing.json cannot be "
                       "read: ")))
        << outcome.errors.toStdString();
}

TEST_F(KvsyncFaultPlan, APlanThatCannotBeUsedIsToldAndNothingIsScanned)
{
    const QStringList words = scan(QStringLiteral(R"({"function": "Dance"})"));
    const QString reason = QStringLiteral("fault plan %1: faults[0]: the library has no function "
                                          "\"Dance\"")
                               .arg(folder.filePath(QStringLiteral("plan.json")));
    expectFailure(words, QStringLiteral("Tessel3Sync simulator: %1\nkvsync: ConnectFailed "
                                        "(0x010D000A): The simulated scanner cannot be used: %1")
                             .arg(reason));
}

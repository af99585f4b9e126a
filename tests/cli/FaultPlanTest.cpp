// "kvsync scan --plan": every kind of fault ends with the right code and text, or does no harm.
#include "Kvsync.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

using namespace KvSyncTest;

class KvsyncFaultPlan : public testing::Test
{
protected:
    /// The arguments of a scan of four frames under a plan of these faults.
    QStringList scan(const QString &faults, const QStringList &further = {})
    {
        const QString plan = folder.filePath(QStringLiteral("plan.json"));
        QFile file(plan);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("{\"faults\": [%1]}").arg(faults).toUtf8());
        return QStringList{QStringLiteral("scan"),
                           QStringLiteral("--frames"),
                           QStringLiteral("4"),
                           QStringLiteral("--out"),
                           folder.path(),
                           QStringLiteral("--plan"),
                           plan,
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
         QStringLiteral("DeviceOperationFailed (0x010F0000): The scanner does not give its trigger "
                        "period")},
        {QStringLiteral(R"({"function": "SetScanCallBackFunction", "call": 1, "status": 3})"),
         QStringLiteral("CameraFailed (0x01080000): The scanner refuses the scan callback")},
        {QStringLiteral(R"({"function": "DisConnectDevice", "hangMs": 300, "status": 3})"),
         QStringLiteral("ConnectFailed (0x010D000A): The scanner refuses to disconnect")},
    };
    for (const Row &row : rows)
        expectFailure(scan(row.fault), QStringLiteral("kvsync: ") + row.failure);
}

TEST_F(KvsyncFaultPlan, AScanThatGetsNoFrameEndsInTime)
{
    const QStringList timeout{QStringLiteral("--timeout"), QStringLiteral("700")};
    for (const QString &fault :
         {QStringLiteral(R"({"function": "EnableVideoTrigger", "call": 1, "status": 3})"),
          QStringLiteral(R"({"everyFrame": 1, "drop": true})"),
          QStringLiteral(R"({"everyFrame": 1, "hangMs": 10})"),
          QStringLiteral(R"({"frame": 1, "disconnect": true, "backAfterMs": 0})")})
        expectFailure(scan(fault, timeout),
                      QStringLiteral("kvsync: CameraFailed (0x01080000): The scanner fell silent: "
                                     "0 of 4 frames came, then none for 700 ms"));
}

TEST_F(KvsyncFaultPlan, ALostConnectionEndsTheScan)
{
    expectFailure(scan(QStringLiteral(R"({"frame": 2, "disconnect": true})")),
                  QStringLiteral("kvsync: CameraFailed (0x01080000): The connection to the scanner "
                                 "was lost during the scan"));
}

TEST_F(KvsyncFaultPlan, DroppedFramesAreInTheAccount)
{
    const QJsonObject summary = summaryUnder(QStringLiteral(R"({"everyFrame": 2, "drop": true})"));
    EXPECT_GE(summary.value(QStringLiteral("dropped")).toInt(), 3); // 2, 4 and 6
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
    const Outcome outcome = runKvsync(scan(QStringLiteral(R"({"function": "Dance"})")));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.errors.contains(QStringLiteral("faults[0]")))
        << outcome.errors.toStdString();
    EXPECT_TRUE(outcome.errors.contains(QStringLiteral("kvsync: ConnectFailed (0x010D000A): ")));
}

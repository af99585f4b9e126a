#include "Kvsync.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

using namespace KvSyncTest;

class KvsyncScanner : public testing::Test
{
protected:
    static QStringList scanner(const QStringList &arguments)
    {
        return QStringList{QStringLiteral("scanner")} + arguments;
    }

    static std::string textOf(const QStringList &arguments)
    {
        const Outcome outcome = runKvsync(scanner(arguments));
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        return outcome.output.toStdString();
    }

    static QJsonObject jsonOf(const QStringList &arguments)
    {
        return runKvsync(scanner(arguments + QStringList{QStringLiteral("--json")})).json();
    }

    QString out() const { return folder.filePath(QStringLiteral("snap")); }

    QStringList snap(const QStringList &further = {}) const
    {
        return QStringList{QStringLiteral("snap"), QStringLiteral("--overwrite"),
                           QStringLiteral("--out"), out()} +
               further;
    }

    QTemporaryDir folder;
};

TEST_F(KvsyncScanner, InfoTellsPeopleAndPrograms)
{
    EXPECT_EQ(textOf({QStringLiteral("info")}), "firmware KV-SIM 1.0.0\n"
                                                "on a fast USB port\n"
                                                "a frame every 33 ms\n"
                                                "camera 0  KV-SIM-0001-L  1280 x 1024 pixels\n"
                                                "camera 1  KV-SIM-0001-R  1280 x 1024 pixels\n"
                                                "camera 2  KV-SIM-0001-C  1280 x 1024 pixels\n");
    const QJsonObject info = jsonOf({QStringLiteral("info")});
    EXPECT_EQ(info.value(QStringLiteral("cameras")).toArray().size(), 3);
}

TEST_F(KvsyncScanner, ListTellsTheSerialNumbersThatSerialTakes)
{
    EXPECT_EQ(textOf({QStringLiteral("list")}), "KV-SIM-0001  3 cameras\n");
    const QJsonObject scanner = jsonOf({QStringLiteral("list")})
                                    .value(QStringLiteral("scanners"))
                                    .toArray()
                                    .at(0)
                                    .toObject();
    EXPECT_EQ(scanner.value(QStringLiteral("cameras")).toArray().size(), 3);
    textOf({QStringLiteral("info"), QStringLiteral("--serial"),
            scanner.value(QStringLiteral("serial")).toString()});
}

TEST_F(KvsyncScanner, ListSaysThatThereIsNone)
{
    const QString plan = folder.filePath(QStringLiteral("plan.json"));
    writeFile(plan, R"({"faults": [{"function": "GetCamerasInformation", "status": 3}]})");
    const Outcome outcome = runKvsync(scanner({QStringLiteral("list")}),
                                      {{QStringLiteral("TESSEL3SYNC_SIMULATOR_PLAN"), plan}});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    EXPECT_EQ(outcome.output.toStdString(), "no scanner\n");
}

TEST_F(KvsyncScanner, ListSaysWhyTheSimulatedScannerCannotBeUsed)
{
    const Outcome outcome = runKvsync(
        scanner({QStringLiteral("list")}),
        {{QStringLiteral("TESSEL3SYNC_SIMULATOR_SCANNER"), QStringLiteral("{\"width\": 1}")}});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output.toStdString(), "");
    EXPECT_TRUE(outcome.errors.endsWith(
        QStringLiteral("kvsync: ConnectFailed (0x010D000A): The simulated scanner cannot be "
                       "used: TESSEL3SYNC_SIMULATOR_SCANNER: \"width\" must be 16 to 4096\n")))
        << outcome.errors.toStdString();
}

TEST_F(KvsyncScanner, GetPrintsOneSettingOrAllOfThem)
{
    EXPECT_EQ(textOf({QStringLiteral("get"), QStringLiteral("periodMs")}), "33\n");
    EXPECT_EQ(textOf({QStringLiteral("get"), QStringLiteral("strobeDutyRatios")}), "[50,10,20]\n");
    const QString all = QString::fromStdString(textOf({QStringLiteral("get")}));
    EXPECT_TRUE(
        all.contains(QStringLiteral("camera0.exposureUs             8000  (1 to 1000000 us)\n")))
        << all.toStdString();
    EXPECT_TRUE(
        all.contains(QStringLiteral("strobeDutyRatios         [50,10,20]  (0 to 100 % each)\n")));
    EXPECT_TRUE(all.contains(QStringLiteral("distanceIndication                -  (0 to 3)\n")));
}

TEST_F(KvsyncScanner, GetPrintsJson)
{
    const QJsonObject one = jsonOf({QStringLiteral("get"), QStringLiteral("periodMs")});
    EXPECT_EQ(one, (QJsonObject{{QStringLiteral("name"), QStringLiteral("periodMs")},
                                {QStringLiteral("value"), 33}}));
    EXPECT_EQ(jsonOf({QStringLiteral("get")}).value(QStringLiteral("settings")).toArray().size(),
              13);
}

TEST_F(KvsyncScanner, SetTakesNumbersAndLists)
{
    EXPECT_EQ(textOf({QStringLiteral("set"), QStringLiteral("camera0.gain"), QStringLiteral("7")}),
              "7\n");
    EXPECT_EQ(textOf({QStringLiteral("set"), QStringLiteral("strobeDutyRatios"),
                      QStringLiteral("[1, 2, 3]")}),
              "[1,2,3]\n");
}

TEST_F(KvsyncScanner, SetTellsWhatCannotBeSet)
{
    expectWrongValue(
        scanner({QStringLiteral("set"), QStringLiteral("camera0.gain"), QStringLiteral("--"),
                 QStringLiteral("-5")}),
        QStringLiteral("kvsync: InvalidParameter (0x01000009): The setting "
                       "\"camera0.gain\" must be a whole number from 0 to 65535, not -5"));
    expectWrongValue(
        scanner({QStringLiteral("set"), QStringLiteral("hue"), QStringLiteral("1")}),
        QStringLiteral("kvsync: FunctionNotExist (0x01002000): There is no setting \"hue\""));
    expectWrongValue(
        scanner({QStringLiteral("set"), QStringLiteral("periodMs"), QStringLiteral("fast")}),
        QStringLiteral("kvsync: InvalidParameter (0x01000009): VALUE is not JSON: illegal value: "
                       "fast"));
}

TEST_F(KvsyncScanner, SnapWritesEveryPlaneAndThemTogetherInColor)
{
    const QJsonObject summary = jsonOf(snap());
    ASSERT_EQ(summary.value(QStringLiteral("planes")).toArray().size(), 3);
    const QImage picture(out() + QStringLiteral("/snapshot.png"));
    ASSERT_EQ(picture.size(), QSize(1280, 1024));
    const QRgb pixel = picture.pixel(640, 300);
    int plane = 0;
    for (const int channel : {qRed(pixel), qGreen(pixel), qBlue(pixel)}) {
        const QImage image(out() + QStringLiteral("/snapshot-plane-%1.png").arg(plane++));
        EXPECT_EQ(image.constScanLine(300)[640], channel);
    }
}

TEST_F(KvsyncScanner, AnEarlierSnapshotIsRefusedUnlessItShallBeReplaced)
{
    ASSERT_TRUE(QDir().mkpath(out()));
    for (const char *const name : {"snapshot.png", "snapshot-plane-7.png"})
        ASSERT_TRUE(
            QFile(out() + QLatin1Char('/') + QString::fromLatin1(name)).open(QIODevice::WriteOnly));
    expectWrongValue(scanner({QStringLiteral("snap"), QStringLiteral("--out"), out()}),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): %1 holds an earlier "
                                    "snapshot; --overwrite replaces it")
                         .arg(out()));
    textOf(snap());
    EXPECT_EQ(
        QDir(out()).entryList(QDir::Files, QDir::Name),
        (QStringList{QStringLiteral("snapshot-plane-0.png"), QStringLiteral("snapshot-plane-1.png"),
                     QStringLiteral("snapshot-plane-2.png"), QStringLiteral("snapshot.png")}));
}

TEST_F(KvsyncScanner, ASnapshotThatIsRefusedLeavesNoFolder)
{
    const QString inner = out() + QStringLiteral("/inner");
    EXPECT_EQ(runKvsync(scanner({QStringLiteral("snap"), QStringLiteral("--out"), inner,
                                 QStringLiteral("--serial"), QStringLiteral("other")}))
                  .exitCode,
              1);
    EXPECT_FALSE(QFileInfo::exists(out()));
}

TEST_F(KvsyncScanner, ANameThatGetsTwoValuesIsRefused)
{
    const auto line = [](const char *name) {
        return QStringLiteral(
                   "kvsync: InvalidParameter (0x01000009): \"%1\" is given more than one "
                   "value")
            .arg(QString::fromLatin1(name));
    };
    expectWrongValue(scanner(snap({QStringLiteral("--switch"), QStringLiteral("blueLaser=on"),
                                   QStringLiteral("--switch"), QStringLiteral("blueLaser=off")})),
                     line("blueLaser"));
    expectWrongValue(scanner(snap({QStringLiteral("--set"), QStringLiteral("periodMs=8"),
                                   QStringLiteral("--set"), QStringLiteral("periodMs=9")})),
                     line("periodMs"));
    expectWrongValue(
        scanner({QStringLiteral("command"), QStringLiteral("Project"),
                 QStringLiteral("projectWorkType=1"), QStringLiteral("projectWorkType=2")}),
        line("projectWorkType"));
}

TEST_F(KvsyncScanner, SettingsChangeWhatASnapshotShows)
{
    const auto firstHash = [this](const QStringList &further) {
        return jsonOf(snap(further))
            .value(QStringLiteral("planes"))
            .toArray()
            .at(0)
            .toObject()
            .value(QStringLiteral("sha256"));
    };
    const QJsonValue plain = firstHash({});
    EXPECT_EQ(firstHash({}), plain);
    EXPECT_NE(firstHash({QStringLiteral("--set"), QStringLiteral("camera2.exposureUs=2000")}),
              plain);
    EXPECT_NE(firstHash({QStringLiteral("--switch"), QStringLiteral("blueLaser=on")}), plain);
    EXPECT_NE(firstHash({QStringLiteral("--project"), QStringLiteral("speckle")}), plain);
}

TEST_F(KvsyncScanner, PreparationsThatCannotBeMadeAreTold)
{
    expectWrongValue(
        scanner(snap({QStringLiteral("--set"), QStringLiteral("gain")})),
        QStringLiteral("kvsync: InvalidParameter (0x01000009): \"gain\" is not NAME=VALUE"));
    expectWrongValue(
        scanner(snap({QStringLiteral("--switch"), QStringLiteral("blueLaser=1")})),
        QStringLiteral("kvsync: InvalidParameter (0x01000009): The flag \"blueLaser\" is "
                       "on or off, not \"1\""));
}

TEST_F(KvsyncScanner, CommandsOfTheDirectLinkAnswerWithTheirParameters)
{
    EXPECT_EQ(textOf({QStringLiteral("command"), QStringLiteral("stopScan")}), "stopScan done\n");
    const QJsonObject answer = jsonOf({QStringLiteral("command"), QStringLiteral("EnableBlueLaser"),
                                       QStringLiteral("laserWorkMode=1")});
    EXPECT_EQ(answer.value(QStringLiteral("answer")),
              QJsonValue(QJsonObject{{QStringLiteral("laserWorkMode"), 1},
                                     {QStringLiteral("bLaserEnable"), QJsonValue::Null}}));
    expectFailure(scanner({QStringLiteral("command"), QStringLiteral("SetVideoTriggerPeriod"),
                           QStringLiteral("triggerPeriod=0")}),
                  QStringLiteral("kvsync: CommandFailed (0x010D0009): The scanner refuses the "
                                 "command \"SetVideoTriggerPeriod\""));
}

TEST_F(KvsyncScanner, HelpNamesEveryCommandOfTheDirectLinkAsTheServiceListsIt)
{
    const std::string help = textOf({QStringLiteral("command"), QStringLiteral("--help")});
    const Outcome listed =
        runKvsync({QStringLiteral("exec"), QStringLiteral("Scanner"), QStringLiteral("execute"),
                   QStringLiteral("\"commands\""), QStringLiteral("[]"), QStringLiteral("--open"),
                   QStringLiteral("{\"serial\": \"\"}")});
    int maps = 0;
    for (const QJsonValue &value : listed.json().value(QStringLiteral("result")).toArray()) {
        const QJsonObject command = value.toObject();
        if (command.value(QStringLiteral("form")) != QJsonValue(QStringLiteral("map")))
            continue; // served by commands of kvsync's own
        ++maps;
        QStringList parameters;
        for (const QJsonValue &parameter : command.value(QStringLiteral("parameters")).toArray())
            parameters.append(parameter.toObject().value(QStringLiteral("name")).toString());
        const QString line = QStringLiteral("  %1%2\n")
                                 .arg(command.value(QStringLiteral("name")).toString(), -30)
                                 .arg(parameters.join(QStringLiteral(", ")));
        EXPECT_NE(help.find(line.toStdString()), std::string::npos) << line.toStdString();
    }
    EXPECT_EQ(maps, 12);
}

TEST_F(KvsyncScanner, UserInformationIsEchoedAndEmptyAtFirst)
{
    EXPECT_EQ(textOf({QStringLiteral("user-info"), QStringLiteral("write"), QStringLiteral("Grüße"),
                      QStringLiteral("--address"), QStringLiteral("2")}),
              "Grüße\n");
    EXPECT_EQ(textOf({QStringLiteral("user-info"), QStringLiteral("read")}), "\n");
    expectFailure(scanner({QStringLiteral("user-info"), QStringLiteral("read"),
                           QStringLiteral("--address"), QStringLiteral("256")}),
                  QStringLiteral("kvsync: DeviceOperationFailed (0x010F0000): The scanner refuses "
                                 "to read user information at address 256"));
}

TEST_F(KvsyncScanner, UserInformationOutlastsTheProgramInAFile)
{
    const QStringList store{QStringLiteral("--store"),
                            folder.filePath(QStringLiteral("größe.json")),
                            QStringLiteral("--address"), QStringLiteral("7")};
    EXPECT_EQ(textOf(QStringList{QStringLiteral("user-info"), QStringLiteral("write"),
                                 QStringLiteral("kept")} +
                     store),
              "kept\n");
    EXPECT_EQ(textOf(QStringList{QStringLiteral("user-info"), QStringLiteral("read")} + store),
              "kept\n");
}

TEST_F(KvsyncScanner, EveryCommandTakesASerialNumber)
{
    const QStringList commands[] = {
        {QStringLiteral("info")},
        {QStringLiteral("get")},
        {QStringLiteral("set"), QStringLiteral("periodMs"), QStringLiteral("9")},
        snap(),
        {QStringLiteral("command"), QStringLiteral("stopScan")},
        {QStringLiteral("user-info"), QStringLiteral("read")},
        {QStringLiteral("user-info"), QStringLiteral("write"), QStringLiteral("text")},
    };
    for (const QStringList &command : commands)
        expectFailure(
            scanner(command + QStringList{QStringLiteral("--serial"), QStringLiteral("other")}),
            QStringLiteral("kvsync: ConnectFailed (0x010D000A): No scanner answers to the serial "
                           "number \"other\""));
}

#include "PluginFolders.h"
#include "support/ApplicationFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtGui/QImage>

using namespace KvSyncTest;

/// `kvsync device` over the sample device plug-in.
class KvsyncDevice : public testing::Test
{
protected:
    static QStringList device(const QStringList &arguments, int index = 0)
    {
        return QStringList{"device"} + arguments +
               QStringList{"--plugin", "VirtualScanner", "--index", QString::number(index)};
    }

    static std::string textOf(const QStringList &arguments)
    {
        const Outcome outcome = runKvsync(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        return outcome.output.toStdString();
    }

    static QJsonObject jsonOf(const QStringList &arguments)
    {
        return runKvsync(arguments + QStringList{"--json"}).json();
    }

    /// Triggered frames: nothing is dropped, however slow the machine is.
    QStringList capture(const QStringList &further, int index = 1) const
    {
        return device(QStringList{"capture", "--frames", "2", "--period", "1", "--overwrite",
                                  "--out", out()} +
                          patiently() + further,
                      index);
    }

    static QString deviceFolder() { return QFileInfo(logicFolder()).path() + "/Device"; }

    QString out() const { return folder.filePath("frames"); }
    QString written(const QString &file) const { return out() + QLatin1Char('/') + file; }

    QTemporaryDir folder;
};

TEST_F(KvsyncDevice, ListTellsThePluginsAndTheirDevices)
{
    EXPECT_EQ(textOf({"device", "list"}),
              "VirtualScanner 1.0\n"
              "  0  Virtual scanner       camera, projector, motor, controller\n"
              "  1  Virtual camera        camera\n"
              "  2  Virtual turntable     motor\n"
              "  3  Virtual marker        no capability\n");
    const QJsonArray plugins = jsonOf({"device", "list"}).value("plugins").toArray();
    ASSERT_EQ(plugins.size(), 1);
    const QJsonObject plugin = plugins.first().toObject();
    EXPECT_EQ(plugin.value("plugin"), QJsonValue("VirtualScanner"));
    EXPECT_EQ(plugin.value("version"), QJsonValue("1.0"));
    EXPECT_EQ(
        plugin.value("devices").toArray().at(2).toObject(),
        (QJsonObject{{"index", 2}, {"name", "Virtual turntable"}, {"types", QJsonArray{"motor"}}}));
}

TEST_F(KvsyncDevice, InfoTellsPeopleAndPrograms)
{
    EXPECT_EQ(textOf(device({"info"}, 2)), "Virtual turntable\n"
                                           "plug-in VirtualScanner 1.0, device 2\n"
                                           "motor\n");
    const QJsonObject info = jsonOf(device({"info"}, 3));
    EXPECT_EQ(info.value("name"), QJsonValue("Virtual marker"));
    EXPECT_EQ(info.value("types"), QJsonValue(QJsonArray()));
    EXPECT_TRUE(info.value("handle").isString()); // JSON numbers lose 64 bits
}

TEST_F(KvsyncDevice, GetPrintsOneSettingOrAllOfThem)
{
    EXPECT_EQ(textOf(device({"get", "camera1.maximumSize"})), "[640,480]\n");
    EXPECT_EQ(textOf(device({"get", "projectorLed"})), "false\n");
    EXPECT_EQ(textOf(device({"get", "exposure"})), "10000\n");
    const std::string all = textOf(device({"get"}, 1));
    EXPECT_NE(all.find("camera0.exposureRangeUs [20,1000000]  (cannot be set; in us)\n"),
              std::string::npos)
        << all;
    EXPECT_NE(all.find("camera0.size              [640,480]  (0 to 2147483647 px each)\n"),
              std::string::npos);
    EXPECT_NE(all.find("exposure                          -  (the plug-in's own)\n"),
              std::string::npos);
}

TEST_F(KvsyncDevice, GetAsksAPropertyWithKeys)
{
    expectFailure(device({"get", "gain", "--with", "selector=2"}),
                  "kvsync: UnnamedCode (0x01F0000A): The device does not give the property "
                  "\"gain\"");
    EXPECT_EQ(jsonOf(device({"get", "gain", "--with", "selector=1"})),
              (QJsonObject{{"name", "gain"}, {"value", 0}}));
}

TEST_F(KvsyncDevice, SetTakesNumbersListsAndKeys)
{
    EXPECT_EQ(textOf(device({"set", "exposure", "5000"})), "5000\n");
    EXPECT_EQ(textOf(device({"set", "camera0.size", "[320, 240]"})), "[320,240]\n");
    EXPECT_EQ(textOf(device({"set", "gain", "{\"value\": 7, \"selector\": 1}"})),
              "{\"selector\":1,\"value\":7}\n");
    expectFailure(device({"set", "gain", "{\"value\": 65, \"selector\": 1}"}),
                  "kvsync: UnnamedCode (0x01F00009): The device refuses {\"selector\": 1, "
                  "\"value\": 65} for \"gain\"");
}

TEST_F(KvsyncDevice, RotateTellsWhereTheAxesAre)
{
    EXPECT_EQ(textOf(device({"rotate", "12.5", "--speed", "720"}, 2)), "turntable 12.5 degrees\n");
    EXPECT_EQ(jsonOf(device({"rotate", "--axis", "tilt", "--absolute", "--speed", "720", "7"})),
              (QJsonObject{{"position", QJsonObject{{"tilt", 7.0}, {"turntable", 0.0}}}}));
}

TEST_F(KvsyncDevice, RotateTurnsBothWays)
{
    const QStringList words = device({"rotate", "--speed", "720"}, 2);
    EXPECT_EQ(textOf(words + QStringList{"--", "-5"}), "turntable -5 degrees\n");
}

TEST_F(KvsyncDevice, CaptureWritesEveryFrameAndAContactSheet)
{
    const QJsonObject report = jsonOf(capture({}, 0));
    EXPECT_EQ(
        QDir(out()).entryList(QDir::Files, QDir::Name),
        (QStringList{"contact-sheet.png", "frame-00001-camera-0.png", "frame-00001-camera-1.png",
                     "frame-00002-camera-0.png", "frame-00002-camera-1.png", "scan.json"}));
    EXPECT_EQ(QImage(written("frame-00002-camera-1.png")).size(), QSize(640, 480));
    EXPECT_EQ(report.value("produced"), QJsonValue(2));
    EXPECT_EQ(report.value("delivered"), QJsonValue(2));
    EXPECT_EQ(report.value("dropped"), QJsonValue(0));
    EXPECT_EQ(report.value("balanced"), QJsonValue(true));
}

TEST_F(KvsyncDevice, CaptureTakesOneSensorAlone)
{
    EXPECT_EQ(textOf(capture({"--camera", "1"}, 0)).find("camera 0"), std::string::npos);
    EXPECT_TRUE(QFileInfo::exists(written("frame-00002-camera-1.png")));
    EXPECT_FALSE(QFileInfo::exists(written("frame-00002-camera-0.png")));
}

TEST_F(KvsyncDevice, CaptureWritesColorImages)
{
    textOf(capture({"--color"}));
    const QImage image(written("frame-00001-camera-0.png"));
    EXPECT_FALSE(image.isGrayscale());
    EXPECT_EQ(image.size(), QSize(640, 480));
}

TEST_F(KvsyncDevice, TheContactSheetOfAColorCaptureIsInColor)
{
    textOf(capture({}));
    EXPECT_EQ(QImage(written("contact-sheet.png")).format(), QImage::Format_Grayscale8);
    textOf(capture({"--color"}));
    const QImage sheet(written("contact-sheet.png"));
    const QImage image(written("frame-00001-camera-0.png"));
    ASSERT_FALSE(sheet.isGrayscale());
    // The first picture is 200 pixels wide and begins at 24, 24.
    const QPoint place(100, 75);
    const QRgb small = sheet.pixel(QPoint(24, 24) + place);
    const QRgb large = image.scaledToWidth(200, Qt::SmoothTransformation).pixel(place);
    EXPECT_EQ(small, large);
}

TEST_F(KvsyncDevice, CaptureWritesAllTheBitsOfAPixel)
{
    textOf(capture({"--set", "pixelFormat=2"}));
    const QImage deep(written("frame-00001-camera-0.png"));
    ASSERT_EQ(deep.format(), QImage::Format_Grayscale16);
    textOf(capture({}));
    const QImage flat(written("frame-00001-camera-0.png"));
    ASSERT_EQ(flat.format(), QImage::Format_Grayscale8);
    int mostApart = 0;
    for (int row = 0; row < flat.height(); ++row) {
        const auto *const deepRow = reinterpret_cast<const quint16 *>(deep.constScanLine(row));
        for (int column = 0; column < flat.width(); ++column)
            mostApart = qMax(mostApart,
                             qAbs((deepRow[column] >> 8) - int(flat.constScanLine(row)[column])));
    }
    EXPECT_LE(mostApart, 1);
}

TEST_F(KvsyncDevice, CaptureSetsTheCameraFirst)
{
    textOf(capture({"--set", "camera0.size=[64, 48]"}));
    EXPECT_EQ(QImage(written("frame-00001-camera-0.png")).size(), QSize(64, 48));
}

TEST_F(KvsyncDevice, FailuresAreToldByCodeAndText)
{
    expectWrongValue(device({"info"}, 4),
                     "kvsync: InvalidParameter (0x01000009): \"index\" must be a "
                     "whole number from 0 to 3, not 4");
    expectFailure({"device", "info", "--plugin", "Absent"},
                  "kvsync: PluginFileNotExist (0x01000006): There is no plug-in Absent in " +
                      deviceFolder() + "; it holds VirtualScanner 1.0");
    expectWrongValue(
        {"device", "info", "--plugin", "VirtualScanner", "--plugin-version", "one"},
        "kvsync: InvalidParameter (0x01000009): \"one\" is no version such as \"1.0\"");
    expectWrongValue(device({"rotate", "5"}, 1),
                     "kvsync: FunctionNotExist (0x01002000): The device \"Virtual camera\" has no "
                     "motor");
    expectWrongValue(
        device({"capture", "--frames", "1", "--out", out()}, 2),
        "kvsync: FunctionNotExist (0x01002000): The device \"Virtual turntable\" has no "
        "camera");
    expectFailure(device({"get", "dance"}), "kvsync: UnnamedCode (0x01F00006): The device does not "
                                            "give the property \"dance\"");
}

TEST_F(KvsyncDevice, EveryCommandButListNeedsAPlugin)
{
    expectWrongCommandLine({"device", "info"},
                           "kvsync: InvalidParameter (0x01000009): --plugin is required",
                           "kvsync device info");
    expectWrongCommandLine({"device"},
                           "kvsync: InvalidParameter (0x01000009): A subcommand is required",
                           "kvsync device");
}

TEST_F(KvsyncDevice, ListGoesOnAfterAPluginThatFails)
{
    PluginFolders folders;
    copyFile(logicFolder() + "/Scanner.1.0.1.dll", folders.logicFile("Scanner.1.0.1.dll"));
    for (const char *const name : {"FactoryThrows", "NullDevice", "RefusesDestroy"}) {
        const QString fixture = QString::fromLatin1(name);
        copyFile(deviceFixture(fixture), folders.deviceFile(fixture + ".1.0.1.dll"));
    }
    const Outcome outcome = folders.run({"device", "list"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    EXPECT_EQ(outcome.output.toStdString(), "FactoryThrows 1.0\n"
                                            "  cannot count\n"
                                            "NullDevice 1.0\n"
                                            "  0                        does not let itself be "
                                            "opened\n"
                                            "RefusesDestroy 1.0\n"
                                            "  0  plain                 no capability\n");
    const QJsonObject first = folders.run({"device", "list", "--json"})
                                  .json()
                                  .value("plugins")
                                  .toArray()
                                  .first()
                                  .toObject();
    EXPECT_EQ(first.value("failure"), QJsonValue("cannot count"));
}

TEST_F(KvsyncDevice, ListSaysThatThereIsNoPlugin)
{
    PluginFolders folders;
    copyFile(logicFolder() + "/Scanner.1.0.1.dll", folders.logicFile("Scanner.1.0.1.dll"));
    EXPECT_EQ(folders.run({"device", "list"}).output.toStdString(),
              "no device plug-in that can be loaded\n");
}

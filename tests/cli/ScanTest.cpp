#include "Kvsync.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

using namespace KvSyncTest;

class KvsyncScan : public testing::Test
{
protected:
    QString out() const { return folder.filePath(QStringLiteral("scan")); }

    QStringList scan(int frames, const QStringList &further = {}) const
    {
        return QStringList{QStringLiteral("scan"), QStringLiteral("--frames"),
                           QString::number(frames), QStringLiteral("--out"), out()} +
               (further.contains(QStringLiteral("--timeout")) ? QStringList() : patiently()) +
               further;
    }

    /// Of a scan of one frame.
    QString firstHash(const QStringList &further = {}) const
    {
        return runKvsync(scan(1, further + QStringList{QStringLiteral("--json"),
                                                       QStringLiteral("--overwrite")}))
            .json()
            .value(QStringLiteral("images"))
            .toArray()
            .at(0)
            .toObject()
            .value(QStringLiteral("sha256"))
            .toString();
    }

    /// A period at which even a loaded machine, or one under a sanitizer, drops no frame.
    static QStringList unhurriedly()
    {
        return {QStringLiteral("--period"), QStringLiteral("1000")};
    }

    static QString hashOfPixels(const QString &file)
    {
        const QImage image(file);
        EXPECT_EQ(image.format(), QImage::Format_Grayscale8);
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (int row = 0; row < image.height(); ++row)
            hash.addData(reinterpret_cast<const char *>(image.constScanLine(row)), image.width());
        return QString::fromLatin1(hash.result().toHex());
    }

    QTemporaryDir folder;
};

TEST_F(KvsyncScan, WritesAPngFileOfEveryImageAndAContactSheet)
{
    ASSERT_EQ(runKvsync(scan(2, unhurriedly())).exitCode, 0);
    EXPECT_EQ(
        QDir(out()).entryList(QDir::Files, QDir::Name),
        (QStringList{
            QStringLiteral("contact-sheet.png"), QStringLiteral("frame-00001-camera-0.png"),
            QStringLiteral("frame-00001-camera-1.png"), QStringLiteral("frame-00002-camera-0.png"),
            QStringLiteral("frame-00002-camera-1.png"), QStringLiteral("scan.json")}));
    const QImage image(out() + QStringLiteral("/frame-00002-camera-1.png"));
    EXPECT_EQ(image.size(), QSize(1280, 1024));
    const QImage sheet(out() + QStringLiteral("/contact-sheet.png"));
    EXPECT_EQ(sheet.size(), QSize(24 + 2 * 206, 24 + 2 * 166));
}

TEST_F(KvsyncScan, TellsTheHashOfThePixelsThatItWrote)
{
    const QJsonObject summary = runKvsync(scan(2, {QStringLiteral("--json")})).json();
    const QJsonArray images = summary.value(QStringLiteral("images")).toArray();
    ASSERT_EQ(images.size(), 4);
    for (const QJsonValue &value : images) {
        const QJsonObject image = value.toObject();
        const QString file = image.value(QStringLiteral("file")).toString();
        EXPECT_EQ(image.value(QStringLiteral("sha256")).toString(),
                  hashOfPixels(out() + QLatin1Char('/') + file));
    }
}

TEST_F(KvsyncScan, AccountsForEveryFrame)
{
    const QJsonObject summary = runKvsync(scan(3, {QStringLiteral("--json")})).json();
    EXPECT_EQ(summary.value(QStringLiteral("requested")), QJsonValue(3));
    EXPECT_EQ(summary.value(QStringLiteral("delivered")), QJsonValue(3));
    EXPECT_EQ(summary.value(QStringLiteral("balanced")), QJsonValue(true));
    EXPECT_EQ(summary.value(QStringLiteral("produced")).toInt(),
              3 + summary.value(QStringLiteral("dropped")).toInt());
    EXPECT_GT(summary.value(QStringLiteral("framesPerSecond")).toDouble(), 0.0);
}

TEST_F(KvsyncScan, TellsTheAccountToPeople)
{
    // Slow enough that nothing is lost.
    const Outcome outcome = runKvsync(scan(2, unhurriedly()));
    EXPECT_EQ(outcome.errors.toStdString(), ""); // no progress bar where no terminal is
    EXPECT_TRUE(outcome.output.contains(QStringLiteral("produced 2 = delivered 2 + dropped 0\n")))
        << outcome.output.toStdString();
    EXPECT_TRUE(outcome.output.contains(QStringLiteral("4 images in ")));
}

TEST_F(KvsyncScan, WithColorWritesThreeCameras)
{
    ASSERT_EQ(runKvsync(scan(1, unhurriedly() + QStringList{QStringLiteral("--color")})).exitCode,
              0);
    EXPECT_TRUE(QFile::exists(out() + QStringLiteral("/frame-00001-camera-2.png")));
}

TEST_F(KvsyncScan, AFrameNumberHasTheSamePixelsInEveryRun)
{
    const QString once = firstHash();
    EXPECT_EQ(once.size(), 64);
    EXPECT_EQ(firstHash(), once);
}

TEST_F(KvsyncScan, SettingsLightAndTurntableChangeWhatItShows)
{
    const QString plain = firstHash();
    EXPECT_NE(firstHash({QStringLiteral("--set"), QStringLiteral("camera0.gain=40")}), plain);
    for (const char *const flag : {"blueLaser=on", "infraredLaser=on"})
        EXPECT_NE(firstHash({QStringLiteral("--switch"), QString::fromLatin1(flag)}), plain);
    for (const char *const pattern : {"off", "flat", "stripes"})
        EXPECT_NE(firstHash({QStringLiteral("--project"), QString::fromLatin1(pattern)}), plain);
    EXPECT_EQ(firstHash({QStringLiteral("--project"), QStringLiteral("speckle")}), plain);
    EXPECT_NE(firstHash({QStringLiteral("--turntable"), QStringLiteral("30")}), plain);
}

TEST_F(KvsyncScan, RefusesALightThatItCannotMake)
{
    for (const QStringList &light :
         {QStringList{QStringLiteral("--project"), QStringLiteral("cross")},
          QStringList{QStringLiteral("--switch"), QStringLiteral("sun=on")}}) {
        const Outcome outcome = runKvsync(scan(1, light));
        EXPECT_NE(outcome.exitCode, 0);
        EXPECT_TRUE(outcome.errors.contains(
            QStringLiteral("\"%1\"").arg(light.last().section(QLatin1Char('='), 0, 0))))
            << outcome.errors.toStdString();
    }
}

TEST_F(KvsyncScan, NonAsciiFolderNamesSurvive)
{
    const QString name = folder.filePath(QStringLiteral("Größe"));
    const Outcome outcome =
        runKvsync(QStringList{QStringLiteral("scan"), QStringLiteral("--frames"),
                              QStringLiteral("1"), QStringLiteral("--out"), name} +
                  patiently());
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
    EXPECT_TRUE(QFile::exists(name + QStringLiteral("/contact-sheet.png")));
}

TEST_F(KvsyncScan, TakesFolderNamesInBrackets)
{
    const QString name = folder.filePath(QStringLiteral("[1,2]"));
    EXPECT_EQ(runKvsync(QStringList{QStringLiteral("scan"), QStringLiteral("--frames"),
                                    QStringLiteral("1"), QStringLiteral("--out"), name} +
                        patiently())
                  .exitCode,
              0);
    EXPECT_TRUE(QFile::exists(name + QStringLiteral("/contact-sheet.png")));
}

TEST_F(KvsyncScan, SaysThatAScannerIsAbsent)
{
    expectFailure(scan(1, {QStringLiteral("--serial"), QStringLiteral("KV-SIM-0002")}),
                  QStringLiteral("kvsync: ConnectFailed (0x010D000A): No scanner answers to the "
                                 "serial number \"KV-SIM-0002\""));
}

TEST_F(KvsyncScan, RefusesToScanNoFrame)
{
    expectWrongValue(scan(0),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): \"frames\" must be a "
                                    "whole number from 1 to 1000000000, not 0"));
}

TEST_F(KvsyncScan, RefusesAPeriodOfZero)
{
    expectWrongValue(scan(1, {QStringLiteral("--period"), QStringLiteral("0")}),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): \"periodMs\" must be a "
                                    "whole number from 1 to 60000, not 0"));
}

TEST_F(KvsyncScan, RefusesAPeriodThatIsSetTwice)
{
    expectWrongValue(scan(1, {QStringLiteral("--period"), QStringLiteral("50"),
                              QStringLiteral("--set"), QStringLiteral("periodMs=60")}),
                     QStringLiteral("kvsync: InvalidParameter (0x01000009): --period and --set "
                                    "periodMs contradict each other"));
}

TEST_F(KvsyncScan, EndsWhenTheScannerFallsSilent)
{
    expectFailure(scan(1, {QStringLiteral("--period"), QStringLiteral("60000"),
                           QStringLiteral("--timeout"), QStringLiteral("20")}),
                  QStringLiteral("kvsync: CameraFailed (0x01080000): The scanner fell silent: 0 of "
                                 "1 frames came, then none for 20 ms"));
}

TEST_F(KvsyncScan, RefusesAFolderThatCannotBeMadeBeforeItScans)
{
    QFile file(out());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    expectFailure(scan(1), QStringLiteral("kvsync: PathNotExist (0x01000001): ") + out() +
                               QStringLiteral(" cannot be written: the folder cannot be made"));
}

TEST_F(KvsyncScan, SaysWhichFileCannotBeWritten)
{
    const QString blocked = out() + QStringLiteral("/frame-00001-camera-0.png");
    ASSERT_TRUE(QDir().mkpath(blocked));
    const Outcome outcome = runKvsync(scan(1, unhurriedly()));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.errors.startsWith(QStringLiteral("kvsync: PathNotExist (0x01000001): ") +
                                          blocked + QStringLiteral(" cannot be written: ")))
        << outcome.errors.toStdString();
}

TEST_F(KvsyncScan, NeedsFramesAndFolder)
{
    expectWrongCommandLine(
        {QStringLiteral("scan"), QStringLiteral("--out"), out()},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): --frames is required"),
        QStringLiteral("kvsync scan"));
    expectWrongCommandLine(
        {QStringLiteral("scan"), QStringLiteral("--frames"), QStringLiteral("1")},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): --out is required"),
        QStringLiteral("kvsync scan"));
    expectWrongCommandLine(
        {QStringLiteral("scan"), QStringLiteral("--frames"), QStringLiteral("many"),
         QStringLiteral("--out"), out()},
        QStringLiteral("kvsync: InvalidParameter (0x01000009): Could not convert: --frames = many"),
        QStringLiteral("kvsync scan"));
}

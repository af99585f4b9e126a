// Snapshots, user information and the turntable.
#include "ScannerHost.h"

#include "support/LocaleCodec.h"

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerStore : public ScannerHost
{
protected:
    ScannerStore() { open(); }

    QVariantList snap(const QVariantMap &parameters = {})
    {
        return call("captureImage", {scannerHandle, "color", parameters}).toList();
    }

    QVariant read(const QVariant &address) { return execute("readUserInformation", {address}); }

    QVariant write(const QVariant &address, const QVariant &text)
    {
        return execute("writeUserInformation", {address, text});
    }
};

TEST_F(ScannerStore, ASnapshotBringsEveryPlaneOfTheColorCamera)
{
    const QVariantList planes = snap();
    ASSERT_EQ(planes.size(), 3);
    for (int place = 0; place < planes.size(); ++place) {
        const QVariantMap plane = planes.at(place).toMap();
        EXPECT_EQ(plane.value("camera"), QVariant(place));
        EXPECT_EQ(plane.value("width"), QVariant(160));
        EXPECT_EQ(plane.value("height"), QVariant(128));
        EXPECT_EQ(plane.value("bitDepth"), QVariant(8));
        EXPECT_EQ(plane.value("data").toByteArray().size(), 160 * 128);
    }
}

TEST_F(ScannerStore, ASnapshotTakesTheRouteAskedForOrThatOfAScan)
{
    snap();
    snap({{"route", 1}});
    const auto calls = libraryCalls("SnapColorImage");
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0], "SnapColorImage(device, 0, 0, 2)");
    EXPECT_EQ(calls[1], "SnapColorImage(device, 0, 0, 1)");
}

TEST_F(ScannerStore, ASnapshotThatIsRefusedOrAskedForWronglyIsTold)
{
    Simulator::script("SnapColorImage", 1, {3, {}});
    expectThrows(CameraFailed, "The scanner refuses a color snapshot", [&] { snap(); });
    expectThrows(InvalidParameter, "\"route\" must be a whole number from 0 to 255, not 256", [&] {
        snap({{"route", 256}});
    });
}

TEST_F(ScannerStore, UserInformationIsReadBackByAddress)
{
    const LocaleCodec utf8("UTF-8");
    EXPECT_FALSE(write(3, "Größe 大").isValid());
    EXPECT_EQ(read(3), QVariant("Größe 大"));
    EXPECT_EQ(read(4), QVariant(QString()));
}

TEST_F(ScannerStore, UserInformationHoldsUpTo511BytesInUtf8)
{
    const LocaleCodec utf8("UTF-8");
    const QString longest(511, QLatin1Char('x'));
    write(0, longest);
    EXPECT_EQ(read(0), QVariant(longest));
    const QString text = "User information is longer than 511 bytes in UTF-8";
    expectThrows(InvalidParameter, text, [&] { write(0, QString(512, QLatin1Char('x'))); });
    expectThrows(InvalidParameter, text, [&] { write(0, QString(300, QChar(0xe9))); });
    EXPECT_EQ(read(0), QVariant(longest));
}

TEST_F(ScannerStore, UserInformationThatTheLocalEncodingLacksIsNotWritten)
{
    const LocaleCodec latin1("ISO-8859-1");
    expectThrows(InvalidParameter, "The text has characters that the local encoding lacks",
                 [&] { write(0, "大"); });
    EXPECT_TRUE(libraryCalls("WriteUserInfomation").empty());
}

TEST_F(ScannerStore, UserInformationThatCannotBeUsedIsTold)
{
    const QString address = "The address must be a whole number from 0 to 2147483647, not %1";
    expectThrows(InvalidParameter, address.arg("-1"), [&] { read(-1); });
    expectThrows(InvalidParameter, address.arg("nothing"), [&] { execute("readUserInformation"); });
    expectThrows(InvalidParameter, address.arg("\"x\""), [&] { write("x", "text"); });
    expectThrows(InvalidParameter, "User information must be a text, not nothing",
                 [&] { execute("writeUserInformation", {0}); });
    expectThrows(DeviceOperationFailed,
                 "The scanner refuses to read user information at address 256", [&] { read(256); });
    expectThrows(DeviceOperationFailed,
                 "The scanner refuses to write user information at address 256",
                 [&] { write(256, "text"); });
}

TEST_F(ScannerStore, TheSimulatedTurntableTurnsToAnAngleOrByOne)
{
    const auto rotate = [this](double degrees, bool isRelative) {
        call("turntableRotate",
             {scannerHandle, "simulator", QVariantMap{{"degrees", degrees}}, isRelative});
    };
    rotate(30.0, false);
    EXPECT_EQ(Simulator::turntableAngle(), 30.0);
    rotate(-10.5, true);
    EXPECT_EQ(Simulator::turntableAngle(), 19.5);
    rotate(5.0, false);
    EXPECT_EQ(Simulator::turntableAngle(), 5.0);
}

TEST_F(ScannerStore, ATurntableThatCannotTurnIsTold)
{
    const QString function = "turntableRotate";
    expectFails(FunctionNotExist, "There is no turntable \"kitchen\", but simulator", function,
                {scannerHandle, "kitchen", QVariantMap(), false});
    expectFails(InvalidParameter,
                "\"degrees\" must be a number from -3600000 to 3600000, not nothing", function,
                {scannerHandle, "simulator", QVariantMap(), false});
    Simulator::setTurntableAngle(3600000.0);
    expectFails(InvalidParameter, "The turntable refuses an angle of 3600001 degrees", function,
                {scannerHandle, "simulator", QVariantMap{{"degrees", 1}}, true});
}

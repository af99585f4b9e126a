#include "DirectLink.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <limits>

namespace {

using namespace KvSyncTest;
using ::testing::Contains;
using ::testing::ElementsAre;

using CameraSerialNumber = ConnectedScanner;
using CamerasInformation = UnconnectedScanner;
using FirewareVersion = ConnectedScanner;
using CameraResolution = ConnectedScanner;

TEST_F(CameraSerialNumber, OfAnInvalidIndexIsEmptyAndPrintedAsNull)
{
    scanner.statuses["GetCameraSerialNumber"] = refused;
    QString serial = "before";
    ErrorCode code = Success;
    const Journal journal = journalOf([&] { code = controller.getCameraSerialNumber(-1, serial); });
    EXPECT_EQ(code, DeviceOperationFailed);
    EXPECT_EQ(serial, QString());
    EXPECT_THAT(journal,
                ElementsAre(debug("getCameraSerialNumber", "getCameraSerialNumber start"),
                            "GetCameraSerialNumber(device, -1, null)", printed("serials:(null)")));
}

TEST_F(CameraSerialNumber, ThatTheLibraryLeavesNullIsEmptyOnSuccessToo)
{
    QString serial = "before";
    ErrorCode code = ConnectFailed;
    const Journal journal = journalOf([&] { code = controller.getCameraSerialNumber(0, serial); });
    EXPECT_EQ(code, Success);
    EXPECT_EQ(serial, QString());
    EXPECT_THAT(journal, Contains(printed("serials:(null)")));
}

TEST_F(CameraSerialNumber, MayHoldWhatPrintfWouldTakeForAFormat)
{
    static char percent[] = "%s%n";
    scanner.effects.GetCameraSerialNumber = [](void *&, int, char *&serial) {
        serial = percent;
        return accepted;
    };
    QString serial;
    const Journal journal = journalOf([&] { controller.getCameraSerialNumber(0, serial); });
    EXPECT_EQ(serial, "%s%n");
    EXPECT_THAT(journal, Contains(printed("serials:%s%n")));
}

TEST_F(CameraResolution, PassesAnyIndexOn)
{
    int width = 0;
    int height = 0;
    EXPECT_THAT(journalOf([&] {
                    controller.getCameraResolution(std::numeric_limits<int>::max(), width, height);
                }),
                Contains("GetCameraResolution(device, 2147483647, 0, 0)"));
}

class StatusDescription : public ::testing::TestWithParam<int>
{
protected:
    DirectLink link;
};

TEST_P(StatusDescription, IsAlwaysASuccessAndAsksForTheStatusItself)
{
    link.scanner.statuses["GetStatusDescriptionString"] = GetParam();
    QString text;
    ErrorCode code = ConnectFailed;
    const Journal journal =
        journalOf([&] { code = link.controller.getStatusDescriptionString(GetParam(), text); });
    EXPECT_EQ(code, Success);
    EXPECT_THAT(journal,
                Contains("GetStatusDescriptionString(" + std::to_string(GetParam()) + ", null)"));
}

TEST_P(StatusDescription, ThatTheLibraryLeavesNullIsEmpty)
{
    QString text = "before";
    journalOf([&] { link.controller.getStatusDescriptionString(GetParam(), text); });
    EXPECT_EQ(text, QString());
}

TEST_P(StatusDescription, LeavesTheCallersStatusAsItWas)
{
    link.scanner.effects.GetStatusDescriptionString = [](int &status, char *&) {
        status = 1234;
        return accepted;
    };
    const int status = GetParam();
    QString text;
    journalOf([&] { link.controller.getStatusDescriptionString(status, text); });
    EXPECT_EQ(status, GetParam());
}

INSTANTIATE_TEST_SUITE_P(AnyStatus, StatusDescription,
                         ::testing::Values(std::numeric_limits<int>::min(), -1, 0, 7, 8,
                                           std::numeric_limits<int>::max()));

TEST_F(CamerasInformation, TakesEveryListAtItsOwnLengthAndANullSerialAsEmpty)
{
    static char serialText[] = "S";
    scanner.effects.GetCamerasInformation = [](const char *, auto &serials, auto &a, auto &b,
                                               auto &flags, int &count) {
        serials = {serialText, nullptr, serialText};
        a = {1};
        b = {};
        flags = {true, true, false, true};
        count = -3;
        return accepted;
    };
    QStringList serials;
    QVector<int> valuesA;
    QVector<int> valuesB{8};
    QVector<bool> flags;
    int count = 0;
    journalOf(
        [&] { controller.getCamerasInformation("KV", serials, valuesA, valuesB, flags, count); });
    EXPECT_EQ(serials, QStringList({"S", "", "S"}));
    EXPECT_EQ(valuesA, QVector<int>({1}));
    EXPECT_EQ(valuesB, QVector<int>());
    EXPECT_EQ(flags, QVector<bool>({true, true, false, true}));
    EXPECT_EQ(count, -3);
}

TEST_F(CamerasInformation, LeavesTheListsOfTheConnectionAlone)
{
    scanner.effects = talkativeScanner();
    QStringList serials;
    QVector<int> valuesA;
    QVector<int> valuesB;
    QVector<bool> flags;
    int count = 0;
    journalOf(
        [&] { controller.getCamerasInformation("KV", serials, valuesA, valuesB, flags, count); });
    EXPECT_EQ(journalOf([&] { controller.connectDeviceBySerial(anyHandle, "KV"); }).front(),
              R"(GetCamerasInformation("KV", [], [], [], [], 0))");
}

TEST_F(FirewareVersion, MayHoldAZeroByte)
{
    scanner.effects.GetFirewareVersion = [](void *, const char *, const char *,
                                            std::string &version) {
        version.assign("1\0002", 3);
        return accepted;
    };
    QString version;
    journalOf([&] { controller.getFirewareVersion("one", "two", version); });
    EXPECT_EQ(version, QString::fromLatin1("1\0002", 3));
}

} // namespace

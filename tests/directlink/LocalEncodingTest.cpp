// A machine whose local 8-bit encoding is GBK: every text of the scanner travels in it, but for the
// two that are UTF-8.

#include "DirectLink.h"
#include "support/LocaleCodec.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <cstring>

namespace {

using namespace KvSyncTest;
using ::testing::Contains;

// "扫描" in three forms.
const QString scanText = QString::fromUtf8("\xE6\x89\xAB\xE6\x8F\x8F");
const char scanUtf8[] = "\xE6\x89\xAB\xE6\x8F\x8F";
char scanGbk[] = "\xC9\xA8\xC3\xE8";

class ChineseMachine : public ConnectedScanner
{
protected:
    LocaleCodec codec{"GBK"};
};

TEST_F(ChineseMachine, SendsTheSerialToConnectInLocalBytes)
{
    EXPECT_THAT(journalOf([&] { controller.connectDeviceBySerial(anyHandle, scanText); }).front(),
                ::testing::StartsWith("GetCamerasInformation(\"\xC9\xA8\xC3\xE8\", "));
}

TEST_F(ChineseMachine, SendsTheNamesOfQueriesInLocalBytes)
{
    bool connected = false;
    int count = 0;
    QString version;
    const Journal journal = journalOf([&] {
        controller.isConnectedOnU3(scanText, connected);
        controller.getCameraCount(scanText, count);
        controller.getFirewareVersion(scanText, scanText + "2", version);
    });
    EXPECT_THAT(journal, Contains("IsConnectedOnU3(\"\xC9\xA8\xC3\xE8\", false)"));
    EXPECT_THAT(journal, Contains("GetCameraCount(\"\xC9\xA8\xC3\xE8\", 0)"));
    EXPECT_THAT(journal, Contains("GetFirewareVersion(device, \"\xC9\xA8\xC3\xE8\", "
                                  "\"\xC9\xA8\xC3\xE8\x32\", \"\")"));
}

TEST_F(ChineseMachine, ReadsCameraSerialsFromLocalBytesAndPrintsThemAsTheyAre)
{
    scanner.effects.GetCameraSerialNumber = [](void *&, int, char *&serial) {
        serial = scanGbk;
        return accepted;
    };
    QString serial;
    const Journal journal = journalOf([&] { controller.getCameraSerialNumber(0, serial); });
    EXPECT_EQ(serial, scanText);
    EXPECT_THAT(journal, Contains(printed("serials:\xC9\xA8\xC3\xE8")));
}

TEST_F(ChineseMachine, ReadsTheCamerasInformationFromLocalBytes)
{
    scanner.effects.GetCamerasInformation = [](const char *, auto &serials, auto &, auto &, auto &,
                                               int &) {
        serials = {scanGbk};
        return accepted;
    };
    QStringList serials;
    QVector<int> values;
    QVector<int> otherValues;
    QVector<bool> flags;
    int count = 0;
    const Journal journal = journalOf([&] {
        controller.getCamerasInformation(scanText, serials, values, otherValues, flags, count);
    });
    EXPECT_EQ(serials, QStringList{scanText});
    EXPECT_THAT(journal,
                Contains("GetCamerasInformation(\"\xC9\xA8\xC3\xE8\", [], [], [], [], 0)"));
}

TEST_F(ChineseMachine, ReadsStatusTextsFromLocalBytes)
{
    scanner.effects.GetStatusDescriptionString = [](int &, char *&text) {
        text = scanGbk;
        return accepted;
    };
    QString text;
    journalOf([&] { controller.getStatusDescriptionString(1, text); });
    EXPECT_EQ(text, scanText);
}

TEST_F(ChineseMachine, ReadsTheFirewareVersionFromUtf8AllTheSame)
{
    scanner.effects.GetFirewareVersion = [](void *, const char *, const char *,
                                            std::string &version) {
        version = scanUtf8;
        return accepted;
    };
    QString version;
    journalOf([&] { controller.getFirewareVersion("one", "two", version); });
    EXPECT_EQ(version, scanText);
}

TEST_F(ChineseMachine, WritesUserInformationInUtf8FromLocalBytes)
{
    EXPECT_THAT(journalOf([&] { controller.writeCustomInfo(anyHandle, 0, scanGbk); }),
                ::testing::ElementsAre(
                    debug("writeCustomInfo", std::string("writeCustomInfo start, data: ") +
                                                 scanUtf8 + " std str size: 6"),
                    debug("writeCustomInfo", std::string(" std str: ") + scanUtf8),
                    std::string("WriteUserInfomation(device, 0, \"") + scanUtf8 + "\", 6)"));
}

TEST_F(ChineseMachine, ReadsUserInformationFromUtf8AndHandsItOutInLocalBytes)
{
    scanner.effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        std::strcpy(buffer, scanUtf8);
        return accepted;
    };
    QByteArray data;
    const Journal journal = journalOf([&] { controller.readCustomInfo(anyHandle, 0, data); });
    EXPECT_EQ(data, QByteArray(scanGbk));
    EXPECT_THAT(journal, Contains(debug("readCustomInfo", std::string(" 2 ReadUserInfomation "
                                                                      "data: ") +
                                                              scanUtf8)));
}

TEST_F(ChineseMachine, MeasuresUserInformationInUtf8)
{
    // 171 characters: 342 local bytes, 513 in UTF-8.
    const QByteArray tooLong = QByteArray(scanGbk, 2).repeated(171);
    ErrorCode code = Success;
    journalOf([&] { code = controller.writeCustomInfo(anyHandle, 0, tooLong); });
    EXPECT_EQ(code, InvalidParameter);
    journalOf([&] { code = controller.writeCustomInfo(anyHandle, 0, tooLong.left(340)); });
    EXPECT_EQ(code, Success);
}

using WesternMachine = ConnectedScanner;

TEST_F(WesternMachine, SendsQuestionMarksForWhatTheLocalEncodingLacks)
{
    const LocaleCodec latin1("ISO-8859-1");
    int count = 0;
    EXPECT_THAT(journalOf([&] { controller.getCameraCount(scanText, count); }),
                Contains(R"(GetCameraCount("??", 0))"));
}

} // namespace

#include "DirectLink.h"

#include "support/LocaleCodec.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

using namespace KvSyncTest;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class UserInformation : public ConnectedScanner
{
protected:
    Journal write(const QByteArray &given, unsigned int address = 0)
    {
        return journalOf([&] { code = controller.writeCustomInfo(anyHandle, address, given); });
    }

    Journal read(unsigned int address = 0)
    {
        return journalOf([&] { code = controller.readCustomInfo(anyHandle, address, data); });
    }

    LocaleCodec codec{"UTF-8"};
    ErrorCode code = ConnectFailed;
    QByteArray data = "before";
};

TEST_F(UserInformation, Of511BytesIsWritten)
{
    const std::string text(511, 'x');
    EXPECT_THAT(write(QByteArray::fromStdString(text)),
                Contains("WriteUserInfomation(device, 0, \"" + text + "\", 511)"));
    EXPECT_EQ(code, Success);
}

TEST_F(UserInformation, Of512BytesIsRefusedWithoutAskingTheScanner)
{
    const std::string text(512, 'x');
    EXPECT_THAT(write(QByteArray::fromStdString(text)),
                ElementsAre(debug("writeCustomInfo",
                                  "writeCustomInfo start, data: " + text + " std str size: 512"),
                            debug("writeCustomInfo", " std str: " + text)));
    EXPECT_EQ(code, InvalidParameter);
}

TEST_F(UserInformation, Of300CharactersIn600BytesIsRefused)
{
    write(QString(300, QChar(0xE9)).toUtf8());
    EXPECT_EQ(code, InvalidParameter);
}

TEST_F(UserInformation, IsMeasuredInUtf8NotInTheGivenBytes)
{
    const LocaleCodec latin1("ISO-8859-1");
    write(QByteArray(300, '\xE9'));
    EXPECT_EQ(code, InvalidParameter);
    write(QByteArray(255, '\xE9'));
    EXPECT_EQ(code, Success);
}

TEST_F(UserInformation, IsWrittenUpToAZeroByte)
{
    EXPECT_THAT(write(QByteArray("ab\0cd", 5)),
                ElementsAre(debug("writeCustomInfo", "writeCustomInfo start, data: ab std str "
                                                     "size: 2"),
                            debug("writeCustomInfo", " std str: ab"),
                            R"(WriteUserInfomation(device, 0, "ab", 2))"));
}

TEST_F(UserInformation, LongAfterAZeroByteIsWritten)
{
    write(QByteArray("ab\0", 3) + QByteArray(600, 'x'));
    EXPECT_EQ(code, Success);
}

TEST_F(UserInformation, ThatIsEmptyIsWritten)
{
    EXPECT_THAT(write({}), Contains(R"(WriteUserInfomation(device, 0, "", 0))"));
    EXPECT_EQ(code, Success);
}

TEST_F(UserInformation, OfBytesThatAreNoTextIsWrittenAsReplacementCharacters)
{
    EXPECT_THAT(write("\xFF"), Contains("WriteUserInfomation(device, 0, \"\xEF\xBF\xBD\", 3)"));
}

TEST_F(UserInformation, AddressKeepsItsBits)
{
    EXPECT_THAT(write("x", 0xFFFFFFFFu), Contains(R"(WriteUserInfomation(device, -1, "x", 1))"));
    EXPECT_THAT(read(0x80000000u), Contains("ReadUserInfomation(device, -2147483648, ?)"));
}

TEST_F(UserInformation, IsReadFromABufferOf512Zeros)
{
    bool allZero = false;
    scanner.effects.ReadUserInfomation = [&](void *&, int, char *&buffer) {
        allZero = std::all_of(buffer, buffer + 512, [](char each) { return each == 0; });
        return accepted;
    };
    read();
    EXPECT_TRUE(allZero);
}

TEST_F(UserInformation, ReadWithoutAZeroByteEndsWithTheBuffer)
{
    scanner.effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        std::memset(buffer, 'y', 512);
        return accepted;
    };
    read();
    EXPECT_EQ(data, QByteArray(512, 'y'));
}

TEST_F(UserInformation, IsReadUpToAZeroByte)
{
    scanner.effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        std::memcpy(buffer, "ab\0cd", 6);
        return accepted;
    };
    EXPECT_THAT(read(), Contains(debug("readCustomInfo", " 2 ReadUserInfomation data: ab")));
    EXPECT_EQ(data, QByteArray("ab"));
}

TEST_F(UserInformation, ThatTheScannerDoesNotFillIsEmpty)
{
    scanner.statuses["ReadUserInfomation"] = refused;
    read();
    EXPECT_EQ(code, DeviceOperationFailed);
    EXPECT_EQ(data, QByteArray());
}

TEST_F(UserInformation, IsReadFromABufferThatTheLibraryPutInPlaceOfTheFirst)
{
    scanner.effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        delete[] buffer;
        buffer = new char[1025]();
        std::memset(buffer, 'z', 1024);
        return accepted;
    };
    read();
    EXPECT_EQ(data, QByteArray(1024, 'z'));
}

TEST_F(UserInformation, IsReadWholeAlsoFromANewBufferAtTheAddressOfTheFreedOne)
{
    // As long as the heap's block for the original is, so that it gives that block out again.
    constexpr std::size_t size = 520;
    scanner.effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        delete[] buffer;
        buffer = new char[size]();
        std::memset(buffer, 'z', size - 1);
        return accepted;
    };
    read();
    EXPECT_EQ(data, QByteArray(size - 1, 'z'));
}

TEST_F(UserInformation, OriginalBufferStaysWithALibraryThatReplacesIt)
{
    std::unique_ptr<char[]> kept;
    scanner.effects.ReadUserInfomation = [&](void *&, int, char *&buffer) {
        kept.reset(buffer);
        buffer = new char[2]{'q', 0};
        return accepted;
    };
    read();
    EXPECT_EQ(data, QByteArray("q"));
    // Still the library's to use and to free.
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept[511], 0);
}

TEST_F(UserInformation, IsEmptyIfTheLibraryTakesTheBufferAway)
{
    scanner.effects.ReadUserInfomation = [](void *&, int, char *&buffer) {
        delete[] buffer;
        buffer = nullptr;
        return accepted;
    };
    EXPECT_THAT(read(), Contains(debug("readCustomInfo", " 2 ReadUserInfomation data: ")));
    EXPECT_EQ(code, Success);
    EXPECT_EQ(data, QByteArray());
}

TEST_F(UserInformation, WithoutAConnectionIsRefusedByTheLibraryAlone)
{
    DirectLink fresh;
    fresh.scanner.statuses["WriteUserInfomation"] = refused;
    const Journal journal =
        journalOf([&] { code = fresh.controller.writeCustomInfo(anyHandle, 0, "x"); });
    EXPECT_EQ(code, DeviceOperationFailed);
    EXPECT_THAT(journal, Contains(R"(WriteUserInfomation(null, 0, "x", 1))"));
    EXPECT_THAT(journal, Not(Contains(HasSubstr("critical"))));
}

} // namespace

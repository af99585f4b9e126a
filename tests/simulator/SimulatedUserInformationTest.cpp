#include "ScannerFixture.h"

#include "TemporaryFolder.h"
#include "support/Unprivileged.h"

#include <fstream>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class UserInformation : public Scanner
{
protected:
    UserInformation() { connect(); }

    std::string blockAt(int address)
    {
        std::vector<char> room(512, '?');
        char *buffer = room.data();
        EXPECT_EQ(Ok, ReadUserInfomation(device, address, buffer));
        return buffer;
    }
};

TEST_F(UserInformation, IsReadBackByAddress)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 0, "first", 5));
    ASSERT_EQ(Ok, WriteUserInfomation(device, 255, "last", 4));
    auto *buffer = new char[512];
    char *original = buffer;
    ASSERT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
    EXPECT_STREQ("first", buffer);
    ASSERT_EQ(Ok, ReadUserInfomation(device, 255, buffer));
    EXPECT_STREQ("last", buffer);
    ASSERT_EQ(Ok, ReadUserInfomation(device, 7, buffer));
    EXPECT_STREQ("", buffer);
    EXPECT_EQ(original, buffer);
    delete[] buffer;
}

TEST_F(UserInformation, ABlockHoldsFiveHundredAndElevenBytesAndNoMore)
{
    const std::string full(511, 'x');
    ASSERT_EQ(Ok, WriteUserInfomation(device, 3, full.data(), 511));
    expectRefused(BadLength, WriteUserInfomation(device, 3, full.data(), 512));
    expectRefused(BadLength, WriteUserInfomation(device, 3, full.data(), -1));
    expectRefused(NullArgument, WriteUserInfomation(device, 3, nullptr, 1));
    std::vector<char> room(512, '?');
    char *buffer = room.data();
    ASSERT_EQ(Ok, ReadUserInfomation(device, 3, buffer));
    EXPECT_EQ(full, buffer);
    EXPECT_EQ('\0', room[511]);
}

TEST_F(UserInformation, AddressesOutsideTheStoreAreRefused)
{
    std::vector<char> room(512, '?');
    char *buffer = room.data();
    for (int address : {-1, 256}) {
        expectRefused(BadAddress, WriteUserInfomation(device, address, "x", 1));
        expectRefused(BadAddress, ReadUserInfomation(device, address, buffer));
    }
    EXPECT_EQ('?', room[0]);
    char *none = nullptr;
    expectRefused(NullArgument, ReadUserInfomation(device, 0, none));
}

TEST_F(UserInformation, SurvivesReconnecting)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 9, "kept", 4));
    ASSERT_EQ(Ok, DisConnectDevice(device));
    connect();
    std::vector<char> room(512, '?');
    char *buffer = room.data();
    ASSERT_EQ(Ok, ReadUserInfomation(device, 9, buffer));
    EXPECT_STREQ("kept", buffer);
}

class UserInformationFile : public UserInformation
{
protected:
    UserInformationFile() { setUserInformationFile(file); }

    /// As if the process had ended and another had begun.
    void beginAnew()
    {
        reset(smallSetup());
        connect();
        setUserInformationFile(file);
    }

    void writeFile(const std::string &content) const
    {
        std::ofstream(std::filesystem::u8path(file), std::ios::binary) << content;
    }

    TemporaryFolder folder;
    const std::string file = folder.file("information.json");
};

TEST_F(UserInformationFile, OutlastsTheProcess)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 7, "kept", 4));
    ASSERT_EQ(Ok, WriteUserInfomation(device, 8, "gone", 4));
    ASSERT_EQ(Ok, WriteUserInfomation(device, 8, "", 0));
    beginAnew();
    EXPECT_EQ("kept", blockAt(7));
    EXPECT_EQ("", blockAt(8));
}

TEST_F(UserInformationFile, KeepsEveryByte)
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    ASSERT_EQ(Ok, WriteUserInfomation(device, 0, bytes.data(), 256));
    beginAnew();
    std::vector<char> room(512, '?');
    char *buffer = room.data();
    ASSERT_EQ(Ok, ReadUserInfomation(device, 0, buffer));
    EXPECT_EQ(bytes, std::string(buffer, 256));
    EXPECT_EQ('\0', room[256]);
}

TEST_F(UserInformationFile, LeavesNothingBesideTheFile)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 0, "x", 1));
    EXPECT_EQ(std::vector<std::string>{"information.json"}, folder.entries());
}

TEST_F(UserInformationFile, AFileThatIsNotOursIsRefusedAndLeftAsItIs)
{
    for (const char *content :
         {"", "hello", "{}", R"({"format": "KV-SIM user information 1"})",
          R"({"format": "KV-SIM user information 2", "blocks": []})",
          R"({"format": "KV-SIM user information 1", "blocks": [{"address": 256, "hex": ""}]})",
          R"({"format": "KV-SIM user information 1", "blocks": [{"address": 0, "hex": "6"}]})",
          R"({"format": "KV-SIM user information 1", "blocks": [{"address": 0, "hex": "6g"}]})",
          // Cut off, of another shape, or with what the next write would lose.
          R"({"format": "KV-SIM user information 1", "blocks": [{"addr)",
          R"({"format": "KV-SIM user information 1", "blocks": null})",
          R"({"format": "KV-SIM user information 1", "blocks": {}})",
          R"({"format": "KV-SIM user information 1", "blocks": [], "more": 1})",
          R"({"format": "KV-SIM user information 1", "blocks": [], "blocks": []})",
          R"({"format": "KV-SIM user information 1", "blocks": [{"address": 0.5, "hex": ""}]})",
          R"({"format": "KV-SIM user information 1", "blocks": [{"address": true, "hex": ""}]})",
          R"({"format": "KV-SIM user information 1", "blocks": [{"address": -1, "hex": ""}]})",
          R"({"format": "KV-SIM user information 1",
              "blocks": [{"address": 4294967296, "hex": ""}]})",
          R"({"format": "KV-SIM user information 1",
              "blocks": [{"address": 0, "hex": "61", "more": 1}]})",
          R"({"format": "KV-SIM user information 1",
              "blocks": [{"address": 0, "hex": "61"}, {"address": 0, "hex": "62"}]})",
          R"({"format": 1e999, "blocks": []})"}) {
        writeFile(content);
        beginAnew();
        std::vector<char> room(512, '?');
        char *buffer = room.data();
        expectRefused(StorageFailed, ReadUserInfomation(device, 0, buffer));
        expectRefused(StorageFailed, WriteUserInfomation(device, 0, "x", 1));
        std::ifstream stream(std::filesystem::u8path(file), std::ios::binary);
        EXPECT_EQ(content, std::string(std::istreambuf_iterator<char>(stream), {}));
    }
}

TEST_F(UserInformationFile, AWriteThatCannotBeStoredIsRefusedAndChangesNothing)
{
    setUserInformationFile(folder.file("missing/information.json"));
    expectRefused(StorageFailed, WriteUserInfomation(device, 0, "x", 1));
    EXPECT_EQ("", blockAt(0));
}

TEST_F(UserInformationFile, AFolderInItsPlaceIsRefused)
{
    setUserInformationFile(folder.file(""));
    expectRefused(StorageFailed, WriteUserInfomation(device, 0, "x", 1));
}

TEST_F(UserInformationFile, OfABlockThatIsTooLongIsRefused)
{
    const std::string start = R"({"format": "KV-SIM user information 1", "blocks": [{"hex": ")";
    std::vector<char> room(512, '?');
    char *buffer = room.data();
    std::string hex;
    for (int i = 0; i < 511; ++i)
        hex += "61";
    writeFile(start + hex + R"(", "address": 0}]})");
    beginAnew();
    EXPECT_EQ(std::string(511, 'a'), blockAt(0));
    writeFile(start + hex + R"(61", "address": 0}]})");
    beginAnew();
    expectRefused(StorageFailed, ReadUserInfomation(device, 0, buffer));
}

#ifndef _WIN32
TEST_F(UserInformationFile, ThatMayNotBeReadIsRefusedAndLeftAsItIs)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 0, "kept", 4));
    const auto path = std::filesystem::u8path(file);
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const std::string answer = KvSyncTest::unprivileged([&] {
        setUserInformationFile(file);
        return std::to_string(WriteUserInfomation(device, 0, "lost", 4));
    });
    EXPECT_EQ(std::to_string(StorageFailed), answer);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    beginAnew();
    EXPECT_EQ("kept", blockAt(0));
}

TEST_F(UserInformationFile, InAFolderThatMayNotBeWrittenKeepsItsOldContent)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 0, "kept", 4));
    const auto path = std::filesystem::u8path(file).parent_path();
    std::filesystem::permissions(path, std::filesystem::perms::owner_read |
                                           std::filesystem::perms::owner_exec);
    EXPECT_EQ(std::to_string(StorageFailed), KvSyncTest::unprivileged([&] {
                  return std::to_string(WriteUserInfomation(device, 0, "lost", 4));
              }));
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    EXPECT_EQ("kept", blockAt(0));
    beginAnew();
    EXPECT_EQ("kept", blockAt(0));
}
#endif

TEST_F(UserInformationFile, AnEmptyNameKeepsItInMemoryAgain)
{
    ASSERT_EQ(Ok, WriteUserInfomation(device, 0, "x", 1));
    setUserInformationFile("");
    EXPECT_EQ("", blockAt(0));
}

TEST_F(UserInformationFile, IsNamedByTheEnvironmentToo)
{
    const EnvironmentVariable variable(UserInformationVariable, file);
    reset(smallSetup());
    connect();
    ASSERT_EQ(Ok, WriteUserInfomation(device, 3, "kept", 4));
    reset(smallSetup());
    connect();
    EXPECT_EQ("kept", blockAt(3));
}

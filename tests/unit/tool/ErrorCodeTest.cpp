#include "KvSyncTool/ErrorCode.h"
#include "support/RowName.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

struct KnownCode
{
    const char *name;
    ErrorCode code;
    int value;
};

const KnownCode knownCodes[] = {
    {"Success", Success, 0},
    {"PathNotExist", PathNotExist, 0x01000001},
    {"PluginLoadFailed", PluginLoadFailed, 0x01000002},
    {"PluginFileNotExist", PluginFileNotExist, 0x01000006},
    {"InvalidParameter", InvalidParameter, 0x01000009},
    {"FunctionNotExist", FunctionNotExist, 0x01002000},
    {"WrongArgumentCount", WrongArgumentCount, 0x01002001},
    {"CameraFailed", CameraFailed, 0x01080000},
    {"ProjectorFailed", ProjectorFailed, 0x010A0000},
    {"CommandFailed", CommandFailed, 0x010D0009},
    {"ConnectFailed", ConnectFailed, 0x010D000A},
    {"DeviceOperationFailed", DeviceOperationFailed, 0x010F0000},
    {"PluginNotLoaded", PluginNotLoaded, 0x010F0001},
    {"PluginNameOrVersionNull", PluginNameOrVersionNull, 0x010F0002},
    {"HandleInvalid", HandleInvalid, 0x010F0003},
};

class EachCode : public ::testing::TestWithParam<KnownCode>
{
};

TEST_P(EachCode, HasItsNumber)
{
    EXPECT_EQ(static_cast<int>(GetParam().code), GetParam().value);
}

TEST_P(EachCode, TellsItsName)
{
    EXPECT_STREQ(KvSyncTool::errorCodeName(GetParam().code), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(ErrorCode, EachCode, ::testing::ValuesIn(knownCodes), KvSyncTest::rowName);

TEST(ErrorCodes, NoneButSuccessEqualsZeroAndNoneStandsOutsideTheRange)
{
    for (const KnownCode &known : knownCodes) {
        if (known.code == Success)
            continue;
        EXPECT_GE(static_cast<int>(known.code), 0x01000001) << known.name;
        EXPECT_LE(static_cast<int>(known.code), 0x010F0003) << known.name;
    }
}

TEST(ErrorCodes, ThereAreNoOthersInTheRange)
{
    int named = 0;
    for (int value = 0x01000001; value <= 0x010F0003; ++value)
        named += KvSyncTool::errorCodeName(static_cast<ErrorCode>(value)) ? 1 : 0;
    EXPECT_EQ(named, 14);
}

TEST(ErrorCodes, AreNumbersOfThirtyTwoBitsInTheGlobalNamespace)
{
    static_assert(std::is_same_v<std::underlying_type_t<::ErrorCode>, int>);
    EXPECT_EQ(sizeof(::ErrorCode), 4U);
    const int unscoped = ::HandleInvalid;
    EXPECT_EQ(unscoped, 0x010F0003);
}

TEST(ErrorCodes, ACodeOfAPluginsOwnKeepsItsNumberAndHasNoName)
{
    const auto own = static_cast<ErrorCode>(-7);
    EXPECT_EQ(static_cast<int>(own), -7);
    EXPECT_EQ(KvSyncTool::errorCodeName(own), nullptr);
}

} // namespace

// Plans that cannot be used, as texts and as files.

#include "ScannerFixture.h"
#include "TemporaryFolder.h"
#include "Unprivileged.h"

#include <cstring>
#include <stdexcept>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

struct BadPlan
{
    const char *json;
    const char *text;
};

class BadFaultPlans : public testing::TestWithParam<BadPlan>
{
};

TEST_P(BadFaultPlans, AreRefusedWithATextThatSaysWhatAndWhere)
{
    try {
        setFaultPlan(GetParam().json);
        FAIL() << "accepted";
    } catch (const std::invalid_argument &error) {
        EXPECT_EQ(GetParam().text,
                  std::string(error.what()).substr(0, std::strlen(GetParam().text)));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadFaultPlans,
    testing::Values(
        BadPlan{"", "fault plan: not JSON: "}, BadPlan{"{", "fault plan: not JSON: "},
        BadPlan{"{}{}", "fault plan: not JSON: "},
        BadPlan{"{\"\xFF\": 1}", "fault plan: not JSON: "},
        BadPlan{R"({"faults": [{"frame": 1e999}]})", "fault plan: not JSON: "},
        BadPlan{R"({"faults": [], "faults": []})",
                "fault plan: the key \"faults\" stands twice in one object"},
        BadPlan{R"({"faults": [{"frame": 1, "drop": true}, {"frame": 2, "frame": 3}]})",
                "fault plan: the key \"frame\" stands twice in one object"},
        BadPlan{"null", "fault plan: must be an object"},
        BadPlan{R"({"faults": null})", "fault plan: \"faults\" must be a list"},
        BadPlan{R"({"faults": [1]})", "fault plan: faults[0]: must be an object"},
        BadPlan{R"({"faults": [{"function": "Project", "call": -1}]})",
                "fault plan: faults[0]: \"call\" must be at least 1"},
        BadPlan{R"({"faults": [{"function": "Project", "every": 0}]})",
                "fault plan: faults[0]: \"every\" must be at least 1"},
        BadPlan{R"({"faults": [{"frame": 0}]})",
                "fault plan: faults[0]: \"frame\" must be at least 1"},
        BadPlan{R"({"faults": [{"everyFrame": 0}]})",
                "fault plan: faults[0]: \"everyFrame\" must be at least 1"},
        BadPlan{R"({"faults": [{"function": "Project", "status": 18446744073709551615}]})",
                "fault plan: faults[0]: \"status\" must be an integer"},
        BadPlan{R"({"faults": [{"function": "Project", "status": -2147483649}]})",
                "fault plan: faults[0]: \"status\" must be an integer"},
        BadPlan{R"({"faults": [{"function": "Project", "status": "3"}]})",
                "fault plan: faults[0]: \"status\" must be an integer"},
        BadPlan{R"({"faults": [{"frame": 1, "delayMs": -1}]})",
                "fault plan: faults[0]: \"delayMs\" must be at least 0"},
        BadPlan{R"({"faults": [{"frame": 1, "hangMs": true}]})",
                "fault plan: faults[0]: \"hangMs\" must be an integer"},
        BadPlan{R"({"faults": [{"frame": 1, "drop": "yes"}]})",
                "fault plan: faults[0]: \"drop\" must be true or false"},
        BadPlan{R"({"faults": [{"frame": 1, "disconnect": true, "backAfterMs": 600001}]})",
                "fault plan: faults[0]: a delay is 0 to 600000 milliseconds"},
        BadPlan{R"({"faults": [{"function": "project", "status": 3}]})",
                "fault plan: faults[0]: the library has no function \"project\""},
        BadPlan{
            R"({"faults": [{"function": "GetCamerasInformation", "outputs": {"a": [1, 1.5]}}]})",
            "fault plan: faults[0]: output \"a\" of GetCamerasInformation must be a list of "
            "integers"},
        BadPlan{
            R"({"faults": [{"function": "GetCamerasInformation", "outputs": {"serials": [1]}}]})",
            "fault plan: faults[0]: output \"serials\" of GetCamerasInformation must be a list of "
            "texts and nulls"},
        BadPlan{
            R"({"faults": [{"function": "ReadUserInfomation", "outputs": {"replacement": null}}]})",
            "fault plan: faults[0]: output \"replacement\" of ReadUserInfomation must be a text"},
        BadPlan{R"({"faults": [{"function": "ConnectDevice", "outputs": {"device": 1}}]})",
                "fault plan: faults[0]: output \"device\" of ConnectDevice must be null"},
        BadPlan{"[]", "fault plan: must be an object"},
        BadPlan{R"({"fault": []})", "fault plan: unknown key \"fault\""},
        BadPlan{R"({"hostile": 1})", "fault plan: \"hostile\" must be true or false"},
        BadPlan{R"({"faults": {}})", "fault plan: \"faults\" must be a list"},
        BadPlan{R"({"faults": [{"status": 3}]})",
                "fault plan: faults[0]: needs \"function\", \"frame\" or \"everyFrame\""},
        BadPlan{R"({"faults": [{"frame": 1}, {"function": "Explode"}]})",
                "fault plan: faults[1]: the library has no function \"Explode\""},
        BadPlan{R"({"faults": [{"function": 4}]})",
                "fault plan: faults[0]: \"function\" must be a text"},
        BadPlan{R"({"faults": [{"function": "Project", "call": 0}]})",
                "fault plan: faults[0]: \"call\" must be at least 1"},
        BadPlan{R"({"faults": [{"function": "Project", "call": 1.5}]})",
                "fault plan: faults[0]: \"call\" must be an integer"},
        BadPlan{R"({"faults": [{"function": "Project", "call": 4294967297}]})",
                "fault plan: faults[0]: \"call\" must be an integer"},
        BadPlan{R"({"faults": [{"function": "Project", "call": 1, "every": 1}]})",
                "fault plan: faults[0]: \"call\" and \"every\" exclude each other"},
        BadPlan{R"({"faults": [{"function": "Project", "drop": true}]})",
                "fault plan: faults[0]: unknown key \"drop\""},
        BadPlan{R"({"faults": [{"frame": 1, "status": 3}]})",
                "fault plan: faults[0]: unknown key \"status\""},
        BadPlan{R"({"faults": [{"frame": 1, "everyFrame": 1}]})",
                "fault plan: faults[0]: \"frame\" and \"everyFrame\" exclude each other"},
        BadPlan{R"({"faults": [{"frame": 1, "delayMs": 1, "hangMs": 1}]})",
                "fault plan: faults[0]: \"delayMs\" and \"hangMs\" exclude each other"},
        BadPlan{R"({"faults": [{"frame": 1, "delayMs": 600001}]})",
                "fault plan: faults[0]: a delay is 0 to 600000 milliseconds"},
        BadPlan{R"({"faults": [{"frame": 1, "backAfterMs": 1}]})",
                "fault plan: faults[0]: \"backAfterMs\" needs \"disconnect\""},
        BadPlan{R"({"faults": [{"function": "GetCameraGain", "outputs": {"volume": 1}}]})",
                "fault plan: faults[0]: GetCameraGain has no output \"volume\""},
        BadPlan{R"({"faults": [{"function": "GetCameraGain", "outputs": {"gain": 1.5}}]})",
                "fault plan: faults[0]: output \"gain\" of GetCameraGain must be an integer"},
        BadPlan{R"({"faults": [{"function": "GetCameraGain", "outputs": 1}]})",
                "fault plan: faults[0]: \"outputs\" must be an object"}));

TEST(BadFaultPlan, NestedDeeplyIsRefusedLikeAnyOther)
{
    constexpr int depth = 200000;
    for (const std::string &start : {std::string(), std::string(R"({"faults": [)")}) {
        const std::string end = start.empty() ? "" : "]}";
        EXPECT_THROW(setFaultPlan(start + std::string(depth, '[') + std::string(depth, ']') + end),
                     std::invalid_argument);
    }
}

class FaultPlanFile : public Scanner
{
protected:
    /// Why the file cannot be used.
    static std::string refusal(const std::string &file)
    {
        try {
            loadFaultPlan(file);
        } catch (const std::invalid_argument &error) {
            return error.what();
        }
        return "accepted";
    }

    const TemporaryFolder folder;
};

TEST_F(FaultPlanFile, ThatIsMissingIsNamed)
{
    const std::string file = folder.file("missing.json");
    EXPECT_EQ("fault plan " + file + " cannot be read", refusal(file));
}

TEST_F(FaultPlanFile, ThatIsAFolderIsNamed)
{
    const std::string file = folder.file("");
    EXPECT_EQ("fault plan " + file + " cannot be read", refusal(file));
}

TEST_F(FaultPlanFile, ThatIsEmptyIsNotJson)
{
    const std::string file = folder.write("plan.json", "");
    EXPECT_EQ(0u, refusal(file).find("fault plan " + file + ": not JSON: "));
}

#ifndef _WIN32
TEST_F(FaultPlanFile, ThatMayNotBeReadIsNamed)
{
    const std::string file = folder.write("plan.json", "{}");
    std::filesystem::permissions(std::filesystem::u8path(file), std::filesystem::perms::none);
    EXPECT_EQ("fault plan " + file + " cannot be read",
              unprivileged([&] { return refusal(file); }));
}
#endif

TEST_F(FaultPlanFile, OfTheEnvironmentThatHoldsAnEndlessNumberRefusesEveryCall)
{
    const EnvironmentVariable variable(
        FaultPlanVariable, folder.write("plan.json", R"({"faults": [{"frame": 1e999}]})"));
    testing::internal::CaptureStderr();
    reset(smallSetup());
    testing::internal::GetCapturedStderr();
    expectRefused(BadFaultPlan, GetCameraCount("", count));
}

TEST_F(FaultPlanFile, ABadPlanOfTheEnvironmentRefusesEveryCallAndSaysWhyOnce)
{
    const std::string file = folder.write("plan.json", R"({"faults": 1})");
    const std::string text = "fault plan " + file + ": \"faults\" must be a list";
    const EnvironmentVariable variable(FaultPlanVariable, file);
    testing::internal::CaptureStderr();
    reset(smallSetup());
    expectRefused(BadFaultPlan, GetCameraCount("", count));
    expectRefused(BadFaultPlan, GetCamerasInformation("", serials, a, b, flags, count));
    expectRefused(BadFaultPlan, DisConnectDevice(device));
    EXPECT_EQ("Tessel3Sync simulator: " + text + "\n", testing::internal::GetCapturedStderr());
    int status = BadFaultPlan;
    char *description = nullptr;
    ASSERT_EQ(Ok, GetStatusDescriptionString(status, description));
    EXPECT_EQ(text, description);
}

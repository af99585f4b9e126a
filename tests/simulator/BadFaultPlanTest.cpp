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
        BadPlan{R"({"scanner": []})", "fault plan: scanner: must be an object"},
        BadPlan{R"({"scanner": {"depth": 8}})", "fault plan: scanner: unknown key \"depth\""},
        BadPlan{R"({"scanner": {"width": 15}})",
                "fault plan: scanner: \"width\" must be 16 to 4096"},
        BadPlan{R"({"scanner": {"height": 4097}})",
                "fault plan: scanner: \"height\" must be 16 to 4096"},
        BadPlan{R"({"scanner": {"height": 100.5}})",
                "fault plan: scanner: \"height\" must be an integer"},
        BadPlan{R"({"scanner": {"triggerPeriodMs": 0}})",
                "fault plan: scanner: \"triggerPeriodMs\" must be 1 to 3600000"},
        BadPlan{R"({"scanner": {"seed": -1}})",
                "fault plan: scanner: \"seed\" must be 0 to 4294967295"},
        BadPlan{R"({"scanner": {"seed": 18446744073709551615}})",
                "fault plan: scanner: \"seed\" must be 0 to 4294967295"},
        BadPlan{R"({"scanner": {"cameras": "left"}})",
                "fault plan: scanner: \"cameras\" must be a list"},
        BadPlan{R"({"scanner": {"cameras": ["left", "infrared"]}})",
                "fault plan: scanner: \"cameras\" may name \"left\", \"right\" and \"color\""},
        BadPlan{R"({"scanner": {"cameras": [1]}})",
                "fault plan: scanner: \"cameras\" may name \"left\", \"right\" and \"color\""},
        BadPlan{R"({"scanner": {"cameras": ["left", "left"]}})",
                "fault plan: scanner: \"cameras\" names \"left\" twice"},
        BadPlan{R"({"faults": [{"frame": 1, "nullImage": 3}]})",
                "fault plan: faults[0]: the images of a delivery are 0 to 2"},
        BadPlan{R"({"faults": [{"frame": 1, "missingImage": -1}]})",
                "fault plan: faults[0]: the images of a delivery are 0 to 2"},
        BadPlan{R"({"faults": [{"frame": 1, "missingImage": true}]})",
                "fault plan: faults[0]: \"missingImage\" must be an integer"},
        BadPlan{R"({"faults": [{"frame": 1, "width": 4097}]})",
                "fault plan: faults[0]: a side that is told is -4096 to 4096 pixels"},
        BadPlan{R"({"faults": [{"frame": 1, "height": -4097}]})",
                "fault plan: faults[0]: a side that is told is -4096 to 4096 pixels"},
        BadPlan{R"({"faults": [{"frame": 1, "number": "thrice"}]})",
                "fault plan: faults[0]: \"number\" must be \"twice\", \"swapped\" or \"skipped\""},
        BadPlan{R"({"faults": [{"frame": 1, "number": 2}]})",
                "fault plan: faults[0]: \"number\" must be a text"},
        BadPlan{R"({"faults": [{"frame": 1, "number": "twice", "drop": true}]})",
                "fault plan: faults[0]: a frame that is not delivered has no bad delivery"},
        BadPlan{R"({"faults": [{"frame": 1, "nullImage": 0, "disconnect": true}]})",
                "fault plan: faults[0]: a frame that is not delivered has no bad delivery"},
        BadPlan{R"({"faults": [{"frame": 1, "width": 0, "hangMs": 1}]})",
                "fault plan: faults[0]: a frame that is not delivered has no bad delivery"},
        BadPlan{R"({"faults": [{"function": "Project", "nullImage": 0}]})",
                "fault plan: faults[0]: unknown key \"nullImage\""},
        BadPlan{R"({"events": {}})", "fault plan: \"events\" must be a list"},
        BadPlan{R"({"events": [{"frame": 1}]})",
                "fault plan: events[0]: needs either \"button\" or \"distance\""},
        BadPlan{R"({"events": [{"button": 1, "distance": "right", "frame": 1}]})",
                "fault plan: events[0]: needs either \"button\" or \"distance\""},
        BadPlan{R"({"events": [{"button": 1}]})",
                "fault plan: events[0]: needs either \"frame\", \"everyFrame\" or \"afterMs\""},
        BadPlan{R"({"events": [{"button": 1, "frame": 1, "afterMs": 1}]})",
                "fault plan: events[0]: needs either \"frame\", \"everyFrame\" or \"afterMs\""},
        BadPlan{R"({"events": [{"button": 1, "frame": 1}, {"button": 0, "frame": 1}]})",
                "fault plan: events[1]: \"button\" must be 1 to 255"},
        BadPlan{R"({"events": [{"button": 256, "frame": 1}]})",
                "fault plan: events[0]: \"button\" must be 1 to 255"},
        BadPlan{R"({"events": [{"distance": "far", "frame": 1}]})",
                "fault plan: events[0]: \"distance\" must be \"tooNear\", \"right\" or \"tooFar\""},
        BadPlan{R"({"events": [{"button": 1, "everyFrame": 0}]})",
                "fault plan: events[0]: \"everyFrame\" must be at least 1"},
        BadPlan{R"({"events": [{"button": 1, "afterMs": 600001}]})",
                "fault plan: events[0]: a delay is 0 to 600000 milliseconds"},
        BadPlan{R"({"events": [{"button": 1, "frame": 1, "drop": true}]})",
                "fault plan: events[0]: unknown key \"drop\""},
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

// Plans that cannot be used, as texts and as files.
#include "ScannerFixture.h"
#include "TemporaryFolder.h"
#include "support/Unprivileged.h"

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

/// What is wrong with a part of a plan, and the text that says so.
struct Wrong
{
    const char *json;
    const char *text;
};

void PrintTo(const Wrong &wrong, std::ostream *stream)
{
    *stream << wrong.json;
}

/// Expects a plan to be refused with a text that begins so: what follows may be the parser's own.
void expectRefusal(const std::string &plan, const std::string &text)
{
    const std::string refusal = refusalOf([&] { setFaultPlan(plan); });
    EXPECT_EQ("fault plan: " + text, refusal.substr(0, 12 + text.size())) << plan;
}

class BadPlan : public testing::TestWithParam<Wrong>
{
};

TEST_P(BadPlan, IsRefusedWithATextThatSaysWhatIsWrong)
{
    expectRefusal(GetParam().json, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadPlan,
    testing::Values(Wrong{"", "not JSON: "}, Wrong{"{", "not JSON: "}, Wrong{"{}{}", "not JSON: "},
                    Wrong{"{\"\xFF\": 1}", "not JSON: "},
                    Wrong{R"({"faults": [{"frame": 1e999}]})", "not JSON: "},
                    Wrong{R"({"faults": [], "faults": []})",
                          R"(the key "faults" appears twice in one object)"},
                    Wrong{R"({"faults": [{"frame": 1, "drop": true}, {"frame": 2, "frame": 3}]})",
                          R"(the key "frame" appears twice in one object)"},
                    Wrong{"[]", "must be an object"}, Wrong{"null", "must be an object"},
                    Wrong{R"({"fault": []})", R"(unknown key "fault")"},
                    Wrong{R"({"hostile": 1})", R"("hostile" must be true or false)"},
                    Wrong{R"({"faults": {}})", R"("faults" must be a list)"},
                    Wrong{R"({"faults": null})", R"("faults" must be a list)"},
                    Wrong{R"({"faults": [1]})", "faults[0]: must be an object"},
                    Wrong{R"({"faults": [{"frame": 1}, {"function": "Explode"}]})",
                          R"(faults[1]: the library has no function "Explode")"},
                    Wrong{R"({"events": {}})", R"("events" must be a list)"},
                    Wrong{R"({"events": [{"button": 1, "frame": 1}, {"button": 0, "frame": 1}]})",
                          R"(events[1]: "button" must be 1 to 255)"},
                    Wrong{R"({"scanner": []})", "scanner: must be an object"}));

class BadFault : public testing::TestWithParam<Wrong>
{
};

TEST_P(BadFault, IsRefusedWithATextThatSaysWhatIsWrong)
{
    expectRefusal(std::string(R"({"faults": [{)") + GetParam().json + "}]}",
                  std::string("faults[0]: ") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    OfACall, BadFault,
    testing::Values(
        Wrong{R"("status": 3)", R"(needs "function", "frame" or "everyFrame")"},
        Wrong{R"("function": 4)", R"("function" must be a string)"},
        Wrong{R"("function": "project", "status": 3)", R"(the library has no function "project")"},
        Wrong{R"("function": "Project", "call": 0)", R"("call" must be at least 1)"},
        Wrong{R"("function": "Project", "call": -1)", R"("call" must be at least 1)"},
        Wrong{R"("function": "Project", "call": 1.5)", R"("call" must be an integer)"},
        Wrong{R"("function": "Project", "call": 4294967297)", R"("call" must be an integer)"},
        Wrong{R"("function": "Project", "every": 0)", R"("every" must be at least 1)"},
        Wrong{R"("function": "Project", "call": 1, "every": 1)",
              R"("call" and "every" cannot be combined)"},
        Wrong{R"("function": "Project", "status": 18446744073709551615)",
              R"("status" must be an integer)"},
        Wrong{R"("function": "Project", "status": -2147483649)", R"("status" must be an integer)"},
        Wrong{R"("function": "Project", "status": "3")", R"("status" must be an integer)"},
        Wrong{R"("function": "Project", "drop": true)", R"(unknown key "drop")"},
        Wrong{R"("function": "Project", "nullImage": 0)", R"(unknown key "nullImage")"},
        Wrong{R"("function": "GetCameraGain", "outputs": 1)", R"("outputs" must be an object)"},
        Wrong{R"("function": "GetCameraGain", "outputs": {"volume": 1})",
              R"(GetCameraGain has no output "volume")"}));

INSTANTIATE_TEST_SUITE_P(
    OfAFrame, BadFault,
    testing::Values(
        Wrong{R"("frame": 0)", R"("frame" must be at least 1)"},
        Wrong{R"("everyFrame": 0)", R"("everyFrame" must be at least 1)"},
        Wrong{R"("frame": 1, "everyFrame": 1)", R"("frame" and "everyFrame" cannot be combined)"},
        Wrong{R"("frame": 1, "status": 3)", R"(unknown key "status")"},
        Wrong{R"("frame": 1, "drop": "yes")", R"("drop" must be true or false)"},
        Wrong{R"("frame": 1, "delayMs": -1)", R"("delayMs" must be at least 0)"},
        Wrong{R"("frame": 1, "delayMs": 600001)", "a delay must be 0 to 600000 milliseconds"},
        Wrong{R"("frame": 1, "hangMs": true)", R"("hangMs" must be an integer)"},
        Wrong{R"("frame": 1, "delayMs": 1, "hangMs": 1)",
              R"("delayMs" and "hangMs" cannot be combined)"},
        Wrong{R"("frame": 1, "backAfterMs": 1)", R"("backAfterMs" needs "disconnect")"},
        Wrong{R"("frame": 1, "disconnect": true, "backAfterMs": 600001)",
              "a delay must be 0 to 600000 milliseconds"},
        Wrong{R"("frame": 1, "nullImage": 3)", "the number of an image must be 0 to 2"},
        Wrong{R"("frame": 1, "missingImage": -1)", "the number of an image must be 0 to 2"},
        Wrong{R"("frame": 1, "missingImage": true)", R"("missingImage" must be an integer)"},
        Wrong{R"("frame": 1, "width": 4097)",
              "a reported width or height must be -4096 to 4096 pixels"},
        Wrong{R"("frame": 1, "height": -4097)",
              "a reported width or height must be -4096 to 4096 pixels"},
        Wrong{R"("frame": 1, "number": "thrice")",
              R"("number" must be "twice", "swapped" or "skipped")"},
        Wrong{R"("frame": 1, "number": 2)", R"("number" must be a string)"},
        Wrong{R"("frame": 1, "number": "twice", "drop": true)",
              "a frame that is dropped cannot be delivered badly"},
        Wrong{R"("frame": 1, "nullImage": 0, "disconnect": true)",
              "a frame that is dropped cannot be delivered badly"},
        Wrong{R"("frame": 1, "width": 0, "hangMs": 1)",
              "a frame that is dropped cannot be delivered badly"}));

/// An output with a value of a wrong kind.
struct WrongOutput
{
    const char *function;
    const char *output;
    const char *json;
    const char *kind;
};

void PrintTo(const WrongOutput &wrong, std::ostream *stream)
{
    *stream << wrong.function << ": " << wrong.output << ' ' << wrong.json;
}

class BadOutput : public testing::TestWithParam<WrongOutput>
{
};

TEST_P(BadOutput, IsRefusedWithATextThatNamesItsKind)
{
    const auto &[function, output, json, kind] = GetParam();
    const std::string name = std::string("\"") + output + '"';
    expectRefusal(std::string(R"({"faults": [{"function": ")") + function + R"(", "outputs": {)" +
                      name + ": " + json + "}}]}",
                  "faults[0]: output " + name + " of " + function + " must be " + kind);
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, BadOutput,
    testing::Values(
        WrongOutput{"IsConnectedOnU3", "connected", "1", "true or false"},
        WrongOutput{"GetCameraGain", "gain", "1.5", "an integer"},
        WrongOutput{"GetCameraGain", "gain", "2147483648", "an integer"},
        WrongOutput{"GetCameraExposure", "exposure", "\"1\"", "a number"},
        WrongOutput{"ReadUserInfomation", "replacement", "null", "a string"},
        WrongOutput{"GetCameraSerialNumber", "serial", "1", "a string or null"},
        WrongOutput{"ConnectDevice", "device", "1", "null"},
        WrongOutput{"GetCamerasInformation", "flags", "[true, 1]", "a list of true and false"},
        WrongOutput{"GetCamerasInformation", "a", "[1, 1.5]", "a list of integers"},
        WrongOutput{"GetCamerasInformation", "a", "1", "a list of integers"},
        WrongOutput{"GetCamerasInformation", "serials", "[1]", "a list of strings and nulls"},
        WrongOutput{"GetCamerasInformation", "serials", "{}", "a list of strings and nulls"}));

class BadScanner : public testing::TestWithParam<Wrong>
{
};

TEST_P(BadScanner, IsRefusedWithATextThatSaysWhatIsWrong)
{
    expectRefusal(std::string(R"({"scanner": {)") + GetParam().json + "}}",
                  std::string("scanner: ") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadScanner,
    testing::Values(Wrong{R"("depth": 8)", R"(unknown key "depth")"},
                    Wrong{R"("width": 15)", R"("width" must be 16 to 4096)"},
                    Wrong{R"("height": 4097)", R"("height" must be 16 to 4096)"},
                    Wrong{R"("height": 100.5)", R"("height" must be an integer)"},
                    Wrong{R"("triggerPeriodMs": 0)", R"("triggerPeriodMs" must be 1 to 3600000)"},
                    Wrong{R"("seed": -1)", R"("seed" must be 0 to 4294967295)"},
                    Wrong{R"("seed": 18446744073709551615)", R"("seed" must be 0 to 4294967295)"},
                    Wrong{R"("cameras": "left")", R"("cameras" must be a list)"},
                    Wrong{R"("cameras": ["left", "infrared"])",
                          R"("cameras" may contain "left", "right" and "color")"},
                    Wrong{R"("cameras": [1])",
                          R"("cameras" may contain "left", "right" and "color")"},
                    Wrong{R"("cameras": ["left", "left"])", R"("cameras" contains "left" twice)"}));

class BadEvent : public testing::TestWithParam<Wrong>
{
};

TEST_P(BadEvent, IsRefusedWithATextThatSaysWhatIsWrong)
{
    expectRefusal(std::string(R"({"events": [{)") + GetParam().json + "}]}",
                  std::string("events[0]: ") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadEvent,
    testing::Values(Wrong{R"("frame": 1)", R"(needs "button" or "distance", and only one of them)"},
                    Wrong{R"("button": 1, "distance": "right", "frame": 1)",
                          R"(needs "button" or "distance", and only one of them)"},
                    Wrong{R"("button": 1)",
                          R"(needs "frame", "everyFrame" or "afterMs", and only one of them)"},
                    Wrong{R"("button": 1, "frame": 1, "afterMs": 1)",
                          R"(needs "frame", "everyFrame" or "afterMs", and only one of them)"},
                    Wrong{R"("button": 256, "frame": 1)", R"("button" must be 1 to 255)"},
                    Wrong{R"("distance": "far", "frame": 1)",
                          R"("distance" must be "tooNear", "right" or "tooFar")"},
                    Wrong{R"("button": 1, "everyFrame": 0)", R"("everyFrame" must be at least 1)"},
                    Wrong{R"("button": 1, "afterMs": 600001)",
                          "a delay must be 0 to 600000 milliseconds"},
                    Wrong{R"("button": 1, "frame": 1, "drop": true)", R"(unknown key "drop")"}));

TEST(BadFaultPlan, NestedDeeplyIsRefusedLikeAnyOther)
{
    constexpr int depth = 200000;
    const std::string nested = std::string(depth, '[') + std::string(depth, ']');
    expectRefusal(nested, "must be an object");
    expectRefusal(R"({"faults": [)" + nested + "]}", "faults[0]: must be an object");
}

class FaultPlanFile : public Scanner
{
protected:
    static std::string refusal(const std::string &file)
    {
        return refusalOf([&] { loadFaultPlan(file); });
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
              KvSyncTest::unprivileged([&] { return refusal(file); }));
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

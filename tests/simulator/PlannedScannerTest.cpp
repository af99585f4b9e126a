// What a host developer chooses of the scanner without linking the simulator.

#include "ScannerFixture.h"
#include "TemporaryFolder.h"

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class PlannedScanner : public Scanner
{
protected:
    using Size = std::pair<int, int>;

    /// As a host sees it.
    Size resolution()
    {
        Size size;
        EXPECT_EQ(Ok, GetCameraResolution(device, 0, size.first, size.second));
        return size;
    }

    int period()
    {
        int milliseconds = 0;
        EXPECT_EQ(Ok, GetVideoTriggerPeriod(device, milliseconds));
        return milliseconds;
    }

    static std::string refusal(const std::string &json)
    {
        return refusalOf([&] { setFaultPlan(json); });
    }

    const TemporaryFolder folder;
};

TEST_F(PlannedScanner, IsWhatThePlanOfTheEnvironmentDescribes)
{
    const EnvironmentVariable plan(
        FaultPlanVariable,
        folder.write("plan.json", R"({"scanner": {"width": 320, "height": 200, "seed": 4294967295,
                                       "triggerPeriodMs": 70, "cameras": ["color", "left"]}})"));
    reset();
    connect();
    EXPECT_EQ(2, count);
    EXPECT_EQ((std::vector<int>{1, 0, 1}), a); // the first once more
    EXPECT_EQ(Size(320, 200), resolution());
    EXPECT_EQ(70, period());
    EXPECT_EQ(4294967295u, setup().seed);
}

TEST_F(PlannedScanner, IsByDefaultWhatThePlanLeavesOut)
{
    const EnvironmentVariable plan(FaultPlanVariable,
                                   folder.write("plan.json", R"({"scanner": {"width": 320}})"));
    reset();
    EXPECT_EQ(320, setup().width);
    EXPECT_EQ(ScannerSetup().height, setup().height);
    EXPECT_EQ(ScannerSetup().seed, setup().seed);
    EXPECT_EQ(ScannerSetup().triggerPeriodMs, setup().triggerPeriodMs);
    EXPECT_EQ(ScannerSetup().cameras, setup().cameras);
}

TEST_F(PlannedScanner, IsWhatAVariableDescribesWhateverThePlanSaysOfThat)
{
    const EnvironmentVariable plan(
        FaultPlanVariable,
        folder.write("plan.json", R"({"scanner": {"width": 320, "height": 200}})"));
    const EnvironmentVariable scanner(ScannerVariable, R"({"width": 64, "triggerPeriodMs": 70})");
    reset();
    connect();
    EXPECT_EQ(Size(64, 200), resolution());
    EXPECT_EQ(70, period());
}

TEST_F(PlannedScanner, MayHaveNoCamera)
{
    const EnvironmentVariable scanner(ScannerVariable, R"({"cameras": []})");
    reset();
    ASSERT_EQ(Ok, GetCameraCount("", count));
    EXPECT_EQ(0, count);
}

TEST_F(PlannedScanner, SendsFramesOfThatSizeAtThatSeed)
{
    setFaultPlan(R"({"scanner": {"width": 32, "height": 24, "cameras": ["right"]}})");
    connect();
    const Frame one = firstFrame();
    ASSERT_EQ(1u, one.images.size());
    EXPECT_EQ(32u * 24u, one.images.front().size());
    DisConnectDevice(device);
    setFaultPlan(R"({"scanner": {"seed": 2}})");
    connect();
    EXPECT_NE(one.images, firstFrame().images);
}

TEST_F(PlannedScanner, IsNotWhatTheEnvironmentSaysToATestThatDescribesItsOwn)
{
    const EnvironmentVariable scanner(ScannerVariable, R"({"width": 64})");
    reset(smallSetup());
    EXPECT_EQ(160, setup().width);
}

TEST_F(PlannedScanner, IsNotReplacedUnderAConnectedHost)
{
    connect();
    EXPECT_EQ("fault plan: scanner: cannot be replaced while a host is connected",
              refusal(R"({"scanner": {"width": 64}, "hostile": true})"));
    EXPECT_EQ(Size(160, 128), resolution());
    EXPECT_EQ("accepted", refusal("{}"));
    DisConnectDevice(device);
    EXPECT_EQ("accepted", refusal(R"({"scanner": {"width": 64}})"));
}

TEST_F(PlannedScanner, StaysAsItIsWhenAPartOfThePlanIsBad)
{
    EXPECT_EQ("fault plan: faults[0]: must be an object",
              refusal(R"({"scanner": {"width": 64}, "faults": [1]})"));
    EXPECT_EQ(160, setup().width);
}

TEST_F(PlannedScanner, OfABadVariableRefusesEveryCallAndSaysWhy)
{
    const EnvironmentVariable scanner(ScannerVariable, R"({"width": 15})");
    testing::internal::CaptureStderr();
    reset();
    const std::string text = "TESSEL3SYNC_SIMULATOR_SCANNER: \"width\" must be 16 to 4096";
    EXPECT_EQ("Tessel3Sync simulator: " + text + "\n", testing::internal::GetCapturedStderr());
    expectRefused(BadFaultPlan, GetCameraCount("", count));
    int status = BadFaultPlan;
    char *description = nullptr;
    ASSERT_EQ(Ok, GetStatusDescriptionString(status, description));
    EXPECT_EQ(text, description);
    EXPECT_EQ(ScannerSetup().width, setup().width);
}

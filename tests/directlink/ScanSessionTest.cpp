#include "DirectLink.h"

namespace {

using namespace KvSyncTest;
using ::testing::Contains;
using ::testing::ElementsAre;

using ScanStart = ConnectedScanner;
using ScanStop = ConnectedScanner;
using ScanCallback = ConnectedScanner;
using StatusCallback = ConnectedScanner;

using Parameters = QMap<QString, QVariant>;

TEST_F(ScanStart, WithAnEmptyMapRunsWithoutColorAtPeriodZeroAndAddsTheThreeKeys)
{
    Parameters parameters;
    ErrorCode code = ConnectFailed;
    const Journal journal = journalOf([&] { code = controller.startScan(parameters); });
    EXPECT_EQ(code, Success);
    EXPECT_EQ(parameters, Parameters({{"bEnableColor", QVariant()},
                                      {"colorMode", QVariant()},
                                      {"iPeriod", QVariant()}}));
    EXPECT_THAT(
        journal,
        ElementsAre("SetStrobeControlledByTrigger(device, 2, 4)", "SetDistanceIndicate(device, 3)",
                    "Project(device, 2)", "EnableIRLaser(device, false)",
                    glogInfo("startScan start | bEnableColor: , 0 colorMode: 0 iPeriod: 0"),
                    "EnableVideoTrigger(device, 1, true)", "SetVideoTriggerPeriod(device, 0)"));
}

TEST_F(ScanStart, TriggersInModeOneWithoutColorWhateverTheColorMode)
{
    Parameters parameters{{"bEnableColor", false}, {"colorMode", 5}, {"iPeriod", 33}};
    EXPECT_THAT(journalOf([&] { controller.startScan(parameters); }),
                Contains("EnableVideoTrigger(device, 1, true)"));
}

TEST_F(ScanStart, ReadsItsParametersFromOtherTypes)
{
    Parameters parameters{{"bEnableColor", "yes"}, {"colorMode", "6"}, {"iPeriod", 33.4}};
    EXPECT_THAT(journalOf([&] { controller.startScan(parameters); }),
                Contains(glogInfo("startScan start | bEnableColor: , 1 colorMode: 6 iPeriod: 33")));
}

TEST_F(ScanStart, ReadsWhatCannotBeConvertedAsFalseAndZero)
{
    const Parameters given{
        {"bEnableColor", "false"}, {"colorMode", "six"}, {"iPeriod", QVariantList{1}}};
    Parameters parameters = given;
    EXPECT_THAT(journalOf([&] { controller.startScan(parameters); }),
                Contains(glogInfo("startScan start | bEnableColor: , 0 colorMode: 0 iPeriod: 0")));
    EXPECT_EQ(parameters, given);
}

TEST_F(ScanStart, PassesNegativeModesAndPeriodsOn)
{
    Parameters parameters{{"bEnableColor", true}, {"colorMode", -2}, {"iPeriod", -3}};
    const Journal journal = journalOf([&] { controller.startScan(parameters); });
    EXPECT_THAT(journal, Contains("EnableVideoTrigger(device, -2, true)"));
    EXPECT_THAT(journal, Contains("SetVideoTriggerPeriod(device, -3)"));
}

TEST_F(ScanStart, DoesNotReadKeysOfAnotherCase)
{
    Parameters parameters{{"iperiod", 33}};
    EXPECT_THAT(journalOf([&] { controller.startScan(parameters); }),
                Contains("SetVideoTriggerPeriod(device, 0)"));
    EXPECT_EQ(parameters.size(), 4);
}

TEST_F(ScanStop, DisablesTheTriggerInTheColorModeOfTheLastStart)
{
    Parameters parameters{{"bEnableColor", true}, {"colorMode", 5}};
    journalOf([&] { controller.startScan(parameters); });
    EXPECT_THAT(journalOf([&] { controller.stopScan(); }),
                ElementsAre("EnableVideoTrigger(device, 5, false)", "Project(device, 0)"));
}

TEST_F(ScanStop, UsesTheStoredColorModeAlsoAfterAScanWithoutColor)
{
    Parameters parameters{{"bEnableColor", false}, {"colorMode", 5}};
    journalOf([&] { controller.startScan(parameters); });
    EXPECT_THAT(journalOf([&] { controller.stopScan(); }),
                Contains("EnableVideoTrigger(device, 5, false)"));
}

TEST_F(ScanStop, WithoutAStartDisablesTheTriggerInModeZero)
{
    EXPECT_THAT(journalOf([&] { controller.stopScan(); }),
                ElementsAre("EnableVideoTrigger(device, 0, false)", "Project(device, 0)"));
}

TEST_F(ScanStop, UsesTheColorModeOfAScanThatWasStartedByCommand)
{
    Parameters parameters{{"colorMode", 8}};
    journalOf([&] { controller.executeCommand(anyHandle, "startScan", parameters); });
    EXPECT_THAT(journalOf([&] { controller.stopScan(); }),
                Contains("EnableVideoTrigger(device, 8, false)"));
}

TEST_F(ScanCallback, OfNullReachesTheLibraryAsItStands)
{
    EXPECT_THAT(journalOf([&] { controller.setScanCallback(anyHandle, nullptr, nullptr); }),
                Contains("SetScanCallBackFunction(device, null, null)"));
}

TEST_F(StatusCallback, OfNullReachesTheLibraryAsItStands)
{
    EXPECT_THAT(journalOf([&] { controller.setStatusCallback(anyHandle, nullptr, nullptr); }),
                Contains("SetStatusCallBackFunction(device, null, null)"));
}

TEST_F(StatusCallback, ThatTheLibraryRefusesIsASuccess)
{
    scanner.statuses["SetStatusCallBackFunction"] = refused;
    ErrorCode code = ConnectFailed;
    journalOf([&] { code = controller.setStatusCallback(anyHandle, onStatus(), context()); });
    EXPECT_EQ(code, Success);
}

/// A host that stops its scan at the first frame.
struct Host
{
    KvSyncCore::DeviceController &controller;
    std::vector<std::string> frames;

    static void receiveFrame(const void *const &context, std::vector<unsigned char *> &images,
                             const int &dimension1, const int &dimension2,
                             std::vector<int> &perImage)
    {
        auto *const host = static_cast<Host *>(const_cast<void *>(context));
        host->frames.push_back(std::to_string(images.size()) + " images of " +
                               std::to_string(dimension1) + " x " + std::to_string(dimension2) +
                               ", number " + std::to_string(perImage.at(0)));
        host->controller.stopScan();
    }
};

TEST_F(ScanCallback, RunsInTheHostWithItsContextAndMayStopTheScan)
{
    Tessel3Sync::ScanCallBack registered = nullptr;
    void *registeredContext = nullptr;
    scanner.effects.SetScanCallBackFunction = [&](void *&, Tessel3Sync::ScanCallBack function,
                                                  void *hostContext) {
        registered = function;
        registeredContext = hostContext;
        return accepted;
    };
    Host host{controller, {}};
    journalOf([&] {
        controller.setScanCallback(anyHandle, reinterpret_cast<void *>(&Host::receiveFrame), &host);
    });

    std::vector<unsigned char *> images(2);
    std::vector<int> perImage{17, 17};
    const Journal journal = journalOf([&] {
        const void *const frameContext = registeredContext;
        registered(frameContext, images, 1280, 1024, perImage);
    });
    EXPECT_THAT(host.frames, ElementsAre("2 images of 1280 x 1024, number 17"));
    EXPECT_THAT(journal, ElementsAre("EnableVideoTrigger(device, 0, false)", "Project(device, 0)"));
}

} // namespace

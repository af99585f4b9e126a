// What the scanner refuses while a scan starts or stops: the call that needed it says so at once.
#include "ScannerHost.h"
#include "support/RowName.h"

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

namespace {

struct Row
{
    const char *name;
    const char *function; ///< of the library
    int call;             ///< of it, since the scanner was opened
    ErrorCode code;
    const char *text;
};

const QString ended = "scanEnded";

} // namespace

class ScannerRefusal : public ScannerHost, public testing::WithParamInterface<Row>
{
protected:
    ScannerRefusal()
    {
        open();
        Simulator::script(GetParam().function, GetParam().call, {3, {}});
    }

    template <typename Action>
    static void expectRefusal(Action action)
    {
        expectThrows(GetParam().code, QString::fromLatin1(GetParam().text), action);
    }

    /// With a laser of its own, so that every step has to be taken.
    static QVariantMap parameters()
    {
        return {{"periodMs", 5}, {"switch", QVariantMap{{"blueLaser", true}}}};
    }

    /// Whether the scanner was told everything that lets it rest.
    static void expectAtRest()
    {
        EXPECT_EQ(libraryCalls("EnableVideoTrigger").back(),
                  "EnableVideoTrigger(device, 1, false)");
        EXPECT_EQ(libraryCalls("Project").back(), "Project(device, 0)");
        EXPECT_EQ(libraryCalls("SetScanCallBackFunction").back(),
                  "SetScanCallBackFunction(device, null, null)");
        EXPECT_EQ(libraryCalls("EnableBlueLaser").back(), "EnableBlueLaser(device, 0, false)");
    }

    QVariantMap shortScan() const { return with(parameters(), "frames", 1); }
};

class ScannerStartRefusal : public ScannerRefusal
{
};

INSTANTIATE_TEST_SUITE_P(
    Steps, ScannerStartRefusal,
    testing::Values(Row{"Strobe", "SetStrobeControlledByTrigger", 1, CommandFailed,
                        "The scanner refuses to let its trigger control the strobe"},
                    Row{"Distance", "SetDistanceIndicate", 1, DeviceOperationFailed,
                        "The scanner refuses to indicate the distance"},
                    Row{"Pattern", "Project", 1, ProjectorFailed,
                        "The scanner refuses to project \"speckle\""},
                    Row{"InfraredLaser", "EnableIRLaser", 1, CommandFailed,
                        "The scanner refuses to switch \"infraredLaser\""},
                    Row{"BlueLaser", "EnableBlueLaser", 1, CommandFailed,
                        "The scanner refuses to switch \"blueLaser\""},
                    Row{"TriggerOff", "EnableVideoTrigger", 1, CommandFailed,
                        "The scanner refuses to stop its trigger"},
                    Row{"Callback", "SetScanCallBackFunction", 1, CameraFailed,
                        "The scanner refuses the scan callback"},
                    Row{"Trigger", "EnableVideoTrigger", 2, CommandFailed,
                        "The scanner refuses to start its trigger"},
                    Row{"Period", "SetVideoTriggerPeriod", 1, DeviceOperationFailed,
                        "The scanner refuses a period of 5 ms"}),
    rowName);

TEST_P(ScannerStartRefusal, FailsCaptureImageAtOnceAndLeavesTheScannerAtRest)
{
    expectRefusal([&] { capture(shortScan()); });
    expectAtRest();
    EXPECT_TRUE(events(ended).empty()); // no scan had begun
    EXPECT_TRUE(events("frameArrived").empty());
    EXPECT_EQ(capture(shortScan()).size(), 2);
}

TEST_P(ScannerStartRefusal, FailsStartScanAtOnceAndLeavesTheScannerAtRest)
{
    expectRefusal([&] { execute("startScan", {parameters()}); });
    expectAtRest();
    EXPECT_TRUE(events(ended).empty());
    execute("startScan", {parameters()});
    EXPECT_TRUE(waitForEvents("frameArrived", 1));
}

class ScannerStopRefusal : public ScannerRefusal
{
protected:
    void expectFailedEnd()
    {
        ASSERT_TRUE(waitForEvents(ended, 1));
        EXPECT_EQ(lastOf(ended).value("reason"), QVariant("failed"));
        EXPECT_EQ(lastOf(ended).value("text"), QVariant(GetParam().text));
    }
};

INSTANTIATE_TEST_SUITE_P(Steps, ScannerStopRefusal,
                         testing::Values(Row{"Trigger", "EnableVideoTrigger", 3, CommandFailed,
                                             "The scanner refuses to stop its trigger"},
                                         Row{"Projector", "Project", 2, CommandFailed,
                                             "The scanner refuses to switch its projector off"},
                                         Row{"Callback", "SetScanCallBackFunction", 2, CameraFailed,
                                             "The scanner refuses to remove the scan callback"},
                                         Row{"Laser", "EnableBlueLaser", 2, CommandFailed,
                                             "The scanner refuses to switch its lasers off"}),
                         rowName);

TEST_P(ScannerStopRefusal, FailsCaptureImageOnceEveryOtherStepWasTaken)
{
    expectRefusal([&] { capture(shortScan()); });
    expectAtRest();
    expectFailedEnd();
    EXPECT_EQ(events("frameArrived").size(), 1u);
    EXPECT_EQ(capture(shortScan()).size(), 2); // the scanner may go on delivering to no one
}

TEST_P(ScannerStopRefusal, FailsStopScanOnceEveryOtherStepWasTaken)
{
    execute("startScan", {parameters()});
    expectRefusal([&] { execute("stopScan"); });
    expectAtRest();
    expectFailedEnd();
    EXPECT_EQ(execute("info").toMap().value("scanning"), QVariant(false));
}

TEST_P(ScannerStopRefusal, DoesNotKeepTheScannerFromClosing)
{
    execute("startScan", {parameters()});
    call("closeDevices", {scannerHandle});
    expectFailedEnd();
    open();
}

class ScannerEndOfScan : public ScannerHost
{
};

TEST_F(ScannerEndOfScan, TheReasonOfAFailedScanGoesBeforeARefusalToStop)
{
    open();
    Simulator::setFaultPlan(R"({"faults": [{"everyFrame": 1, "drop": true},
        {"function": "EnableVideoTrigger", "call": 2, "status": 3}]})");
    const QString silent = "The scanner fell silent: 0 of 1 frames came, then none for 50 ms";
    expectThrows(CameraFailed, silent, [&] { capture(with(frames(1), "timeoutMs", 50)); });
    EXPECT_EQ(lastOf(ended).value("text"), QVariant(silent));
}

TEST_F(ScannerEndOfScan, AConnectionThatIsGoneWhenTheScanStopsWasLost)
{
    open();
    reaction = [](const ReceivedEvent &event) {
        if (event.name == QLatin1String("progress"))
            Simulator::setAttached(false);
    };
    EXPECT_THROW(capture(frames(1)), KvSyncTool::Exception);
    EXPECT_EQ(lastOf(ended).value("reason"), QVariant("connectionLost"));
}

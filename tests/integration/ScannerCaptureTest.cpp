#include "ScannerHost.h"

#include <atomic>
#include <future>
#include <set>
#include <stdexcept>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerCapture : public ScannerHost
{
protected:
    ScannerCapture() { open(); }

    /// Whether the trigger is off and the scan callback removed, as every scan must end.
    static void expectStopped(int mode = 1)
    {
        ASSERT_FALSE(libraryCalls("EnableVideoTrigger").empty());
        ASSERT_FALSE(libraryCalls("SetScanCallBackFunction").empty());
        EXPECT_EQ(libraryCalls("EnableVideoTrigger").back(),
                  "EnableVideoTrigger(device, " + std::to_string(mode) + ", false)");
        EXPECT_EQ(libraryCalls("SetScanCallBackFunction").back(),
                  "SetScanCallBackFunction(device, null, null)");
    }

    static QVariantMap imageOf(const QVariantList &images, int place)
    {
        return images.value(place).toMap();
    }
};

TEST_F(ScannerCapture, BringsOneImageOfEachSpeckleCameraAFrame)
{
    const QVariantList images = capture(frames(3));
    ASSERT_EQ(images.size(), 6);
    for (int i = 0; i < images.size(); ++i) {
        const QVariantMap image = imageOf(images, i);
        EXPECT_EQ(image.size(), 7);
        EXPECT_EQ(image.value("camera"), QVariant(i % 2));
        EXPECT_EQ(image.value("width"), QVariant(160));
        EXPECT_EQ(image.value("height"), QVariant(128));
        EXPECT_EQ(image.value("bitDepth"), QVariant(8));
        EXPECT_EQ(image.value("data").toByteArray().size(), 160 * 128);
    }
}

TEST_F(ScannerCapture, KeepsTheImagesOfCamerasAndFramesApart)
{
    std::set<QByteArray> contents;
    const QVariantList images = capture(frames(3));
    for (const QVariant &image : images)
        contents.insert(image.toMap().value("data").toByteArray());
    EXPECT_EQ(contents.size(), 6u);
}

TEST_F(ScannerCapture, NumbersFramesUpwardsAndBothImagesOfOneAlike)
{
    const QVariantList images = capture(frames(4));
    int last = 0;
    for (int i = 0; i < images.size(); i += 2) {
        const int number = imageOf(images, i).value("frame").toInt();
        EXPECT_GT(number, last);
        EXPECT_EQ(imageOf(images, i + 1).value("frame"), QVariant(number));
        last = number;
    }
}

TEST_F(ScannerCapture, WithColorBringsTheColorCameraAsTheThird)
{
    const QVariantList images = capture(with(frames(2), "color", true));
    ASSERT_EQ(images.size(), 6);
    EXPECT_EQ(imageOf(images, 2).value("camera"), QVariant(2));
    EXPECT_EQ(libraryCalls("EnableVideoTrigger"),
              (std::vector<std::string>{"EnableVideoTrigger(device, 0, true)",
                                        "EnableVideoTrigger(device, 0, false)"}));
}

TEST_F(ScannerCapture, SendsTheColorModeThatWasAskedFor)
{
    capture(with(with(frames(1), "color", true), "colorMode", 3));
    EXPECT_EQ(libraryCalls("EnableVideoTrigger").front(), "EnableVideoTrigger(device, 3, true)");
}

TEST_F(ScannerCapture, ScansAtThePeriodAskedFor)
{
    capture(with(frames(1), "periodMs", 5));
    EXPECT_EQ(libraryCalls("SetVideoTriggerPeriod"),
              std::vector<std::string>{"SetVideoTriggerPeriod(device, 5)"});
}

TEST_F(ScannerCapture, ScansAtTheScannersOwnPeriodIfNoneIsAskedFor)
{
    capture(frames(1));
    EXPECT_EQ(libraryCalls("SetVideoTriggerPeriod"),
              std::vector<std::string>{"SetVideoTriggerPeriod(device, 2)"});
}

TEST_F(ScannerCapture, PublishesEveryDeliveryAndItsProgressOnTheCallingThread)
{
    const QVariantList images = capture(frames(3));
    const auto arrivals = events("frameArrived");
    const auto progress = events("progress");
    ASSERT_EQ(arrivals.size(), 3u);
    ASSERT_EQ(progress.size(), 3u);
    EXPECT_EQ(arrivals[0].payload + arrivals[1].payload + arrivals[2].payload, images);
    EXPECT_EQ(arrivals[0].thread, std::this_thread::get_id());
    EXPECT_EQ(progress[2].payload.size(), 1);
    const QVariantMap last = progress[2].payload.value(0).toMap();
    EXPECT_EQ(last.value("delivered"), QVariant(3));
    EXPECT_EQ(last.value("frames"), QVariant(3));
}

TEST_F(ScannerCapture, EventsCarryPluginNameVersionAndThePublicFlag)
{
    capture(frames(1));
    const ReceivedEvent event = events("progress").at(0);
    EXPECT_TRUE(event.isPublic);
    EXPECT_EQ(event.pluginName, "Scanner");
    EXPECT_EQ(event.version, QVersionNumber(1, 0));
}

TEST_F(ScannerCapture, EndsWithTheScannerStoppedAndTheCallbackRemoved)
{
    capture(frames(1));
    expectStopped();
    EXPECT_EQ(execute("info").toMap().value("scanning"), QVariant(false));
}

TEST_F(ScannerCapture, ASilentScannerEndsTheScan)
{
    Simulator::setFaultPlan(R"({"faults": [{"everyFrame": 1, "drop": true}]})");
    expectThrows(CameraFailed, "The scanner fell silent: 0 of 2 frames came, then none for 50 ms",
                 [&] { capture(with(frames(2), "timeoutMs", 50)); });
    expectStopped();
}

TEST_F(ScannerCapture, WhatASlotThrowsEndsTheScanAndReachesTheHost)
{
    reaction = [](const ReceivedEvent &) { throw std::runtime_error("slot"); };
    EXPECT_THROW(capture(frames(2)), std::runtime_error);
    reaction = nullptr;
    expectStopped();
    EXPECT_EQ(capture(frames(1)).size(), 2);
}

TEST_F(ScannerCapture, ASlotMayStopTheScan)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name == QLatin1String("frameArrived"))
            execute("stopScan");
    };
    expectThrows(CameraFailed, "The scan was stopped before its last frame",
                 [&] { capture(frames(100)); });
    expectStopped();
}

TEST_F(ScannerCapture, ASlotMayCloseTheScanner)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name == QLatin1String("frameArrived"))
            call("closeDevices", {scannerHandle});
    };
    expectThrows(CameraFailed, "The scanner was closed during the scan",
                 [&] { capture(frames(100)); });
    reaction = nullptr;
    open();
    EXPECT_EQ(capture(frames(1)).size(), 2);
}

TEST_F(ScannerCapture, AnotherThreadMayStopTheScan)
{
    std::promise<void> started;
    std::atomic<bool> first{true};
    reaction = [&](const ReceivedEvent &) {
        if (first.exchange(false))
            started.set_value();
    };
    std::thread stopper([&] {
        started.get_future().wait();
        execute("stopScan");
    });
    expectThrows(CameraFailed, "The scan was stopped before its last frame",
                 [&] { capture(frames(10000)); });
    stopper.join();
    expectStopped();
}

TEST_F(ScannerCapture, OneScanRunsAtATime)
{
    reaction = [this](const ReceivedEvent &event) {
        if (event.name != QLatin1String("progress"))
            return;
        expectThrows(CameraFailed, "A scan is running already", [&] { capture(frames(1)); });
        expectThrows(CameraFailed, "A scan is running already", [&] { execute("startScan"); });
        EXPECT_EQ(execute("info").toMap().value("scanning"), QVariant(true));
    };
    EXPECT_EQ(capture(frames(2)).size(), 4);
}

TEST_F(ScannerCapture, ParametersThatCannotBeUsedAreNamed)
{
    struct Row
    {
        QVariantMap parameters;
        QString text;
    };
    const QString range = "\"frames\" must be a whole number from 1 to 1000000000, not ";
    const Row rows[] = {
        {{}, range + "nothing"},
        {frames(0), range + "0"},
        {frames(-1), range + "-1"},
        {frames(1000000001), range + "1000000001"},
        {{{"frames", 1.5}}, range + "1.5"},
        {{{"frames", "many"}}, range + "\"many\""},
        {{{"frames", QVariantList()}}, range + "[]"},
        {with(frames(1), "periodMs", 0),
         "\"periodMs\" must be a whole number from 1 to 60000, not 0"},
        {with(frames(1), "timeoutMs", 0),
         "\"timeoutMs\" must be a whole number from 1 to 3600000, not 0"},
        {with(frames(1), "color", "yes"), "\"color\" must be true or false, not \"yes\""},
        {with(frames(1), "colorMode", -1),
         "\"colorMode\" must be a whole number from 0 to 255, not -1"},
        {with(frames(1), "colorMode", 2), "\"colorMode\" needs \"color\": true"},
        {with(frames(1), "keep", 0), "\"keep\" must be true or false, not 0"},
        {with(frames(1), "pattern", 3), "\"pattern\" must be a text, not 3"},
        {with(frames(1), "switch", true), "\"switch\" must be a map, not true"},
        {with(frames(1), "switch", QVariantMap{{"blueLaser", "on"}}),
         "\"blueLaser\" must be true or false, not \"on\""},
        {with(frames(1), "camera", 0),
         "A scan has no parameter \"camera\", but periodMs, color, colorMode, "
         "pattern, switch, frames, keep, timeoutMs"},
    };
    for (const Row &row : rows)
        expectThrows(InvalidParameter, row.text, [&] { capture(row.parameters); });
    EXPECT_EQ(libraryCalls("SetScanCallBackFunction"), std::vector<std::string>{});
}

TEST_F(ScannerCapture, OtherKindsOfImagesAreNotServed)
{
    expectFails(FunctionNotExist, "Scanner 1.0 does not serve images of the kind \"depth\"",
                "captureImage", {scannerHandle, "depth", QVariantMap()});
}

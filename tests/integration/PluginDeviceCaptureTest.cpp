#include "PluginDeviceHost.h"

#include <chrono>
#include <future>

using namespace KvSyncTest;

class PluginDeviceCapture : public PluginDeviceHost
{
protected:
    static QVariantList column(const QVariantList &images, const QString &key)
    {
        QVariantList values;
        for (const QVariant &image : images)
            values.append(image.toMap().value(key));
        return values;
    }

    static QVariantMap account(int frames, int delivered, int lost)
    {
        return {{"frames", frames},
                {"produced", delivered + lost},
                {"delivered", delivered},
                {"dropped", lost},
                {"causes",
                 QVariantMap{{"lost", lost}, {"hostSlow", 0}, {"unusable", 0}, {"stopped", 0}}},
                {"disordered", 0}};
    }
};

TEST_F(PluginDeviceCapture, TakesFramesOfASingleCamera)
{
    const QVariant handle = openDevice(CameraAlone);
    const QVariantList images = capture(handle, {{"frames", 2}, {"periodMs", 1}});
    EXPECT_EQ(column(images, "frame"), (QVariantList{1, 2}));
    EXPECT_EQ(column(images, "camera"), (QVariantList{0, 0}));
    const QVariantMap first = images.first().toMap();
    EXPECT_EQ(first.value("width"), QVariant(640));
    EXPECT_EQ(first.value("height"), QVariant(480));
    EXPECT_EQ(first.value("bitDepth"), QVariant(8));
    EXPECT_EQ(first.value("format"), QVariant(0));
    EXPECT_EQ(first.value("data").toByteArray().size(), 640 * 480);
    EXPECT_NE(first.value("data"), images.last().toMap().value("data"));
}

TEST_F(PluginDeviceCapture, TakesFramesOfEverySensor)
{
    const QVariant handle = openDevice(WholeScanner);
    const QVariantList images = capture(handle, {{"frames", 2}, {"periodMs", 1}});
    EXPECT_EQ(column(images, "camera"), (QVariantList{0, 1, 0, 1}));
    EXPECT_EQ(column(images, "frame"), (QVariantList{1, 1, 2, 2}));
}

TEST_F(PluginDeviceCapture, TakesFramesOfOneSensor)
{
    const QVariant handle = openDevice(WholeScanner);
    const QVariantList images = capture(handle, {{"frames", 1}, {"camera", 1}});
    EXPECT_EQ(column(images, "camera"), QVariantList{1});
}

TEST_F(PluginDeviceCapture, ACameraRunsFreelyUnlessAPeriodIsAsked)
{
    const QVariant handle = openDevice(CameraAlone);
    std::vector<int> modes;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == "frameArrived")
            modes.push_back(get(handle, "camera0.triggerMode").toInt());
    };
    capture(handle, {{"frames", 1}});
    capture(handle, {{"frames", 1}, {"periodMs", 1}});
    EXPECT_EQ(modes, (std::vector<int>{0, 1}));
}

TEST_F(PluginDeviceCapture, TakesFramesInColor)
{
    const QVariant handle = openDevice(CameraAlone);
    const QVariantMap image = capture(handle, {{"frames", 1}, {"color", true}}).first().toMap();
    EXPECT_EQ(image.value("format"), QVariant(4));
    EXPECT_EQ(image.value("data").toByteArray().size(), 640 * 480 * 3);
}

TEST_F(PluginDeviceCapture, AColorImageIsOneFrameWithoutEvents)
{
    const QVariant handle = openDevice(WholeScanner);
    const QVariantList images =
        call("captureImage", {handle, "color", QVariantMap{{"camera", 0}, {"timeoutMs", 60000}}})
            .toList();
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(images.first().toMap().value("format"), QVariant(4));
    EXPECT_TRUE(events("frameArrived").empty());
}

TEST_F(PluginDeviceCapture, LeavesTheCameraAsItWas)
{
    const QVariant handle = openDevice(CameraAlone);
    set(handle, "camera0.triggerMode", 2);
    set(handle, "pixelFormat", 1);
    capture(handle, {{"frames", 1}, {"color", true}});
    EXPECT_EQ(get(handle, "camera0.triggerMode"), QVariant(2));
    EXPECT_EQ(get(handle, "camera0.pixelFormat"), QVariant(1));
    set(handle, "camera0.size", QVariantList{64, 48}); // refused while a stream runs
}

TEST_F(PluginDeviceCapture, TellsEveryFrameAndTheProgress)
{
    const QVariant handle = openDevice(WholeScanner);
    const QVariantList images = capture(handle, {{"frames", 2}, {"periodMs", 1}});
    const auto frames = events("frameArrived");
    ASSERT_EQ(frames.size(), 2u);
    EXPECT_EQ(frames.at(0).payload, images.mid(0, 2));
    EXPECT_EQ(frames.at(1).payload, images.mid(2, 2));
    EXPECT_EQ(frames.at(1).thread, std::this_thread::get_id());
    const auto progress = events("progress");
    ASSERT_EQ(progress.size(), 2u);
    EXPECT_EQ(progress.at(1).payload, QVariantList{account(2, 2, 0)});
}

TEST_F(PluginDeviceCapture, CountsFramesThatWereLostBetweenTwo)
{
    const QVariant handle = openDevice(CameraAlone);
    // Eight frames wait in the camera; the ninth that comes pushes the oldest out.
    reaction = [&](const ReceivedEvent &event) {
        if (event.name != "progress" || events("progress").size() != 1)
            return;
        for (int i = 0; i < 9; ++i)
            set(handle, "trigger", QVariantMap{});
    };
    const QVariantList images = capture(handle, {{"frames", 3}, {"periodMs", 1}});
    EXPECT_EQ(column(images, "frame"), (QVariantList{1, 4, 5}));
    EXPECT_EQ(lastOf("progress"), account(3, 3, 2));
}

TEST_F(PluginDeviceCapture, CountsFramesThatWereLostBeforeTheFirst)
{
    const QVariant handle = openDevice(CameraAlone);
    // Meanwhile the camera takes some twenty frames and keeps eight.
    set(handle, "slow", QVariantMap{{"operation", "getProperty"}, {"ms", 400}});
    const QVariantList images = capture(handle, {{"frames", 1}});
    const int first = images.first().toMap().value("frame").toInt();
    EXPECT_GT(first, 1);
    EXPECT_EQ(lastOf("progress"), account(1, 1, first - 1));
}

TEST_F(PluginDeviceCapture, KeepsThePeriodThatIsAsked)
{
    const QVariant handle = openDevice(CameraAlone);
    const auto begin = std::chrono::steady_clock::now();
    capture(handle, {{"frames", 3}, {"periodMs", 200}});
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(400));
}

TEST_F(PluginDeviceCapture, ResettingTheDeviceStopsItsStreams)
{
    const QVariant handle = openDevice(CameraAlone);
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == "frameArrived" && events("frameArrived").size() == 1)
            call("resetDevices", {handle});
    };
    // Frames that wait already are still to be had.
    expectFails(noFrame, "Camera 0 gave no frame", "captureImage",
                {handle, "scan", QVariantMap{{"frames", 60}}});
}

TEST_F(PluginDeviceCapture, RefusesWhatCannotBeUsed)
{
    const QVariant handle = openDevice(WholeScanner);
    expectFails(InvalidParameter, "\"frames\" must be a whole number from 1 to 1000000000, not 0",
                "captureImage", {handle, "scan", QVariantMap{{"frames", 0}}});
    expectFails(InvalidParameter, "\"camera\" must be a whole number from 0 to 1, not 2",
                "captureImage", {handle, "scan", QVariantMap{{"frames", 1}, {"camera", 2}}});
    expectFails(InvalidParameter, "\"periodMs\" must be a whole number from 1 to 60000, not 0",
                "captureImage", {handle, "scan", QVariantMap{{"frames", 1}, {"periodMs", 0}}});
    expectFails(InvalidParameter, "\"timeoutMs\" must be a whole number from 1 to 3600000, not 0",
                "captureImage", {handle, "scan", QVariantMap{{"frames", 1}, {"timeoutMs", 0}}});
    expectFails(InvalidParameter, "\"color\" must be true or false, not 1", "captureImage",
                {handle, "scan", QVariantMap{{"frames", 1}, {"color", 1}}});
    expectFails(InvalidParameter,
                "A scan of a device has no parameter \"pattern\", but frames, keep, periodMs, "
                "timeoutMs, color, camera",
                "captureImage", {handle, "scan", QVariantMap{{"frames", 1}, {"pattern", "off"}}});
    expectFails(InvalidParameter,
                "A color image of a device has no parameter \"frames\", but camera, timeoutMs",
                "captureImage", {handle, "color", QVariantMap{{"frames", 1}}});
    expectFails(FunctionNotExist, "Scanner 1.0 does not serve images of the kind \"depth\"",
                "captureImage", {handle, "depth", QVariantMap()});
}

TEST_F(PluginDeviceCapture, WithoutKeepTheImagesComeByEventsAlone)
{
    const QVariant handle = openDevice(CameraAlone);
    EXPECT_EQ(capture(handle, {{"frames", 3}, {"keep", false}}), QVariantList());
    const auto arrivals = events("frameArrived");
    ASSERT_EQ(arrivals.size(), 3u);
    for (const ReceivedEvent &arrival : arrivals)
        EXPECT_EQ(arrival.payload.value(0).toMap().value("data").toByteArray().size(), 640 * 480);
}

TEST_F(PluginDeviceCapture, TellsHowAScanEnded)
{
    const QVariant handle = openDevice(CameraAlone);
    capture(handle, {{"frames", 2}, {"periodMs", 1}});
    EXPECT_EQ(lastOf("scanEnded"),
              (QVariantMap{{"reason", "complete"}, {"text", ""}, {"account", account(2, 2, 0)}}));
    EXPECT_EQ(events("scanEnded").at(0).thread, std::this_thread::get_id());
    makeFail(handle, "getProperty", 0x01F20006);
    EXPECT_THROW(capture(handle, {{"frames", 2}}), KvSyncTool::Exception);
    EXPECT_EQ(lastOf("scanEnded"), (QVariantMap{{"reason", "failed"},
                                                {"text", "Camera 0 gave no frame"},
                                                {"account", account(2, 0, 0)}}));
}

TEST_F(PluginDeviceCapture, AScanThatNeverBeganDoesNotEnd)
{
    const QVariant handle = openDevice(CameraAlone);
    makeFail(handle, "startStream", 0x01F20006);
    EXPECT_THROW(capture(handle, {{"frames", 2}}), KvSyncTool::Exception);
    EXPECT_TRUE(events("scanEnded").empty());
}

TEST_F(PluginDeviceCapture, WhenItEndsTheCameraIsAtRest)
{
    const QVariant handle = openDevice(CameraAlone);
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == "scanEnded")
            set(handle, "camera0.size", QVariantList{64, 48}); // refused while a stream runs
    };
    capture(handle, {{"frames", 1}});
    EXPECT_EQ(get(handle, "camera0.size"), QVariant(QVariantList{64, 48}));
}

TEST_F(PluginDeviceCapture, TellsWhenEachFrameArrived)
{
    const QVariant handle = openDevice(CameraAlone);
    const QVariantList times = column(capture(handle, {{"frames", 2}, {"periodMs", 50}}), "timeMs");
    EXPECT_GE(times.at(0).toDouble(), 0.0);
    EXPECT_GE(times.at(1).toDouble(), 50.0);
}

TEST_F(PluginDeviceCapture, ADeviceWithoutACameraTakesNone)
{
    const QVariant handle = openDevice(TurntableAlone);
    for (const char *const kind : {"scan", "color"})
        expectFails(FunctionNotExist, "The device \"Virtual turntable\" has no camera",
                    "captureImage", {handle, kind, QVariantMap{{"frames", 1}}});
}

TEST_F(PluginDeviceCapture, SaysWhatTheCameraRefuses)
{
    struct Row
    {
        QString operation;
        QString text;
    };
    const std::vector<Row> rows = {
        {"getTriggerMode", "Camera 0 does not give its trigger mode"},
        {"getPixelFormat", "Camera 0 does not give its pixel format"},
        {"setTriggerMode", "Camera 0 refuses the trigger mode"},
        {"setProperty", "Camera 0 refuses the pixel format"},
        {"startStream", "Camera 0 refuses to start"},
        {"getProperty", "Camera 0 gave no frame"},
    };
    const auto refusal = static_cast<ErrorCode>(0x01F20006);
    const QVariant handle = openDevice(CameraAlone);
    const QVariantMap parameters{{"frames", 1}, {"periodMs", 1}, {"color", true}};
    for (const Row &row : rows) {
        makeFail(handle, row.operation, refusal);
        expectFails(refusal, row.text, "captureImage", {handle, "scan", parameters});
        makeFail(handle, row.operation, Success);
    }
    EXPECT_EQ(capture(handle, parameters).size(), 1);
}

TEST_F(PluginDeviceCapture, SaysThatTheCameraRefusesTheTrigger)
{
    const QVariant handle = openDevice(CameraAlone);
    makeFail(handle, "setProperty", 0x01F20007);
    expectFails(static_cast<ErrorCode>(0x01F20007), "Camera 0 refuses the trigger", "captureImage",
                {handle, "scan", QVariantMap{{"frames", 1}, {"periodMs", 1}}});
}

TEST_F(PluginDeviceCapture, SaysThatNoSensorAnswers)
{
    const QVariant handle = openDevice(CameraAlone);
    makeFail(handle, "getMaxImageSize", 0x01F20008);
    expectFails(CameraFailed, "The camera \"Virtual camera\" does not answer", "captureImage",
                {handle, "scan", QVariantMap{{"frames", 1}}});
}

TEST_F(PluginDeviceCapture, ACameraThatVanishesEndsTheScan)
{
    const QVariant handle = openDevice(CameraAlone);
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == "frameArrived")
            set(handle, "vanish", QVariantMap{{"vanished", true}});
    };
    expectFails(vanished, "Camera 0 gave no frame", "captureImage",
                {handle, "scan", QVariantMap{{"frames", 5}}});
    EXPECT_EQ(lastOf("scanEnded").value("reason"), QVariant("connectionLost"));
    EXPECT_EQ(lastOf("scanEnded").value("text"),
              QVariant("The connection to the device was lost during the scan"));
}

TEST_F(PluginDeviceCapture, OneScanRunsAtATime)
{
    const QVariant handle = openDevice(CameraAlone);
    bool wasRefused = false;
    reaction = [&](const ReceivedEvent &event) {
        if (event.name != "frameArrived" || wasRefused)
            return;
        wasRefused = true;
        std::async(std::launch::async, [&] {
            expectFails(CameraFailed, "A scan is running already", "captureImage",
                        {handle, "scan", QVariantMap{{"frames", 1}}});
        }).get();
    };
    EXPECT_EQ(capture(handle, {{"frames", 2}}).size(), 2);
    EXPECT_TRUE(wasRefused);
}

TEST_F(PluginDeviceCapture, ASlotMayCloseTheDevice)
{
    const QVariant handle = openDevice(CameraAlone);
    reaction = [&](const ReceivedEvent &event) {
        if (event.name == "frameArrived")
            close(handle);
    };
    expectFails(CameraFailed, "The device was closed during the scan", "captureImage",
                {handle, "scan", QVariantMap{{"frames", 5}}});
    EXPECT_EQ(lastOf("scanEnded"), (QVariantMap{{"reason", "stopped"},
                                                {"text", "The device was closed during the scan"},
                                                {"account", account(5, 1, 0)}}));
}

TEST_F(PluginDeviceCapture, ClosingEndsAScanThatWaitsForAFrame)
{
    const QVariant handle = openDevice(CameraAlone);
    set(handle, "exposure", 1000000); // the next frame is a second away
    auto scanning = std::async(std::launch::async, [&] {
        expectFails(CameraFailed, "The device was closed during the scan", "captureImage",
                    {handle, "scan", QVariantMap{{"frames", 5000}, {"timeoutMs", 60000}}});
    });
    ASSERT_TRUE(waitForEvents("frameArrived", 1));
    close(handle);
    scanning.get();
}

TEST_F(PluginDeviceCapture, ClosingEndsAScanThatWaitsForItsPeriod)
{
    const QVariant handle = openDevice(CameraAlone);
    auto scanning = std::async(std::launch::async, [&] {
        expectFails(CameraFailed, "The device was closed during the scan", "captureImage",
                    {handle, "scan", QVariantMap{{"frames", 5000}, {"periodMs", 60000}}});
    });
    ASSERT_TRUE(waitForEvents("progress", 1));
    close(handle);
    scanning.get();
}

TEST_F(PluginDeviceCapture, AScanOfTheDirectLinkRunsBesideIt)
{
    open();
    const QVariant handle = openDevice(CameraAlone);
    auto other = std::async(std::launch::async, [&] {
        return ScannerHost::capture({{"frames", 3}});
    });
    EXPECT_EQ(capture(handle, {{"frames", 3}}).size(), 3);
    EXPECT_EQ(other.get().size(), 6); // of two cameras
}

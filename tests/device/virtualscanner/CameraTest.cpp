#include "device/virtualscanner/VirtualScannerTest.h"

#include "KvSyncDevice/CameraInterface.h"

#include <future>
#include <limits>
#include <set>

using namespace KvSyncTest;
using namespace VirtualScanner;
using namespace CameraSpace;

namespace {

class VirtualCameras : public VirtualScannerTest
{
protected:
    ErrorCode setValue(const char *property, const QVariant &value)
    {
        return set(camera, property, {{QStringLiteral("value"), value}});
    }

    int valueOf(const char *property)
    {
        return get(camera, property).value(QStringLiteral("value")).toInt();
    }

    Values frame() { return get(camera, "frame"); }

    qint64 frameNumber() { return frame().value(QStringLiteral("frame")).toLongLong(); }

    ErrorCode frameCode(int timeoutMs)
    {
        return codeOfGet(camera, "frame", {{QStringLiteral("timeoutMs"), timeoutMs}});
    }

    /// The pixels of the first frame under the present settings.
    QByteArray firstPixels()
    {
        EXPECT_EQ(devices.stopStream(camera, 0), Success);
        TriggerMode mode = FreeRunning;
        EXPECT_EQ(devices.getTriggerMode(camera, mode, 0), Success);
        EXPECT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
        EXPECT_EQ(devices.startStream(camera, 0), Success);
        EXPECT_EQ(set(camera, "trigger", {}), Success);
        const Values values = frame();
        EXPECT_EQ(values.value(QStringLiteral("frame")).toInt(), 1);
        EXPECT_EQ(devices.stopStream(camera, 0), Success);
        EXPECT_EQ(devices.setTriggerMode(camera, mode, 0), Success);
        return values.value(QStringLiteral("data")).toByteArray();
    }

    const DeviceHandle camera = open(Camera);
};

int mean(const QByteArray &pixels)
{
    qint64 sum = 0;
    for (const char pixel : pixels)
        sum += static_cast<unsigned char>(pixel);
    return static_cast<int>(sum / pixels.size());
}

} // namespace

TEST_F(VirtualCameras, TellTheirRanges)
{
    unsigned int minimumUs = 0;
    unsigned int maximumUs = 0;
    EXPECT_EQ(devices.getExposureTimeRange(camera, minimumUs, maximumUs, 0), Success);
    EXPECT_EQ(minimumUs, 20u);
    EXPECT_EQ(maximumUs, 1000000u);
    unsigned short lowest = 9;
    unsigned int highest = 0;
    EXPECT_EQ(devices.getGainRange(camera, lowest, highest, 0), Success);
    EXPECT_EQ(lowest, 0u);
    EXPECT_EQ(highest, 64u);
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(devices.getMaxImageSize(camera, width, height, 0), Success);
    EXPECT_EQ(width, 640u);
    EXPECT_EQ(height, 480u);
}

TEST_F(VirtualCameras, HaveTheSensorsOfTheirKind)
{
    EXPECT_EQ(devices.discardFrames(camera, 1), NoSuchSensor);
    EXPECT_EQ(devices.discardFrames(camera, -1), NoSuchSensor);
    const DeviceHandle scanner = open(Scanner);
    EXPECT_EQ(devices.discardFrames(scanner, 1), Success);
    EXPECT_EQ(devices.discardFrames(scanner, 2), NoSuchSensor);
}

TEST_F(VirtualCameras, KeepExposureAndGainWithinTheirRanges)
{
    for (const int good : {20, 12345, 1000000}) {
        EXPECT_EQ(setValue("exposure", good), Success);
        EXPECT_EQ(valueOf("exposure"), good);
    }
    for (const QVariant &bad : {QVariant(19), QVariant(1000001), QVariant(-1), QVariant("long")})
        EXPECT_EQ(setValue("exposure", bad), BadValue);
    EXPECT_EQ(valueOf("exposure"), 1000000);
    EXPECT_EQ(setValue("gain", 64), Success);
    EXPECT_EQ(setValue("gain", 65), BadValue);
    EXPECT_EQ(valueOf("gain"), 64);
}

TEST_F(VirtualCameras, KeepTheRegionOfInterestOnTheSensor)
{
    unsigned int first = 0;
    unsigned int second = 0;
    EXPECT_EQ(devices.setInterestSize(camera, 320, 200, 0), Success);
    EXPECT_EQ(devices.setAOIOffset(camera, 320, 280, 0), Success);
    EXPECT_EQ(devices.setAOIOffset(camera, 321, 280, 0), BadValue);
    EXPECT_EQ(devices.setInterestSize(camera, 320, 201, 0), BadValue);
    EXPECT_EQ(devices.setInterestSize(camera, 0, 10, 0), BadValue);
    constexpr unsigned int huge = std::numeric_limits<unsigned int>::max();
    EXPECT_EQ(devices.setAOIOffset(camera, huge, huge, 0), BadValue);
    EXPECT_EQ(devices.setInterestSize(camera, huge, huge, 0), BadValue);
    EXPECT_EQ(devices.getInterestSize(camera, first, second, 0), Success);
    EXPECT_EQ(std::make_pair(first, second), std::make_pair(320u, 200u));
    EXPECT_EQ(devices.getAOIOffset(camera, first, second, 0), Success);
    EXPECT_EQ(std::make_pair(first, second), std::make_pair(320u, 280u));
}

TEST_F(VirtualCameras, ReadOutExactlyTheRegionOfInterest)
{
    const QByteArray whole = firstPixels();
    ASSERT_EQ(whole.size(), 640 * 480);
    ASSERT_EQ(devices.setInterestSize(camera, 30, 20, 0), Success);
    ASSERT_EQ(devices.setAOIOffset(camera, 100, 200, 0), Success);
    QByteArray cut;
    for (int y = 200; y < 220; ++y)
        cut += whole.mid(y * 640 + 100, 30);
    EXPECT_EQ(firstPixels(), cut);
}

TEST_F(VirtualCameras, DeliverTheSizeOfTheirPixelFormat)
{
    const QMap<int, int> bytesPerPixel = {
        {Mono8, 1}, {Mono10, 2}, {Mono12, 2}, {BayerRG8, 1}, {RGB8, 3}};
    for (auto format = bytesPerPixel.begin(); format != bytesPerPixel.end(); ++format) {
        EXPECT_EQ(setValue("pixelFormat", format.key()), Success);
        PixelFormatType now = Mono8;
        EXPECT_EQ(devices.getPixelFormat(camera, now, 0), Success);
        EXPECT_EQ(now, format.key());
        EXPECT_EQ(firstPixels().size(), 640 * 480 * format.value());
    }
    EXPECT_EQ(setValue("pixelFormat", 5), BadValue);
    EXPECT_EQ(setValue("pixelFormat", -1), BadValue);
    EXPECT_EQ(setValue("pixelFormat", Q_INT64_C(0x100000000)), BadValue);
}

TEST_F(VirtualCameras, BayerPixelsAreTheColorsOfTheirPlaces)
{
    ASSERT_EQ(setValue("pixelFormat", RGB8), Success);
    const QByteArray rgb = firstPixels();
    ASSERT_EQ(setValue("pixelFormat", BayerRG8), Success);
    const QByteArray bayer = firstPixels();
    const auto color = [&](int x, int y, int channel) { return rgb[(y * 640 + x) * 3 + channel]; };
    EXPECT_EQ(bayer[0], color(0, 0, 0));
    EXPECT_EQ(bayer[1], color(1, 0, 1));
    EXPECT_EQ(bayer[640], color(0, 1, 1));
    EXPECT_EQ(bayer[641], color(1, 1, 2));
}

TEST_F(VirtualCameras, BrightenWithExposureAndGain)
{
    ASSERT_EQ(setValue("exposure", 4000), Success);
    const int dark = mean(firstPixels());
    ASSERT_EQ(setValue("exposure", 8000), Success);
    const int brighter = mean(firstPixels());
    ASSERT_EQ(setValue("gain", 16), Success);
    const int brightest = mean(firstPixels());
    EXPECT_NEAR(brighter, 2 * dark, 2);
    EXPECT_GT(brightest, brighter);
}

TEST_F(VirtualCameras, RenderAFrameNumberAlikeAndItsSuccessorDifferently)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    QByteArray pixels[2][2];
    for (auto &run : pixels) {
        ASSERT_EQ(devices.startStream(camera, 0), Success);
        for (QByteArray &image : run) {
            ASSERT_EQ(set(camera, "trigger", {}), Success);
            image = frame().value(QStringLiteral("data")).toByteArray();
        }
        ASSERT_EQ(devices.stopStream(camera, 0), Success);
    }
    EXPECT_EQ(pixels[0][0], pixels[1][0]);
    EXPECT_EQ(pixels[0][1], pixels[1][1]);
    EXPECT_NE(pixels[0][0], pixels[0][1]);
}

TEST_F(VirtualCameras, DescribeTheirFrames)
{
    ASSERT_EQ(devices.setInterestSize(camera, 8, 4, 0), Success);
    ASSERT_EQ(setValue("pixelFormat", Mono12), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    const Values values = frame();
    EXPECT_EQ(values.value(QStringLiteral("width")).toInt(), 8);
    EXPECT_EQ(values.value(QStringLiteral("height")).toInt(), 4);
    EXPECT_EQ(values.value(QStringLiteral("bitDepth")).toInt(), 12);
    EXPECT_EQ(values.value(QStringLiteral("format")).toInt(), int(Mono12));
    EXPECT_EQ(values.value(QStringLiteral("selector")).toInt(), 0);
    EXPECT_EQ(values.value(QStringLiteral("data")).toByteArray().size(), 8 * 4 * 2);
}

TEST_F(VirtualCameras, StreamByThemselvesWithGrowingNumbers)
{
    ASSERT_EQ(devices.setInterestSize(camera, 8, 4, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    const qint64 first = frameNumber();
    EXPECT_GT(frameNumber(), first);
}

TEST_F(VirtualCameras, TakeNoFrameWithoutTheirTrigger)
{
    ASSERT_EQ(devices.setTriggerMode(camera, HardwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    EXPECT_EQ(frameCode(30), NoFrame);
    EXPECT_EQ(set(camera, "trigger", {}), WrongTriggerMode);
    EXPECT_EQ(set(camera, "trigger", {{QStringLiteral("hardware"), true}}), Success);
    EXPECT_EQ(frameCode(0), Success);
    EXPECT_EQ(frameCode(0), NoFrame);
}

TEST_F(VirtualCameras, ThatRunFreelyTakeNoTrigger)
{
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    EXPECT_EQ(set(camera, "trigger", {}), WrongTriggerMode);
}

TEST_F(VirtualCameras, ATriggerEndsTheWaitForAFrame)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [this] { return frameCode(60000); });
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    EXPECT_EQ(waiting.get(), Success);
}

TEST_F(VirtualCameras, TheEndOfTheStreamEndsTheWaitForAFrame)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [this] { return frameCode(60000); });
    ASSERT_EQ(devices.stopStream(camera, 0), Success);
    EXPECT_EQ(waiting.get(), NoFrame);
}

TEST_F(VirtualCameras, KeepEightFramesAndLoseTheOldest)
{
    ASSERT_EQ(devices.setInterestSize(camera, 1, 1, 0), Success);
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    for (int i = 0; i < 10; ++i)
        ASSERT_EQ(set(camera, "trigger", {}), Success);
    EXPECT_EQ(frameNumber(), 3);
    EXPECT_EQ(frameNumber(), 4);
}

TEST_F(VirtualCameras, ThrowWaitingFramesAwayOnDemand)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    EXPECT_EQ(devices.discardFrames(camera, 0), Success);
    EXPECT_EQ(frameCode(0), NoFrame);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    EXPECT_EQ(frameNumber(), 2);
}

TEST_F(VirtualCameras, KeepWaitingFramesBeyondTheEndOfTheStream)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    ASSERT_EQ(devices.stopStream(camera, 0), Success);
    EXPECT_EQ(frameNumber(), 1);
    EXPECT_EQ(frameCode(1000), NoFrame);
}

TEST_F(VirtualCameras, RenderAFrameWithTheSettingsOfItsMoment)
{
    const QByteArray plain = firstPixels();
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    EXPECT_EQ(setValue("gain", 64), Success);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    ASSERT_EQ(devices.stopStream(camera, 0), Success);
    EXPECT_EQ(setValue("pixelFormat", RGB8), Success);
    EXPECT_EQ(devices.setInterestSize(camera, 8, 4, 0), Success);

    const Values first = frame();
    EXPECT_EQ(first.value(QStringLiteral("data")).toByteArray(), plain);
    EXPECT_EQ(first.value(QStringLiteral("format")).toInt(), int(Mono8));
    EXPECT_EQ(first.value(QStringLiteral("width")).toInt(), 640);
    const QByteArray second = frame().value(QStringLiteral("data")).toByteArray();
    EXPECT_EQ(second.size(), 640 * 480);
    EXPECT_GT(mean(second), mean(plain));
}

TEST_F(VirtualCameras, GiveEachFrameToOneCaller)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    const auto fetch = [this] {
        Values values{{QStringLiteral("timeoutMs"), 60000}};
        return devices.getProperty(camera, QStringLiteral("frame"), values) == Success
                   ? values.value(QStringLiteral("frame")).toInt()
                   : 0;
    };
    std::future<int> one = std::async(std::launch::async, fetch);
    std::future<int> other = std::async(std::launch::async, fetch);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    ASSERT_EQ(set(camera, "trigger", {}), Success);
    const std::set<int> numbers = {one.get(), other.get()};
    EXPECT_EQ(numbers, (std::set<int>{1, 2}));
}

TEST_F(VirtualCameras, ThatAreDeletedEndTheWaitForAFrame)
{
    ASSERT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), Success);
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    std::future<ErrorCode> waiting =
        std::async(std::launch::async, [this] { return frameCode(60000); });
    ASSERT_TRUE(isCalled(camera));
    EXPECT_EQ(devices.deleteDevice(camera), Success);
    EXPECT_EQ(waiting.get(), DeviceVanished);
}

TEST_F(VirtualCameras, KeepTheirSettingsDuringAStream)
{
    ASSERT_EQ(devices.startStream(camera, 0), Success);
    EXPECT_EQ(devices.startStream(camera, 0), StreamRunning);
    EXPECT_EQ(devices.setInterestSize(camera, 8, 8, 0), StreamRunning);
    EXPECT_EQ(devices.setTriggerMode(camera, SoftwareTrigger, 0), StreamRunning);
    EXPECT_EQ(setValue("pixelFormat", RGB8), StreamRunning);
    EXPECT_EQ(setValue("exposure", 5000), StreamRunning);
    EXPECT_EQ(setValue("gain", 5), Success);
    EXPECT_EQ(devices.stopStream(camera, 0), Success);
    EXPECT_EQ(devices.setInterestSize(camera, 8, 8, 0), Success);
}

TEST_F(VirtualCameras, RefuseAnUnknownTriggerMode)
{
    EXPECT_EQ(devices.setTriggerMode(camera, static_cast<TriggerMode>(3), 0), BadValue);
    TriggerMode mode = SoftwareTrigger;
    EXPECT_EQ(devices.getTriggerMode(camera, mode, 0), Success);
    EXPECT_EQ(mode, FreeRunning);
}

TEST_F(VirtualCameras, SensorsOfOneHeadAreIndependent)
{
    const DeviceHandle scanner = open(Scanner);
    ASSERT_EQ(devices.setInterestSize(scanner, 10, 10, 1), Success);
    unsigned int width = 0;
    unsigned int height = 0;
    ASSERT_EQ(devices.getInterestSize(scanner, width, height, 0), Success);
    EXPECT_EQ(width, 640u);
    ASSERT_EQ(devices.startStream(scanner, 1), Success);
    const Values values = get(scanner, "frame", {{QStringLiteral("selector"), 1}});
    EXPECT_EQ(values.value(QStringLiteral("width")).toInt(), 10);
    EXPECT_EQ(codeOfGet(scanner, "frame", {{QStringLiteral("selector"), 0}}), NoFrame);
}

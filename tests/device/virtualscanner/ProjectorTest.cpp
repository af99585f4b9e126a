#include "device/virtualscanner/VirtualScannerTest.h"

#include "KvSyncDevice/ProjectorInterface.h"

using namespace KvSyncTest;
using namespace VirtualScanner;
using namespace ProjectorSpace;

namespace {

class VirtualProjectors : public VirtualScannerTest
{
protected:
    ErrorCode write(int index, int width, int height, const QByteArray &pattern)
    {
        return devices.writePatternToFlash(scanner, StripePattern, VerticalVariant, index, width,
                                           height, pattern);
    }

    const DeviceHandle scanner = open(Scanner);
};

} // namespace

TEST_F(VirtualProjectors, KeepTheirSwitches)
{
    bool on = true;
    EXPECT_EQ(devices.currentProjectorPWM(scanner, on), Success);
    EXPECT_FALSE(on);
    EXPECT_EQ(devices.projectorPWM(scanner, true), Success);
    EXPECT_EQ(devices.currentProjectorPWM(scanner, on), Success);
    EXPECT_TRUE(on);
    EXPECT_EQ(devices.currentProjectorLEDSwitch(scanner, on), Success);
    EXPECT_FALSE(on);
    EXPECT_EQ(devices.projectorLEDSwitch(scanner, true), Success);
    EXPECT_EQ(devices.currentProjectorLEDSwitch(scanner, on), Success);
    EXPECT_TRUE(on);
}

TEST_F(VirtualProjectors, KeepTheirLuminance)
{
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    EXPECT_EQ(devices.setProjectorLuminance(scanner, 1, 200, 255), Success);
    EXPECT_EQ(devices.getProjectorLuminance(scanner, red, green, blue), Success);
    EXPECT_EQ(red, 1);
    EXPECT_EQ(green, 200);
    EXPECT_EQ(blue, 255);
}

TEST_F(VirtualProjectors, StartAndEndAScan)
{
    EXPECT_EQ(devices.scan(scanner, ContinuousScan, true), Success);
    EXPECT_EQ(get(scanner, "scan"), (Values{{QStringLiteral("on"), true},
                                            {QStringLiteral("type"), int(ContinuousScan)}}));
    EXPECT_EQ(devices.scan(scanner, SingleScan, false), Success);
    EXPECT_FALSE(get(scanner, "scan").value(QStringLiteral("on")).toBool());
    EXPECT_EQ(devices.scan(scanner, static_cast<ScanType>(2), true), BadValue);
}

TEST_F(VirtualProjectors, KeepAPatternInFlash)
{
    const QByteArray pattern("\x00\x7f\xff\x01\x02\x03", 6);
    EXPECT_EQ(write(4, 3, 2, pattern), Success);
    EXPECT_EQ(get(scanner, "pattern", {{QStringLiteral("index"), 4}}),
              (Values{{QStringLiteral("index"), 4},
                      {QStringLiteral("major"), int(StripePattern)},
                      {QStringLiteral("sub"), int(VerticalVariant)},
                      {QStringLiteral("width"), 3},
                      {QStringLiteral("height"), 2},
                      {QStringLiteral("data"), pattern}}));
}

TEST_F(VirtualProjectors, RefuseAPatternThatDoesNotFitAndKeepTheOldOne)
{
    ASSERT_EQ(write(0, 2, 1, "ok"), Success);
    EXPECT_EQ(write(0, 2, 1, "odd"), PatternDoesNotFit);
    EXPECT_EQ(write(0, 2, 1, ""), PatternDoesNotFit);
    EXPECT_EQ(write(0, 0, 0, ""), PatternDoesNotFit);
    EXPECT_EQ(write(0, -2, -1, "ok"), PatternDoesNotFit);
    EXPECT_EQ(write(0, 1281, 1, QByteArray(1281, 'x')), PatternDoesNotFit);
    EXPECT_EQ(write(0, 1, 801, QByteArray(801, 'x')), PatternDoesNotFit);
    EXPECT_EQ(write(-1, 2, 1, "ok"), PatternDoesNotFit);
    EXPECT_EQ(write(16, 2, 1, "ok"), PatternDoesNotFit);
    EXPECT_EQ(get(scanner, "pattern", {{QStringLiteral("index"), 0}})
                  .value(QStringLiteral("data"))
                  .toByteArray(),
              QByteArray("ok"));
}

TEST_F(VirtualProjectors, RefuseWhatExceedsTheMemoryForAllPatterns)
{
    const QByteArray whole(1280 * 800, 'x');
    for (int index = 0; index < 4; ++index)
        ASSERT_EQ(write(index, 1280, 800, whole), Success);
    EXPECT_EQ(write(4, 1280, 800, whole), PatternDoesNotFit);
    EXPECT_EQ(write(3, 1280, 800, whole), Success); // replaces
    EXPECT_EQ(codeOfGet(scanner, "pattern", {{QStringLiteral("index"), 4}}), BadValue);
}

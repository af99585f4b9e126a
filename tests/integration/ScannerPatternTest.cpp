// The light of a scan: each word of a pattern by its picture, and scans in another light than
// their own.
#include "ScannerHost.h"

#include <KvSyncDevice/ProjectorInterface.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

// One table: the contract's families are the scanner's work types.
static_assert(int(ProjectorSpace::NoPattern) == Simulator::ProjectorOff);
static_assert(int(ProjectorSpace::FlatPattern) == Simulator::ProjectorFlat);
static_assert(int(ProjectorSpace::SpecklePattern) == Simulator::ProjectorSpeckle);
static_assert(int(ProjectorSpace::StripePattern) == Simulator::ProjectorStripes);

namespace {

/// What a picture looks like: how bright it is at most and on average, and how much neighbors
/// differ along rows and along columns, as parts of the brightness.
struct Look
{
    int brightest;
    double mean;
    double alongRows;
    double alongColumns;
};

double roughness(const QByteArray &pixels, int width, int step, double mean)
{
    double sum = 0.0;
    int count = 0;
    for (int i = 0; i + step < pixels.size(); ++i) {
        if (step == 1 && i % width == width - 1)
            continue;
        sum += std::abs(int(uchar(pixels.at(i))) - int(uchar(pixels.at(i + step))));
        ++count;
    }
    return sum / count / mean;
}

Look lookOf(const QVariant &image)
{
    const QVariantMap map = image.toMap();
    const QByteArray pixels = map.value("data").toByteArray();
    const int width = map.value("width").toInt();
    double sum = 0.0;
    Look look{};
    for (const char pixel : pixels) {
        sum += uchar(pixel);
        look.brightest = std::max<int>(look.brightest, uchar(pixel));
    }
    look.mean = std::max(sum / pixels.size(), 0.01);
    look.alongRows = roughness(pixels, width, 1, look.mean);
    look.alongColumns = roughness(pixels, width, width, look.mean);
    return look;
}

/// The library calls of one scan, but those that only ask.
std::vector<std::string> callsOf(const std::function<void()> &scan)
{
    Simulator::clearCalls();
    scan();
    std::vector<std::string> texts;
    for (const Simulator::Call &each : Simulator::calls()) {
        const std::string text = Simulator::callText(each);
        if (text.rfind("Get", 0) != 0)
            texts.push_back(each.function == "SetScanCallBackFunction" &&
                                    each.arguments[1] != "null"
                                ? "callback"
                                : text);
    }
    return texts;
}

} // namespace

class ScannerPattern : public ScannerHost
{
protected:
    ScannerPattern()
    {
        Simulator::ScannerSetup setup; // at full resolution, which shows the patterns
        setup.triggerPeriodMs = 100;
        Simulator::reset(setup);
        open();
        // The strobe lights every scan.
        call("setProperty", {scannerHandle, "strobeDutyRatios", QVariantList{0, 0, 0}});
    }

    static QVariantMap inLight(const QString &pattern, const QVariantMap &switches = {})
    {
        return with(with(frames(1), "pattern", pattern), "switch", switches);
    }

    Look scanned(const QString &pattern, const QVariantMap &switches = {})
    {
        return lookOf(capture(inLight(pattern, switches)).value(0));
    }
};

TEST_F(ScannerPattern, EachWordShowsWhatItSays)
{
    const Look off = scanned("off");
    const Look flat = scanned("flat");
    const Look speckle = scanned("speckle");
    const Look stripes = scanned("stripes");
    for (const Look &lit : {flat, speckle, stripes})
        EXPECT_GT(lit.mean, off.mean + 20);
    // Flat light has no structure, speckle one in both directions, and stripes one across.
    EXPECT_GT(speckle.alongRows, 2 * flat.alongRows);
    EXPECT_GT(speckle.alongColumns, 2 * flat.alongColumns);
    EXPECT_GT(stripes.alongRows, 2 * flat.alongRows);
    EXPECT_GT(stripes.alongRows, 2 * stripes.alongColumns);
    EXPECT_LT(speckle.alongRows, 2 * speckle.alongColumns);
}

TEST_F(ScannerPattern, ProjectingShowsTheSameInAScanThatRuns)
{
    const Look flat = scanned("flat");
    execute("startScan");
    call("project", {scannerHandle, "flat"});
    // Four frames may have been on their way.
    const std::size_t sofar = events("frameArrived").size();
    ASSERT_TRUE(waitForEvents("frameArrived", sofar + 6));
    execute("stopScan");
    const Look later = lookOf(events("frameArrived").back().payload.value(0));
    EXPECT_NEAR(later.mean, flat.mean, 1.0);
    EXPECT_NEAR(later.alongRows, flat.alongRows, 0.02);
}

TEST_F(ScannerPattern, AScanByLaserAloneHasItsLightAndNoOther)
{
    const Look dark = scanned("off");
    for (const QString &laser : {QStringLiteral("infraredLaser"), QStringLiteral("blueLaser")})
        EXPECT_GT(scanned(QStringLiteral("off"), {{laser, true}}).brightest, dark.brightest + 50)
            << laser.toStdString();
    // What a scan switched on it switched off.
    EXPECT_NEAR(scanned("off").mean, dark.mean, 0.1);
}

TEST_F(ScannerPattern, AScanTakesTheStepsOfTheLinksOwnStart)
{
    EXPECT_EQ(callsOf([this] { capture(frames(1)); }),
              (std::vector<std::string>{
                  "SetStrobeControlledByTrigger(device, 2, 4)", "SetDistanceIndicate(device, 3)",
                  "Project(device, 2)", "EnableIRLaser(device, false)", "callback",
                  "EnableVideoTrigger(device, 1, true)", "SetVideoTriggerPeriod(device, 100)",
                  "EnableVideoTrigger(device, 1, false)", "Project(device, 0)",
                  "SetScanCallBackFunction(device, null, null)"}));
}

TEST_F(ScannerPattern, AnotherLightIsOnBeforeTheTrigger)
{
    EXPECT_EQ(callsOf([this] {
                  capture(with(inLight("stripes", {{"infraredLaser", true}}), "color", true));
              }),
              (std::vector<std::string>{
                  "SetStrobeControlledByTrigger(device, 2, 4)", "SetDistanceIndicate(device, 3)",
                  "Project(device, 3)", "EnableIRLaser(device, true)",
                  "EnableVideoTrigger(device, 0, false)", "callback",
                  "EnableVideoTrigger(device, 0, true)", "SetVideoTriggerPeriod(device, 100)",
                  "EnableVideoTrigger(device, 0, false)", "Project(device, 0)",
                  "SetScanCallBackFunction(device, null, null)", "EnableIRLaser(device, false)"}));
}

TEST_F(ScannerPattern, ATriggerThatTheHostLeftOnDeliversNoFrameInAnotherLight)
{
    Simulator::setHostile(true);
    call("project", {scannerHandle, "flat"});
    call("setProperty", {scannerHandle, "periodMs", 5});
    call("setFlagBitInterface", {scannerHandle, "trigger", true});
    const QVariantList images = capture(with(with(frames(3), "pattern", "off"), "periodMs", 100));
    const double dark = scanned("off").mean;
    for (const QVariant &image : images)
        EXPECT_NEAR(lookOf(image).mean, dark, 0.1);
}

TEST_F(ScannerPattern, AHostileScannerDeliversNoFrameInAnotherLightEither)
{
    Simulator::setHostile(true);
    call("setProperty", {scannerHandle, "periodMs", 1});
    const QVariantList images = capture(with(with(frames(6), "pattern", "off"), "periodMs", 20));
    ASSERT_EQ(images.size(), 12);
    const double dark = lookOf(images.last()).mean;
    for (const QVariant &image : images)
        EXPECT_NEAR(lookOf(image).mean, dark, 0.1);
}

TEST_F(ScannerPattern, AStreamTakesThemToo)
{
    execute("startScan", {QVariantMap{{"pattern", "off"}}});
    ASSERT_TRUE(waitForEvents("frameArrived", 1));
    execute("stopScan");
    const QVariantMap first = events("frameArrived").at(0).payload.value(0).toMap();
    EXPECT_EQ(libraryCalls("Project"),
              (std::vector<std::string>{"Project(device, 0)", "Project(device, 0)"}));
    EXPECT_LT(lookOf(first).mean, scanned("flat").mean - 20);
}

TEST_F(ScannerPattern, WordsThatNoLightAnswersToAreRefusedBeforeTheScan)
{
    Simulator::clearCalls();
    expectThrows(FunctionNotExist, "There is no pattern \"cross\", but off, flat, speckle, stripes",
                 [&] { capture(inLight("cross")); });
    expectThrows(FunctionNotExist, "There is no laser \"trigger\", but infraredLaser, blueLaser",
                 [&] {
                     capture(inLight("off", {{"trigger", true}}));
                 });
    EXPECT_TRUE(libraryCalls("EnableVideoTrigger").empty());
}

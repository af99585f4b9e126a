// Compares what docs/simulator.md says of the scanner with the simulator.
#include "render/Calibration.h"
#include "render/CaptureSettings.h"
#include "render/Projector.h"
#include "render/Scene.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <utility>

using namespace Tessel3SyncSimulator;

namespace {

/// The last cell of each row of the document's tables, by the first.
std::map<std::string, std::string> documentedRows()
{
    std::ifstream file(KVSYNC_SIMULATOR_DOCUMENT);
    std::map<std::string, std::string> rows;
    for (std::string line; std::getline(file, line);) {
        const auto first = line.find(" |", 2);
        const auto last = line.rfind("| ", line.size() - 3);
        if (line.rfind("| ", 0) == 0 && first != std::string::npos && last >= first)
            rows.emplace(line.substr(2, first - 2),
                         line.substr(last + 2, line.rfind(" |") - last - 2));
    }
    return rows;
}

template <typename Number>
std::string text(Number number)
{
    std::ostringstream stream;
    stream << number;
    return stream.str();
}

std::string text(const Vector &place)
{
    return '(' + text(place.x) + ", " + text(place.y) + ", " + text(place.z) + ')';
}

std::string onOrOff(bool on)
{
    return on ? "on" : "off";
}

std::string placeOf(CameraKind kind)
{
    const auto position = cameraCalibration(kind, 160, 128).position;
    return text(Vector{position[0], position[1], position[2]});
}

class SimulatorDocument : public testing::Test
{
protected:
    void expectRow(const std::string &first, const std::string &last)
    {
        ASSERT_EQ(1u, rows.count(first)) << first;
        EXPECT_EQ(last, rows.at(first)) << first;
    }

    static void expectNear(const Vector &expected, const Vector &actual)
    {
        EXPECT_NEAR(expected.x, actual.x, 1e-9);
        EXPECT_NEAR(expected.y, actual.y, 1e-9);
        EXPECT_NEAR(expected.z, actual.z, 1e-9);
    }

    const std::map<std::string, std::string> rows = documentedRows();
};

} // namespace

TEST_F(SimulatorDocument, HasTheDefaultsOfTheScanner)
{
    const ScannerSetup setup;
    expectRow("`width`", text(setup.width));
    expectRow("`height`", text(setup.height));
    expectRow("`seed` of pattern and noise", text(setup.seed));
    expectRow("`triggerPeriodMs` after connecting", text(setup.triggerPeriodMs));
    expectRow("`cameras`", "left, right, color");
    EXPECT_EQ((std::vector<CameraKind>{CameraKind::LeftSpeckle, CameraKind::RightSpeckle,
                                       CameraKind::Color}),
              setup.cameras);
}

TEST_F(SimulatorDocument, HasWhatEverySettingIsAfterConnecting)
{
    const CameraSettings camera;
    const LightSettings light;
    expectRow("`SetCameraExposure`", text(camera.exposureUs));
    expectRow("`SetCameraGain`", text(camera.gain));
    expectRow("`Project`", text(light.projection));
    expectRow("`SetProjectorBrightness`", text(light.projectorBrightness));
    expectRow("`SetProjectDutioRatio`", text(light.projectorRatio));
    expectRow("`EnableIRLaser`", onOrOff(light.infrared));
    expectRow("`SetIRLaserDutioRatio`", text(light.infraredRatio));
    expectRow("`EnableBlueLaser`", onOrOff(light.blueLaser) + ", mode " + text(light.laserMode));
    expectRow("`SetLaserLineDutioRatio`", text(light.laserRatio));
    expectRow("`SetStrobeControlledByTrigger`",
              "route " + text(light.strobeRoute) + ", state " + text(light.strobeState));
    expectRow("`SetStrobeDutioRatio`", text(light.strobeRatios[0]) + ", " +
                                           text(light.strobeRatios[1]) + ", " +
                                           text(light.strobeRatios[2]));
    expectRow("`SetDistanceIndicate`", text(light.distanceIndication));
}

TEST_F(SimulatorDocument, SaysWhereEverythingStands)
{
    expectRow("left speckle camera", placeOf(CameraKind::LeftSpeckle));
    expectRow("right speckle camera", placeOf(CameraKind::RightSpeckle));
    expectRow("color camera", placeOf(CameraKind::Color));
    expectRow("projector, infrared and blue laser", text(Projector::position));
    const Vector center = Scene::center();
    const Vector up = Scene::up();
    expectRow("center of the turntable, which every camera looks at", text(center));
    expectRow(
        "a point above it on the axis of the turntable",
        text(Vector{center.x + 100.0 * up.x, center.y + 100.0 * up.y, center.z + 100.0 * up.z}));
}

TEST_F(SimulatorDocument, SaysWhichWayTheTableTurns)
{
    const Vector right{1.0, 0.0, 0.0};
    const Vector near{0.0, 0.8, -0.6};
    const Vector left{-1.0, 0.0, 0.0};
    for (const auto &[before, after] : {std::pair(right, near), std::pair(near, left)}) {
        const Vector onTheTable = Scene(0.0).toTable(before);
        expectNear(after, Scene(90.0).fromTable(onTheTable));
        expectNear(onTheTable, Scene(90.0).toTable(after));
    }
}

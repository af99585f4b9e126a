// What a host can set. Everything here is read back as it was set.
#ifndef TESSEL3SYNCSIMULATOR_CAPTURESETTINGS_H
#define TESSEL3SYNCSIMULATOR_CAPTURESETTINGS_H

#include <Tessel3SyncSimulator/Control.h>

#include <array>

namespace Tessel3SyncSimulator {

/// Which of the strobe's three ratios lights what, in the library's own order.
enum StrobeRatio { StrobeForSnapshots, StrobeForScans, StrobeForColorScans, StrobeRatioCount };

struct LightSettings
{
    int projection = ProjectorOff;
    int projectorBrightness = 60;
    int projectorRatio = 50;
    bool infrared = false;
    int infraredRatio = 50;
    bool blueLaser = false;
    int laserMode = LaserOneLine;
    int laserRatio = 50;
    int strobeRoute = 0;
    int strobeState = 0;
    std::array<int, StrobeRatioCount> strobeRatios{50, 10, 20};
    int distanceIndication = 0;
};

struct CameraSettings
{
    double exposureUs = 8000.0;
    int gain = 16;
};

struct ConnectedCamera
{
    CameraKind kind;
    CameraSettings settings;
};

} // namespace Tessel3SyncSimulator

#endif

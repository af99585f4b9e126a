#ifndef TESSEL3SYNCSIMULATOR_CALIBRATION_H
#define TESSEL3SYNCSIMULATOR_CALIBRATION_H

#include <Tessel3SyncSimulator/Control.h>

namespace Tessel3SyncSimulator {

/// Where a camera of the scanner stands and how it sees.
Calibration cameraCalibration(CameraKind kind, int width, int height);

} // namespace Tessel3SyncSimulator

#endif

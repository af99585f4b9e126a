#ifndef TESSEL3SYNCSIMULATOR_CALIBRATION_H
#define TESSEL3SYNCSIMULATOR_CALIBRATION_H

#include <Tessel3SyncSimulator/Control.h>

namespace Tessel3SyncSimulator {

/// The calibration of one of the scanner's cameras.
Calibration cameraCalibration(CameraKind kind, int width, int height);

} // namespace Tessel3SyncSimulator

#endif

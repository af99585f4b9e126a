#ifndef SCANNER_PLUGINDEVICES_CAPTURE_H
#define SCANNER_PLUGINDEVICES_CAPTURE_H

#include "Connection.h"
#include "Scan.h"

#include <QtCore/QVariant>

namespace Scanner::PluginDevices {

// A device plug-in has no operation that hands a frame out, so its camera must know these
// properties: "frame" (the next one: "data", "width", "height", "bitDepth", "format", "frame";
// waits up to "timeoutMs"), "trigger" for scans at a period of the host's, and "pixelFormat"
// ("value") for scans in color. All of them get the sensor as "selector".

/// Streams until "frames" frames have arrived from each sensor and returns one map per image,
/// in order of arrival: {"camera", "frame", "width", "height", "bitDepth", "format", "data",
/// "timeMs"}, where "camera" is the sensor, "frame" the camera's own number, from 1, and "timeMs"
/// the time since the scan's start. Besides "frames" (1 to 1000000000) it reads "keep" (true if
/// missing; without it no image is held, and the list is empty), "camera" (one sensor; all of them
/// if missing), "periodMs" (1 to 60000: each frame is triggered; the camera runs freely if
/// missing), "color" (as RGB8; false if missing) and "timeoutMs" (how long to wait for a frame; 10
/// seconds if missing). The camera is left as it was.
///
/// Publishes "frameArrived", "progress" and "scanEnded" on the calling thread. Throws
/// `InvalidParameter` for what cannot be used, `FunctionNotExist` if the device has no camera, the
/// plug-in's own code if it refuses, and `CameraFailed` if it gives no whole image, or the device
/// is closed during the scan.
QVariantList captureScan(Connection &device, const QVariantMap &parameters, const Publish &publish);

/// One frame of each sensor in color; reads "camera" and "timeoutMs". Publishes nothing.
QVariantList captureSnapshot(Connection &device, const QVariantMap &parameters);

} // namespace Scanner::PluginDevices

#endif

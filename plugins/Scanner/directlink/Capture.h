#ifndef SCANNER_CAPTURE_H
#define SCANNER_CAPTURE_H

#include "DirectLink.h"
#include "FrameReceiver.h"
#include "Publish.h"

namespace Scanner {

/// Scans until "frames" frames have arrived and answers with one map an image, in order of arrival.
/// Besides "frames" (1 to 10000) it reads what ScanRequest reads, and "timeoutMs": how long to wait
/// for the next frame, 10 seconds and ten periods if missing. All images are held in memory.
///
/// Publishes "frameArrived" (the maps of one delivery) and "progress" on the calling thread. Throws
/// `InvalidParameter` for what cannot be used, and `CameraFailed` if the scanner refuses, falls
/// silent, is lost or is stopped from elsewhere.
QVariantList captureScan(DirectLink &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish);

} // namespace Scanner

#endif

#ifndef SCANNER_CAPTURE_H
#define SCANNER_CAPTURE_H

#include "DirectLink.h"
#include "FrameReceiver.h"
#include "Publish.h"

namespace Scanner {

/// Scans until "frames" frames (1 to 1000000000) were delivered and answers with one map an image,
/// in order of arrival. Besides it reads what ScanRequest reads; "timeoutMs": how long to wait for
/// the next frame, 10 seconds and ten periods if missing; and "keep": true if missing, which holds
/// all images in memory. Without it the list is empty, and the images of a few frames are held.
///
/// Publishes "frameArrived" (the maps of one delivery), "progress" and "scanEnded" on the calling
/// thread; frames that find eight others waiting for its slots are dropped. Throws
/// `InvalidParameter` for what cannot be used, `ConnectFailed` if the connection was lost before,
/// and `CameraFailed` if the scanner refuses, falls silent, is lost or is stopped from elsewhere.
QVariantList captureScan(DirectLink &link, FrameReceiver &receiver, const QVariantMap &parameters,
                         const Publish &publish);

} // namespace Scanner

#endif

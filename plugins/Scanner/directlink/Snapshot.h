#ifndef SCANNER_SNAPSHOT_H
#define SCANNER_SNAPSHOT_H

#include "DirectLink.h"

#include <QtCore/QVariant>

namespace Scanner {

/// Takes a snapshot with the colour camera and answers with one map for each plane of its sensor,
/// as captureScan does for an image: "camera" is the plane's place, "frame" the library's number.
/// Reads "route", the library's control route (0 to 255; 2, as in a scan, if missing). Throws
/// `InvalidParameter`, or `CameraFailed` if the scanner refuses.
QVariantList captureSnapshot(DirectLink &link, const QVariantMap &parameters);

} // namespace Scanner

#endif

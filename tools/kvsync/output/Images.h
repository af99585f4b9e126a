#ifndef KVSYNC_IMAGES_H
#define KVSYNC_IMAGES_H

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QImage>

namespace KvSyncCli {

/// The picture in a plug-in's image map {"width", "height", "bitDepth", "format", "data"}; the
/// format is a CameraSpace::PixelFormatType, Mono8 if missing. Throws `CameraFailed` if the map
/// holds no whole image of a known format.
QImage imageFrom(const QVariantMap &map);

/// Writes a PNG file, whole or not at all. Throws as writeAtomically does.
void writePng(const QString &path, const QImage &image);

} // namespace KvSyncCli

#endif

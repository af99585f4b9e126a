#ifndef KVSYNC_IMAGEFILES_H
#define KVSYNC_IMAGEFILES_H

#include <QtCore/QDir>
#include <QtCore/QVariant>
#include <QtGui/QImage>

namespace KvSyncCli {

/// Makes the folder if it is missing, and a probe file in it. Throws `PathNotExist` if files cannot
/// be written there: better before a scan than after it.
QDir openOutputFolder(const QString &path);

/// The picture in a plug-in's image map {"width", "height", "bitDepth", "format", "data"}; the
/// format is a CameraSpace::PixelFormatType, Mono8 if missing. Throws `CameraFailed` if the map
/// holds no whole image of a known format.
QImage imageFrom(const QVariantMap &map);

/// Writes a PNG file, whole or not at all. Throws `PathNotExist`.
void writePng(const QString &path, const QImage &image);

} // namespace KvSyncCli

#endif

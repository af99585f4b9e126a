#ifndef KVSYNC_IMAGEFILES_H
#define KVSYNC_IMAGEFILES_H

#include <QtCore/QDir>
#include <QtCore/QVariant>
#include <QtGui/QImage>

namespace KvSyncCli {

/// Makes the folder if it is missing, and a probe file in it. Throws `PathNotExist` if files cannot
/// be written there: better before a scan than after it.
QDir openOutputFolder(const QString &path);

/// The picture in a plug-in's image map {"width", "height", "bitDepth", "data"}. Throws
/// `CameraFailed` if the map holds no whole 8-bit image.
QImage imageFrom(const QVariantMap &map);

/// Writes a PNG file and answers with its path. Throws `PathNotExist`.
QString writePng(const QDir &folder, const QString &name, const QImage &image);

} // namespace KvSyncCli

#endif

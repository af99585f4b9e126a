#include "ImageFiles.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QTemporaryFile>
#include <QtGui/QImageWriter>

#include <cstring>

namespace KvSyncCli {

namespace {

constexpr int usableBitDepth = 8;

[[noreturn]] void raiseUnwritable(const QString &path, const QString &reason)
{
    throw KvSyncTool::Exception(PathNotExist,
                                QStringLiteral("%1 cannot be written: %2").arg(path, reason));
}

} // namespace

QDir openOutputFolder(const QString &path)
{
    const QDir folder(path);
    if (!folder.mkpath(QStringLiteral(".")))
        raiseUnwritable(path, QStringLiteral("the folder cannot be made"));
    QTemporaryFile probe(folder.filePath(QStringLiteral("kvsync-XXXXXX")));
    if (!probe.open())
        raiseUnwritable(path, probe.errorString());
    return folder;
}

QImage imageFrom(const QVariantMap &map)
{
    const int width = map.value(QStringLiteral("width")).toInt();
    const int height = map.value(QStringLiteral("height")).toInt();
    const int bitDepth = map.value(QStringLiteral("bitDepth")).toInt();
    const QByteArray data = map.value(QStringLiteral("data")).toByteArray();
    if (bitDepth != usableBitDepth || width <= 0 || height <= 0 ||
        data.size() != qint64(width) * height)
        throw KvSyncTool::Exception(
            CameraFailed, QStringLiteral("The plug-in gave no whole image: %1 x %2 pixels of %3 "
                                         "bits in %4 bytes")
                              .arg(width)
                              .arg(height)
                              .arg(bitDepth)
                              .arg(data.size()));
    QImage image(width, height, QImage::Format_Grayscale8);
    if (image.isNull())
        throw KvSyncTool::Exception(
            CameraFailed,
            QStringLiteral("No memory for an image of %1 x %2 pixels").arg(width).arg(height));
    for (int row = 0; row < height; ++row)
        std::memcpy(image.scanLine(row), data.constData() + qint64(row) * width,
                    static_cast<std::size_t>(width));
    return image;
}

QString writePng(const QDir &folder, const QString &name, const QImage &image)
{
    QString path = folder.filePath(name);
    QImageWriter writer(path, "png");
    if (!writer.write(image))
        raiseUnwritable(path, writer.errorString());
    return path;
}

} // namespace KvSyncCli

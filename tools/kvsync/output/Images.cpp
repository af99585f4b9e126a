#include "output/Images.h"

#include "output/OutputFiles.h"

#include <KvSyncDevice/CameraInterface.h>
#include <KvSyncTool/Exception.h>
#include <QtCore/QBuffer>
#include <QtCore/QtEndian>
#include <QtGui/QImageWriter>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace KvSyncCli {

namespace {

/// How pixels stand in a plug-in's bytes.
struct Layout
{
    CameraSpace::PixelFormatType format;
    int bitDepth;
    int bytes; ///< of a pixel
    QImage::Format imageFormat;
};

// Noise does not get smaller by compression, and a scan must keep up.
constexpr int uncompressed = 100;

// A Bayer image is shown as the mosaic that it is.
constexpr Layout layouts[] = {
    {CameraSpace::Mono8, 8, 1, QImage::Format_Grayscale8},
    {CameraSpace::Mono10, 10, 2, QImage::Format_Grayscale16},
    {CameraSpace::Mono12, 12, 2, QImage::Format_Grayscale16},
    {CameraSpace::BayerRG8, 8, 1, QImage::Format_Grayscale8},
    {CameraSpace::RGB8, 8, 3, QImage::Format_RGB888},
};

const Layout *findLayout(int format, int bitDepth)
{
    const auto *const found =
        std::find_if(std::begin(layouts), std::end(layouts), [&](const Layout &layout) {
            return layout.format == format && layout.bitDepth == bitDepth;
        });
    return found == std::end(layouts) ? nullptr : found;
}

// PNG has 16 bits where a camera has 10 or 12.
void widen(QImage &image, int bitDepth)
{
    constexpr int fullDepth = 16;
    for (int row = 0; row < image.height(); ++row) {
        auto *const pixels = reinterpret_cast<quint16 *>(image.scanLine(row));
        for (int column = 0; column < image.width(); ++column)
            pixels[column] =
                static_cast<quint16>(qFromLittleEndian(pixels[column]) << (fullDepth - bitDepth));
    }
}

} // namespace

QImage imageFrom(const QVariantMap &map)
{
    const int width = map.value(QStringLiteral("width")).toInt();
    const int height = map.value(QStringLiteral("height")).toInt();
    const int bitDepth = map.value(QStringLiteral("bitDepth")).toInt();
    const QByteArray data = map.value(QStringLiteral("data")).toByteArray();
    const Layout *const layout =
        findLayout(map.value(QStringLiteral("format"), CameraSpace::Mono8).toInt(), bitDepth);
    if (!layout || width <= 0 || height <= 0 ||
        data.size() != qint64(width) * height * layout->bytes)
        throw KvSyncTool::Exception(
            CameraFailed, QStringLiteral("The plug-in gave no whole image: %1 x %2 pixels of %3 "
                                         "bits in %4 bytes")
                              .arg(width)
                              .arg(height)
                              .arg(bitDepth)
                              .arg(data.size()));
    QImage image(width, height, layout->imageFormat);
    if (image.isNull())
        throw KvSyncTool::Exception(
            CameraFailed,
            QStringLiteral("No memory for an image of %1 x %2 pixels").arg(width).arg(height));
    const qint64 rowBytes = qint64(width) * layout->bytes;
    for (int row = 0; row < height; ++row)
        std::memcpy(image.scanLine(row), data.constData() + row * rowBytes,
                    static_cast<std::size_t>(rowBytes));
    if (layout->imageFormat == QImage::Format_Grayscale16)
        widen(image, bitDepth);
    return image;
}

void writePng(const QString &path, const QImage &image)
{
    // By way of memory: the library of the format would tell of a full disk in its own words.
    QBuffer png;
    QImageWriter writer(&png, "png");
    writer.setQuality(uncompressed);
    if (!writer.write(image))
        raiseUnwritable(DeviceOperationFailed, path, writer.errorString());
    writeAtomically(path, [&png](QIODevice &file) { return writeAll(file, png.data()); });
}

} // namespace KvSyncCli

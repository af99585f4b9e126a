#ifndef SCANNER_DIRECTLINK_FRAME_H
#define SCANNER_DIRECTLINK_FRAME_H

#include <QtCore/QByteArray>
#include <QtCore/QVariant>

#include <chrono>
#include <vector>

namespace Scanner::DirectLink {

/// A copy of one camera's image in one delivery.
struct Image
{
    int camera;        ///< from 0
    int frame;         ///< the frame's number, from 1 with each scan
    int width;         ///< pixels
    int height;        ///< pixels
    QByteArray pixels; ///< 8 bits each, row by row; empty if the library gave nothing usable
};

/// What the library delivers at once: one image of each camera.
struct Frame
{
    std::chrono::steady_clock::time_point arrival;
    std::vector<Image> images;

    bool isWhole; ///< has pixels of every camera

    /// That of the first image; 0 without one.
    int number() const { return images.empty() ? 0 : images.front().frame; }
};

/// Copies what the library's callback was given, which arrives now. There is a number for each
/// image; with fewer images nobody knows which of them is missing.
Frame copyFrame(const std::vector<unsigned char *> &images, int width, int height,
                const std::vector<int> &numbers);

/// What a host receives: {"camera", "frame", "width", "height", "bitDepth", "data"}.
QVariantMap imageMap(const Image &image);
/// The same for all images of a frame, with {"timeMs"} from the scan's start to its arrival.
QVariantList imageMaps(const Frame &frame, std::chrono::steady_clock::time_point scanStart);

} // namespace Scanner::DirectLink

#endif

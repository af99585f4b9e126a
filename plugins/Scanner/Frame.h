#ifndef SCANNER_FRAME_H
#define SCANNER_FRAME_H

#include <QtCore/QByteArray>
#include <QtCore/QVariant>

#include <vector>

namespace Scanner {

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
using Frame = std::vector<Image>;

/// Copies what the library's callback was given.
Frame copyFrame(const std::vector<unsigned char *> &images, int width, int height,
                const std::vector<int> &numbers);

/// A copy of `width` x `height` bytes; empty if they cannot be an image.
QByteArray copyPixels(const unsigned char *pixels, int width, int height);

/// What a host receives: {"camera", "frame", "width", "height", "bitDepth", "data"}.
QVariantMap imageMap(const Image &image);
QVariantList imageMaps(const Frame &frame);

/// Frames of one scan by their numbers: what is missing between two of them was lost on the way.
class FrameAccount
{
public:
    /// Numbers begin after `numberBeforeFirst`: what is missing before the first was lost too.
    explicit FrameAccount(int numberBeforeFirst = 0);

    void add(const Frame &frame);
    void add(int number);

    int delivered() const { return deliveredFrames; }
    int dropped() const { return droppedFrames; }

private:
    int lastNumber;
    int deliveredFrames = 0;
    int droppedFrames = 0;
};

/// The payload of "progress": [{"delivered", "dropped", "frames"}].
QVariantList progressOf(const FrameAccount &account, int frames);

} // namespace Scanner

#endif

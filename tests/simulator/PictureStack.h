// Many frames of one unchanging picture: what stays and what is noise.
#ifndef KVSYNC_TESTS_SIMULATOR_PICTURESTACK_H
#define KVSYNC_TESTS_SIMULATOR_PICTURESTACK_H

#include "ScannerFixture.h"

#include <cstddef>
#include <vector>

class PictureStack
{
public:
    /// Takes so many frames of one camera with the settings as they are.
    PictureStack(void *&device, std::size_t frames, std::size_t camera = 0);

    std::size_t size() const { return means.size(); }

    /// Mean grey level of a pixel, and of all the pixels named.
    double mean(std::size_t pixel) const { return means[pixel]; }
    double mean(const std::vector<std::size_t> &pixels) const;

    /// Variance from frame to frame, as a mean over the pixels named.
    double variance(const std::vector<std::size_t> &pixels) const;

    /// What one frame's pixels differ from their means.
    std::vector<double> noise(std::size_t frame) const;

private:
    Images images;
    std::vector<double> means;
};

#endif

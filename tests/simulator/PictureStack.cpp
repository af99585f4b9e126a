#include "PictureStack.h"

PictureStack::PictureStack(void *&device, std::size_t frames, std::size_t camera)
{
    for (Frame &frame : FrameCatcher(device).scan(frames))
        images.push_back(std::move(frame.images[camera]));
    means.resize(images.front().size());
    for (std::size_t i = 0; i < means.size(); ++i) {
        for (const auto &image : images)
            means[i] += image[i];
        means[i] /= static_cast<double>(images.size());
    }
}

double PictureStack::mean(const std::vector<std::size_t> &pixels) const
{
    double sum = 0.0;
    for (std::size_t pixel : pixels)
        sum += means[pixel];
    return sum / static_cast<double>(pixels.size());
}

double PictureStack::variance(const std::vector<std::size_t> &pixels) const
{
    double sum = 0.0;
    for (std::size_t pixel : pixels) {
        for (const auto &image : images)
            sum += (image[pixel] - means[pixel]) * (image[pixel] - means[pixel]);
    }
    return sum / static_cast<double>(pixels.size() * (images.size() - 1));
}

std::vector<double> PictureStack::noise(std::size_t frame) const
{
    std::vector<double> difference(means.size());
    for (std::size_t i = 0; i < means.size(); ++i)
        difference[i] = images[frame][i] - means[i];
    return difference;
}

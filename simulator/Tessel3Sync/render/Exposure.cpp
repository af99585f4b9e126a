#include "render/Exposure.h"

#include "render/Random.h"

#include <algorithm>
#include <cmath>

namespace Tessel3SyncSimulator {

namespace {

// Fixed point of the pictures: 64 steps to a grey level. A signal is cut somewhat above white, and
// low enough for noise to fit on top of it.
constexpr int steps = 64;
constexpr int highestSignal = 281 * steps;
constexpr int highestSpread = 200;
constexpr int highestWeight = 1 << 19;

// A random table long enough for any row to start anywhere in it.
constexpr int noiseStarts = 1 << 16;
constexpr int longestRow = 4096;

using Noise = std::vector<std::int16_t>;

/// Numbers from -60 to 60, bell-shaped, with a standard deviation near 16.
const Noise &noise()
{
    static const Noise &table = *[] {
        auto *values = new Noise(noiseStarts + longestRow);
        for (std::size_t i = 0; i < values->size(); ++i) {
            const std::uint64_t bits = scramble(i);
            int sum = 0;
            for (int part = 0; part < 8; ++part)
                sum += static_cast<int>((bits >> (4 * part)) & 15);
            (*values)[i] = static_cast<std::int16_t>(sum - 60);
        }
        return values;
    }();
    return table;
}

/// How much of a light's power reaches a sensor that sees one colour only.
double share(Light light, Channel channel)
{
    switch (light) {
    case InfraredLight:
        return channel == Brightness ? 1.0 : channel == Red ? 0.4 : 0.05;
    case OneLaserLine:
    case ParallelLaserLines:
    case CrossedLaserLines:
        return channel == Brightness || channel == Blue ? 1.0 : channel == Green ? 0.15 : 0.02;
    default:
        return 1.0;
    }
}

double amplification(const CameraSettings &camera)
{
    return (1.0 + camera.gain / 16.0) / 2.0;
}

std::array<int, LightCount> weights(const LightPowers &powers, Channel channel,
                                    const CameraSettings &camera)
{
    // A full light (255) on white (255) gives its power in grey levels after both shifts by 8.
    const double scale =
        camera.exposureUs / 8000.0 * amplification(camera) * steps * 65536.0 / 65025.0;
    std::array<int, LightCount> weights{};
    for (int i = 0; i < LightCount; ++i) {
        const double weight = powers[i] * share(static_cast<Light>(i), channel) * scale;
        weights[i] = static_cast<int>(std::min<double>(weight + 0.5, highestWeight));
    }
    return weights;
}

/// Noise of the light itself and of the sensor, for every grey level.
std::vector<std::int16_t> spreads(const CameraSettings &camera)
{
    const double gain = amplification(camera);
    std::vector<std::int16_t> spreads(highestSignal / steps + 1);
    // The highest stays 0: a sensor that is full reads full.
    for (std::size_t level = 0; level + 1 < spreads.size(); ++level) {
        const double greys =
            std::sqrt(0.02 * gain * static_cast<double>(level) + 0.6 * gain * gain);
        spreads[level] =
            static_cast<std::int16_t>(std::min<double>(4.0 * greys + 0.5, highestSpread));
    }
    return spreads;
}

} // namespace

LightPowers lightPowers(const LightSettings &settings, Purpose purpose)
{
    LightPowers powers{};
    powers[AmbientLight] = 9.0;

    const double projector =
        330.0 * settings.projectorBrightness * settings.projectorRatio / 3000.0;
    if (settings.projection == ProjectorFlat)
        powers[FlatLight] = projector * 0.6;
    if (settings.projection == ProjectorSpeckle)
        powers[SpeckleLight] = projector;
    if (settings.projection == ProjectorStripes)
        powers[StripeLight] = projector;

    const StrobeRatio which = purpose == Purpose::Snapshot    ? StrobeForSnapshots
                              : purpose == Purpose::ColorScan ? StrobeForColorScans
                                                              : StrobeForScans;
    if (settings.strobeRoute != 0 && settings.strobeState != 0)
        powers[StrobeLight] = 4.0 * settings.strobeRatios[which];
    if (settings.infrared)
        powers[InfraredLight] = 2.4 * settings.infraredRatio;
    if (settings.blueLaser)
        powers[OneLaserLine + settings.laserMode] = 12.0 * settings.laserRatio;
    return powers;
}

Exposure::Exposure(std::shared_ptr<const View> seen, Channel seenIn, const LightPowers &lights,
                   const CameraSettings &settings)
    : view(std::move(seen))
    , channel(seenIn)
    , powers(lights)
    , camera(settings)
    , signal(view->depths.size())
    , spread(view->depths.size())
{
    const auto weight = weights(powers, channel, camera);
    std::vector<int> sum(signal.size());
    for (int i = 0; i < LightCount; ++i) {
        if (weight[i] == 0)
            continue;
        const View::Plane &light = view->light[i];
        for (std::size_t pixel = 0; pixel < sum.size(); ++pixel)
            sum[pixel] += light[pixel] * weight[i];
    }
    const auto spreadAt = spreads(camera);
    const View::Plane &reflectance = view->reflectance[channel];
    for (std::size_t pixel = 0; pixel < sum.size(); ++pixel) {
        const int value = std::min((sum[pixel] >> 8) * reflectance[pixel] >> 8, highestSignal);
        signal[pixel] = static_cast<std::int16_t>(value);
        spread[pixel] = spreadAt[static_cast<std::size_t>(value / steps)];
    }
}

bool Exposure::shows(const View *otherView, Channel otherChannel, const LightPowers &otherPowers,
                     const CameraSettings &otherCamera) const
{
    // Settings are compared, not computed values: equal means exactly as set.
    return view.get() == otherView && channel == otherChannel && powers == otherPowers &&
           camera.gain == otherCamera.gain && !(camera.exposureUs < otherCamera.exposureUs) &&
           !(otherCamera.exposureUs < camera.exposureUs);
}

void Exposure::read(int frame, unsigned char *pixels) const
{
    const int width = view->key.width;
    const auto picture = static_cast<std::uint64_t>(view->key.camera) * ChannelCount + channel;
    for (int y = 0; y < view->key.height; ++y) {
        const std::uint64_t start =
            scramble(view->key.seed, picture, static_cast<std::uint32_t>(frame),
                     static_cast<std::uint32_t>(y)) %
            noiseStarts;
        const std::size_t first = static_cast<std::size_t>(y) * width;
        const std::int16_t *bright = signal.data() + first;
        const std::int16_t *grain = spread.data() + first;
        const std::int16_t *random = noise().data() + start;
        unsigned char *out = pixels + first;
        for (int x = 0; x < width; ++x) {
            const auto noisy = static_cast<std::int16_t>(bright[x] + random[x] * grain[x]);
            const int level = noisy >> 6;
            out[x] = static_cast<unsigned char>(level < 0 ? 0 : level > 255 ? 255 : level);
        }
    }
}

} // namespace Tessel3SyncSimulator

#include "render/Exposure.h"

#include "render/Noise.h"
#include "render/Random.h"

#include <algorithm>
#include <cmath>

namespace Tessel3SyncSimulator {

namespace {

// Pictures are kept in 64ths of a gray level. Levels are counted from the middle of the 8 bits, so
// that the strongest noise on top of the strongest signal still fits into 16 bits.
constexpr int steps = 64;
constexpr int middle = 128 * steps;

// A signal beyond this fills the sensor, whose pixel then reads white whatever the noise.
constexpr int fullSignal = 376 * steps;

// Added to every signal. The half gray level makes cutting to whole ones a rounding. Cutting loses
// half a step twice, of the noise and in rounding up from the middle: with opposite signs.
constexpr int pedestal = BlackLevel * steps + steps / 2 - middle;

constexpr int highestSpread = 32767;
static_assert(fullSignal + pedestal + ((Noise::largest * highestSpread) >> 16) <= 32767);
static_assert(pedestal - ((Noise::largest * highestSpread) >> 16) - 1 >= -32768);

/// How much of a light's power reaches a sensor that sees one color only.
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

/// Steps for each unit of a light's plane on each unit of reflectance.
std::array<float, LightCount> weights(const LightPowers &powers, Channel channel,
                                      const CameraSettings &camera)
{
    const double unit = steps * amplification(camera.gain) * camera.exposureUs / 8000.0 /
                        (View::fullLight * View::fullReflectance);
    std::array<float, LightCount> weights{};
    for (int i = 0; i < LightCount; ++i)
        weights[i] = static_cast<float>(powers[i] * share(static_cast<Light>(i), channel) * unit);
    return weights;
}

/// Turns light into levels and into the spread of their noise.
class Sensor
{
public:
    explicit Sensor(int gain)
    {
        // The rounding to whole gray levels comes by itself; the rest goes through Noise's numbers.
        const double scale = steps * steps * 65536.0 * 65536.0 / Noise::variance;
        dark = static_cast<float>((noiseVariance(0.0, gain) - 1.0 / 12.0) * scale);
        perStep = static_cast<float>((noiseVariance(1.0, gain) - noiseVariance(0.0, gain)) * scale /
                                     steps);
    }

    void convert(const float *light, const std::uint8_t *reflectance, std::size_t count,
                 std::int16_t *levels, std::int16_t *spreads) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            const float thrownBack = light[i] * static_cast<float>(reflectance[i]);
            const float signal = std::min<float>(thrownBack, fullSignal);
            const float spread = std::min<float>(std::sqrt(dark + perStep * signal), highestSpread);
            const float raised = signal + 0.5F;
            levels[i] = static_cast<std::int16_t>(static_cast<int>(raised) + pedestal);
            const float raisedSpread = signal < fullSignal ? spread + 0.5F : 0.0F;
            spreads[i] = static_cast<std::int16_t>(raisedSpread);
        }
    }

private:
    float dark;
    float perStep; ///< of the signal
};

/// All in 16 bits, which is what makes it quick.
unsigned char pixelValue(std::int16_t level, std::int16_t spread, std::int16_t noise)
{
    const auto grain = static_cast<std::int16_t>((noise * spread) >> 16);
    const auto noisy = static_cast<std::int16_t>(level + grain);
    const auto notBlack = std::max<std::int16_t>(noisy, -middle);
    const auto inRange = std::min<std::int16_t>(notBlack, middle - 1);
    return static_cast<unsigned char>((inRange >> 6) + 128);
}

/// Reads up to a block of pixels.
void readPixels(const std::int16_t *levels, const std::int16_t *spreads, Noise &noise,
                std::size_t count, unsigned char *pixels)
{
    Noise::Block grain;
    noise.fill(grain);
    for (std::size_t i = 0; i < count; ++i)
        pixels[i] = pixelValue(levels[i], spreads[i], grain[i]);
}

} // namespace

LightPowers lightPowers(const LightSettings &settings, Purpose purpose)
{
    LightPowers powers{};
    powers[AmbientLight] = 6.0;

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
    , levels(view->depths.size())
    , spreads(view->depths.size())
{
    const auto weight = weights(powers, channel, camera);
    const Sensor sensor(camera.gain);
    constexpr std::size_t piece = 4096; // stays in the processor's cache
    std::vector<float> light(piece);
    for (std::size_t first = 0; first < levels.size(); first += piece) {
        const std::size_t count = std::min(piece, levels.size() - first);
        std::fill(light.begin(), light.end(), 0.0F);
        for (int i = 0; i < LightCount; ++i) {
            const std::uint16_t *plane = view->light[i].data() + first;
            for (std::size_t pixel = 0; weight[i] > 0.0F && pixel < count; ++pixel)
                light[pixel] += weight[i] * static_cast<float>(plane[pixel]);
        }
        sensor.convert(light.data(), view->reflectance[channel].data() + first, count,
                       levels.data() + first, spreads.data() + first);
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
    const auto picture = static_cast<std::uint64_t>(view->key.camera) * ChannelCount + channel;
    Noise noise(hash(view->key.seed, picture, static_cast<std::uint32_t>(frame)));
    for (std::size_t first = 0; first < levels.size(); first += Noise::blockSize) {
        const std::size_t count = std::min(Noise::blockSize, levels.size() - first);
        readPixels(levels.data() + first, spreads.data() + first, noise, count, pixels + first);
    }
}

} // namespace Tessel3SyncSimulator

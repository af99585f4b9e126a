// How light becomes grey levels, and the noise of that.
#include "PictureStack.h"
#include "PictureTools.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_set>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

class Sensor : public Scanner
{
protected:
    static constexpr int beginningGain = 16;

    Sensor() { begin(smallSetup()); }

    void begin(const ScannerSetup &setup)
    {
        reset(setup);
        connect();
        Project(device, static_cast<PROJECTWORKTYPES>(ProjectorFlat));
        SetProjectorBrightness(device, 100);
        SetProjectDutioRatio(device, 100);
    }

    PictureStack stack(double exposureUs, int gain, std::size_t frames)
    {
        EXPECT_EQ(Ok, SetCameraExposureAndGain(device, 0, exposureUs, gain));
        return {device, frames};
    }

    /// Looks for pixels of about one brightness, and learns how bright they become.
    void findPatch()
    {
        constexpr double exposureUs = 2000.0;
        const PictureStack reference = stack(exposureUs, beginningGain, 16);
        std::vector<double> means(reference.size());
        for (std::size_t i = 0; i < means.size(); ++i)
            means[i] = reference.mean(i);
        std::sort(means.begin(), means.end());
        const double bright = means[means.size() * 95 / 100];
        for (std::size_t i = 0; i < means.size(); ++i) {
            if (std::abs(reference.mean(i) - bright) < 0.1 * bright)
                patch.push_back(i);
        }
        signalPerUs = (reference.mean(patch) - BlackLevel) / exposureUs;
    }

    std::vector<std::size_t> patch;
    double signalPerUs = 0.0; ///< grey levels above black, at the gain of the beginning
};

TEST_F(Sensor, WithoutLightThePixelsReadTheBlackLevel)
{
    Project(device, PROJECTWORKTYPES_OFF);
    for (int gain : {0, beginningGain, 48}) {
        const PictureStack dark = stack(MinimumExposureUs, gain, 8);
        std::vector<std::size_t> all(dark.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = i;
        EXPECT_NEAR(BlackLevel, dark.mean(all), 0.02) << gain;
        EXPECT_NEAR(noiseVariance(0.0, gain), dark.variance(all), 0.06 * noiseVariance(0.0, gain));
    }
}

TEST_F(Sensor, TheSignalIsProportionalToTheExposureUpToSaturation)
{
    findPatch();
    ASSERT_GT(patch.size(), 2000u);
    for (double exposure : {100.0, 150.0, 250.0, 400.0, 700.0, 1200.0, 2000.0, 3000.0}) {
        const double signal = stack(exposure, beginningGain, 16).mean(patch) - BlackLevel;
        EXPECT_NEAR(1.0, signal / (signalPerUs * exposure), 0.005) << exposure;
    }
    const double full = 225.0 / signalPerUs;
    const double signal = stack(full, beginningGain, 16).mean(patch) - BlackLevel;
    EXPECT_NEAR(225.0, signal, 0.005 * 225.0);
}

TEST_F(Sensor, TheSignalIsProportionalToTheGain)
{
    findPatch();
    for (int gain : {0, 5, 32, 144, 1000}) {
        const double exposure = 100.0 / signalPerUs / amplification(gain);
        const double signal = stack(exposure, gain, 16).mean(patch) - BlackLevel;
        EXPECT_NEAR(100.0, signal, 0.5) << gain;
    }
}

TEST_F(Sensor, TheNoiseIsAsStatedAtTwentyLevels)
{
    findPatch();
    for (int gain : {0, beginningGain, 48}) {
        for (int level = 1; level <= 20; ++level) {
            const double exposure = 11.0 * level / signalPerUs / amplification(gain);
            const PictureStack pictures = stack(exposure, gain, 12);
            const double signal = pictures.mean(patch) - BlackLevel;
            const double measured = std::sqrt(pictures.variance(patch));
            const double stated = std::sqrt(noiseVariance(signal, gain));
            EXPECT_NEAR(1.0, measured / stated, 0.03) << signal << " at gain " << gain;
        }
    }
}

TEST_F(Sensor, IsFullAt255AfterExposureAndGain)
{
    for (int gain : {0, MaximumGain}) {
        const PictureStack white = stack(MaximumExposureUs, gain, 2);
        std::size_t full = 0;
        for (std::size_t i = 0; i < white.size(); ++i)
            full += white.mean(i) > 254.999;
        // All but what lies in the shadow, at the lower gain.
        EXPECT_GT(full, gain == 0 ? white.size() * 9 / 10 : white.size() - 1);
    }
}

/// One frame's noise, strong enough for its signs to survive the rounding to grey levels.
class SensorNoise : public Sensor
{
protected:
    static constexpr std::size_t width = 320;
    static constexpr std::size_t height = 256;

    SensorNoise()
    {
        ScannerSetup setup = smallSetup();
        setup.width = width;
        setup.height = height;
        begin(setup);
    }

    PictureStack strongNoise(std::size_t camera = 0)
    {
        for (int i : {0, 1})
            EXPECT_EQ(Ok, SetCameraExposureAndGain(device, i, 200.0, 144));
        return {device, 16, camera};
    }

    static double correlationOf(const double *one, const double *other, std::size_t length)
    {
        std::vector<std::pair<double, double>> pairs(length);
        for (std::size_t i = 0; i < length; ++i)
            pairs[i] = {one[i], other[i]};
        return correlation(pairs);
    }
};

TEST_F(SensorNoise, NoTwoRowsOfAFrameAreAlike)
{
    const auto noise = strongNoise().noise(3);
    double highest = 0.0;
    for (std::size_t row = 0; row < height; ++row) {
        for (std::size_t other = row + 1; other < height; ++other) {
            const double *one = &noise[row * width];
            highest = std::max(highest, std::abs(correlationOf(one, &noise[other * width], width)));
        }
    }
    // Chance makes about a quarter of it among so many pairs.
    EXPECT_LT(highest, 0.4);
}

TEST_F(SensorNoise, NoPartOfAFrameRepeatsAnywhereElse)
{
    const auto noise = strongNoise().noise(3);
    constexpr std::size_t length = 48;
    std::unordered_set<std::uint64_t> seen;
    std::uint64_t signs = 0;
    for (std::size_t i = 0; i < noise.size(); ++i) {
        signs = ((signs << 1) | (noise[i] > 0.0 ? 1u : 0u)) & ((std::uint64_t{1} << length) - 1);
        const bool isNew = i + 1 < length || seen.insert(signs).second;
        EXPECT_TRUE(isNew) << "ends at " << i;
    }
}

TEST_F(SensorNoise, NeighboursAndRowsAreUncorrelated)
{
    const auto noise = strongNoise().noise(3);
    // A row and a half of neighbours would take long; those near are where a correlation would be.
    for (std::size_t shift = 1; shift <= width + 2; shift += shift == 80 ? width - 82 : 1) {
        const double alike = correlationOf(noise.data(), &noise[shift], noise.size() - shift);
        EXPECT_LT(std::abs(alike), 0.025) << shift;
    }
}

TEST_F(SensorNoise, FramesAndCamerasAreUncorrelated)
{
    const PictureStack left = strongNoise(0);
    const PictureStack right = strongNoise(1);
    const auto one = left.noise(0);
    const auto other = left.noise(1);
    const auto rightOne = right.noise(0);
    // Frames of one stack share their mean, which makes a sixteenth.
    EXPECT_NEAR(-1.0 / 16.0, correlationOf(one.data(), other.data(), one.size()), 0.025);
    EXPECT_LT(std::abs(correlationOf(one.data(), rightOne.data(), one.size())), 0.025);
}

TEST_F(SensorNoise, IsBellShaped)
{
    const auto noise = strongNoise().noise(3);
    double square = 0.0;
    double fourth = 0.0;
    for (double value : noise) {
        square += value * value / static_cast<double>(noise.size());
        fourth += value * value * value * value / static_cast<double>(noise.size());
    }
    // 3 for a normal distribution, 1.8 for an even one.
    EXPECT_NEAR(2.9, fourth / (square * square), 0.3);
}

// The randomness of a picture's noise: one nearly normally distributed number for each pixel.
#ifndef TESSEL3SYNCSIMULATOR_NOISE_H
#define TESSEL3SYNCSIMULATOR_NOISE_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace Tessel3SyncSimulator {

/// One stream of numbers. Eight generators run side by side, and all loops run over arrays of fixed
/// length, so that compilers vectorize them.
class Noise
{
public:
    static constexpr std::size_t blockSize = 64;
    using Block = std::array<std::int16_t, blockSize>;

    /// Integers from -largest to largest, whose mean is 0 and whose variance is exactly `variance`.
    static constexpr int largest = 8 * 4095;
    static constexpr double variance = 8.0 * (4096.0 * 4096.0 - 1.0) / 3.0;

    explicit Noise(std::uint64_t seed);

    void fill(Block &values);

private:
    static constexpr std::size_t lanes = 8;
    using Words = std::array<std::array<std::uint32_t, lanes>, 4>;

    void advance();

    Words state;
};

} // namespace Tessel3SyncSimulator

#endif

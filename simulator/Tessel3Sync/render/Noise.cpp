#include "render/Noise.h"

#include "render/Random.h"

#include <cstring>

namespace Tessel3SyncSimulator {

namespace {

std::uint32_t xorshift(std::uint32_t oldest, std::uint32_t newest)
{
    const std::uint32_t mixed = oldest ^ (oldest << 11);
    return newest ^ (newest >> 19) ^ mixed ^ (mixed >> 8);
}

} // namespace

Noise::Noise(std::uint64_t seed)
    : state()
{
    std::uint64_t count = 0;
    for (auto &words : state) {
        // Odd, since a generator whose words are all 0 would stay there.
        for (std::uint32_t &word : words)
            word = static_cast<std::uint32_t>(hash(seed, count++)) | 1;
    }
}

/// Four steps of Marsaglia's xorshift of 128 bits, in every lane: each word is made anew.
void Noise::advance()
{
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        const std::uint32_t first = xorshift(state[0][lane], state[3][lane]);
        const std::uint32_t second = xorshift(state[1][lane], first);
        const std::uint32_t third = xorshift(state[2][lane], second);
        const std::uint32_t fourth = xorshift(state[3][lane], third);
        state[0][lane] = first;
        state[1][lane] = second;
        state[2][lane] = third;
        state[3][lane] = fourth;
    }
}

void Noise::fill(Block &values)
{
    static_assert(sizeof(Words) == sizeof(Block));
    advance();
    std::memcpy(values.data(), state.data(), sizeof(Block));

    // Odd numbers from -4095 to 4095, all equally likely.
    for (std::int16_t &value : values)
        value = static_cast<std::int16_t>((value >> 3) | 1);

    // Sums of eight of them, with all the signs of a Walsh-Hadamard transform: as bell-shaped as
    // the sum of eight numbers is, at the price of one number and three additions, and without
    // any correlation among them.
    for (std::size_t stride = blockSize / 2; stride >= blockSize / 8; stride /= 2) {
        for (std::size_t group = 0; group < blockSize; group += 2 * stride) {
            for (std::size_t i = group; i < group + stride; ++i) {
                const int a = values[i];
                const int b = values[i + stride];
                values[i] = static_cast<std::int16_t>(a + b);
                values[i + stride] = static_cast<std::int16_t>(a - b);
            }
        }
    }
}

} // namespace Tessel3SyncSimulator

// Seeded numbers: pure functions of their arguments, the same on every system.
#ifndef TESSEL3SYNCSIMULATOR_RANDOM_H
#define TESSEL3SYNCSIMULATOR_RANDOM_H

#include <cstdint>

namespace Tessel3SyncSimulator {

/// Spreads the bits of a number over the whole word.
constexpr std::uint64_t hash(std::uint64_t value)
{
    value ^= value >> 32;
    value *= 0xd6e8feb86659fd93u;
    value ^= value >> 32;
    value *= 0xd6e8feb86659fd93u;
    value ^= value >> 32;
    return value;
}

template <typename... More>
constexpr std::uint64_t hash(std::uint64_t first, std::uint64_t second, More... more)
{
    return hash(hash(first) * 0x9e3779b97f4a7c15u + second + 1, more...);
}

/// The `part`-th 16 bits of a hashed number, as a number from 0 to below 1.
constexpr double fraction(std::uint64_t hashed, int part)
{
    return static_cast<double>((hashed >> (16 * part)) & 0xffff) / 65536.0;
}

} // namespace Tessel3SyncSimulator

#endif

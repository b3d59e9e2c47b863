#include "VornicCore/keys/KeyDifference.h"

#include "VornicCore/base/SplitMix64.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic::KeyDifference {

namespace {

constexpr double deviationDb = 2.4;
constexpr double furthestDb = 6.0;
// So that a key's level says nothing about its colour.
constexpr std::uint64_t levelSeed = 0x4c65766c;
constexpr std::uint64_t colorSeed = 0x436f6c72;

SplitMix64 drawsOf(std::int64_t keyCode, std::uint64_t seed) {
    return SplitMix64((static_cast<std::uint64_t>(keyCode) << 32U) ^ seed);
}

} // namespace

double levelDb(std::int64_t keyCode) {
    SplitMix64 draws = drawsOf(keyCode, levelSeed);
    // Box and Muller's transform; 1 - u, since the logarithm of 0 is none.
    const double radius = std::sqrt(-2.0 * std::log(1.0 - draws.uniform(0.0, 0.999999)));
    const double normal = radius * std::cos(2.0 * std::numbers::pi * draws.uniform(0.0, 1.0));
    return std::clamp(deviationDb * normal, -furthestDb, furthestDb);
}

std::size_t variation(std::int64_t keyCode, double amount, double chance, std::size_t pick,
                      std::size_t count) {
    if (!(chance < amount)) {
        return pick;
    }
    const std::size_t own = (count + 3) / 4;
    const auto first = static_cast<std::size_t>(drawsOf(keyCode, colorSeed).next(count));
    return (first + pick % own) % count;
}

} // namespace vornic::KeyDifference

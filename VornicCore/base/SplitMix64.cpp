#include "VornicCore/base/SplitMix64.h"

#include "VornicCore/realtime/Fatal.h"

#include <cmath>

namespace vornic {

namespace {

__extension__ using UInt128 = unsigned __int128;

struct Product {
    std::uint64_t high, low;
};

Product multiply(std::uint64_t a, std::uint64_t b) noexcept {
    const UInt128 product = UInt128{a} * b;
    return {.high = static_cast<std::uint64_t>(product >> 64),
            .low = static_cast<std::uint64_t>(product)};
}

} // namespace

std::uint64_t SplitMix64::next() noexcept {
    state += 0x9e3779b97f4a7c15;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return z ^ (z >> 31);
}

std::uint64_t SplitMix64::next(std::uint64_t upperBound) noexcept {
    require(upperBound > 0, "random draw below an upper bound of 0");
    // Lemire's multiply-and-reject: the high word is the draw. Of the 2^64 low words, the first
    // 2^64 mod bound would favour some draws, so they are drawn again; the remainder's division is
    // only needed when the low word is below the bound at all.
    Product product = multiply(next(), upperBound);
    if (product.low < upperBound) {
        const std::uint64_t surplus = (0 - upperBound) % upperBound;
        while (product.low < surplus) {
            product = multiply(next(), upperBound);
        }
    }
    return product.high;
}

double SplitMix64::uniform(double lower, double upper) noexcept {
    const double distance = upper - lower;
    require(lower <= upper && std::isfinite(distance), "random draw from an impossible range");
    // One step more than the 53 bits of a double, so that the upper end can be drawn as well.
    constexpr std::uint64_t steps = std::uint64_t{1} << 53;
    const std::uint64_t step = next(steps + 1);
    if (step == steps) {
        return upper;
    }
    return lower + distance * (static_cast<double>(step) * 0x1p-53);
}

} // namespace vornic

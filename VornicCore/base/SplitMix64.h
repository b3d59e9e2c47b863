#pragma once

#include <cstdint>
#include <limits>

namespace vornic {

/// Sebastiano Vigna's SplitMix64 generator: equal seeds give equal sequences on every machine.
/// Draw with the members below: the standard library's distributions differ between libraries.
/// Thread: any.
struct SplitMix64 {
    std::uint64_t state;

    explicit constexpr SplitMix64(std::uint64_t seed) noexcept : state(seed) {}

    /// The next 64 random bits.
    std::uint64_t next() noexcept;

    /// A whole number below `upperBound`, each equally likely. A bound of 0 is fatal.
    std::uint64_t next(std::uint64_t upperBound) noexcept;

    /// A number from `lower` to `upper`, both included. Fatal unless lower <= upper and their
    /// distance is finite.
    double uniform(double lower, double upper) noexcept;

    // What the language's uniform random bit generator asks for.
    using result_type = std::uint64_t;
    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }
    result_type operator()() noexcept { return next(); }

    bool operator==(const SplitMix64&) const = default;
};

} // namespace vornic

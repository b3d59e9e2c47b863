#pragma once

#include <cstddef>
#include <cstdint>

namespace vornic::packs {

/// The normal distribution's quantile function, to 1e-6; `probability` is kept from 0.02 to 0.98,
/// so that no stroke falls out of its class.
double normalQuantile(double probability);

/// A whole number that depends on all three.
std::uint64_t mixed(std::uint64_t a, std::uint64_t b, std::uint64_t c = 0);

/// What is drawn for one stroke out of `count`. Each variable is spread evenly over its
/// distribution: 26 strokes hold 26 equally likely parts of it, in an order of its own (a latin
/// hypercube). A few strokes so have the median and the spread of many.
class Draws {
  public:
    Draws(std::uint64_t seed, std::size_t index, std::size_t count)
        : seed_(seed), index_(index), count_(count) {}

    /// From 0 to 1.
    double even(std::uint64_t variable) const;
    /// With mean 0 and standard deviation 1.
    double normal(std::uint64_t variable) const;

  private:
    std::uint64_t seed_;
    std::size_t index_;
    std::size_t count_;
};

} // namespace vornic::packs

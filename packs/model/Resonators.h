#pragma once

#include "VornicCore/base/SplitMix64.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vornic::packs {

/// The force that the hits of a stroke put on the resonances of one band.
class Drive {
  public:
    /// For resonances about `hz`; `seed` decides how contacts scatter.
    Drive(std::size_t length, double hz, std::uint64_t seed);

    /// A hit: a few contacts within `contactMs`, the first the strongest, which give a
    /// lossless band `energy` together.
    void strike(double ms, double energy, double contactMs);

    /// The same energy scattered over `ms` to `ms + overMs`, as it comes back from case, desk and
    /// room.
    void spread(double ms, double energy, double overMs);

    /// The same energy as a rain of small impulses that thins out with amplitude time constant
    /// `decayMs`: more resonances than could be told apart.
    void rain(double ms, double energy, double decayMs);

    /// The same energy as noise until `ms` whose power grows evenly over `overMs`: friction of a
    /// part that, pushed by a steady force, gains speed evenly.
    void rise(double ms, double energy, double overMs);

    const std::vector<double>& force() const { return force_; }
    /// The first sample that may differ from 0.
    std::size_t first() const { return first_; }
    /// Behind the last one.
    std::size_t end() const { return end_; }

  private:
    /// Nearly two periods of a windowed sine: what a short contact is within the band, without the
    /// push at lower frequencies that would leak into other bands. Its strongest moment comes
    /// 0.4 ms late at most, as far as that lets it begin 3.5 ms early: a slow push begins
    /// before the quick contact.
    void pulse(double ms, double amplitude);

    SplitMix64 random_;
    double hz_;
    double turn_;       // radians a sample
    double halfLength_; // of a pulse, in samples
    double norm_;
    std::size_t first_;
    std::size_t end_ = 0;
    std::vector<double> force_;
};

/// Adds to `samples` a resonance at `hz` with amplitude time constant `decayMs` that takes
/// `energy` from each unit of the drive's.
void ring(const Drive& drive, double hz, double decayMs, double energy, double sign,
          std::vector<double>& samples);

} // namespace vornic::packs

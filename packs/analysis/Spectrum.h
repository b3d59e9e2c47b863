#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <span>
#include <vector>

/// Spectra of short cuts of a stroke, 48 kHz mono.
namespace vornic::packs {

inline constexpr std::size_t bandCount = 21;

/// Centres of the third-octave bands in Hz, 125 to 12 699.
inline constexpr std::array<double, bandCount> bandCentres{
    125,  157,  198,  250,  315,  397,  500,  630,  794,   1000, 1260,
    1587, 2000, 2520, 3175, 4000, 5040, 6350, 8000, 10079, 12699};

/// One number a third-octave band.
using Bands = std::array<double, bandCount>;

/// The discrete Fourier transform of `values`, in place; inverse without the division. Their count
/// must be a power of two, 32 768 at most.
void fourier(std::vector<std::complex<double>>& values, bool inverse = false);

/// The power spectrum of `samples` from `fromMs` to `toMs` after `onset` (what lies outside counts
/// as silence), with edges of `edgeMs` that make adjoining cuts add up to the whole. The first half
/// of a transform of `size` points, scaled so that its sum is the energy of the cut.
std::vector<double> powerSpectrum(std::span<const float> samples, std::size_t onset, double fromMs,
                                  double toMs, double edgeMs, std::size_t size);

/// The sum of a power spectrum of `2 * spectrum.size()` points from `fromHz` to `toHz`, counting
/// the bins at its ends by the part that lies within.
double powerBetween(std::span<const double> spectrum, double fromHz, double toHz);

/// The energy in each third-octave band.
Bands bandPowers(std::span<const double> spectrum);

} // namespace vornic::packs

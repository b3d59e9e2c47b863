#include "packs/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic::packs {

namespace {

constexpr double sampleRate = 48000;
constexpr std::size_t largest = 32768; // of all transforms

std::vector<std::complex<double>> makeTurns() {
    std::vector<std::complex<double>> turns(largest / 2);
    for (std::size_t k = 0; k < turns.size(); ++k) {
        const double angle =
            -2 * std::numbers::pi * static_cast<double>(k) / static_cast<double>(largest);
        turns[k] = {std::cos(angle), std::sin(angle)};
    }
    return turns;
}

// 0 to 1 over `edge` samples around `middle`; squares of the rise and of the mirrored fall add up
// to 1, so that two adjoining cuts share the energy between them.
double rise(double at, double middle, double edge) {
    const double phase = std::clamp((at - middle) / edge + 0.5, 0.0, 1.0);
    return std::sin(phase * std::numbers::pi / 2);
}

} // namespace

void fourier(std::vector<std::complex<double>>& values, bool inverse) {
    const std::size_t size = values.size();
    for (std::size_t i = 1, j = 0; i < size; ++i) {
        std::size_t bit = size / 2;
        for (; (j & bit) != 0; bit /= 2) {
            j ^= bit;
        }
        j ^= bit;
        if (i < j) {
            std::swap(values[i], values[j]);
        }
    }
    static const std::vector<std::complex<double>> turns = makeTurns();
    for (std::size_t half = 1; half < size; half *= 2) {
        const std::size_t stride = turns.size() / half;
        for (std::size_t start = 0; start < size; start += 2 * half) {
            for (std::size_t k = 0; k < half; ++k) {
                const std::complex<double> turn = turns[k * stride];
                const std::complex<double> value = values[start + half + k];
                const double imaginary = inverse ? -turn.imag() : turn.imag();
                // Written out: the library's product looks for infinities.
                const std::complex<double> odd(
                    value.real() * turn.real() - value.imag() * imaginary,
                    value.real() * imaginary + value.imag() * turn.real());
                values[start + half + k] = values[start + k] - odd;
                values[start + k] += odd;
            }
        }
    }
}

std::vector<double> powerSpectrum(std::span<const float> samples, std::size_t onset, double fromMs,
                                  double toMs, double edgeMs, std::size_t size) {
    const double from = static_cast<double>(onset) + fromMs * sampleRate / 1000;
    const double to = static_cast<double>(onset) + toMs * sampleRate / 1000;
    const double edge = edgeMs * sampleRate / 1000;
    std::vector<std::complex<double>> values(size);
    const auto first = static_cast<std::ptrdiff_t>(std::floor(from - edge / 2));
    for (std::size_t i = 0; i < size; ++i) {
        const std::ptrdiff_t index = first + static_cast<std::ptrdiff_t>(i);
        const auto at = static_cast<double>(index);
        if (at > to + edge / 2) {
            break;
        }
        if (index >= 0 && index < std::ssize(samples)) {
            const double weight = rise(at, from, edge) * rise(-at, -to, edge);
            values[i] = weight * static_cast<double>(samples[static_cast<std::size_t>(index)]);
        }
    }
    fourier(values);
    std::vector<double> spectrum(size / 2);
    std::transform(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(size / 2),
                   spectrum.begin(), [&](const std::complex<double>& value) {
                       return 2 * std::norm(value) / static_cast<double>(size);
                   });
    return spectrum;
}

double powerBetween(std::span<const double> spectrum, double fromHz, double toHz) {
    const double width = sampleRate / 2 / static_cast<double>(spectrum.size());
    const double from = std::max(fromHz / width + 0.5, 0.0);
    const double to = std::min(toHz / width + 0.5, static_cast<double>(spectrum.size()));
    double sum = 0;
    for (auto bin = static_cast<std::size_t>(from); static_cast<double>(bin) < to; ++bin) {
        const double left = std::max(from, static_cast<double>(bin));
        const double right = std::min(to, static_cast<double>(bin) + 1);
        sum += spectrum[bin] * (right - left);
    }
    return sum;
}

Bands bandPowers(std::span<const double> spectrum) {
    Bands powers{};
    const double half = std::pow(2.0, 1.0 / 6);
    std::ranges::transform(bandCentres, powers.begin(), [&](double centre) {
        return powerBetween(spectrum, centre / half, centre * half);
    });
    return powers;
}

} // namespace vornic::packs

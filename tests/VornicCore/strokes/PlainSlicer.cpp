#include "tests/VornicCore/strokes/PlainSlicer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace vornic {

namespace {

using Integer = std::int64_t;

Integer integer(double x) {
    return static_cast<Integer>(x);
}

std::vector<float> highPassed(std::vector<float> x, double sr) {
    const double fc = std::min(sr * 0.49, 60.0);
    const double w0 = 2 * std::numbers::pi * fc / sr;
    const double alpha = std::sin(w0) / 1.414;
    const double a0 = 1 + alpha;
    const double b0 = (1 + std::cos(w0)) / 2 / a0;
    const double b1 = -(1 + std::cos(w0)) / a0;
    double z1 = 0;
    double z2 = 0;
    for (float& sample : x) {
        const double in = sample;
        const double y = z1 + b0 * in;
        z1 = z2 + b1 * in + (2 * std::cos(w0) / a0) * y;
        z2 = b0 * in - ((1 - alpha) / a0) * y;
        sample = static_cast<float>(y);
    }
    return x;
}

float largest(const std::vector<float>& x, Integer from, Integer to) {
    float result = 0;
    for (Integer i = from; i < to; ++i) {
        result = std::max(result, std::abs(x[static_cast<std::size_t>(i)]));
    }
    return result;
}

} // namespace

double plainQuietestFifthRms(const std::vector<float>& samples) {
    std::vector<double> squares;
    for (const float x : samples) {
        squares.push_back(static_cast<double>(x * x));
    }
    std::sort(squares.begin(), squares.end());
    const std::size_t q = squares.size() < 10 ? 1 : squares.size() / 5;
    double sum = 0;
    for (std::size_t i = 0; i < std::min(squares.size(), q); ++i) {
        sum += squares[i];
    }
    return std::sqrt(sum / static_cast<double>(q));
}

std::vector<Stroke> plainStrokes(const std::vector<float>& samples, double sr) {
    const auto n = static_cast<Integer>(samples.size());
    if (n <= integer(sr * 0.05)) {
        return {};
    }
    const std::vector<float> x = highPassed(samples, sr);

    const Integer hop = std::max<Integer>(integer(sr * 0.001), 1);
    const Integer frames = n / hop;
    std::vector<double> rms;
    std::vector<double> db;
    for (Integer i = 0; i < frames; ++i) {
        double sum = 0;
        for (Integer k = i * hop; k < (i + 1) * hop; ++k) {
            const float square = x[static_cast<std::size_t>(k)] * x[static_cast<std::size_t>(k)];
            sum += static_cast<double>(square);
        }
        rms.push_back(std::sqrt(sum / static_cast<double>(hop)) + 1e-9);
        db.push_back(20 * std::log10(rms.back()));
    }

    std::vector<double> sorted = db;
    std::sort(sorted.begin(), sorted.end());
    const double noiseDb =
        sorted[static_cast<std::size_t>(integer(static_cast<double>(frames - 1) * 0.2))];
    const double peakDb = sorted.back();
    const double thr = std::max(noiseDb + 18, peakDb - 38);

    std::vector<Integer> onsets;
    bool armed = true;
    for (std::size_t i = 0; i < db.size(); ++i) {
        if (!armed) {
            armed = db[i] < thr - 10;
            continue;
        }
        if (db[i] > thr) {
            std::size_t j = i;
            while (j >= 1 && db[j - 1] < db[j] && db[j - 1] > noiseDb + 6) {
                j -= 1;
            }
            onsets.push_back(static_cast<Integer>(j) * hop);
            armed = false;
        }
    }

    const Integer pre4 = integer(sr * 0.004);
    const Integer maxLen = integer(sr * 0.22);
    const auto loudness = [&](Integer p) {
        return largest(x, p, std::min(n, p + integer(sr * 0.02)));
    };
    std::vector<Integer> starts;
    std::vector<Integer> ends;
    for (const Integer o : onsets) {
        if (!starts.empty() && static_cast<double>(o - starts.back()) / sr < 0.16 &&
            loudness(o) < loudness(starts.back()) * 0.63095737F) {
            ends.back() = std::min(o - pre4, ends.back());
            continue;
        }
        if (!ends.empty()) {
            ends.back() = std::min(o - pre4, ends.back());
        }
        starts.push_back(o);
        ends.push_back(std::min(n, o + maxLen));
    }

    const double noiseRms = plainQuietestFifthRms(x) + 1e-9;
    std::vector<Stroke> strokes;
    for (std::size_t k = 0; k < starts.size(); ++k) {
        const Integer o = starts[k];
        const Integer e = ends[k];
        const Integer s = std::max<Integer>(0, o - integer(sr * 0.003));
        if (e - s <= integer(sr * 0.03)) {
            continue;
        }
        Stroke stroke;
        stroke.samples.assign(x.begin() + s, x.begin() + e);
        double peakRms = 0;
        for (Integer f = o / hop; f < std::min(frames, e / hop); ++f) {
            peakRms = std::max(peakRms, rms[static_cast<std::size_t>(f)]);
        }
        stroke.clean = static_cast<double>(e - o) / sr >= 0.07 && largest(x, s, e) < 0.99F;
        stroke.snrDb = 20 * std::log10(peakRms / noiseRms);
        stroke.start = static_cast<double>(o) / sr;
        strokes.push_back(stroke);
    }
    return strokes;
}

} // namespace vornic

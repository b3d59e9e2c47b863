#include "packs/analysis/Classifier.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double penalty = 0.02;
constexpr int rounds = 400;

double sum(const Figures& a, const Figures& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

// Adds to `slope` how the mean loss over `strokes` changes with the weights.
void addSlope(const std::vector<Figures>& strokes, double isModelled, const Figures& weights,
              Figures& slope) {
    for (const Figures& stroke : strokes) {
        const double likely = 1 / (1 + std::exp(-sum(weights, stroke)));
        const double off = 0.5 * (likely - isModelled) / static_cast<double>(strokes.size());
        for (std::size_t i = 0; i < stroke.size(); ++i) {
            slope[i] += off * stroke[i];
        }
    }
}

} // namespace

Classifier::Classifier(const std::vector<Figures>& modelled, const std::vector<Figures>& real)
    : mean_(figureNames().size()), deviation_(mean_.size(), 1), weights_(mean_.size()) {
    for (std::size_t i = 0; i < mean_.size(); ++i) {
        std::vector<double> known;
        for (const auto* kind : {&modelled, &real}) {
            for (const Figures& stroke : *kind) {
                if (std::isfinite(stroke[i])) {
                    known.push_back(stroke[i]);
                }
            }
        }
        const double count = std::max<double>(static_cast<double>(known.size()), 1);
        mean_[i] = std::accumulate(known.begin(), known.end(), 0.0) / count;
        deviation_[i] = std::max(statisticOf(known).deviation, 1e-6);
    }
    // Descent with momentum; the step is what the largest possible curvature allows.
    const std::vector<Figures> first = scaled(modelled);
    const std::vector<Figures> second = scaled(real);
    const double step = 1 / (0.25 * static_cast<double>(mean_.size()) + penalty);
    Figures before = weights_;
    for (int round = 1; round <= rounds; ++round) {
        Figures ahead = weights_;
        for (std::size_t i = 0; i < ahead.size(); ++i) {
            ahead[i] += (weights_[i] - before[i]) * (round - 1) / (round + 2);
        }
        Figures slope(ahead.size());
        addSlope(first, 1, ahead, slope);
        addSlope(second, 0, ahead, slope);
        before = weights_;
        for (std::size_t i = 0; i < ahead.size(); ++i) {
            weights_[i] = ahead[i] - step * (slope[i] + penalty * ahead[i]);
        }
    }
}

std::vector<Figures> Classifier::scaled(const std::vector<Figures>& strokes) const {
    // What lies far out says no more than that it does.
    constexpr double most = 5;
    std::vector<Figures> result = strokes;
    for (Figures& stroke : result) {
        for (std::size_t i = 0; i < stroke.size(); ++i) {
            stroke[i] = std::isfinite(stroke[i])
                            ? std::clamp((stroke[i] - mean_[i]) / deviation_[i], -most, most)
                            : 0;
        }
    }
    return result;
}

double Classifier::score(const Figures& stroke) const {
    return sum(weights_, scaled({stroke}).front());
}

Figures Classifier::parts(const std::vector<Figures>& strokes) const {
    Figures parts(weights_.size());
    for (const Figures& stroke : scaled(strokes)) {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            parts[i] += weights_[i] * stroke[i] / static_cast<double>(strokes.size());
        }
    }
    return parts;
}

double areaUnderCurve(const std::vector<double>& modelled, const std::vector<double>& real) {
    double right = 0;
    for (const double a : modelled) {
        for (const double b : real) {
            right += a > b ? 1 : a == b ? 0.5 : 0;
        }
    }
    const double pairs = static_cast<double>(modelled.size() * real.size());
    return pairs > 0 ? right / pairs : 0.5;
}

} // namespace vornic::packs

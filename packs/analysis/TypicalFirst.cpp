#include "packs/analysis/TypicalFirst.h"

#include "packs/analysis/StrokeFigures.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>

namespace vornic::packs {

namespace {

double distance(const Figures& a, const Figures& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return std::sqrt(sum);
}

// Moves the one of `left` that is farthest from all of `order` there.
void takeFarthest(std::vector<std::size_t>& left, const std::vector<Figures>& strokes,
                  std::vector<std::size_t>& order) {
    const auto nearest = [&](std::size_t stroke) {
        double least = std::numeric_limits<double>::max();
        for (const std::size_t other : order) {
            least = std::min(least, distance(strokes[stroke], strokes[other]));
        }
        return least;
    };
    const auto farthest = std::ranges::max_element(left, {}, nearest);
    order.push_back(*farthest);
    left.erase(farthest);
}

} // namespace

std::vector<std::size_t> typicalFirst(const std::vector<std::vector<float>>& strokes) {
    std::vector<Figures> figures;
    std::ranges::transform(
        strokes, std::back_inserter(figures),
        [](const std::vector<float>& samples) { return figuresOf(featuresOf(samples)); });
    figures = standardised(figures);
    std::vector<double> away(figures.size());
    std::ranges::transform(figures, away.begin(), [&](const Figures& stroke) {
        return std::transform_reduce(figures.begin(), figures.end(), 0.0, std::plus(),
                                     [&](const Figures& other) { return distance(stroke, other); });
    });
    std::vector<std::size_t> typical(figures.size());
    std::iota(typical.begin(), typical.end(), std::size_t{0});
    std::ranges::stable_sort(typical, {}, [&](std::size_t stroke) { return away[stroke]; });
    const auto most = std::next(typical.begin(), std::ssize(typical) - std::ssize(typical) / 4);
    std::vector<std::size_t> odd(most, typical.end());
    typical.erase(most, typical.end());
    std::vector<std::size_t> order;
    if (!typical.empty()) {
        order.push_back(typical.front());
        typical.erase(typical.begin());
    }
    for (auto* left : {&typical, &odd}) {
        while (!left->empty()) {
            takeFarthest(*left, figures, order);
        }
    }
    return order;
}

} // namespace vornic::packs

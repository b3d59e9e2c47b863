#include "Vornic/app/LatencyHistogram.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vornic {

namespace {

/// The nearest-rank percentile of sorted values.
double percentile(const std::vector<double>& sorted, double part) {
    const auto rank =
        static_cast<std::size_t>(std::ceil(part * static_cast<double>(sorted.size())));
    return sorted[std::max<std::size_t>(rank, 1) - 1];
}

} // namespace

LatencyHistogram LatencyHistogram::of(std::span<const double> millis) {
    std::vector<double> sorted;
    std::ranges::copy_if(millis, std::back_inserter(sorted),
                         [](double value) { return !std::isnan(value); });
    std::ranges::sort(sorted);
    LatencyHistogram histogram;
    histogram.keys = sorted.size();
    for (const double value : sorted) {
        const double bin = std::clamp(value / binMillis, 0.0, static_cast<double>(binCount - 1));
        ++histogram.bins[static_cast<std::size_t>(bin)];
    }
    if (!sorted.empty()) {
        histogram.medianMillis = percentile(sorted, 0.5);
        histogram.p95Millis = percentile(sorted, 0.95);
    }
    return histogram;
}

} // namespace vornic

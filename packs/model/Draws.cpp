#include "packs/model/Draws.h"

#include "VornicCore/base/SplitMix64.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

namespace vornic::packs {

double normalQuantile(double probability) {
    // Bisection on the error function: slow, short and exact enough.
    const double wanted = std::clamp(probability, 0.02, 0.98);
    double below = -4;
    double above = 4;
    while (above - below > 1e-7) {
        const double middle = (below + above) / 2;
        const double here = std::erfc(-middle / std::sqrt(2.0)) / 2;
        (here < wanted ? below : above) = middle;
    }
    return (below + above) / 2;
}

std::uint64_t mixed(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
    SplitMix64 first(a);
    SplitMix64 second(first.next() ^ b);
    SplitMix64 third(second.next() ^ c);
    return third.next();
}

double Draws::even(std::uint64_t variable) const {
    SplitMix64 random(mixed(seed_, variable));
    std::vector<std::size_t> order(count_);
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t i = count_; i > 1; --i) {
        std::swap(order[i - 1], order[random.next(i)]);
    }
    SplitMix64 within(mixed(seed_, variable, index_ + 1));
    return (static_cast<double>(order[index_]) + within.uniform(0.2, 0.8)) /
           static_cast<double>(count_);
}

double Draws::normal(std::uint64_t variable) const {
    return normalQuantile(even(variable));
}

} // namespace vornic::packs

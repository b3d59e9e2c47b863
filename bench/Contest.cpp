#include "bench/Contest.h"

#include <algorithm>
#include <ctime>

namespace vornic {

namespace {

/// The processor time of this thread: what other programs take in between does not count.
double threadNanos() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

double quantileOf(std::vector<double> values, double share) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

} // namespace

std::string Contest::measure(int rounds) {
    nanos_.assign(contestants_.size(), {});
    for (int round = -1; round < rounds; ++round) {
        for (std::size_t i = 0; i < contestants_.size(); ++i) {
            const Contestant& contestant = contestants_[i];
            contestant.prepare();
            const double begin = threadNanos();
            contestant.run();
            const double taken = threadNanos() - begin;
            if (auto flaw = contestant.flaw(); !flaw.empty()) {
                return contestant.name + ": " + flaw;
            }
            if (round >= 0) {
                nanos_[i].push_back(taken);
            }
        }
    }
    return {};
}

double Contest::quantile(std::size_t contestant, double share) const {
    return quantileOf(nanos_[contestant], share);
}

double Contest::ratio(std::size_t slow, std::size_t fast) const {
    std::vector<double> ratios;
    ratios.reserve(nanos_[slow].size());
    for (std::size_t round = 0; round < nanos_[slow].size(); ++round) {
        ratios.push_back(nanos_[slow][round] / nanos_[fast][round]);
    }
    return quantileOf(ratios, 0.5);
}

} // namespace vornic

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// Measures several ways of doing the same work in the same run. Every round measures each of them
/// once, so that whatever slows the machine down meets all of them alike, and only medians and the
/// ratios within a round are reported.
class Contest {
  public:
    struct Contestant {
        std::string name;
        /// Brings the contestant to where every round starts. Not measured.
        std::function<void()> prepare;
        /// The work of one round.
        std::function<void()> run;
        /// After a round: what makes its figure worthless, empty if nothing does. Not measured.
        std::function<std::string()> flaw;
    };

    void add(Contestant contestant) { contestants_.push_back(std::move(contestant)); }

    /// Measures `rounds` rounds and a first one that does not count. The first flaw found, empty if
    /// there was none.
    std::string measure(int rounds);

    std::size_t size() const { return contestants_.size(); }
    const std::string& name(std::size_t contestant) const { return contestants_[contestant].name; }

    /// The median processor time of a round, in nanoseconds, and the one that `share` of the rounds
    /// stay below.
    double median(std::size_t contestant) const { return quantile(contestant, 0.5); }
    double quantile(std::size_t contestant, double share) const;

    /// The median, over the rounds, of the time that `slow` takes divided by that of `fast`.
    double ratio(std::size_t slow, std::size_t fast) const;

  private:
    std::vector<Contestant> contestants_;
    std::vector<std::vector<double>> nanos_; // by contestant and round
};

} // namespace vornic

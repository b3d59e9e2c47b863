#pragma once

#include <cstddef>
#include <vector>

namespace vornic {

/// How well detected onsets meet known ones.
struct OnsetScore {
    std::size_t known = 0;
    std::size_t detected = 0;
    /// Pairs of a known and a detected onset, each used once.
    std::size_t met = 0;

    [[nodiscard]] double precision() const { return share(met, detected); }
    [[nodiscard]] double recall() const { return share(met, known); }
    [[nodiscard]] double f1() const { return share(2 * met, known + detected); }

    void add(const OnsetScore& other) {
        known += other.known;
        detected += other.detected;
        met += other.met;
    }

  private:
    static double share(std::size_t part, std::size_t whole) {
        return whole == 0 ? 0.0 : static_cast<double>(part) / static_cast<double>(whole);
    }
};

/// Pairs ascending times, in seconds, that differ by at most `tolerance`. Going through both in
/// order gives the most pairs there can be.
inline OnsetScore scoreOnsets(const std::vector<double>& known, const std::vector<double>& detected,
                              double tolerance) {
    OnsetScore score{known.size(), detected.size(), 0};
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < known.size() && j < detected.size()) {
        if (detected[j] < known[i] - tolerance) {
            ++j;
        } else if (detected[j] > known[i] + tolerance) {
            ++i;
        } else {
            ++score.met;
            ++i;
            ++j;
        }
    }
    return score;
}

} // namespace vornic

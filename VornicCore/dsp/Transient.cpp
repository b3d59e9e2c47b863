#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>

namespace vornic::DSP {

namespace {

// A level that follows |x| with one time constant on the way up and another on the way down.
class Follower {
  public:
    Follower(double risingMs, double fallingMs) noexcept
        : rising_(coefficient(risingMs)), falling_(coefficient(fallingMs)) {}

    double follow(double magnitude) noexcept {
        level_ += (magnitude - level_) * (magnitude > level_ ? rising_ : falling_);
        return level_;
    }

  private:
    static double coefficient(double ms) noexcept {
        return 1.0 - std::exp(-1.0 / (ms / 1000.0 * sampleRate));
    }

    double rising_;
    double falling_;
    double level_ = 0.0;
};

} // namespace

void transient(std::vector<float>& samples, double attackDb, double sustainDb) noexcept {
    if (std::isnan(attackDb) || std::isnan(sustainDb) || (attackDb == 0.0 && sustainDb == 0.0)) {
        return;
    }
    const double attackGain = factorOfDecibels(attackDb);
    const double sustainGain = factorOfDecibels(sustainDb);
    Follower fastFollower(0.5, 20.0);
    Follower slowFollower(15.0, 60.0);
    for (float& sample : samples) {
        const auto x = static_cast<double>(sample);
        const double fast = fastFollower.follow(std::abs(x));
        const double slow = slowFollower.follow(std::abs(x));
        const double larger = std::max({fast, slow, 1e-9});
        const double attack = std::max(fast - slow, 0.0) / larger;
        const double sustain = std::max(slow - fast, 0.0) / larger;
        sample = static_cast<float>(
            x * (1.0 + (attackGain - 1.0) * attack + (sustainGain - 1.0) * sustain));
    }
}

} // namespace vornic::DSP

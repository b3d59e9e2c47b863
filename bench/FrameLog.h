#pragma once

#include "tests/live/ChildProcess.h"

#include <cstddef>
#include <filesystem>
#include <vector>

namespace vornic {

/// The frames that a program of the toolkit draws, as the toolkit itself logs them: the program
/// needs to know nothing of it. Thread: main.
class FrameLog {
  public:
    /// Of a program whose output goes to `log`.
    explicit FrameLog(std::filesystem::path log) : log_(std::move(log)) {}

    /// What the program's environment needs for it.
    static ChildProcess::Environment environment() {
        return {{"QT_LOGGING_RULES", "qt.scenegraph.time.renderloop=true"}};
    }

    /// What is logged from here on counts.
    void begin();

    /// Milliseconds from each frame to the next one since `begin`; the first one, which ends a
    /// pause, is left out.
    std::vector<double> deltas() const;

  private:
    std::filesystem::path log_;
    std::size_t from_ = 0;
};

/// The value below which so large a share of `values` lies; 0 without any.
double percentile(std::vector<double> values, double share);

} // namespace vornic

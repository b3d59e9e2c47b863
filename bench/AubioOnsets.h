#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// The onset detector of libaubio, at the settings of its own program: windows of 512 samples every
/// 256, its threshold for the method.
class AubioOnsets {
  public:
    explicit AubioOnsets(std::string method) : method_(std::move(method)) {}

    /// Onsets in seconds, ascending, of 48 kHz mono.
    [[nodiscard]] std::vector<double> find(std::span<const float> samples) const;

  private:
    std::string method_;
};

} // namespace vornic

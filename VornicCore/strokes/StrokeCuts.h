#pragma once

#include "VornicCore/strokes/Stroke.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vornic {

/// Where the strokes of a recording are cut out of it, to be shown and moved. The places are
/// samples of the recording. A value; about as large as its recording. Thread: any.
class StrokeCuts {
  public:
    struct Range {
        std::int64_t begin = 0;
        std::int64_t end = 0;

        bool operator==(const Range&) const = default;
    };

    /// The lowest and the highest sample of a stretch, as a column of a drawn waveform.
    struct Column {
        float lowest = 0.0F;
        float highest = 0.0F;

        bool operator==(const Column&) const = default;
    };

    /// A cut is never shorter than 30 ms nor longer than a second.
    static constexpr double shortestCut = 0.03;
    static constexpr double longestCut = 1.0;

    StrokeCuts() = default;

    /// `recording` is mono at `rate` Hz, `strokes` what Slicer::strokes has found in it, all or
    /// some, in any order, which is kept. A rate that is not above 0 gives no cuts.
    StrokeCuts(std::span<const float> recording, double rate, std::span<const Stroke> strokes);

    [[nodiscard]] std::size_t count() const { return cuts_.size(); }
    /// Where stroke `stroke`, one of `count`, is cut now.
    [[nodiscard]] Range cut(std::size_t stroke) const { return cuts_[stroke]; }
    /// Where the slicer has cut it.
    [[nodiscard]] Range originalCut(std::size_t stroke) const { return original_[stroke]; }
    /// Where the key was hit.
    [[nodiscard]] std::int64_t onset(std::size_t stroke) const { return onsets_[stroke]; }

    /// Moves the beginning or the end of a cut, as far as the recording, the onset (which stays
    /// inside) and the limits on the length let it; where it then is. Other strokes are not moved:
    /// two may share a stretch.
    std::int64_t moveBegin(std::size_t stroke, std::int64_t place);
    std::int64_t moveEnd(std::size_t stroke, std::int64_t place);
    /// As the slicer has cut it.
    void reset(std::size_t stroke) { cuts_[stroke] = original_[stroke]; }

    /// The sound of a stroke as it is cut now, without rumble.
    [[nodiscard]] std::vector<float> samples(std::size_t stroke) const;

    /// The recording from `range.begin` to `range.end` in so many columns, for drawing: parts of
    /// the range outside the recording are silent.
    [[nodiscard]] std::vector<Column> waveform(Range range, std::size_t columns) const;

    /// The release of the key that `stroke` presses, where the recording has it: a hit between 40
    /// and 400 ms after the onset, more than 4 dB quieter, with at least 30 ms of its own before
    /// the next. Absent when there is none, or the stroke is itself the release of another.
    [[nodiscard]] std::optional<Range> release(std::size_t stroke) const;

    /// The sound of a stretch, without rumble.
    [[nodiscard]] std::vector<float> samples(Range range) const;

    bool operator==(const StrokeCuts&) const = default;

  private:
    [[nodiscard]] std::int64_t length() const { return static_cast<std::int64_t>(samples_.size()); }
    [[nodiscard]] std::int64_t samplesIn(double seconds) const;
    void findReleases();

    std::vector<float> samples_; // without rumble
    double rate_ = 0.0;          // Hz
    std::vector<std::int64_t> onsets_;
    std::vector<Range> original_;
    std::vector<Range> cuts_;
    std::vector<std::optional<Range>> releases_;
};

} // namespace vornic

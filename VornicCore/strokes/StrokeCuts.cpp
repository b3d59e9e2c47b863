#include "VornicCore/strokes/StrokeCuts.h"

#include "VornicCore/realtime/IntegerPart.h"
#include "VornicCore/strokes/Envelope.h"
#include "VornicCore/strokes/KeyOnsets.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace vornic {

namespace {

// As the slicer cuts, in seconds.
constexpr double preRoll = 0.003;
constexpr double gapBeforeNext = 0.004;
constexpr double longestSlice = 0.22;

// A key stays down for at least the one and, typed singly, at most the other.
constexpr double shortestHold = 0.04;
constexpr double longestHold = 0.4;

} // namespace

StrokeCuts::StrokeCuts(std::span<const float> recording, double rate,
                       std::span<const Stroke> strokes)
    : rate_(rate) {
    if (!(rate > 0.0)) {
        return;
    }
    samples_ = withoutRumble(recording, rate);
    for (const Stroke& stroke : strokes) {
        const std::int64_t onset =
            std::clamp<std::int64_t>(std::llround(stroke.start * rate), 0, length());
        const std::int64_t begin = std::max<std::int64_t>(0, onset - samplesIn(preRoll));
        const auto size = static_cast<std::int64_t>(stroke.samples.size());
        onsets_.push_back(onset);
        original_.push_back({begin, std::min(length(), begin + size)});
    }
    cuts_ = original_;
    releases_.resize(cuts_.size());
    findReleases();
}

std::int64_t StrokeCuts::samplesIn(double seconds) const {
    return requireIntegerPart(seconds * rate_, "the rate of a recording is out of range");
}

std::int64_t StrokeCuts::moveBegin(std::size_t stroke, std::int64_t place) {
    Range& cut = cuts_[stroke];
    const std::int64_t lowest = std::max<std::int64_t>(0, cut.end - samplesIn(longestCut));
    const std::int64_t highest = std::min(onsets_[stroke], cut.end - samplesIn(shortestCut));
    cut.begin = std::max(lowest, std::min(place, highest));
    return cut.begin;
}

std::int64_t StrokeCuts::moveEnd(std::size_t stroke, std::int64_t place) {
    Range& cut = cuts_[stroke];
    const std::int64_t highest = std::min(length(), cut.begin + samplesIn(longestCut));
    const std::int64_t lowest =
        std::min(highest, std::max(onsets_[stroke] + 1, cut.begin + samplesIn(shortestCut)));
    cut.end = std::clamp(place, lowest, highest);
    return cut.end;
}

std::vector<float> StrokeCuts::samples(std::size_t stroke) const {
    return samples(cuts_[stroke]);
}

std::vector<float> StrokeCuts::samples(Range range) const {
    const std::int64_t begin = std::clamp<std::int64_t>(range.begin, 0, length());
    const std::int64_t end = std::clamp(range.end, begin, length());
    return {samples_.begin() + begin, samples_.begin() + end};
}

std::vector<StrokeCuts::Column> StrokeCuts::waveform(Range range, std::size_t columns) const {
    std::vector<Column> result(columns);
    const double width = static_cast<double>(range.end - range.begin);
    const auto edge = [&](std::size_t column) {
        const double share = static_cast<double>(column) / static_cast<double>(columns);
        return range.begin + static_cast<std::int64_t>(width * share);
    };
    for (std::size_t i = 0; i < columns; ++i) {
        // Where there are more columns than samples, a sample fills several.
        const std::int64_t begin = edge(i);
        const std::int64_t end = std::max(edge(i + 1), begin + 1);
        const std::vector<float> part = samples(Range{begin, end});
        if (!part.empty()) {
            const auto [lowest, highest] = std::ranges::minmax_element(part);
            result[i] = {std::min(*lowest, 0.0F), std::max(*highest, 0.0F)};
        }
    }
    return result;
}

std::optional<StrokeCuts::Range> StrokeCuts::release(std::size_t stroke) const {
    return releases_[stroke];
}

void StrokeCuts::findReleases() {
    const Envelope envelope = envelopeOf(samples_, rate_);
    if (envelope.frames() == 0) {
        return;
    }
    const std::vector<std::int64_t> hits = keyOnsets(envelope);
    std::map<std::int64_t, Range> releaseOf; // by the onset of the press
    for (std::size_t press = 0; press < hits.size(); ++press) {
        std::size_t next = press + 1;
        // What follows sooner is a bounce.
        while (next < hits.size() && hits[next] - hits[press] < samplesIn(shortestHold)) {
            ++next;
        }
        if (next == hits.size() || hits[next] - hits[press] > samplesIn(longestHold) ||
            loudnessAt(samples_, hits[next], rate_) >=
                loudnessAt(samples_, hits[press], rate_) * echoRatio) {
            continue;
        }
        const std::int64_t nextBut =
            next + 1 < hits.size() ? hits[next + 1] - samplesIn(gapBeforeNext) : length();
        const Range range{hits[next] - samplesIn(preRoll),
                          std::min(nextBut, hits[next] + samplesIn(longestSlice))};
        if (range.end - range.begin > samplesIn(shortestCut)) {
            releaseOf[hits[press]] = range;
            press = next; // a release has none itself
        }
    }
    for (std::size_t i = 0; i < onsets_.size(); ++i) {
        if (const auto found = releaseOf.find(onsets_[i]); found != releaseOf.end()) {
            releases_[i] = found->second;
        }
    }
}

} // namespace vornic

#include "VornicCore/strokes/Slicer.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/realtime/Fatal.h"
#include "VornicCore/realtime/IntegerPart.h"
#include "VornicCore/strokes/Envelope.h"
#include "VornicCore/strokes/KeyOnsets.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vornic::Slicer {

namespace {

// Lengths in seconds.
constexpr double shortestRecording = 0.05;
constexpr double echoDistance = 0.16;
constexpr double gapBeforeNext = 0.004;
constexpr double longestSlice = 0.22;
constexpr double preRoll = 0.003;
constexpr double shortestSlice = 0.03;
constexpr double shortestClean = 0.07;

std::int64_t samplesIn(double seconds, double rate) {
    return requireIntegerPart(rate * seconds, "the rate of a recording is out of range");
}

/// A stretch of the recording from an onset on; places of samples.
struct Range {
    std::int64_t start = 0;
    std::int64_t end = 0;
};

/// A recording on its way to strokes.
class Recording {
  public:
    Recording(std::vector<float> filtered, double rate)
        : samples_(std::move(filtered)), rate_(rate), envelope_(envelopeOf(samples_, rate)) {}

    std::vector<Stroke> strokes() const {
        const double noiseRms = quietestFifthRms(samples_) + 1e-9;
        std::vector<Stroke> result;
        for (const Range& range : ranges()) {
            const std::int64_t begin =
                std::max<std::int64_t>(0, range.start - samplesIn(preRoll, rate_));
            if (range.end - begin > samplesIn(shortestSlice, rate_)) {
                result.push_back(stroke(range, begin, noiseRms));
            }
        }
        return result;
    }

  private:
    std::int64_t length() const { return static_cast<std::int64_t>(samples_.size()); }

    std::span<const float> part(std::int64_t begin, std::int64_t end) const {
        if (begin >= end) {
            return {};
        }
        return std::span(samples_).subspan(static_cast<std::size_t>(begin),
                                           static_cast<std::size_t>(end - begin));
    }

    bool isEcho(std::int64_t onset, std::int64_t previous) const {
        return static_cast<double>(onset - previous) / rate_ < echoDistance &&
               loudnessAt(samples_, onset, rate_) <
                   loudnessAt(samples_, previous, rate_) * echoRatio;
    }

    std::vector<Range> ranges() const {
        const std::int64_t gap = samplesIn(gapBeforeNext, rate_);
        const std::int64_t longest = samplesIn(longestSlice, rate_);
        std::vector<Range> result;
        for (const std::int64_t onset : keyOnsets(envelope_)) {
            // An echo ends the stroke before it too, but is none itself.
            if (!result.empty()) {
                Range& previous = result.back();
                previous.end = std::min(onset - gap, previous.end);
                if (isEcho(onset, previous.start)) {
                    continue;
                }
            }
            result.push_back({onset, std::min(length(), onset + longest)});
        }
        return result;
    }

    double peakRms(const Range& range) const {
        const std::int64_t last = std::min(envelope_.frames(), range.end / envelope_.hop);
        double loudest = 0.0;
        for (std::int64_t frame = range.start / envelope_.hop; frame < last; ++frame) {
            loudest = std::max(loudest, envelope_.rms[static_cast<std::size_t>(frame)]);
        }
        return loudest;
    }

    Stroke stroke(const Range& range, std::int64_t begin, double noiseRms) const {
        const std::span<const float> slice = part(begin, range.end);
        Stroke result;
        result.samples.assign(slice.begin(), slice.end());
        result.start = static_cast<double>(range.start) / rate_;
        result.snrDb = 20.0 * std::log10(peakRms(range) / noiseRms);
        result.clean = static_cast<double>(range.end - range.start) / rate_ >= shortestClean &&
                       DSP::peak(result.samples) < clippingPeak;
        return result;
    }

    std::vector<float> samples_; // without rumble
    double rate_;                // Hz
    Envelope envelope_;
};

} // namespace

std::vector<Stroke> strokes(std::span<const float> samples, double sampleRate) {
    const auto count = static_cast<std::int64_t>(samples.size());
    if (count <= samplesIn(shortestRecording, sampleRate) || !(sampleRate > 0.0)) {
        return {};
    }
    return Recording(withoutRumble(samples, sampleRate), sampleRate).strokes();
}

std::vector<std::size_t> bestPlaces(std::span<const Stroke> strokes, std::int64_t limit,
                                    double minSnrDb) {
    require(limit >= 0, "fewer than no strokes were asked for");
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        if (strokes[i].clean && strokes[i].snrDb >= minSnrDb) {
            places.push_back(i);
        }
    }
    std::ranges::stable_sort(places, [&strokes](std::size_t a, std::size_t b) {
        return strokes[a].snrDb > strokes[b].snrDb;
    });
    places.resize(std::min(places.size(), static_cast<std::size_t>(limit)));
    return places;
}

std::vector<Stroke> best(std::span<const Stroke> strokes, std::int64_t limit, double minSnrDb) {
    std::vector<Stroke> result;
    for (const std::size_t place : bestPlaces(strokes, limit, minSnrDb)) {
        result.push_back(strokes[place]);
    }
    return result;
}

std::vector<float> finish(std::vector<float> samples) {
    DSP::trimTail(samples, -42.0);
    DSP::level(samples, -21.0, -2.0);
    return samples;
}

} // namespace vornic::Slicer

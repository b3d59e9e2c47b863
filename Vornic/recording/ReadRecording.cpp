#include "Vornic/recording/ReadRecording.h"

#include "Vornic/recording/DecoderProcess.h"
#include "VornicCore/audiofiles/MonoResampler.h"
#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace vornic {

namespace {

constexpr const char* unknownFormat = "It is no audio file that Vornic knows.";
constexpr const char* withoutDecoder =
    "Audio files are read by the helper vornic-decode, which is not installed.";
constexpr const char* damaged = "It is damaged or cut short.";
constexpr const char* stopped = "The import was cancelled.";
constexpr const char* silent = "It holds no sound.";

RecordingRead failure(const char* reason) {
    return {.samples = std::nullopt, .remark = reason};
}

std::string whatWasUsed(double seconds) {
    const auto minutes = static_cast<int>(std::lround(seconds / 60.0));
    return "The file is longer than needed: only its first " + std::to_string(minutes) +
           " minutes count.";
}

/// The share of the file, or of what is wanted of it, that has been read.
double shareOf(double secondsRead, std::optional<double> length, double longest) {
    return std::clamp(secondsRead / std::min(length.value_or(longest), longest), 0.0, 1.0);
}

} // namespace

RecordingRead readRecording(const std::filesystem::path& file, const ReadOptions& options) {
    Decoder decoder(options.decoder);
    return readRecording(file, decoder, options);
}

RecordingRead readRecording(const std::filesystem::path& file, Decoder& decoder,
                            const ReadOptions& options) {
    // Never in this process, which hears keys: a file may come from anybody.
    const std::unique_ptr<AudioStream> stream = decoder.open(file, options.stop);
    if (stream == nullptr) {
        return failure(options.stop.stop_requested() ? stopped
                       : decoder.program().empty()   ? withoutDecoder
                                                     : unknownFormat);
    }
    MonoResampler resampler(stream->rate(), DSP::sampleRate);
    const auto limit = static_cast<std::size_t>(options.longestSeconds * DSP::sampleRate);
    double secondsRead = 0.0;
    std::vector<float> mono;
    RecordingRead result;
    result.rate = stream->rate();
    std::vector<float> samples;
    AudioStream::Next next = AudioStream::Next::end;
    while (!options.stop.stop_requested() && samples.size() <= limit &&
           (next = stream->read(mono)) == AudioStream::Next::block) {
        if (!resampler.process(mono, samples)) {
            return failure(damaged);
        }
        secondsRead += static_cast<double>(mono.size()) / stream->rate();
        if (options.progress) {
            options.progress(shareOf(secondsRead, stream->seconds(), options.longestSeconds));
        }
    }
    if (options.stop.stop_requested()) {
        return failure(stopped);
    }
    if (next == AudioStream::Next::error || !resampler.finish(samples)) {
        return failure(damaged);
    }
    if (samples.empty()) {
        return failure(silent);
    }
    if (samples.size() > limit) {
        samples.resize(limit);
        result.remark = whatWasUsed(options.longestSeconds);
    }
    result.samples = std::move(samples);
    return result;
}

} // namespace vornic

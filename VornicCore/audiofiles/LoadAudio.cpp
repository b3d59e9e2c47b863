#include "VornicCore/audiofiles/LoadAudio.h"

#include "VornicCore/audiofiles/MonoResampler.h"
#include "VornicCore/audiofiles/SoundFile.h"
#include "VornicCore/base/SampleRate.h"

#include <memory>

namespace vornic {

std::optional<std::vector<float>> loadAudio(const std::filesystem::path& file) {
    const std::unique_ptr<AudioStream> stream = openSoundFile(file);
    if (!stream || stream->seconds() > longestAudioSeconds) {
        return std::nullopt;
    }
    MonoResampler resampler(stream->rate(), DSP::sampleRate);
    std::vector<float> mono;
    std::vector<float> output;
    AudioStream::Next next = stream->read(mono);
    while (next == AudioStream::Next::block) {
        if (!resampler.process(mono, output)) {
            return std::nullopt;
        }
        next = stream->read(mono);
    }
    if (next == AudioStream::Next::error || !resampler.finish(output) || output.empty()) {
        return std::nullopt;
    }
    return output;
}

} // namespace vornic

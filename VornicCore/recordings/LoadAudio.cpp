#include "VornicCore/recordings/LoadAudio.h"

#include "VornicCore/recordings/MonoResampler.h"

#include <sndfile.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>

namespace vornic {

namespace {

namespace fs = std::filesystem;

constexpr double outputRate = 48000;
constexpr int lowestRate = 1000;
constexpr int highestRate = 768000;
constexpr int mostChannels = 64;
constexpr sf_count_t blockFrames = 4096;

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

// Chunked files say their own length at the start. The decoder quietly plays what is left of one
// that was cut short, so the length is compared here; a few bytes of disagreement are common and
// harmless, and writers to a pipe leave 0 or a number near the largest.
bool isCutShort(const fs::path& path) {
    std::array<char, 8> head{};
    std::ifstream stream(path, std::ios::binary);
    if (!stream.read(head.data(), head.size())) {
        return true;
    }
    const std::string_view kind(head.data(), 4);
    if (kind != "RIFF" && kind != "FORM") {
        return false;
    }
    std::uint32_t claimed = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::size_t place = kind == "RIFF" ? 7 - i : 4 + i;
        claimed = (claimed << 8U) | static_cast<unsigned char>(head[place]);
    }
    constexpr std::uint32_t unknownFrom = 0x7ffff000;
    constexpr std::uintmax_t slack = 8;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    return error || (claimed < unknownFrom && claimed > size + slack);
}

bool isReadable(const SF_INFO& info) {
    return info.samplerate >= lowestRate && info.samplerate <= highestRate && info.channels >= 1 &&
           info.channels <= mostChannels && info.frames > 0 &&
           static_cast<double>(info.frames) <= longestAudioSeconds * info.samplerate;
}

// Averages the channels of each frame of `block` into `mono`.
void mixDown(std::span<const float> block, std::size_t channels, std::vector<float>& mono) {
    mono.clear();
    for (std::size_t at = 0; at < block.size(); at += channels) {
        float sum = 0;
        for (const float value : block.subspan(at, channels)) {
            sum += std::isfinite(value) ? value : 0.0F;
        }
        const float mean = sum / static_cast<float>(channels);
        mono.push_back(std::isfinite(mean) ? mean : 0.0F);
    }
}

} // namespace

std::optional<std::vector<float>> loadAudio(const fs::path& file) {
    std::error_code error;
    // Opening a pipe or a device could wait for ever.
    if (!fs::is_regular_file(file, error) || isCutShort(file)) {
        return std::nullopt;
    }
    SF_INFO info{};
    const Sound sound(sf_open(file.c_str(), SFM_READ, &info));
    if (!sound || !isReadable(info)) {
        return std::nullopt;
    }
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> block(static_cast<std::size_t>(blockFrames) * channels);
    std::vector<float> mono;
    std::vector<float> output;
    MonoResampler resampler(info.samplerate, outputRate);
    sf_count_t left = info.frames;
    while (left > 0) {
        const sf_count_t wanted = std::min(left, blockFrames);
        const sf_count_t got = sf_readf_float(sound.get(), block.data(), wanted);
        if (got != wanted || sf_error(sound.get()) != SF_ERR_NO_ERROR) {
            return std::nullopt;
        }
        mixDown(std::span(block).first(static_cast<std::size_t>(got) * channels), channels, mono);
        if (!resampler.process(mono, output)) {
            return std::nullopt;
        }
        left -= got;
    }
    if (!resampler.finish(output) || output.empty()) {
        return std::nullopt;
    }
    return output;
}

} // namespace vornic

#include "VornicCore/audiofiles/SoundFile.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <span>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

namespace fs = std::filesystem;

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
           info.channels <= mostChannels && info.frames > 0;
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

class SoundFile final : public AudioStream {
  public:
    SoundFile(Sound sound, const SF_INFO& info)
        : sound_(std::move(sound)), info_(info), left_(info.frames),
          block_(static_cast<std::size_t>(blockFrames) * static_cast<std::size_t>(info.channels)) {}

    double rate() const override { return info_.samplerate; }

    std::optional<double> seconds() const override {
        return static_cast<double>(info_.frames) / info_.samplerate;
    }

    Next read(std::vector<float>& mono) override {
        mono.clear();
        if (left_ == 0) {
            return Next::end;
        }
        const sf_count_t wanted = std::min(left_, blockFrames);
        const sf_count_t got = hasFailed_ ? 0 : sf_readf_float(sound_.get(), block_.data(), wanted);
        if (got != wanted || sf_error(sound_.get()) != SF_ERR_NO_ERROR) {
            hasFailed_ = true;
            return Next::error;
        }
        left_ -= got;
        const auto channels = static_cast<std::size_t>(info_.channels);
        mixDown(std::span(block_).first(static_cast<std::size_t>(got) * channels), channels, mono);
        return Next::block;
    }

  private:
    Sound sound_;
    SF_INFO info_;
    sf_count_t left_; // frames
    std::vector<float> block_;
    bool hasFailed_ = false;
};

} // namespace

std::unique_ptr<AudioStream> openSoundFile(const fs::path& file) {
    std::error_code error;
    // Opening a pipe or a device could wait for ever.
    if (!fs::is_regular_file(file, error) || isCutShort(file)) {
        return nullptr;
    }
    SF_INFO info{};
    Sound sound(sf_open(file.c_str(), SFM_READ, &info));
    if (!sound || !isReadable(info)) {
        return nullptr;
    }
    return std::make_unique<SoundFile>(std::move(sound), info);
}

} // namespace vornic

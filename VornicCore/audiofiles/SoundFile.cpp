#include "VornicCore/audiofiles/SoundFile.h"

#include <fcntl.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
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
bool isCutShort(int descriptor) {
    std::array<char, 8> head{};
    if (::pread(descriptor, head.data(), head.size(), 0) != static_cast<ssize_t>(head.size())) {
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
    constexpr off_t slack = 8;
    const off_t size = ::lseek(descriptor, 0, SEEK_END);
    return size < 0 || (claimed < unknownFrom && off_t{claimed} > size + slack);
}

int descriptorOf(void* user) {
    return *static_cast<const int*>(user);
}

// The decoder's own ways ask the system for more than a closely watched process may.
SF_VIRTUAL_IO readingOnly() {
    return {
        .get_filelen = [](void* user) -> sf_count_t {
            const off_t here = ::lseek(descriptorOf(user), 0, SEEK_CUR);
            const off_t length = ::lseek(descriptorOf(user), 0, SEEK_END);
            ::lseek(descriptorOf(user), here, SEEK_SET);
            return length;
        },
        .seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
            return ::lseek(descriptorOf(user), offset, whence);
        },
        .read = [](void* into, sf_count_t count, void* user) -> sf_count_t {
            sf_count_t got = 0;
            while (got < count) {
                const ssize_t more = ::read(descriptorOf(user), static_cast<char*>(into) + got,
                                            static_cast<std::size_t>(count - got));
                if (more <= 0) {
                    break;
                }
                got += more;
            }
            return got;
        },
        .write = [](const void*, sf_count_t, void*) -> sf_count_t { return 0; },
        .tell = [](void* user) -> sf_count_t { return ::lseek(descriptorOf(user), 0, SEEK_CUR); }};
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
    enum class Closes : bool { no, yes };

    SoundFile(int descriptor, Closes closes) : descriptor_(descriptor), closes_(closes) {}
    ~SoundFile() override {
        sound_.reset();
        if (closes_ == Closes::yes) {
            ::close(descriptor_);
        }
    }
    SoundFile(const SoundFile&) = delete;
    SoundFile& operator=(const SoundFile&) = delete;

    /// False for what cannot be read.
    bool open() {
        if (isCutShort(descriptor_) || ::lseek(descriptor_, 0, SEEK_SET) != 0) {
            return false;
        }
        SF_VIRTUAL_IO io = readingOnly();
        sound_.reset(sf_open_virtual(&io, SFM_READ, &info_, &descriptor_));
        if (!sound_ || !isReadable(info_)) {
            return false;
        }
        left_ = info_.frames;
        block_.resize(static_cast<std::size_t>(blockFrames) *
                      static_cast<std::size_t>(info_.channels));
        return true;
    }

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
    int descriptor_;
    Closes closes_;
    Sound sound_;
    SF_INFO info_{};
    sf_count_t left_ = 0; // frames
    std::vector<float> block_;
    bool hasFailed_ = false;
};

} // namespace

std::unique_ptr<AudioStream> openSoundFile(int descriptor) {
    auto file = std::make_unique<SoundFile>(descriptor, SoundFile::Closes::no);
    return file->open() ? std::move(file) : nullptr;
}

std::unique_ptr<AudioStream> openSoundFile(const fs::path& file) {
    // Opening a pipe or a device could wait for ever.
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return nullptr;
    }
    auto sound = std::make_unique<SoundFile>(descriptor, SoundFile::Closes::yes);
    struct stat status{};
    const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return isFile && sound->open() ? std::move(sound) : nullptr;
}

} // namespace vornic

#include "VornicCore/audiofiles/WriteWav.h"

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/realtime/Fatal.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace vornic {

namespace {

constexpr auto sampleRate = static_cast<std::uint32_t>(DSP::sampleRate);
constexpr std::uint16_t pcmBytes = 2; // of a frame
constexpr std::uint32_t headerSize = 44;
constexpr std::uint32_t floatHeaderSize = 58;
constexpr std::uint32_t largestSize = std::numeric_limits<std::uint32_t>::max();

// Everything in a WAV file is little-endian, whatever the machine.
class Bytes {
  public:
    explicit Bytes(std::size_t size) { bytes_.reserve(size); }

    void text(std::string_view letters) {
        for (const char letter : letters) {
            bytes_.push_back(static_cast<std::byte>(letter));
        }
    }
    void number16(std::uint16_t value) {
        bytes_.push_back(static_cast<std::byte>(value & 0xffU));
        bytes_.push_back(static_cast<std::byte>(value >> 8U));
    }
    void number32(std::uint32_t value) {
        number16(static_cast<std::uint16_t>(value & 0xffffU));
        number16(static_cast<std::uint16_t>(value >> 16U));
    }
    /// What stands in every format chunk: of one channel, at 48 kHz.
    void format(std::uint16_t tag, std::uint16_t bytesPerFrame) {
        number16(tag);
        number16(1); // channels
        number32(sampleRate);
        number32(sampleRate * bytesPerFrame);
        number16(bytesPerFrame);
        number16(static_cast<std::uint16_t>(bytesPerFrame * 8)); // bits per sample
    }
    [[nodiscard]] std::span<const std::byte> all() const { return bytes_; }

  private:
    std::vector<std::byte> bytes_;
};

std::int16_t integerOf(float sample) {
    if (std::isnan(sample)) {
        return 0;
    }
    const float scaled = std::clamp(sample * 32768.0F, -32768.0F, 32767.0F);
    return static_cast<std::int16_t>(std::lrintf(scaled));
}

} // namespace

bool writeWAV(std::span<const float> samples, const std::filesystem::path& file, Readers readers) {
    require(samples.size() <= std::numeric_limits<std::uint32_t>::max(),
            "a WAV file of more samples than 32 bits can count");
    const std::uint64_t dataSize = std::uint64_t{samples.size()} * pcmBytes;
    if (dataSize > largestSize - headerSize) {
        return false;
    }
    Bytes bytes(headerSize + dataSize);
    bytes.text("RIFF");
    bytes.number32(static_cast<std::uint32_t>(dataSize) + headerSize - 8);
    bytes.text("WAVEfmt ");
    bytes.number32(16);
    bytes.format(1, pcmBytes); // PCM
    bytes.text("data");
    bytes.number32(static_cast<std::uint32_t>(dataSize));
    for (const float sample : samples) {
        bytes.number16(static_cast<std::uint16_t>(integerOf(sample)));
    }
    return !tryReplaceFile(file, bytes.all(), OnDisk::now, readers);
}

std::error_code writeFloatWAV(std::span<const float> samples, const std::filesystem::path& file) {
    const std::uint64_t dataSize = std::uint64_t{samples.size()} * sizeof(float);
    if (dataSize > largestSize - floatHeaderSize) {
        return std::make_error_code(std::errc::file_too_large);
    }
    Bytes bytes(floatHeaderSize + dataSize);
    bytes.text("RIFF");
    bytes.number32(static_cast<std::uint32_t>(dataSize) + floatHeaderSize - 8);
    bytes.text("WAVEfmt ");
    bytes.number32(18);
    bytes.format(3, sizeof(float)); // IEEE floats
    bytes.number16(0);              // nothing more about them
    bytes.text("fact");
    bytes.number32(4);
    bytes.number32(static_cast<std::uint32_t>(samples.size()));
    bytes.text("data");
    bytes.number32(static_cast<std::uint32_t>(dataSize));
    for (const float sample : samples) {
        bytes.number32(std::bit_cast<std::uint32_t>(sample));
    }
    return tryReplaceFile(file, bytes.all(), OnDisk::later);
}

} // namespace vornic

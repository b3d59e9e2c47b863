#include "VornicCore/recordings/WriteWav.h"

#include "VornicCore/realtime/Fatal.h"
#include "VornicCore/recordings/ReplaceFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace vornic {

namespace {

constexpr std::uint32_t sampleRate = 48000;
constexpr std::uint16_t bytesPerFrame = 2;
constexpr std::uint32_t headerSize = 44;

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

bool writeWAV(std::span<const float> samples, const std::filesystem::path& file) {
    require(samples.size() <= std::numeric_limits<std::uint32_t>::max(),
            "a WAV file of more samples than 32 bits can count");
    const std::uint64_t dataSize = std::uint64_t{samples.size()} * bytesPerFrame;
    if (dataSize > std::numeric_limits<std::uint32_t>::max() - headerSize) {
        return false;
    }
    Bytes bytes(headerSize + dataSize);
    bytes.text("RIFF");
    bytes.number32(static_cast<std::uint32_t>(dataSize) + headerSize - 8);
    bytes.text("WAVEfmt ");
    bytes.number32(16);
    bytes.number16(1); // PCM
    bytes.number16(1); // channels
    bytes.number32(sampleRate);
    bytes.number32(sampleRate * bytesPerFrame);
    bytes.number16(bytesPerFrame);
    bytes.number16(16); // bits per sample
    bytes.text("data");
    bytes.number32(static_cast<std::uint32_t>(dataSize));
    for (const float sample : samples) {
        bytes.number16(static_cast<std::uint16_t>(integerOf(sample)));
    }
    return replaceFile(file, bytes.all());
}

} // namespace vornic

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace vornic {

/// The sound of a file, block by block, so that a long one is never in memory whole: mono at the
/// file's own rate, every sample a finite number. Thread: any, one at a time.
class AudioStream {
  public:
    AudioStream() = default;
    AudioStream(const AudioStream&) = delete;
    AudioStream& operator=(const AudioStream&) = delete;
    virtual ~AudioStream() = default;

    /// Hz.
    [[nodiscard]] virtual double rate() const = 0;

    /// The length that the file claims, in seconds; none where it says nothing.
    [[nodiscard]] virtual std::optional<double> seconds() const = 0;

    enum class Next : std::uint8_t { block, end, error };

    /// Replaces `mono` with the next block, which has at least one sample. At the end and after an
    /// error `mono` is empty, and stays so.
    virtual Next read(std::vector<float>& mono) = 0;
};

} // namespace vornic

#pragma once

#include <array>

namespace vornic {

/// What the helper program that reads audio files writes first; single floats follow, mono. Both
/// programs are of one build, so it goes over the pipe as it lies in memory. Thread: any.
struct DecodedHeader {
    static constexpr std::array<char, 8> expectedMark{'v', 'o', 'r', 'n', 'i', 'c', 'D', '1'};

    std::array<char, 8> mark = expectedMark;
    /// Hz.
    double rate = 0.0;
    /// The length that the file claims; below 0 when it says nothing.
    double seconds = -1.0;
};

} // namespace vornic

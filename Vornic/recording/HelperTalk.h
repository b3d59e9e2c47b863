#pragma once

#include <array>
#include <cstdint>

// What the program and the helper that reads what others made say to each other: the program sends
// a descriptor with a letter over the helper's standard input, a socket; the helper answers on its
// standard output. Both are of one build, so all goes as it lies in memory. Thread: any.

namespace vornic {

/// What is to be done with the file that comes along.
enum class HelperDuty : char {
    /// Decode it: a DecodedHeader, then DecodedBlocks.
    sound = 's',
    /// Read it as an archive: ArchiveFrames.
    archive = 'a',
    /// Look through the folder in it, of bytesOfFolder: a PacksHeader, then bytesOfPacksIn.
    descriptions = 'd',
};

/// What comes first for a sound.
struct DecodedHeader {
    static constexpr std::array<char, 8> expectedMark{'v', 'o', 'r', 'n', 'i', 'c', 'D', '2'};

    std::array<char, 8> mark = expectedMark;
    /// Hz; 0: it is no sound file that the helper knows, and nothing follows.
    double rate = 0.0;
    /// The length that the file claims; below 0 when it says nothing.
    double seconds = -1.0;
};

/// What follows until one does not hold samples.
struct DecodedBlock {
    enum class Kind : std::uint32_t { samples, end, error };

    Kind kind = Kind::samples;
    /// So many single floats follow, mono.
    std::uint32_t count = 0;
};

/// One thing in an archive, as an ArchiveSink is told of it; so many bytes follow.
struct ArchiveFrame {
    enum class Kind : std::uint32_t {
        file,     // a name
        special,  // a name
        locked,   // a name
        content,  // bytes of the file
        whole,    // the file has ended
        damaged,  // the file has ended too soon
        cutShort, // the rest of the archive cannot be read
        end,      // of the archive
        failure   // a sentence, and the end
    };

    Kind kind = Kind::end;
    std::uint32_t size = 0;
};

/// So many bytes follow.
struct PacksHeader {
    std::uint64_t size = 0;
};

} // namespace vornic

#pragma once

#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/UnknownMembers.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SampleSource.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// A board together with the recordings that it needs elsewhere: the content of a ".vornic" file, a
/// JSON object. Thread: any.
struct BoardFile {
    std::string format{formatName};
    std::int64_t version = 1;
    Board board;
    /// The recordings by sample identifier: 16-bit PCM, little-endian, 48 kHz mono, as base64.
    std::map<std::string, std::string, std::less<>> samples;

    static constexpr std::string_view formatName = "vornic-board";
    /// The size of the largest file that is written or read, in bytes: more than eight minutes of
    /// recordings. It bounds what a file from elsewhere can claim; reading takes at most about ten
    /// times as much memory.
    static constexpr std::size_t largest = 64U << 20U;

    bool operator==(const BoardFile&) const = default;

    /// What a file brings along.
    struct Contents {
        Board board;
        /// What the board has besides, from a newer version.
        UnknownMembers unknown;
        /// 48 kHz mono, by sample identifier.
        std::map<std::string, std::vector<float>, std::less<>> samples;
    };

    /// The bytes of a file with `board`, with the members in it that are `unknown`, and those
    /// recordings of `embedding` that `source` has. Throws EncodeError for what JSON cannot hold
    /// and for a file larger than `largest`.
    static std::string encode(const Board& board, std::span<const std::string> embedding,
                              const SampleSource& source, const UnknownMembers& unknown = {});

    /// Reads a file. Throws DecodeError, with the place, for anything that is not one to the letter
    /// or is larger than `largest`; a recording that is no base64 is left out. Identifiers and all
    /// other texts are whatever the file says. When a stop is requested it ends early, and throws.
    static Contents decode(std::string_view data, const std::stop_token& stop = {});

    /// Samples as 16-bit integers, low byte first: 1 and more is 32767, -1 and less -32767, what is
    /// between is rounded toward zero; one that is no number becomes 0.
    static std::vector<std::byte> pcm16(std::span<const float> samples);

    /// And back: integers over 32767. An odd byte at the end is ignored.
    static std::vector<float> floats(std::span<const std::byte> pcm16);
};

} // namespace vornic

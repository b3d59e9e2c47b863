#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace vornic {

/// Strokes of one kind, as files: "press-03-soft-0.wav" to "press-03-soft-11.wav".
struct ExportedPool {
    /// What the files' names begin with; numbers and our own words only.
    std::string name;
    std::span<const Sample> strokes;

    std::string file(std::size_t variation) const {
        return name + "-" + std::to_string(variation) + ".wav";
    }
};

/// What is written for one key; pools that are empty are left out.
struct ExportedKey {
    std::int64_t code = 0;
    double gainDb = 0;
    double pitch = 0; // semitones
    double pan = 0;   // -1 to 1
    /// By velocity: soft, medium, hard.
    std::vector<ExportedPool> presses;
    std::vector<ExportedPool> releases;
};

/// Every key that sounds, in the order of scan codes, and the pools that they share, by name.
/// Refers to the bank. Thread: any.
struct ExportedKeys {
    std::vector<ExportedKey> keys;
    std::map<std::string, std::span<const Sample>> pools;

    ExportedKeys(const Board& board, const VoiceBank& bank);
};

} // namespace vornic

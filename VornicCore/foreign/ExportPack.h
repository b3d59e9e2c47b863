#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vornic {

/// The formats that a board is written in for other programs.
enum class ExportFormat : std::uint8_t { sfz, decent, mechvibes };

template <>
struct CaseNames<ExportFormat> {
    static constexpr std::array names{
        CaseName{ExportFormat::sfz, "sfz", "SFZ"},
        CaseName{ExportFormat::decent, "decent", "Decent Sampler"},
        CaseName{ExportFormat::mechvibes, "mechvibes", "Mechvibes, version 2"},
    };
};

/// What was written.
struct ExportedPack {
    std::size_t keys = 0;
    /// Recordings.
    std::size_t files = 0;
    /// Sentences about what the format cannot say.
    std::vector<std::string> lost;
};

/// Writes `board` as `bank` plays it into the folder `target`: its rendered strokes as WAV files of
/// 32-bit floats, to the bit, and the format's description of them. The folder is made; one that
/// has something in it is refused. Throws std::runtime_error with a sentence. Thread: any.
ExportedPack exportPack(const Board& board, const VoiceBank& bank, ExportFormat format,
                        const std::filesystem::path& target);

} // namespace vornic

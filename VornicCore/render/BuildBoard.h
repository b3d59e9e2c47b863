#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// A board as it plays.
struct RenderedBoard {
    /// Never null; empty where nothing could be rendered.
    std::shared_ptr<const VoiceBank> bank;
    /// One line for every value of the board that was too far out to render as it stands.
    std::vector<std::string> messages;
};

/// More than the largest board comes to, in frames of a bank: half a gigabyte.
inline constexpr std::size_t mostBankFrames = std::size_t{128} << 20;

/// How `buildBoard` works.
struct BuildOptions {
    /// Where the bank would exceed so many frames, strokes are cut.
    std::size_t mostFrames = mostBankFrames;
    /// Sounds that come after so many rendered frames, cut or not, are left out: rendering a board
    /// from anywhere ends within a minute or so.
    std::size_t mostRenderedFrames = 2 * mostBankFrames;
    /// Other seeds give other variations; all that is played has this one.
    std::uint64_t seed = 1;
};

/// Renders every sound of `board`, jobs in parallel on `threads` threads, this one among them. The
/// bank is the same to the bit whatever the number of threads. Blocks; any thread.
RenderedBoard buildBoard(const Board& board, const SampleSource& library, unsigned threads,
                         const BuildOptions& options = {});

} // namespace vornic

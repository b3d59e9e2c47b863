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
    /// One line for every value of the board that was too far out to render as it stands, and for
    /// every sound that did not get what it asks for.
    std::vector<std::string> messages;
};

/// What a bank holds at most, in frames: 64 MB, over three times what the largest built-in board
/// takes. Up to three are in memory at once: what plays, what it is compared with, and what it
/// replaces.
inline constexpr std::size_t mostBankFrames = std::size_t{16} << 20;

/// How `buildBoard` works.
struct BuildOptions {
    /// Where the bank would exceed so many frames, sounds get fewer variations, those that no key
    /// plays first; where one of each is still too much, strokes are cut.
    std::size_t mostFrames = mostBankFrames;
    /// Sounds that come after so many rendered frames, kept or not, are left out: rendering a board
    /// from anywhere ends soon and does not fill the memory.
    std::size_t mostRenderedFrames = 4 * mostBankFrames;
    /// Other seeds give other variations; all that is played has this one.
    std::uint64_t seed = 1;
};

/// Renders every sound of `board`, jobs in parallel on `threads` threads, this one among them. The
/// bank is the same to the bit whatever the number of threads. Blocks. Thread: any.
RenderedBoard buildBoard(const Board& board, const SampleSource& library, unsigned threads,
                         const BuildOptions& options = {});

} // namespace vornic

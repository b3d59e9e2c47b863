#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/render/SampleSource.h"
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

/// Renders every sound of `board`, jobs in parallel on `threads` threads, this one among them. The
/// bank is the same to the bit whatever the number of threads. Where it would exceed `mostFrames`,
/// strokes are cut. Other seeds give other variations; all that is played has the default one.
/// Blocks; any thread.
RenderedBoard buildBoard(const Board& board, const SampleSource& library, unsigned threads,
                         std::size_t mostFrames = mostBankFrames, std::uint64_t seed = 1);

} // namespace vornic

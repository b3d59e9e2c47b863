#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <memory>

namespace vornic {

/// What keys play. Board and bank are exchanged together: a key between the two would look for the
/// sounds of the one in the other. Thread: any.
struct PlayedBoard {
    /// Says which sound a key plays, and how; null leaves every key silent.
    std::shared_ptr<const Board> board;
    /// The board that `bank` was rendered from; never null where there is a bank. It differs from
    /// `board` while an edit that is heard already waits for what it needs rendered.
    std::shared_ptr<const Board> rendered;
    /// Null leaves every key silent.
    std::shared_ptr<const VoiceBank> bank;
    /// The gain of every key, besides what the board says.
    double gain = 1.0;
};

} // namespace vornic

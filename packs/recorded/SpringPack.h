#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vornic::packs {

/// What became of the recordings.
struct Assembly {
    std::size_t written = 0;
    std::vector<std::string> notes; ///< One line for each recording left out, with the reason.
    std::string error;              ///< Empty when the pack was made.
};

/// In which order strokes are written, as indices.
using StrokeOrder = std::function<std::vector<std::size_t>(const std::vector<std::vector<float>>&)>;

/// Makes the pack "spring" in `target` from the key recordings in `source` (see `KeyRecording`).
/// Whatever `target` held before is removed; its manifest comes last, so half a pack is none.
///
/// Each recording becomes 48 kHz mono, free of rumble, and is cut to its stroke. Left out are
/// those that repeat another, ran into full scale, are silent or hold a second stroke.
///
/// Space, enter and backspace are filled up to six presses with variants (`variantOf`).
///
/// Levels: the recordings were levelled file by file, so how loud they are to one another says
/// little. Every regular press is brought to -24 dBFS (`strokeLevel`); presses of the other classes
/// get the one gain that brings the median regular press there, which keeps what relation to it
/// they have; every release is brought to -30 dBFS, since on five keyboards whose recordings keep
/// their level a release measured 2 to 19 dB below a press, 6 in the median. No sample exceeds
/// -1 dBFS: a stroke that would is kept quieter.
///
/// The files of a class come in the order that `order` gives them; without it, in that of the keys.
Assembly assembleSpringPack(const std::filesystem::path& source,
                            const std::filesystem::path& target, const StrokeOrder& order = {});

} // namespace vornic::packs

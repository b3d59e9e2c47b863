#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/render/RenderJob.h"
#include "tests/VornicCore/render/NoiseStroke.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

inline LayerSpec layerOf(std::vector<std::string> recordings) {
    return LayerSpec(LayerPart::bottomOut, std::move(recordings), 0, 0, 0);
}

/// A sound whose parts and character change nothing, with one layer of `recordings`.
inline SoundSpec plainSound(std::vector<std::string> recordings) {
    return SoundSpec("keys", "Keys", "#000000",
                     StrokeSpec({layerOf(std::move(recordings))}, ChainParams::neutral()),
                     std::nullopt, SwitchParts{}, Character{});
}

inline Board boardOf(std::vector<SoundSpec> sounds) {
    return Board("test", "Test", "", "#000000", BuildParts{}, std::move(sounds), {});
}

/// The press of a sound on a board of its own, whose variations differ as ordinary ones do.
inline RenderJob pressOf(const SoundSpec& sound) {
    return RenderJob(sound, boardOf({sound}), false, false);
}

} // namespace vornic

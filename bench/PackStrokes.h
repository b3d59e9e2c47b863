#pragma once

#include "VornicCore/packs/SoundPack.h"

#include <string>
#include <vector>

namespace vornic::bench {

/// The recordings of a built pack, 48 kHz mono, in the order of their files: those of "regular",
/// "space", "enter", "backspace", "modifier" or "release". Thread: main.
std::vector<std::vector<float>> strokesOf(const SoundPack& pack, const std::string& keyClass);

} // namespace vornic::bench

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vornic::packs {

/// Another stroke of the same key, made from a recording of one: retuned by up to 40 cents, its
/// bands up to 3 dB louder or fainter, and what follows the first 8 ms up to 2.5 ms sooner or later
/// and up to 3 dB louder or fainter. So much do the strokes of one key differ that were recorded
/// more than once. As long as the recording; the same for the same seed.
std::vector<float> variantOf(std::span<const float> stroke, std::uint64_t seed);

} // namespace vornic::packs

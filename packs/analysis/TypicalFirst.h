#pragma once

#include <cstddef>
#include <vector>

namespace vornic::packs {

/// In which order the strokes of a class, 48 kHz mono, go into a pack, as indices of `strokes`. A
/// board that plays fewer variations than there are files takes the first ones: they are to be
/// typical and different from one another. The most typical comes first, then always the one that
/// is farthest from all before it, the least typical quarter last. Equal strokes give the same
/// order. Thread: any.
std::vector<std::size_t> typicalFirst(const std::vector<std::vector<float>>& strokes);

} // namespace vornic::packs

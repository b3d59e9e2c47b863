#pragma once

#include "packs/model/PackTable.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace vornic::packs {

/// The strokes of one class, one for each of `keyPlaces(keyClass)`, 48 kHz mono, the first contact
/// 6 ms after the start, before it the noise of the way there. Their energies keep the levels of
/// the table, so that the median regular press of a pack has energy 1. Equal tables give equal
/// samples.
///
/// A stroke is a key cap, stem and spring that hit the board several times. Each hit drives, by
/// contacts within a fraction of a millisecond, the board's resonances: a few strong modes and, in
/// every third of an octave, a crowd of weak ones that decay faster (the residue). What rings on in
/// case, desk and room is driven by the same hits and decays more slowly. Where a key sits decides
/// which modes it drives and how they are tuned.
std::vector<std::vector<float>> makeStrokes(const PackTable& table, std::string_view keyClass);

} // namespace vornic::packs

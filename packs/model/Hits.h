#pragma once

#include "packs/model/Draws.h"
#include "packs/model/KeyPlaces.h"
#include "packs/model/PackTable.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

/// What is drawn for each stroke: which parts hit, when and how hard.
namespace vornic::packs {

/// One part of a key that hits another.
struct Hit {
    double ms;          // after the first
    double gainDb;      // re the others of its window
    double tilt;        // dB an octave
    std::size_t window; // whose spectrum it has
    double share{};     // of the stroke's energy
};

inline double power(double db) {
    return std::pow(10.0, db / 10);
}

/// Which hits a stroke has, in order of time.
std::vector<Hit> drawHits(const StrokeTable& table, const Draws& draws);

/// The median power of all events of each window together.
std::array<double, windowCount> windowPowers(const StrokeTable& table);

/// What part of a window's energy its hits have; the rest rings on. Thread: any.
double hitShare(const StrokeTable& table, std::size_t window);

/// What rings on follows the hits: together they have the energy that they usually have, of which
/// each gets its share. `powers` are those of the windows. Thread: any.
void setShares(const StrokeTable& table, const std::array<double, windowCount>& powers,
               std::vector<Hit>& hits);

/// The levels of the bands in one stroke of the key at `place`.
std::array<Bands, windowCount> drawLevels(const StrokeTable& table, const Draws& draws,
                                          const KeyPlace& place);

/// The energy of a stroke, dB re the median regular press.
double drawLevelDb(const StrokeTable& table, const Draws& draws);

} // namespace vornic::packs

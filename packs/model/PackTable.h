#pragma once

#include "packs/analysis/StrokeFeatures.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the strokes of a modelled keyboard are made from: the parameters of its sound packs.
namespace vornic::packs {

/// A burst of a stroke: a part of the key that hits another.
struct EventTable {
    double share = 1; // of strokes that have it
    double ms = 0;    // after the first, median and standard deviation
    double msSpread = 0;
    double db = 0; // beside the others of its window, median and standard deviation
    double dbSpread = 0;
    double tilt = 0; // brighter than its window's spectrum, dB an octave
};

/// A resonance of the struck board.
struct ModeTable {
    double hz = 0;
    double part = 0.5; // of the energy of its third octave, the rest being residue
    double decayMs = 0;
    double cents = 40; // standard deviation of its frequency from key to key
};

/// A line of the spring's ping.
struct PingTable {
    double hz = 0;
    double db = 0; // energy re the stroke's
    double decayMs = 0;
};

/// The strokes of one class.
struct StrokeTable {
    std::string from;      // the measured class
    std::size_t strokes{}; // that were measured
    double lengthMs = 175;
    double levelDb = 0; // energy re the median regular press, median and standard deviation
    double levelSpread = 3;
    double contactMs = 0.5; // over which the first parts of a burst come
    double lagMs = 0.4;     // of what is heard at 1 kHz behind the contact
    double snap = 0.2;      // part of a burst's energy that is gone within a millisecond
    double bodyShare = 1;   // of the mid window's energy that is ringing rather than events
    double tailShare = 1;   // of the late window's
    double tailMs = 25;     // amplitude time constant of what rings on
    double tailTone = 0;    // part of what rings on that is lines rather than noise
    double crowd = 1.3;     // weak resonances a band, in numbers that just overlap
    int rattles = 0;        // weak impacts of the stabiliser
    std::vector<EventTable> events;
    std::array<Bands, windowCount> levels{};  // dB re the stroke's energy
    std::array<Bands, windowCount> spreads{}; // standard deviation of each over strokes, dB
    Bands decayMs{};                          // amplitude time constant of the residue
    std::vector<ModeTable> modes;
    /// Noise of cap and stem on their way to the first contact, in each broad band; dB re the
    /// stroke's energy.
    std::array<double, broadCount> approach{-70, -70, -70, -70, -70, -70};
};

/// A key class: "regular", "space", "enter", "backspace", "modifier" or "release".
struct ClassTable {
    std::string name;
    StrokeTable strokes;
};

struct PackTable {
    std::string id, name, character, credit;
    std::string keyboard;   // whose figures the parameters come from, as the measured file names it
    std::uint64_t seed = 1; // of everything drawn
    double pressDb = -24;   // RMS of the median regular press over its first 40 ms, dBFS
    std::vector<PingTable> ping;
    std::vector<ClassTable> classes;

    const StrokeTable* find(std::string_view keyClass) const;
    StrokeTable* find(std::string_view keyClass);
};

/// None, and a reason in `error`, if the file cannot be read or lacks something.
std::optional<PackTable> readPackTable(const std::filesystem::path& file, std::string& error);

/// Writes `table` for people to read. False if it could not be written.
bool writePackTable(const PackTable& table, const std::filesystem::path& file);

} // namespace vornic::packs

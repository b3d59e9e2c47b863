#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>
#include <map>
#include <string_view>

namespace vornic {

/// The five-band tone control of a processing chain. An equaliser that was read from a file is kept
/// as it was: its gains may lie outside the range, and bands may be missing.
/// Thread: any, as everything here.
struct Equalizer {
    /// In the order of the filter cascade and of every list.
    enum class Band : std::uint8_t { bass, body, clack, click, air };

    /// The permitted gains, in dB.
    struct Range {
        float lowest;
        float highest;
    };
    static constexpr Range range{-12, 12};

    /// A gain in dB for each band; a missing band counts as 0.
    std::map<Band, float> gains;

    /// Every gain 0.
    Equalizer() : Equalizer(std::map<Band, float>{}) {}

    /// Takes the gains, clamped into the range, and 0 for each missing band. A gain that is not a
    /// number stays so.
    explicit Equalizer(const std::map<Band, float>& given);

    /// The instance whose gains are all 0.
    static const Equalizer& flat();

    /// The gain of a band in dB, 0 if it is missing.
    float gain(Band band) const;

    /// Stores a gain, clamped into the range.
    void setGain(Band band, float gainDb);

    /// How much to lower the level, in dB, so that boosting a band leaves the loudness about the
    /// same: minus half of the largest gain, or -0 when none is above 0.
    float headroom() const;

    /// By the whole map: a missing band differs from one at 0.
    bool operator==(const Equalizer&) const = default;
};

template <>
struct CaseNames<Equalizer::Band> {
    static constexpr std::array names{
        CaseName{Equalizer::Band::bass, "bass", "Bass"},
        CaseName{Equalizer::Band::body, "body", "Body"},
        CaseName{Equalizer::Band::clack, "clack", "Clack"},
        CaseName{Equalizer::Band::click, "click", "Click"},
        CaseName{Equalizer::Band::air, "air", "Air"},
    };
};

/// The middle or corner of the band, in Hz.
float frequency(Equalizer::Band band);

/// What the band does to a keystroke, in one line for the user.
std::string_view hint(Equalizer::Band band);

} // namespace vornic

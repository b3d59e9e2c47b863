#pragma once

#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/Equalizer.h"

#include <optional>
#include <vector>

namespace vornic::DSP {

/// Runs `samples` in place through a high-pass (if `highPassHz` is above 15), a section per
/// equaliser band whose gain is not 0, in the order of the bands, and a low-pass (if `lowPassHz` is
/// below 19000). Without any of them nothing changes, to the bit.
void tone(std::vector<float>& samples, const Equalizer& eq, double highPassHz, double lowPassHz);

/// What that cascade makes of steady sines, at DSP::sampleRate: its sections are made once for all
/// frequencies that are asked for. Thread: any.
class ToneResponse {
  public:
    ToneResponse(const Equalizer& eq, double highPassHz, double lowPassHz);

    /// The gain at `frequency` Hz, in dB.
    [[nodiscard]] double gainDb(double frequency) const noexcept;

  private:
    std::vector<Biquad> sections_;
};

// The sections of that cascade, one by one; none where it would change nothing.
[[nodiscard]] std::optional<Biquad> highPassSection(double highPassHz) noexcept;
[[nodiscard]] std::optional<Biquad> bandSection(Equalizer::Band band, float gainDb) noexcept;
[[nodiscard]] std::optional<Biquad> lowPassSection(double lowPassHz) noexcept;

} // namespace vornic::DSP

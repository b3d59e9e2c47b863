#include "VornicCore/render/LaneChain.h"

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/realtime/IntegerPart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace vornic {

namespace {

using Band = Equalizer::Band;

void setLane(LaneSection& section, std::size_t lane, const DSP::Biquad& biquad) {
    section.b0.lane[lane] = biquad.b0;
    section.b1.lane[lane] = biquad.b1;
    section.b2.lane[lane] = biquad.b2;
    section.a1.lane[lane] = biquad.a1;
    section.a2.lane[lane] = biquad.a2;
}

LaneSection everywhere(const DSP::Biquad& biquad) {
    LaneSection section{};
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
        setLane(section, lane, biquad);
    }
    return section;
}

} // namespace

std::vector<LaneSection> sharedSections(const ChainParams& chain) {
    std::vector<LaneSection> sections;
    if (const auto highPass = DSP::highPassSection(chain.highPassHz)) {
        sections.push_back(everywhere(*highPass));
    }
    for (const Band band : {Band::body, Band::clack}) {
        if (const auto section = DSP::bandSection(band, chain.eq.gain(band))) {
            sections.push_back(everywhere(*section));
        }
    }
    if (const auto lowPass = DSP::lowPassSection(chain.lowPassHz)) {
        sections.push_back(everywhere(*lowPass));
    }
    return sections;
}

std::vector<LaneSection> ownSections(const LaneChains& chains) {
    std::vector<LaneSection> sections;
    for (const Band band : {Band::bass, Band::click, Band::air}) {
        LaneSection section{};
        bool changes = false;
        for (std::size_t lane = 0; lane < chains.size(); ++lane) {
            // A lane whose gain is 0 passes through.
            section.b0.lane[lane] = 1;
            if (const auto own = DSP::bandSection(band, chains[lane].eq.gain(band))) {
                setLane(section, lane, *own);
                changes = true;
            }
        }
        if (changes) {
            sections.push_back(section);
        }
    }
    return sections;
}

LaneBody::LaneBody(const ChainParams& chain) : mix(chain.bodyMix) {
    if (!(chain.bodyMix > 0)) {
        return;
    }
    double longest = 0;
    for (const DSP::Mode& mode : chain.bodyModes) {
        const double radius = DSP::modeRadius(mode);
        const double cosine =
            std::cos(2.0 * std::numbers::pi * std::min(mode.frequency, 21600.0) / DSP::sampleRate);
        modes.push_back({.feedback1 = 2.0 * radius * cosine,
                         .feedback2 = radius * radius,
                         .gain = DSP::factorOfDecibels(mode.gainDb) * (1.0 - radius)});
        longest = std::max(longest, mode.decayMs);
    }
    const double frames = std::min(longest / 1000.0 * 3.0 * DSP::sampleRate, DSP::longestTail);
    tail = integerPart(frames).value_or(0);
}

void setDampingAndDrive(LaneFinish& finish, const ChainParams& chain) {
    finish.damping = chain.damping > 0;
    if (finish.damping) {
        const double amount = std::min(chain.damping, 1.0);
        const double start = std::trunc(chain.dampingStartMs / 1000.0 * DSP::sampleRate);
        const double cutoff = 20000.0 * std::pow(0.1, amount);
        const double decay = (200.0 - 192.0 * amount) / 1000.0 * DSP::sampleRate;
        finish.dampingStart = integerPart(start).value_or(0);
        finish.dampingPole = std::exp(-2.0 * std::numbers::pi * cutoff / DSP::sampleRate);
        // A pad that touched the sound before it began has damped it already.
        finish.dampingLevel = std::exp(std::min(start, 0.0) / decay);
        finish.dampingDecay = std::exp(-1.0 / decay);
    }
    finish.drive = chain.drive > 0;
    finish.driveGain = 1.0 + 4.0 * chain.drive;
}

} // namespace vornic

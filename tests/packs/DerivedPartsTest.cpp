// The click, the spring ping and the wire rattle that the library derives from the packs.

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/render/PartSamples.h"
#include "tests/support/Required.h"

#include "packs/analysis/StrokeFeatures.h"
#include "packs/recorded/StrokeShape.h"
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace vornic::packs {
namespace {

std::vector<float> packStroke(const std::string& name) {
    return required(loadAudio(std::filesystem::path(VORNIC_BUILT_PACKS) / name));
}

double shareBetween(const std::vector<float>& samples, double fromHz, double toHz) {
    const auto spectrum = powerSpectrum(samples, 0, 0, 100, 0.2, 8192);
    return powerBetween(spectrum, fromHz, toHz) / powerBetween(spectrum, 20, 20000);
}

TEST(DerivedParts, theClickIsBrightAndShort) {
    const auto click = PartSamples::click(packStroke("clicky/regular-01.wav"));
    EXPECT_GT(shareBetween(click, 4000, 16000), 0.5);
    EXPECT_LE(click.size(), 20 * millisecond);
    EXPECT_GE(featuresOf(click).crestDb, 12);
}

TEST(DerivedParts, theSpringPingRingsAtItsPitch) {
    const auto ping = PartSamples::spring(packStroke("spring/regular-01.wav"));
    EXPECT_GT(shareBetween(ping, 2000, 4500), 0.6);
    // It still rings, 40 dB above silence, when a click would be over.
    const auto late = std::span(ping).subspan(40 * millisecond, 10 * millisecond);
    EXPECT_GT(decibels(rms(late)) - decibels(static_cast<double>(peak(ping))), -50);
}

TEST(DerivedParts, theWireRattleIsBrightAndOfSeveralHits) {
    const auto rattle = PartSamples::rattle(packStroke("metal/regular-01.wav"));
    EXPECT_GT(shareBetween(rattle, 2500, 16000), 0.7);
    EXPECT_GE(eventsOf(rattle, 0).size(), 2U);
}

} // namespace
} // namespace vornic::packs

#include "VornicCore/dsp/Equalizer.h"

#include "VornicCore/dsp/DSP.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace vornic {
namespace {

using Band = Equalizer::Band;

TEST(Equalizer, clampsGivenGainsAndFillsTheRest) {
    const Equalizer eq({{Band::bass, 20.0F}});
    EXPECT_EQ(eq.gains, (std::map<Band, float>{{Band::bass, 12.0F},
                                               {Band::body, 0.0F},
                                               {Band::clack, 0.0F},
                                               {Band::click, 0.0F},
                                               {Band::air, 0.0F}}));
}

TEST(Equalizer, clampsWhatIsWritten) {
    Equalizer eq;
    eq.setGain(Band::click, -30);
    EXPECT_EQ(eq.gain(Band::click), -12.0F);
    eq.setGain(Band::click, 12.5F);
    EXPECT_EQ(eq.gain(Band::click), 12.0F);
    eq.setGain(Band::click, 3.25F);
    EXPECT_EQ(eq.gain(Band::click), 3.25F);
    eq.setGain(Band::air, std::numeric_limits<float>::infinity());
    EXPECT_EQ(eq.gain(Band::air), 12.0F);
    EXPECT_EQ(Equalizer::range.lowest, -12.0F);
    EXPECT_EQ(Equalizer::range.highest, 12.0F);
}

TEST(Equalizer, aMissingBandReadsAsZeroButDiffersFromOne) {
    Equalizer eq;
    eq.gains.erase(Band::body);
    EXPECT_EQ(eq.gain(Band::body), 0.0F);
    EXPECT_NE(eq, Equalizer::flat());
    eq.setGain(Band::body, 0);
    EXPECT_EQ(eq, Equalizer::flat());
}

TEST(Equalizer, flatHoldsAllFiveBandsAtZero) {
    EXPECT_EQ(Equalizer::flat().gains.size(), 5U);
    for (const Band band : allCases<Band>()) {
        EXPECT_EQ(Equalizer::flat().gains.at(band), 0.0F);
    }
}

TEST(Equalizer, headroomIsMinusZeroWithoutABoost) {
    EXPECT_EQ(Equalizer::flat().headroom(), 0.0F);
    EXPECT_TRUE(std::signbit(Equalizer::flat().headroom()));
    const float cut = Equalizer({{Band::bass, -6.0F}}).headroom();
    EXPECT_EQ(cut, 0.0F);
    EXPECT_TRUE(std::signbit(cut));
}

TEST(Equalizer, headroomIsHalfTheLargestBoost) {
    EXPECT_EQ(Equalizer({{Band::bass, 8.0F}, {Band::air, 3.0F}}).headroom(), -4.0F);
    EXPECT_EQ(Equalizer({{Band::air, 3.0F}}).headroom(), -1.5F);
}

TEST(Equalizer, headroomCountsAMissingBandAsZero) {
    Equalizer eq;
    eq.gains = {{Band::clack, -5.0F}};
    EXPECT_EQ(eq.headroom(), 0.0F);
    EXPECT_TRUE(std::signbit(eq.headroom()));
    // Gains from a file may lie outside the range.
    eq.gains = {{Band::clack, 40.0F}};
    EXPECT_EQ(eq.headroom(), -20.0F);
}

TEST(Equalizer, describesItsBandsInOrder) {
    struct Row {
        std::string_view raw;
        std::string_view label;
        float frequency;
        std::string_view hint;
    };
    const std::vector<Row> rows{
        {"bass", "Bass", 100, "Low end under every key (100 Hz)"},
        {"body", "Body", 250, "Wood-and-plastic warmth of the case (250 Hz)"},
        {"clack", "Clack", 1200, "The keycap hitting the plate (1.2 kHz)"},
        {"click", "Click", 3500, "The sharp switch click (3.5 kHz)"},
        {"air", "Air", 9000, "Sparkle and hiss on top (9 kHz)"}};
    const auto bands = allCases<Band>();
    ASSERT_EQ(bands.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(bands[i]), i);
        EXPECT_EQ(rawString(bands[i]), rows[i].raw);
        EXPECT_EQ(label(bands[i]), rows[i].label);
        EXPECT_EQ(frequency(bands[i]), rows[i].frequency);
        EXPECT_EQ(hint(bands[i]), rows[i].hint);
    }
    EXPECT_FALSE(caseFromRawString<Band>("treble").has_value());
}

TEST(Mode, isBuiltByPosition) {
    const DSP::Mode mode{480, 40, -2};
    EXPECT_EQ(mode.frequency, 480);
    EXPECT_EQ(mode.decayMs, 40);
    EXPECT_EQ(mode.gainDb, -2);
    EXPECT_NE(mode, (DSP::Mode{481, 40, -2}));
    EXPECT_NE(mode, (DSP::Mode{480, 41, -2}));
    EXPECT_NE(mode, (DSP::Mode{480, 40, -1}));
}

} // namespace
} // namespace vornic

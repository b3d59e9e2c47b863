#include "VornicCore/dsp/EQPreset.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace vornic {
namespace {

using Band = Equalizer::Band;

TEST(EQPreset, listsEightPresetsInOrder) {
    struct Row {
        std::string_view id;
        std::string_view name;
        std::string_view summary;
        std::array<float, 5> gains;
    };
    const std::vector<Row> rows{
        {"natural", "Natural", "The recording as it is", {0, 0, 0, 0, 0}},
        {"warm", "Warm", "More bass and body, softer top", {5, 2, 0, -2, -3}},
        {"thocky", "Thocky", "Deep and rounded, like a heavy custom board", {7, 3, -2, -5, -6}},
        {"creamy", "Creamy", "Smooth and muted, nothing sharp", {3, 4, 1, -6, -8}},
        {"crisp", "Crisp", "Clean and detailed", {1, -1, 0, 3, 4}},
        {"clacky", "Clacky", "Loud plastic clack up front", {2, -2, 5, 2, 0}},
        {"snappy", "Snappy", "Thin and fast, all click", {-3, -3, 2, 5, 3}},
        {"muffled", "Muffled", "Like typing in the next room", {2, 3, -4, -9, -12}}};
    ASSERT_EQ(EQPreset::all().size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const EQPreset& preset = EQPreset::all()[i];
        EXPECT_EQ(preset.id, rows[i].id);
        EXPECT_EQ(preset.name, rows[i].name);
        EXPECT_EQ(preset.summary, rows[i].summary);
        ASSERT_EQ(preset.eq.gains.size(), 5U) << preset.id;
        for (const Band band : allCases<Band>()) {
            EXPECT_EQ(preset.eq.gain(band), rows[i].gains.at(static_cast<std::size_t>(band)))
                << preset.id << " " << rawString(band);
        }
    }
}

TEST(EQPreset, headroomFollowsTheLargestGain) {
    EXPECT_EQ(EQPreset::named("muffled")->eq.headroom(), -1.5F);
    EXPECT_EQ(EQPreset::named("thocky")->eq.headroom(), -3.5F);
}

TEST(EQPreset, isFoundByItsExactId) {
    ASSERT_NE(EQPreset::named("warm"), nullptr);
    EXPECT_EQ(EQPreset::named("warm")->id, EQPreset::defaultID);
    EXPECT_EQ(EQPreset::named("Warm"), nullptr);
    EXPECT_EQ(EQPreset::named(""), nullptr);
}

TEST(EQPreset, isMatchedByExactlyEqualGains) {
    ASSERT_NE(EQPreset::matching(Equalizer::flat()), nullptr);
    EXPECT_EQ(EQPreset::matching(Equalizer::flat())->id, "natural");
    for (const EQPreset& preset : EQPreset::all()) {
        EXPECT_EQ(EQPreset::matching(preset.eq), &preset);
    }
    Equalizer moved = EQPreset::named("warm")->eq;
    moved.setGain(Band::bass, 5.5F);
    EXPECT_EQ(EQPreset::matching(moved), nullptr);
}

TEST(EQPreset, anEqualizerThatLacksABandMatchesNone) {
    Equalizer lacking;
    lacking.gains.erase(Band::air);
    EXPECT_EQ(EQPreset::matching(lacking), nullptr);
}

TEST(EQPreset, comparesFieldByField) {
    const EQPreset& natural = EQPreset::all()[0];
    EQPreset other = natural;
    EXPECT_EQ(other, natural);
    other.summary = "Something else";
    EXPECT_NE(other, natural);
}

} // namespace
} // namespace vornic

#include "VornicCore/parts/Parts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace vornic {
namespace {

using Modes = std::vector<DSP::Mode>;

const std::map<CaseMaterial, Modes> caseModes{
    {CaseMaterial::plastic, {{480, 40, -2}, {1150, 25, -6}}},
    {CaseMaterial::aluminium, {{900, 60, -4}, {2400, 45, -8}}},
    {CaseMaterial::wood, {{260, 30, -2}, {700, 18, -6}}},
    {CaseMaterial::acrylic, {{700, 35, -3}, {1800, 22, -7}}}};
const std::map<Plate, Modes> plateModes{{Plate::polycarbonate, {{350, 20, -4}}},
                                        {Plate::fr4, {{600, 25, -5}}},
                                        {Plate::pom, {{300, 18, -5}}},
                                        {Plate::aluminium, {{1400, 60, -4}, {3600, 40, -9}}},
                                        {Plate::brass, {{1200, 120, -3}, {3100, 80, -8}}},
                                        {Plate::carbon, {{1700, 30, -6}}},
                                        {Plate::none, {}}};

TEST(Parts, modesAreThoseOfTheCaseFollowedByThoseOfThePlate) {
    for (const auto& [material, ofCase] : caseModes) {
        for (const auto& [plate, ofPlate] : plateModes) {
            BuildParts parts;
            parts.caseMaterial = material;
            parts.plate = plate;
            Modes expected = ofCase;
            expected.insert(expected.end(), ofPlate.begin(), ofPlate.end());
            EXPECT_EQ(Parts::modes(parts), expected) << rawString(material) << rawString(plate);
        }
    }
}

TEST(Parts, aPlatelessCaseHasItsOwnModesOnly) {
    BuildParts parts;
    parts.caseMaterial = CaseMaterial::aluminium;
    parts.plate = Plate::none;
    EXPECT_EQ(Parts::modes(parts), (Modes{{900, 60, -4}, {2400, 45, -8}}));
}

TEST(Parts, nextToNoRattleIsNone) {
    EXPECT_FALSE(Parts::rattleDb({StabTuning::stock, 0.01}).has_value());
    EXPECT_FALSE(Parts::rattleDb({StabTuning::stock, 0}).has_value());
    EXPECT_FALSE(Parts::rattleDb({StabTuning::stock, -1}).has_value());
    EXPECT_TRUE(Parts::rattleDb({StabTuning::stock, 0.0101}).has_value());
}

TEST(Parts, tuningLowersTheRattle) {
    EXPECT_EQ(Parts::rattleDb({StabTuning::stock, 1}), -12);
    EXPECT_EQ(Parts::rattleDb({StabTuning::lubed, 1}), -20);
    EXPECT_EQ(Parts::rattleDb({StabTuning::tuned, 1}), -30);
    EXPECT_DOUBLE_EQ(Parts::rattleDb({StabTuning::tuned, 0.1}).value(), -50);
}

} // namespace
} // namespace vornic

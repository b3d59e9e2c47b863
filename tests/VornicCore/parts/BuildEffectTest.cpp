#include "VornicCore/parts/Parts.h"
#include "tests/VornicCore/parts/EffectRow.h"

#include <gtest/gtest.h>

#include <map>

namespace vornic {
namespace {

const std::map<CaseMaterial, EffectRow> cases{
    {CaseMaterial::plastic, {.eq = {0, 1, 0, 0, 0}, .ring = 0.3}},
    {CaseMaterial::aluminium, {.eq = {-0.5, 0, 0, 0, 0}, .sustainDb = -1}},
    {CaseMaterial::wood, {.eq = {1, 2, 0, 0, -1}, .ring = 0.1}},
    {CaseMaterial::acrylic, {.eq = {0, 0, 1.5, 1.5, 0}, .ring = 0.2}}};
const std::map<Plate, EffectRow> plates{
    {Plate::polycarbonate, {.eq = {1, 0, 0, -1.5, 0}, .damping = 0.15, .pitch = -0.3}},
    {Plate::fr4, {}},
    {Plate::pom, {.eq = {1.5, 0, 0, -2, 0}, .damping = 0.2, .pitch = -0.4}},
    {Plate::aluminium, {.eq = {0, 0, 0, 1.5, 0}, .pitch = 0.3, .ring = 0.25}},
    {Plate::brass, {.eq = {0, 0, 0, 2, 1}, .sustainDb = 2, .ring = 0.5}},
    {Plate::carbon, {.eq = {0, 0, 0, 1, 0}, .sustainDb = -1}},
    {Plate::none, {.eq = {2, 1.5, 0, -2, 0}, .damping = 0.25, .pitch = -0.6}}};
const std::map<Mount, EffectRow> mounts{
    {Mount::gasket, {.eq = {0.5, 0, 0, 0, 0}, .sustainDb = -1, .damping = 0.2}},
    {Mount::top, {.eq = {0, 0, 1, 0, 0}, .attackDb = 1}},
    {Mount::tray, {.eq = {0, 0, 1, 0, 0}, .sustainDb = 2, .ring = 0.4}},
    {Mount::leafSpring, {.eq = {1.5, 0, 0, 0, 0}, .sustainDb = -1, .damping = 0.1}}};
const std::map<Foam, EffectRow> foams{{Foam::caseFoam, {.eq = {0, -1.5, 0, 0, 0}, .ring = -0.4}},
                                      {Foam::peFoam, {.eq = {0, 0, 2, 1.5, 0}, .damping = 0.15}},
                                      {Foam::tapeMod, {.eq = {1.5, 0, 1.5, 0, 0}, .damping = 0.1}},
                                      {Foam::plateFoam, {.ring = -0.2}},
                                      {Foam::switchPads, {.sustainDb = -2, .damping = 0.2}}};
const std::map<KeycapMaterial, EffectRow> keycaps{
    {KeycapMaterial::pbt, {.eq = {1, 0, 0, -1.5, 0}, .pitch = -0.3}},
    {KeycapMaterial::abs, {.eq = {0, 0, 0, 1.5, 1}, .pitch = 0.4}}};
const std::map<KeycapProfile, EffectRow> profiles{
    {KeycapProfile::cherry, {}},
    {KeycapProfile::oem, {.eq = {0.5, 0, 0, 0, 0}, .pitch = -0.2}},
    {KeycapProfile::sa, {.eq = {2, 1.5, 0, 0, 0}, .sustainDb = 1, .pitch = -0.8}},
    {KeycapProfile::xda, {.eq = {0, 0, 0, 1, 0}, .pitch = 0.5}},
    {KeycapProfile::lowProfile,
     {.eq = {0, 0, 0, 2, 0}, .sustainDb = -3, .damping = 0.2, .pitch = 0.6}}};

void expectSum(const BuildParts& parts) {
    EffectRow sum = cases.at(parts.caseMaterial);
    sum += plates.at(parts.plate);
    sum += mounts.at(parts.mount);
    for (const Foam foam : parts.foams) {
        sum += foams.at(foam);
    }
    sum += keycaps.at(parts.keycapMaterial);
    sum += profiles.at(parts.keycapProfile);
    const PartEffect effect = Parts::effect(parts);
    expectEffect(effect, sum);
    EXPECT_FALSE(effect.clickLayerDb.has_value());
    EXPECT_FALSE(effect.springLayerDb.has_value());
}

TEST(BuildEffect, sumsEveryChoice) {
    for (const CaseMaterial material : allCases<CaseMaterial>()) {
        for (const Plate plate : allCases<Plate>()) {
            for (const Mount mount : allCases<Mount>()) {
                for (const KeycapMaterial keycap : allCases<KeycapMaterial>()) {
                    for (const KeycapProfile profile : allCases<KeycapProfile>()) {
                        SCOPED_TRACE(testing::PrintToString(
                            std::array{rawString(material), rawString(plate), rawString(mount),
                                       rawString(keycap), rawString(profile)}));
                        expectSum({material, plate, mount, {}, keycap, profile});
                    }
                }
            }
        }
    }
}

TEST(BuildEffect, sumsEverySetOfFoams) {
    for (unsigned chosen = 0; chosen < 32; ++chosen) {
        SCOPED_TRACE(chosen);
        BuildParts parts;
        for (const Foam foam : allCases<Foam>()) {
            if ((chosen >> static_cast<unsigned>(foam) & 1U) != 0) {
                parts.foams.insert(foam);
            }
        }
        expectSum(parts);
    }
}

TEST(BuildEffect, foamsLowerTheRing) {
    BuildParts bare;
    BuildParts filled;
    filled.foams = {Foam::caseFoam, Foam::plateFoam};
    EXPECT_DOUBLE_EQ(Parts::effect(filled).ring - Parts::effect(bare).ring, -0.6);
}

} // namespace
} // namespace vornic

#include "VornicCore/parts/Parts.h"
#include "tests/VornicCore/parts/EffectRow.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace vornic {
namespace {

using Band = Equalizer::Band;

const std::map<SwitchType, EffectRow> types{
    {SwitchType::linear, {}},
    {SwitchType::tactile, {.eq = {0, 1, 1.5, 0, 0}}},
    {SwitchType::clicky, {.eq = {0, 0, 0, 3, 0}, .attackDb = 2}},
    {SwitchType::topre, {.eq = {2, 2, 0, -4, -3}, .attackDb = -2, .damping = 0.2, .pitch = -0.5}},
    {SwitchType::silent,
     {.eq = {0, 0, -4, -9, -6}, .attackDb = -6, .sustainDb = -4, .damping = 0.5}}};
const std::map<Housing, EffectRow> housings{
    {Housing::nylon, {.eq = {1.5, 0, 0, -2, -1}, .pitch = -0.3}},
    {Housing::polycarbonate, {.eq = {0, 0, 2, 2, 1}, .pitch = 0.4}},
    {Housing::pom, {.eq = {1, 1, 0, -1, 0}, .pitch = -0.2}},
    {Housing::uhmwpe, {.eq = {0, 1, 0, -2, -3}}}};
const std::map<Lube, EffectRow> lubes{
    {Lube::none, {.eq = {0, 0, 0, 0, 2}}},
    {Lube::light, {.eq = {0, 0, 0, 0, -1}}},
    {Lube::thick, {.eq = {0, 0, 0, -2, -3}, .attackDb = -1.5, .damping = 0.1, .pitch = -0.2}}};
const std::map<Spring, EffectRow> springs{{Spring::standard, {}},
                                          {Spring::long_, {.eq = {0, 0, 0, 0, -0.5}}}};
const std::map<bool, EffectRow> films{{false, {}},
                                      {true, {.attackDb = 1, .sustainDb = -2, .damping = 0.1}}};

std::optional<double> springLayer(const SwitchParts& parts) {
    if (parts.type == SwitchType::topre || parts.lube == Lube::thick) {
        return std::nullopt;
    }
    return (parts.lube == Lube::none ? -16 : -24) - (parts.spring == Spring::long_ ? 6 : 0);
}

TEST(SwitchEffect, sumsEveryChoice) {
    for (const auto& [type, typeRow] : types) {
        for (const auto& [housing, housingRow] : housings) {
            for (const auto& [lube, lubeRow] : lubes) {
                for (const auto& [spring, springRow] : springs) {
                    for (const auto& [filmed, filmsRow] : films) {
                        const SwitchParts parts{type, housing, lube, spring, filmed};
                        SCOPED_TRACE(
                            testing::PrintToString(std::array{rawString(type), rawString(housing),
                                                              rawString(lube), rawString(spring)}));
                        EffectRow sum = typeRow;
                        ((sum += housingRow) += lubeRow) += springRow;
                        sum += filmsRow;
                        const PartEffect effect = Parts::effect(parts);
                        expectEffect(effect, sum);
                        EXPECT_EQ(effect.clickLayerDb,
                                  type == SwitchType::clicky ? std::optional(-8.0) : std::nullopt);
                        EXPECT_EQ(effect.springLayerDb, springLayer(parts));
                    }
                }
            }
        }
    }
}

TEST(SwitchEffect, ofAnUnlubedLinearSwitchOfNylon) {
    const PartEffect effect = Parts::effect(
        SwitchParts{SwitchType::linear, Housing::nylon, Lube::none, Spring::standard, false});
    EXPECT_EQ(effect, (PartEffect{.eq = {{Band::bass, 1.5}, {Band::click, -2}, {Band::air, 1}},
                                  .pitch = -0.3,
                                  .springLayerDb = -16}));
}

TEST(SwitchEffect, aLongSpringPingsLower) {
    const PartEffect effect = Parts::effect(
        SwitchParts{SwitchType::clicky, Housing::nylon, Lube::light, Spring::long_, false});
    EXPECT_EQ(effect.clickLayerDb, -8);
    EXPECT_EQ(effect.springLayerDb, -30);
}

TEST(SwitchEffect, topreNeverPings) {
    for (const Lube lube : allCases<Lube>()) {
        for (const Spring spring : allCases<Spring>()) {
            EXPECT_FALSE(
                Parts::effect(SwitchParts{SwitchType::topre, Housing::pom, lube, spring, true})
                    .springLayerDb.has_value());
        }
    }
}

} // namespace
} // namespace vornic

#pragma once

#include "VornicCore/parts/PartEffect.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace vornic {

/// A line of the design's table: what one choice of a part adds, in the order of the columns.
struct EffectRow {
    /// bass, body, clack, click, air
    std::array<double, 5> eq{};
    double attackDb = 0;
    double sustainDb = 0;
    double damping = 0;
    double pitch = 0;
    double ring = 0;

    EffectRow& operator+=(const EffectRow& other) {
        for (std::size_t i = 0; i < eq.size(); ++i) {
            eq.at(i) += other.eq.at(i);
        }
        attackDb += other.attackDb;
        sustainDb += other.sustainDb;
        damping += other.damping;
        pitch += other.pitch;
        ring += other.ring;
        return *this;
    }
};

/// Everything but the two layers; no choice of a part sets drive.
inline void expectEffect(const PartEffect& effect, const EffectRow& row) {
    // Sums of the same numbers in another order.
    constexpr double tolerance = 1e-12;
    for (const auto band : allCases<Equalizer::Band>()) {
        const auto found = effect.eq.find(band);
        EXPECT_NEAR(found == effect.eq.end() ? 0 : found->second,
                    row.eq.at(static_cast<std::size_t>(band)), tolerance)
            << rawString(band);
    }
    EXPECT_NEAR(effect.attackDb, row.attackDb, tolerance);
    EXPECT_NEAR(effect.sustainDb, row.sustainDb, tolerance);
    EXPECT_NEAR(effect.damping, row.damping, tolerance);
    EXPECT_NEAR(effect.pitch, row.pitch, tolerance);
    EXPECT_NEAR(effect.ring, row.ring, tolerance);
    EXPECT_EQ(effect.drive, 0);
}

} // namespace vornic

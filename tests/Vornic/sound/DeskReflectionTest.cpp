#include "Vornic/sound/DeskReflection.h"

#include <gtest/gtest.h>

#include <limits>

namespace vornic {
namespace {

TEST(DeskReflection, theDefaultStageHasNone) {
    EXPECT_EQ(deskReflection(StageSpec{}), (DeskReflection{0.0f, 0.35f}));
}

TEST(DeskReflection, growsWithTheDistance) {
    StageSpec stage;
    stage.distance = 0.5;
    EXPECT_FLOAT_EQ(deskReflection(stage).level, 0.175f);
    stage.distance = 1.0;
    EXPECT_FLOAT_EQ(deskReflection(stage).level, 0.35f);
}

TEST(DeskReflection, aMatMakesItQuieterAndDuller) {
    StageSpec stage;
    stage.distance = 1.0;
    stage.deskMat = true;
    EXPECT_FLOAT_EQ(deskReflection(stage).level, 0.175f);
    EXPECT_LT(deskReflection(stage).damp, DeskReflection{}.damp);
}

TEST(DeskReflection, limitsAbsurdDistances) {
    StageSpec stage;
    stage.distance = 1e300;
    EXPECT_FLOAT_EQ(deskReflection(stage).level, 0.35f);
    stage.distance = -4.0;
    EXPECT_EQ(deskReflection(stage).level, 0.0f);
    stage.distance = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(deskReflection(stage).level, 0.0f);
}

} // namespace
} // namespace vornic

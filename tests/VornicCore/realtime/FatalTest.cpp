#include "VornicCore/realtime/Fatal.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(FatalDeathTest, namesTheCheckAndStops) {
    EXPECT_DEATH(fatal("ring creation failed"), "Vornic stopped: ring creation failed");
}

TEST(FatalDeathTest, requireStopsOnlyWhenTheConditionFails) {
    require(true, "never shown");
    EXPECT_DEATH(require(false, "frame count is negative"),
                 "Vornic stopped: frame count is negative");
}

} // namespace
} // namespace vornic

#include "Vornic/app/Diagnostics.h"

#include <gtest/gtest.h>

#include <limits>

namespace vornic {
namespace {

TEST(Diagnostics, timesHaveOneDecimal) {
    EXPECT_EQ(DiagnosticsText::millis(1.26), "1.3 ms");
    EXPECT_EQ(DiagnosticsText::millis(0), "0.0 ms");
    EXPECT_EQ(DiagnosticsText::millis(std::nullopt), "unknown");
    EXPECT_EQ(DiagnosticsText::millis(std::numeric_limits<double>::quiet_NaN()), "unknown");
    EXPECT_EQ(DiagnosticsText::millis(std::numeric_limits<double>::max()).size(), 309U + 5U);
}

TEST(Diagnostics, theBufferIsCountedInFrames) {
    EXPECT_EQ(DiagnosticsText::frames(128), "128 frames");
    EXPECT_EQ(DiagnosticsText::frames(std::nullopt), "unknown");
}

TEST(Diagnostics, aPausedEngineIsNothingToWorryAbout) {
    EXPECT_EQ(DiagnosticsText::engine(true), "running");
    EXPECT_EQ(DiagnosticsText::engine(false), "paused (starts on the next key)");
}

} // namespace
} // namespace vornic

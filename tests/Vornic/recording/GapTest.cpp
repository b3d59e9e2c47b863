#include "Vornic/recording/Gap.h"

#include <gtest/gtest.h>

#include <vector>

namespace vornic {
namespace {

/// A slice of 0.1 s at 1000 Hz, from a hit at 1 s.
Stroke stroke() {
    return {std::vector<float>(100, 0.5F), 1.0, 40.0, true};
}

bool isTornBy(double start, double length) {
    return isTorn(stroke(), 1000.0, std::vector<Gap>{{start, length}});
}

TEST(Gap, tearsTheStrokeThatItTouches) {
    EXPECT_FALSE(isTorn(stroke(), 1000.0, {}));
    EXPECT_TRUE(isTornBy(1.05, 0.001));
    EXPECT_TRUE(isTornBy(1.099, 1.0));
    EXPECT_FALSE(isTornBy(1.1, 1.0)) << "after it";
    EXPECT_FALSE(isTornBy(0.5, 0.4)) << "before it";
}

TEST(Gap, tearsTheStrokeThatBeginsAtItsEnd) {
    EXPECT_TRUE(isTornBy(0.5, 0.499));
    EXPECT_TRUE(isTornBy(0.5, 0.46));
    EXPECT_FALSE(isTornBy(0.5, 0.44));
}

TEST(Gap, tellsHowMuchIsMissing) {
    EXPECT_EQ(noticeOf({}), "");
    EXPECT_EQ(noticeOf(std::vector<Gap>{{1.0, 0.0426}, {2.0, 0.0427}}),
              "The recording has a gap: the computer was too busy to hear 86 ms of it. Keystrokes "
              "beside it are left out.");
}

} // namespace
} // namespace vornic

#include "Vornic/typing/PreviewPhrase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace vornic {
namespace {

TEST(PreviewPhrase, hasFifteenPressesInUnderTwoAndAHalfSeconds) {
    const auto events = previewPhrase();
    EXPECT_EQ(std::ranges::count_if(events, &KeyEvent::down), 15);
    EXPECT_LT(events.back().millis, 2500.0);
}

TEST(PreviewPhrase, releasesEveryKeyItPresses) {
    std::map<std::int64_t, int> balance;
    for (const KeyEvent& event : previewPhrase()) {
        balance[event.keyCode] += event.down ? 1 : -1;
        EXPECT_GE(balance[event.keyCode], 0);
        EXPECT_LE(balance[event.keyCode], 1);
    }
    for (const auto& [keyCode, count] : balance) {
        EXPECT_EQ(count, 0) << keyCode;
    }
}

} // namespace
} // namespace vornic

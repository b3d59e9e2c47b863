#include "Vornic/platform/KeySource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using ::testing::HasSubstr;

TEST(KeySource, anX11SessionIsHeardThroughX11) {
    const KeySource source = chooseKeySource({":0", "", "x11"});
    EXPECT_EQ(source.kind, KeySourceKind::x11);
    EXPECT_TRUE(source.problem.empty());
    EXPECT_EQ(chooseKeySource({":0", "", ""}).kind, KeySourceKind::x11);
}

TEST(KeySource, aWaylandSessionIsNeverHeardThroughXWayland) {
    for (const SessionEnvironment& session :
         {SessionEnvironment{":0", "wayland-0", "wayland"},
          SessionEnvironment{":0", "wayland-0", ""}, SessionEnvironment{":0", "", "wayland"}}) {
        const KeySource source = chooseKeySource(session);
        EXPECT_EQ(source.kind, KeySourceKind::none);
        EXPECT_THAT(source.problem, HasSubstr("Wayland"));
    }
}

TEST(KeySource, withoutADisplayItSaysWhatToDo) {
    const KeySource source = chooseKeySource({});
    EXPECT_EQ(source.kind, KeySourceKind::none);
    EXPECT_THAT(source.problem, HasSubstr("start Vornic inside an X11 session"));
}

} // namespace
} // namespace vornic

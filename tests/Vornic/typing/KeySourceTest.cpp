#include "Vornic/typing/KeySource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace vornic {
namespace {

using ::testing::EndsWith;

TEST(KeySource, anX11SessionIsHeardThroughX11) {
    for (const SessionEnvironment& session :
         {SessionEnvironment{":0", "", "x11"}, SessionEnvironment{":0", "", ""},
          SessionEnvironment{":1", "", "tty"}}) {
        const KeySource source = chooseKeySource(session);
        EXPECT_EQ(source.kind, KeySourceKind::x11);
        EXPECT_TRUE(source.problem.empty());
    }
}

TEST(KeySource, aWaylandSessionIsNeverHeardThroughXWayland) {
    for (const SessionEnvironment& session :
         {SessionEnvironment{":0", "wayland-0", "wayland"},
          SessionEnvironment{":0", "wayland-0", ""}, SessionEnvironment{":0", "", "wayland"}}) {
        const KeySource source = chooseKeySource(session);
        EXPECT_EQ(source.kind, KeySourceKind::evdev);
        EXPECT_TRUE(source.problem.empty());
    }
}

TEST(KeySource, withoutADisplayItSaysWhatToDo) {
    const KeySource source = chooseKeySource({});
    EXPECT_EQ(source.kind, KeySourceKind::none);
    EXPECT_THAT(source.problem, EndsWith("start Vornic inside a graphical session."));
}

TEST(KeySource, readsTheEnvironment) {
    // Each test is a process of its own, so nobody else sees this.
    ::setenv("DISPLAY", ":7", 1);
    ::setenv("WAYLAND_DISPLAY", "wayland-3", 1);
    ::unsetenv("XDG_SESSION_TYPE");
    const SessionEnvironment session = sessionEnvironment();
    EXPECT_EQ(session.x11Display, ":7");
    EXPECT_EQ(session.waylandDisplay, "wayland-3");
    EXPECT_EQ(session.sessionType, "");
}

} // namespace
} // namespace vornic

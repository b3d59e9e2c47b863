#include "Vornic/linux/sound/SinkObjects.h"
#include "tests/support/RouteParameter.h"

#include <gtest/gtest.h>
#include <spa/pod/builder.h>

#include <array>
#include <cstdint>

namespace vornic {
namespace {

TEST(ActiveRoute, namesTheKindOfTheSocketInUse) {
    const RouteParameter parameter(
        SPA_DIRECTION_OUTPUT, 4,
        {{"port.type", "headphones"}, {"device.icon_name", "audio-headphones"}});
    const auto route = activeRouteOf(parameter.pod());
    ASSERT_TRUE(route.has_value());
    EXPECT_EQ(route->profileDevice, 4);
    EXPECT_EQ(route->portType, "headphones");
}

TEST(ActiveRoute, findsTheKindWhereverItStands) {
    const RouteParameter parameter(
        SPA_DIRECTION_OUTPUT, 4,
        {{"route.hw-mute", "true"}, {"route.hw-volume", "true"}, {"port.type", "speaker"}});
    EXPECT_EQ(activeRouteOf(parameter.pod())->portType, "speaker");
}

TEST(ActiveRoute, hasNoKindWhereTheCardSaysNone) {
    EXPECT_EQ(activeRouteOf(RouteParameter(SPA_DIRECTION_OUTPUT, 1, {}).pod())->portType, "");
    EXPECT_EQ(
        activeRouteOf(RouteParameter(SPA_DIRECTION_OUTPUT, 1, {{"route.hw-mute", "true"}}).pod())
            ->portType,
        "");
}

TEST(ActiveRoute, isNoneForARecordingSocketOrForSomethingElse) {
    EXPECT_FALSE(
        activeRouteOf(RouteParameter(SPA_DIRECTION_INPUT, 1, {{"port.type", "headphones"}}).pod()));
    EXPECT_FALSE(activeRouteOf(nullptr));
    std::array<std::uint8_t, 64> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    spa_pod_builder_int(&builder, 7);
    EXPECT_FALSE(activeRouteOf(reinterpret_cast<const spa_pod*>(memory.data())));
}

} // namespace
} // namespace vornic

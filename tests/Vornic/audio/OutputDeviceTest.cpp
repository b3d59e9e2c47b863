#include "Vornic/audio/OutputDevice.h"

#include <gtest/gtest.h>

#include <limits>

namespace vornic {
namespace {

TEST(OutputDevice, bluetoothIsKnownByItsBusOrByItsDriver) {
    EXPECT_TRUE(OutputDevice::isBluetooth({.bus = "bluetooth"}));
    EXPECT_TRUE(OutputDevice::isBluetooth({.api = "bluez5"}));
    EXPECT_TRUE(OutputDevice::isBluetooth({.api = "bluez5.midi"}));
    EXPECT_FALSE(OutputDevice::isBluetooth({.api = "alsa", .bus = "usb"}));
    EXPECT_FALSE(OutputDevice::isBluetooth({.formFactor = "headphone"}));
    EXPECT_FALSE(OutputDevice::isBluetooth({}));
}

TEST(OutputDevice, everythingOnBluetoothOrUsbIsWornOnTheEars) {
    EXPECT_TRUE(OutputDevice::isHeadphones({.api = "bluez5", .bus = "bluetooth"}));
    EXPECT_TRUE(OutputDevice::isHeadphones({.api = "bluez5", .formFactor = "speaker"}));
    EXPECT_TRUE(OutputDevice::isHeadphones({.api = "alsa", .bus = "usb"}));
    EXPECT_TRUE(OutputDevice::isHeadphones({.api = "alsa", .bus = "usb", .portType = "speaker"}));
}

TEST(OutputDevice, aBuiltInDeviceIsWornOnlyThroughItsHeadphoneSocket) {
    EXPECT_TRUE(
        OutputDevice::isHeadphones({.api = "alsa", .bus = "pci", .portType = "headphones"}));
    EXPECT_FALSE(OutputDevice::isHeadphones({.api = "alsa", .bus = "pci", .portType = "speaker"}));
    EXPECT_FALSE(OutputDevice::isHeadphones({.api = "alsa", .bus = "pci", .portType = "hdmi"}));
    EXPECT_FALSE(OutputDevice::isHeadphones({.api = "alsa", .bus = "pci"}));
    EXPECT_FALSE(
        OutputDevice::isHeadphones({.bus = "pci", .formFactor = "headphone", .portType = ""}));
}

TEST(OutputDevice, aBoardsOwnCodecWithoutABusCountsAsBuiltIn) {
    EXPECT_TRUE(OutputDevice::isHeadphones({.api = "alsa", .portType = "headphones"}));
    EXPECT_TRUE(OutputDevice::isHeadphones({.formFactor = "internal", .portType = "headphones"}));
}

TEST(OutputDevice, anyOtherTransportIsNotWorn) {
    EXPECT_FALSE(
        OutputDevice::isHeadphones({.api = "alsa", .bus = "firewire", .portType = "headphones"}));
    EXPECT_FALSE(OutputDevice::isHeadphones({.api = "raop", .portType = "headphones"}));
    EXPECT_FALSE(OutputDevice::isHeadphones({}));
}

TEST(OutputDevice, latencyIsDelayPlusBufferInMilliseconds) {
    EXPECT_DOUBLE_EQ(
        *OutputDevice::latencyMillis({.rate = 48000.0, .delayFrames = 352, .bufferFrames = 128}),
        10.0);
    EXPECT_DOUBLE_EQ(
        *OutputDevice::latencyMillis({.rate = 44100.0, .delayFrames = 441, .bufferFrames = 0}),
        10.0);
}

TEST(OutputDevice, aMissingPartOfTheLatencyCountsAsNothing) {
    EXPECT_DOUBLE_EQ(*OutputDevice::latencyMillis({.rate = 48000.0, .bufferFrames = 48}), 1.0);
    EXPECT_DOUBLE_EQ(*OutputDevice::latencyMillis({.rate = 48000.0, .delayFrames = 96}), 2.0);
    EXPECT_DOUBLE_EQ(*OutputDevice::latencyMillis({.rate = 48000.0}), 0.0);
}

TEST(OutputDevice, withoutARateThereIsNoLatency) {
    EXPECT_FALSE(OutputDevice::latencyMillis({.delayFrames = 352, .bufferFrames = 128}));
    EXPECT_FALSE(OutputDevice::latencyMillis({.rate = -48000.0, .bufferFrames = 128}));
    EXPECT_FALSE(OutputDevice::latencyMillis(
        {.rate = std::numeric_limits<double>::quiet_NaN(), .bufferFrames = 128}));
}

TEST(OutputDevice, factsGatherTheAnswers) {
    const OutputDeviceFacts facts = OutputDevice::factsOf({.description = "Headset",
                                                           .api = "bluez5",
                                                           .rate = 48000.0,
                                                           .delayFrames = 4672,
                                                           .bufferFrames = 128});
    EXPECT_EQ(facts.name, "Headset");
    EXPECT_TRUE(facts.isBluetooth);
    EXPECT_TRUE(facts.isHeadphones);
    EXPECT_DOUBLE_EQ(facts.latencyMillis.value(), 100.0);
    EXPECT_EQ(facts.bufferFrames, 128U);
}

} // namespace
} // namespace vornic

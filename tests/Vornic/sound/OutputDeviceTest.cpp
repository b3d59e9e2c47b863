#include "Vornic/sound/OutputDevice.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>

namespace vornic {
namespace {

OutputProperties device(const char* api, const char* bus, const char* portType = "",
                        const char* formFactor = "") {
    OutputProperties properties;
    properties.api = api;
    properties.bus = bus;
    properties.portType = portType;
    properties.formFactor = formFactor;
    return properties;
}

std::optional<double> latency(double rate, std::optional<std::int64_t> delay,
                              std::optional<std::uint32_t> buffer) {
    OutputProperties properties;
    properties.rate = rate;
    properties.delayFrames = delay;
    properties.bufferFrames = buffer;
    return OutputDevice::latencyMillis(properties);
}

TEST(OutputDevice, bluetoothIsKnownByItsBusOrByItsDriver) {
    EXPECT_TRUE(OutputDevice::isBluetooth(device("", "bluetooth")));
    EXPECT_TRUE(OutputDevice::isBluetooth(device("bluez5", "")));
    EXPECT_FALSE(OutputDevice::isBluetooth(device("alsa", "usb")));
    EXPECT_FALSE(OutputDevice::isBluetooth(device("", "", "", "headphone")));
    EXPECT_FALSE(OutputDevice::isBluetooth({}));
}

TEST(OutputDevice, everythingOnBluetoothOrUsbIsWornOnTheEars) {
    EXPECT_TRUE(OutputDevice::isHeadphones(device("bluez5", "bluetooth")));
    EXPECT_TRUE(OutputDevice::isHeadphones(device("bluez5", "", "", "speaker")));
    EXPECT_TRUE(OutputDevice::isHeadphones(device("alsa", "usb")));
    EXPECT_TRUE(OutputDevice::isHeadphones(device("alsa", "usb", "speaker")));
}

TEST(OutputDevice, aBuiltInDeviceIsWornOnlyThroughItsHeadphoneSocket) {
    EXPECT_TRUE(OutputDevice::isHeadphones(device("alsa", "pci", "headphones")));
    EXPECT_FALSE(OutputDevice::isHeadphones(device("alsa", "pci", "speaker")));
    EXPECT_FALSE(OutputDevice::isHeadphones(device("alsa", "pci", "hdmi")));
    EXPECT_FALSE(OutputDevice::isHeadphones(device("alsa", "pci")));
    EXPECT_FALSE(OutputDevice::isHeadphones(device("", "pci", "", "headphone")));
}

TEST(OutputDevice, aBoardsOwnCodecWithoutABusCountsAsBuiltIn) {
    EXPECT_TRUE(OutputDevice::isHeadphones(device("alsa", "", "headphones")));
    EXPECT_TRUE(OutputDevice::isHeadphones(device("", "", "headphones", "internal")));
}

TEST(OutputDevice, anyOtherTransportIsNotWorn) {
    EXPECT_FALSE(OutputDevice::isHeadphones(device("alsa", "firewire", "headphones")));
    EXPECT_FALSE(OutputDevice::isHeadphones(device("raop", "", "headphones")));
    EXPECT_FALSE(OutputDevice::isHeadphones({}));
}

TEST(OutputDevice, latencyIsDelayPlusBufferInMilliseconds) {
    EXPECT_DOUBLE_EQ(latency(48000.0, 352, 128).value(), 10.0);
    EXPECT_DOUBLE_EQ(latency(44100.0, 441, 0).value(), 10.0);
}

TEST(OutputDevice, aMissingPartOfTheLatencyCountsAsNothing) {
    EXPECT_DOUBLE_EQ(latency(48000.0, std::nullopt, 48).value(), 1.0);
    EXPECT_DOUBLE_EQ(latency(48000.0, 96, std::nullopt).value(), 2.0);
    EXPECT_DOUBLE_EQ(latency(48000.0, std::nullopt, std::nullopt).value(), 0.0);
}

TEST(OutputDevice, withoutARateThereIsNoLatency) {
    EXPECT_FALSE(latency(0.0, 352, 128));
    EXPECT_FALSE(latency(-48000.0, 352, 128));
    EXPECT_FALSE(latency(std::numeric_limits<double>::quiet_NaN(), 352, 128));
}

TEST(OutputDevice, factsGatherTheAnswers) {
    OutputProperties headset = device("bluez5", "bluetooth");
    headset.description = "Headset";
    headset.rate = 48000.0;
    headset.delayFrames = 4672;
    headset.bufferFrames = 128;
    const OutputDeviceFacts facts = OutputDevice::factsOf(headset);
    EXPECT_EQ(facts.name, "Headset");
    EXPECT_TRUE(facts.isBluetooth);
    EXPECT_TRUE(facts.isHeadphones);
    EXPECT_DOUBLE_EQ(facts.latencyMillis.value(), 100.0);
    EXPECT_EQ(facts.bufferFrames, 128U);
}

} // namespace
} // namespace vornic

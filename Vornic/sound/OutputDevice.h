#pragma once

#include "Vornic/ports/AudioOutput.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// What a sound system says about the device that it plays to; empty strings where it says nothing.
struct OutputProperties {
    /// The name shown to people.
    std::string description;
    /// The interface that drives it: "alsa", "bluez5".
    std::string api;
    /// What it is attached to: "pci", "usb", "bluetooth", "firewire".
    std::string bus;
    /// What it is: "internal", "headphone", "speaker".
    std::string formFactor;
    /// The kind of the socket in use: "headphones", "speaker", "hdmi".
    std::string portType;
    /// Frames a second that `delayFrames` is counted in; 0 when unknown.
    double rate = 0.0;
    /// Frames from the end of a render call's buffer to the ear; absent when unknown.
    std::optional<std::int64_t> delayFrames;
    /// Frames per render call; absent when unknown.
    std::optional<std::uint32_t> bufferFrames;

    bool operator==(const OutputProperties&) const = default;
};

/// The rules that tell what an output device is. Pure functions. Thread: any, as everything here.
namespace OutputDevice {

/// Reached over Bluetooth, classic or low energy.
bool isBluetooth(const OutputProperties& device);

/// Worn on the ears: everything on Bluetooth or USB, a built-in device while its headphone socket
/// is the one in use, nothing else.
bool isHeadphones(const OutputProperties& device);

/// Milliseconds from a rendered frame to the ear: delay and buffer, a missing one counted as 0.
/// Absent when the rate is not a positive number.
std::optional<double> latencyMillis(const OutputProperties& device);

/// All of it together.
OutputDeviceFacts factsOf(const OutputProperties& device);

} // namespace OutputDevice

} // namespace vornic

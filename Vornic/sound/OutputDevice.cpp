#include "Vornic/sound/OutputDevice.h"

#include <cmath>
#include <string_view>

namespace vornic::OutputDevice {

namespace {

bool isUsb(const OutputProperties& device) {
    return device.bus == "usb";
}

// Boards without a PCI bus name no bus at all for the codec soldered to them, so everything that
// the kernel's sound driver runs counts as built in, unless it says that it is attached from
// outside.
bool isBuiltIn(const OutputProperties& device) {
    if (device.bus == "pci" || device.formFactor == "internal") {
        return true;
    }
    return device.api == "alsa" && device.bus != "firewire";
}

} // namespace

bool isBluetooth(const OutputProperties& device) {
    return device.bus == "bluetooth" || std::string_view(device.api).starts_with("bluez");
}

bool isHeadphones(const OutputProperties& device) {
    if (isBluetooth(device) || isUsb(device)) {
        return true;
    }
    return isBuiltIn(device) && device.portType == "headphones";
}

std::optional<double> latencyMillis(const OutputProperties& device) {
    if (!std::isfinite(device.rate) || device.rate <= 0.0) {
        return std::nullopt;
    }
    const double frames = static_cast<double>(device.delayFrames.value_or(0)) +
                          static_cast<double>(device.bufferFrames.value_or(0));
    return frames / device.rate * 1000.0;
}

OutputDeviceFacts factsOf(const OutputProperties& device) {
    return {.name = device.description,
            .isBluetooth = isBluetooth(device),
            .isHeadphones = isHeadphones(device),
            .latencyMillis = latencyMillis(device),
            .bufferFrames = device.bufferFrames};
}

} // namespace vornic::OutputDevice

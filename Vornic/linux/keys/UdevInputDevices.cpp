#include "Vornic/linux/keys/UdevInputDevices.h"

#include "Vornic/linux/keys/EvdevDevice.h"
#include "Vornic/linux/keys/KeyAccess.h"

#include <libudev.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <utility>

namespace vornic {

namespace {

template <auto release>
struct Release {
    template <typename T>
    void operator()(T* thing) const {
        release(thing);
    }
};
using Device = std::unique_ptr<udev_device, Release<udev_device_unref>>;
using Enumeration = std::unique_ptr<udev_enumerate, Release<udev_enumerate_unref>>;

std::string text(const char* value) {
    return value == nullptr ? std::string() : std::string(value);
}

std::uint16_t hexNumber(const char* value) {
    return value == nullptr ? std::uint16_t{0}
                            : static_cast<std::uint16_t>(std::strtoul(value, nullptr, 16));
}

/// Only event nodes tell keys; the same keyboard has other nodes and no node at all above them.
std::optional<KeyboardDescription> describe(udev_device& device) {
    const std::string path = text(udev_device_get_devnode(&device));
    if (text(udev_device_get_property_value(&device, "ID_INPUT_KEYBOARD")) != "1" ||
        path.find("/event") == std::string::npos) {
        return std::nullopt;
    }
    KeyboardDescription keyboard;
    keyboard.path = path;
    keyboard.isVirtual = isMadeByAProgram(text(udev_device_get_syspath(&device)));
    if (const std::string seat = text(udev_device_get_property_value(&device, "ID_SEAT"));
        !seat.empty()) {
        keyboard.seat = seat;
    }
    // The parent belongs to its child.
    if (udev_device* const parent = udev_device_get_parent(&device)) {
        keyboard.name = text(udev_device_get_sysattr_value(parent, "name"));
        keyboard.port = text(udev_device_get_devpath(parent));
        keyboard.bus = hexNumber(udev_device_get_sysattr_value(parent, "id/bustype"));
        keyboard.vendor = hexNumber(udev_device_get_sysattr_value(parent, "id/vendor"));
        keyboard.product = hexNumber(udev_device_get_sysattr_value(parent, "id/product"));
    }
    return keyboard;
}

} // namespace

UdevInputDevices::UdevInputDevices() : udev_(udev_new()) {}

UdevInputDevices::~UdevInputDevices() {
    unwatch();
    udev_unref(udev_);
}

void UdevInputDevices::watch() {
    if (monitor_ != nullptr) {
        return;
    }
    // The device manager's own events come when it is done with a device and its rights are set.
    monitor_ = udev_monitor_new_from_netlink(udev_, "udev");
    if (monitor_ != nullptr) {
        udev_monitor_filter_add_match_subsystem_devtype(monitor_, "input", nullptr);
        udev_monitor_enable_receiving(monitor_);
    }
}

void UdevInputDevices::unwatch() {
    if (monitor_ != nullptr) {
        udev_monitor_unref(monitor_);
        monitor_ = nullptr;
    }
}

int UdevInputDevices::fileDescriptor() const {
    return monitor_ == nullptr ? -1 : udev_monitor_get_fd(monitor_);
}

bool UdevInputDevices::changed() {
    bool any = false;
    while (monitor_ != nullptr) {
        const Device device(udev_monitor_receive_device(monitor_));
        if (!device) {
            break;
        }
        any = true;
    }
    return any;
}

std::vector<KeyboardDescription> UdevInputDevices::keyboards() {
    std::vector<KeyboardDescription> found;
    const Enumeration enumeration(udev_enumerate_new(udev_));
    if (!enumeration) {
        return found;
    }
    udev_enumerate_add_match_subsystem(enumeration.get(), "input");
    udev_enumerate_add_match_property(enumeration.get(), "ID_INPUT_KEYBOARD", "1");
    udev_enumerate_scan_devices(enumeration.get());
    for (udev_list_entry* entry = udev_enumerate_get_list_entry(enumeration.get());
         entry != nullptr; entry = udev_list_entry_get_next(entry)) {
        const Device device(udev_device_new_from_syspath(udev_, udev_list_entry_get_name(entry)));
        if (!device) {
            continue;
        }
        if (auto description = describe(*device)) {
            found.push_back(std::move(*description));
        }
    }
    return found;
}

bool UdevInputDevices::mayRead(const std::string& path) const {
    return ::access(path.c_str(), R_OK) == 0;
}

std::unique_ptr<InputDevice> UdevInputDevices::open(const std::string& path) {
    return EvdevDevice::open(path);
}

} // namespace vornic

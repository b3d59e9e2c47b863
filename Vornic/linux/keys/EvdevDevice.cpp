#include "Vornic/linux/keys/EvdevDevice.h"

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace vornic {

namespace {

/// The kernel counts a time's seconds and microseconds.
std::uint64_t nanosOf(const input_event& event) {
    return static_cast<std::uint64_t>(event.input_event_sec) * 1'000'000'000U +
           static_cast<std::uint64_t>(event.input_event_usec) * 1'000U;
}

} // namespace

std::unique_ptr<EvdevDevice> EvdevDevice::open(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    std::unique_ptr<EvdevDevice> device(new EvdevDevice(descriptor));
    if (libevdev_new_from_fd(descriptor, &device->device_) < 0) {
        return nullptr;
    }
    // Where this is refused, the stamps are of another clock and count as unknown.
    libevdev_set_clock_id(device->device_, CLOCK_MONOTONIC);
    return device;
}

EvdevDevice::~EvdevDevice() {
    libevdev_free(device_);
    ::close(descriptor_);
}

std::vector<std::uint32_t> EvdevDevice::keysDown() const {
    std::vector<std::uint32_t> down;
    for (unsigned code = 0; code < KEY_CNT; ++code) {
        if (libevdev_get_event_value(device_, EV_KEY, code) != 0) {
            down.push_back(code);
        }
    }
    return down;
}

bool EvdevDevice::read(std::vector<KernelKey>& keys) {
    unsigned flag = LIBEVDEV_READ_FLAG_NORMAL;
    for (;;) {
        input_event event{};
        const int status = libevdev_next_event(device_, flag, &event);
        if (status == -EAGAIN) {
            if (flag == LIBEVDEV_READ_FLAG_NORMAL) {
                return true;
            }
            // All that was lost has been told.
            flag = LIBEVDEV_READ_FLAG_NORMAL;
        } else if (status < 0) {
            return status == -EINTR;
        } else {
            if (status == LIBEVDEV_READ_STATUS_SYNC) {
                flag = LIBEVDEV_READ_FLAG_SYNC;
            }
            if (event.type == EV_KEY) {
                keys.push_back({.nanos = nanosOf(event), .code = event.code, .value = event.value});
            }
        }
    }
}

} // namespace vornic

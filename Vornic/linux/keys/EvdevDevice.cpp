#include "Vornic/linux/keys/EvdevDevice.h"

#include "VornicCore/realtime/Forget.h"

#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
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
    int version = 0;
    if (::ioctl(descriptor, EVIOCGVERSION, &version) < 0 || !device->askKeys(device->down_)) {
        return nullptr;
    }
    // Where this is refused, the stamps are of another clock and count as unknown.
    const int clock = CLOCK_MONOTONIC;
    ::ioctl(descriptor, EVIOCSCLOCKID, &clock);
    return device;
}

EvdevDevice::~EvdevDevice() {
    ::close(descriptor_);
}

std::vector<std::uint32_t> EvdevDevice::keysDown() const {
    std::vector<std::uint32_t> down;
    for (std::uint32_t code = 0; code < KEY_CNT; ++code) {
        if (down_[code]) {
            down.push_back(code);
        }
    }
    return down;
}

std::array<std::uint8_t, KEY_CNT / 8> EvdevDevice::keysItHas() const {
    std::array<std::uint8_t, KEY_CNT / 8> bits{};
    ::ioctl(descriptor_, EVIOCGBIT(EV_KEY, sizeof bits), bits.data());
    return bits;
}

bool EvdevDevice::askKeys(Keys& down) const {
    std::array<unsigned char, KEY_CNT / 8> bits{};
    if (::ioctl(descriptor_, EVIOCGKEY(sizeof bits), bits.data()) < 0) {
        return false;
    }
    for (std::size_t code = 0; code < KEY_CNT; ++code) {
        down[code] = (bits[code / 8] >> code % 8 & 1) != 0;
    }
    forget(bits);
    return true;
}

bool EvdevDevice::read(std::vector<KernelKey>& keys) {
    std::array<input_event, 64> events{};
    for (;;) {
        const ssize_t got = ::read(descriptor_, events.data(), sizeof events);
        if (got <= 0) {
            const bool isThere = got < 0 && (errno == EAGAIN || errno == EINTR);
            forget(events);
            return isThere;
        }
        const std::size_t count = static_cast<std::size_t>(got) / sizeof(input_event);
        for (std::size_t place = 0; place < count; ++place) {
            take(events[place], keys);
        }
    }
}

void EvdevDevice::take(const input_event& event, std::vector<KernelKey>& keys) {
    if (event.type == EV_SYN && event.code == SYN_DROPPED) {
        hasLost_ = true;
    } else if (hasLost_ && event.type == EV_SYN && event.code == SYN_REPORT) {
        hasLost_ = false;
        Keys now = down_;
        askKeys(now);
        const Keys changed = now ^ down_;
        for (std::uint32_t code = 0; code < KEY_CNT; ++code) {
            if (changed[code]) {
                keys.push_back({.nanos = nanosOf(event), .code = code, .value = now[code] ? 1 : 0});
            }
        }
        down_ = now;
    } else if (!hasLost_ && event.type == EV_KEY && event.code < KEY_CNT) {
        down_[event.code] = event.value != 0;
        keys.push_back({.nanos = nanosOf(event), .code = event.code, .value = event.value});
    }
}

} // namespace vornic

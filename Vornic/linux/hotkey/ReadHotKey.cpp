#include "Vornic/linux/hotkey/ReadHotKey.h"

#include <sys/eventfd.h>
#include <unistd.h>

namespace vornic {

ReadHotKey::ReadHotKey() : presses_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

ReadHotKey::~ReadHotKey() {
    ::close(presses_);
}

void ReadHotKey::keyboardCame(std::uint32_t keyboard, const std::vector<std::int64_t>& held) {
    ++keyboards_;
    for (const std::int64_t keyCode : held) {
        // Nobody presses the combination by plugging a keyboard in.
        match_.key(keyboard, keyCode, true);
    }
}

void ReadHotKey::keyboardGone(std::uint32_t keyboard) {
    --keyboards_;
    match_.forgetKeyboard(keyboard);
}

void ReadHotKey::keyMoved(std::uint32_t keyboard, std::int64_t keyCode, bool down) {
    // Modifiers are followed in any case, so that the combination is known when it comes back.
    if (match_.key(keyboard, keyCode, down) && !leftToOthers_) {
        onPress();
    }
}

void ReadHotKey::pressedElsewhere() const {
    ::eventfd_write(presses_, 1);
}

void ReadHotKey::dispatch() {
    eventfd_t presses = 0;
    if (::eventfd_read(presses_, &presses) != 0) {
        return;
    }
    for (; presses > 0; --presses) {
        onPress();
    }
}

} // namespace vornic

#include "Vornic/linux/keys/EvdevKeyTap.h"

#include "Vornic/linux/keys/KeyAccess.h"
#include "VornicCore/realtime/Forget.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace vornic {

// A tick of this clock is a nanosecond, so whatever the first stamp looks like decides nothing.
EvdevKeyTap::EvdevKeyTap(const Clock& clock, InputDevices& devices, std::function<bool()> given,
                         KeyWitness* witness, KeyboardForm usual)
    : devices_(devices), given_(std::move(given)), witness_(witness), forms_(usual),
      eventTime_(clock, Timebase{.numer = 1, .denom = 1}) {}

EvdevKeyTap::~EvdevKeyTap() {
    stop();
}

bool EvdevKeyTap::start() {
    const bool listens = refresh() == TapState::listening;
    if (!listens) {
        stop();
    }
    return listens;
}

bool EvdevKeyTap::begin() {
    if (waiting_ >= 0) {
        devices_.watch();
        return true;
    }
    waiting_ = ::epoll_create1(EPOLL_CLOEXEC);
    if (waiting_ < 0) {
        return false;
    }
    // Watching comes before listing, so that nothing plugged in between is missed.
    devices_.watch();
    wait(devices_.fileDescriptor());
    list();
    return true;
}

void EvdevKeyTap::stop() {
    if (waiting_ < 0) {
        return;
    }
    for (Keyboard& keyboard : keyboards_) {
        close(keyboard);
    }
    keyboards_.clear();
    devices_.unwatch();
    repeated_.reset();
    ::close(waiting_);
    waiting_ = -1;
}

void EvdevKeyTap::wait(int descriptor) const {
    if (descriptor < 0) {
        return;
    }
    epoll_event event{};
    event.events = EPOLLIN;
    // Nothing is to be told apart: everything is read whenever anything is there.
    ::epoll_ctl(waiting_, EPOLL_CTL_ADD, descriptor, &event);
}

void EvdevKeyTap::list() {
    const std::vector<KeyboardDescription> present = devices_.keyboards();
    for (Keyboard& keyboard : keyboards_) {
        if (std::ranges::find(present, keyboard.description) == present.end()) {
            close(keyboard);
        }
    }
    std::erase_if(keyboards_, [&present](const Keyboard& keyboard) {
        return std::ranges::find(present, keyboard.description) == present.end();
    });
    for (const KeyboardDescription& description : present) {
        if (std::ranges::find(keyboards_, description, &Keyboard::description) ==
            keyboards_.end()) {
            keyboards_.push_back({.description = description, .number = 0, .device = nullptr});
        }
    }
    // Virtual keyboards are read first: whatever they repeat was there before.
    std::ranges::stable_partition(
        keyboards_, [](const Keyboard& keyboard) { return keyboard.description.isVirtual; });
    for (Keyboard& keyboard : keyboards_) {
        open(keyboard);
    }
}

void EvdevKeyTap::open(Keyboard& keyboard) {
    if (keyboard.device || !devices_.mayRead(keyboard.description.path)) {
        return;
    }
    keyboard.device = devices_.open(keyboard.description.path);
    if (!keyboard.device) {
        return;
    }
    keyboard.number = ++nextNumber_;
    wait(keyboard.device->fileDescriptor());
    // Held keys were pressed before anybody listened: only their release is heard.
    std::vector<std::int64_t> held;
    for (const std::uint32_t code : keyboard.device->keysDown()) {
        held.push_back(forms_.keyCode(keyboard.number, code));
        filter_.accepts({.keyboard = keyboard.number, .code = code}, held.back(), true);
    }
    if (witness_ != nullptr) {
        witness_->keyboardCame(keyboard.number, held);
    }
}

void EvdevKeyTap::close(Keyboard& keyboard) {
    if (!keyboard.device) {
        return;
    }
    // Closing takes the descriptor out of the set of those waited for.
    keyboard.device.reset();
    filter_.forgetKeyboard(keyboard.number);
    if (witness_ != nullptr) {
        witness_->keyboardGone(keyboard.number);
    }
}

TapState EvdevKeyTap::refresh() {
    if (!begin()) {
        return TapState::needsRelaunch;
    }
    for (Keyboard& keyboard : keyboards_) {
        if (keyboard.device && !devices_.mayRead(keyboard.description.path)) {
            close(keyboard);
        }
        open(keyboard);
    }
    const auto isOpen = [](const Keyboard& keyboard) { return keyboard.device != nullptr; };
    return tapStateOf({.present = keyboards_.size(),
                       .open = static_cast<std::size_t>(std::ranges::count_if(keyboards_, isOpen))},
                      given_);
}

void EvdevKeyTap::dispatch() {
    if (waiting_ < 0) {
        return;
    }
    const bool gone = hear();
    if (devices_.changed() || gone) {
        list();
        // What is heard from now on may have said something already.
        hear();
    }
}

bool EvdevKeyTap::hear() {
    std::vector<HeardKey> heard;
    bool gone = false;
    for (Keyboard& keyboard : keyboards_) {
        if (keyboard.device && !read(keyboard, heard)) {
            close(keyboard);
            gone = true;
        }
    }
    std::ranges::stable_sort(heard, {}, &HeardKey::nanos);
    for (const HeardKey& key : heard) {
        deliver(key);
    }
    return gone;
}

bool EvdevKeyTap::forget() {
    vornic::forget(waitingKeys_);
    repeated_.reset();
    return true;
}

bool EvdevKeyTap::read(Keyboard& keyboard, std::vector<HeardKey>& heard) {
    waitingKeys_.clear();
    const bool there = keyboard.device->read(waitingKeys_);
    constexpr std::int32_t repeat = 2;
    for (const KernelKey& key : waitingKeys_) {
        if (key.value != repeat && isKeyOfAKeyboard(key.code)) {
            heard.push_back({.nanos = eventTime_.nanos(key.nanos),
                             .keyboard = keyboard.number,
                             .isVirtual = keyboard.description.isVirtual,
                             .code = key.code,
                             .down = key.value != 0});
        }
    }
    return there;
}

void EvdevKeyTap::deliver(const HeardKey& key) {
    const std::int64_t keyCode = forms_.keyCode(key.keyboard, key.code);
    // Both look at every event, whatever the other says.
    const bool accepted =
        filter_.accepts({.keyboard = key.keyboard, .code = key.code}, keyCode, key.down);
    const bool repetition =
        repeated_.isRepetition(key.keyboard, key.isVirtual, key.code, key.down, key.nanos);
    if (!accepted || repetition) {
        return;
    }
    if (witness_ != nullptr) {
        witness_->keyMoved(key.keyboard, keyCode, key.down);
    }
    // Two keyboards are not read at the same instant, but times never run backwards.
    latest_ = std::max(latest_, key.nanos);
    onKey(keyCode, key.down, latest_);
}

std::string EvdevKeyTap::description() const {
    const auto open = std::ranges::count_if(
        keyboards_, [](const Keyboard& keyboard) { return keyboard.device != nullptr; });
    return std::to_string(open) + " of " + std::to_string(keyboards_.size()) +
           (keyboards_.size() == 1 ? " keyboard" : " keyboards") + devices_.way();
}

} // namespace vornic

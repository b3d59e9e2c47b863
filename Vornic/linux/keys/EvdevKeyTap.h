#pragma once

#include "Vornic/linux/keys/InputDevices.h"
#include "Vornic/linux/keys/KeyboardForms.h"
#include "Vornic/linux/keys/RepeatedKeys.h"
#include "Vornic/ports/Clock.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/typing/EventTime.h"
#include "Vornic/typing/KeyFilter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// Hears the keys of every keyboard from the kernel, whatever session runs on it: in a Wayland
/// session nothing else tells a program about keys outside its own windows. Needs the right to read
/// the keyboards' nodes. Keyboards may come and go; what a program repeats of a real one's keys
/// sounds once. Thread: key.
class EvdevKeyTap final : public KeyTap {
  public:
    /// `given` says whether the user has been granted access to keyboards, effective or not.
    /// `witness` outlives it and hears every accepted key before `onKey` does; it may be null.
    /// `usual` is the form of the keyboards here.
    EvdevKeyTap(const Clock& clock, InputDevices& devices, std::function<bool()> given,
                KeyWitness* witness = nullptr, KeyboardForm usual = KeyboardForm::ansi);
    ~EvdevKeyTap() override;
    EvdevKeyTap(const EvdevKeyTap&) = delete;
    EvdevKeyTap& operator=(const EvdevKeyTap&) = delete;

    bool start() override;
    void stop() override;

    /// Also notices rights that came or went since: a keyboard that this process may not read any
    /// more, for one because another user sits at the computer now, is let go of.
    TapState refresh() override;
    int fileDescriptor() const override { return waiting_; }
    void dispatch() override;
    bool forget() override;

    /// "2 of 3 keyboards", and how they are read.
    std::string description() const override;

  private:
    struct Keyboard {
        KeyboardDescription description;
        /// Tells this keyboard from others, and from itself plugged in again.
        std::uint32_t number = 0;
        std::unique_ptr<InputDevice> device; // empty while it may not be read
    };
    struct HeardKey {
        std::uint64_t nanos;
        std::uint32_t keyboard;
        bool isVirtual;
        std::uint32_t code;
        bool down;
    };

    bool begin();
    void list();
    void open(Keyboard& keyboard);
    void close(Keyboard& keyboard);
    void wait(int descriptor) const;
    /// Delivers what waits; true when a keyboard has gone.
    bool hear();
    bool read(Keyboard& keyboard, std::vector<HeardKey>& heard);
    void deliver(const HeardKey& key);

    InputDevices& devices_;
    std::function<bool()> given_;
    KeyWitness* witness_;
    KeyboardForms forms_;
    EventTime eventTime_;
    KeyFilter filter_;
    RepeatedKeys repeated_;
    std::vector<Keyboard> keyboards_;
    std::vector<KernelKey> waitingKeys_;
    std::uint32_t nextNumber_ = 0;
    std::uint64_t latest_ = 0;
    int waiting_ = -1; // an epoll descriptor, -1 when stopped
};

} // namespace vornic

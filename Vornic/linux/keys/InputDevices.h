#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// A keyboard of the kernel's input layer, as it can be seen without opening it.
struct KeyboardDescription {
    /// Its node: "/dev/input/event3".
    std::string path;
    /// What the device calls itself.
    std::string name;
    /// True for one that a program made, which may repeat the keys of a real one.
    bool isVirtual = false;
    /// The seat that it belongs to; the first one where nothing says.
    std::string seat = "seat0";
    /// Where it is plugged in, as a path below /sys.
    std::string port;
    /// Numbers of the kernel's input layer; 0 where unknown.
    std::uint16_t bus = 0;
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;

    bool operator==(const KeyboardDescription&) const = default;
};

/// One key event as the kernel tells it.
struct KernelKey {
    /// Nanoseconds of the monotonic clock at the interrupt; of another clock where the kernel
    /// knows no better.
    std::uint64_t nanos = 0;
    /// KEY_A is 30.
    std::uint32_t code = 0;
    /// 0 up, 1 down, 2 repeated.
    std::int32_t value = 0;
};

/// An open keyboard; closed at the end of its life. Thread: key.
class InputDevice {
  public:
    InputDevice() = default;
    InputDevice(const InputDevice&) = delete;
    InputDevice& operator=(const InputDevice&) = delete;
    virtual ~InputDevice() = default;

    /// Readable when events wait.
    virtual int fileDescriptor() const = 0;

    /// The codes of the keys that are down now.
    virtual std::vector<std::uint32_t> keysDown() const = 0;

    /// Appends the key events that wait; false when the device is gone.
    virtual bool read(std::vector<KernelKey>& keys) = 0;
};

/// Follows the keys that are read, keyboard by keyboard. Thread: key.
class KeyWitness {
  public:
    KeyWitness() = default;
    KeyWitness(const KeyWitness&) = delete;
    KeyWitness& operator=(const KeyWitness&) = delete;
    virtual ~KeyWitness() = default;

    /// `keyboard` is heard from now on; these keys were down already.
    virtual void keyboardCame(std::uint32_t keyboard, const std::vector<std::int64_t>& held) = 0;

    /// A key went down or up.
    virtual void keyMoved(std::uint32_t keyboard, std::int64_t keyCode, bool down) = 0;

    /// `keyboard` is heard no more, nor are the releases of what is down on it.
    virtual void keyboardGone(std::uint32_t keyboard) = 0;
};

/// The keyboards of this computer. Thread: key.
class InputDevices {
  public:
    InputDevices() = default;
    InputDevices(const InputDevices&) = delete;
    InputDevices& operator=(const InputDevices&) = delete;
    virtual ~InputDevices() = default;

    /// Begins to notice keyboards that come and go. Called again and again: what could not be had
    /// may be there now.
    virtual void watch() = 0;

    /// Ends that.
    virtual void unwatch() = 0;

    /// Readable when keyboards came, went or changed; -1 while not watching.
    virtual int fileDescriptor() const = 0;

    /// Takes in what happened; true when `keyboards` should be asked again.
    virtual bool changed() = 0;

    /// Those that are there now.
    virtual std::vector<KeyboardDescription> keyboards() = 0;

    /// Whether this process may read `path` at this moment. A device once opened stays readable
    /// when that right is taken away, so it has to be asked.
    virtual bool mayRead(const std::string& path) const = 0;

    /// Opens one; empty where that is refused or it is gone.
    virtual std::unique_ptr<InputDevice> open(const std::string& path) = 0;

    /// What to say of how they are read, behind their number; empty where nothing is special.
    virtual std::string way() const { return {}; }
};

} // namespace vornic

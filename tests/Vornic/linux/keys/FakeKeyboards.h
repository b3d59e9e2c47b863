#pragma once

#include "Vornic/linux/keys/InputDevices.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// A descriptor that is readable while something waits.
class ReadableFlag {
  public:
    ReadableFlag() : descriptor_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    ~ReadableFlag() { ::close(descriptor_); }
    ReadableFlag(const ReadableFlag&) = delete;
    ReadableFlag& operator=(const ReadableFlag&) = delete;

    int descriptor() const { return descriptor_; }
    void raise() const { eventfd_write(descriptor_, 1); }
    /// Whether it was raised.
    bool lower() const {
        eventfd_t count = 0;
        return eventfd_read(descriptor_, &count) == 0;
    }

  private:
    int descriptor_;
};

/// Keyboards as a test describes them.
class FakeKeyboards final : public InputDevices {
  public:
    /// What one keyboard has to say, alive for as long as the test.
    struct Keyboard {
        KeyboardDescription description;
        bool readable = true;
        bool gone = false;
        /// Opened and not closed.
        int open = 0;
        std::vector<std::uint32_t> down;
        std::vector<KernelKey> waiting;
        ReadableFlag flag;
    };

    Keyboard& plug(const std::string& path, bool isVirtual = false) {
        Keyboard& keyboard = all_[++plugged_];
        keyboard.description.path = path;
        keyboard.description.name = "Keyboard " + path;
        keyboard.description.isVirtual = isVirtual;
        present_.insert(plugged_);
        change_.raise();
        return keyboard;
    }

    void unplug(Keyboard& keyboard) {
        std::erase_if(present_, [&](int number) { return &all_[number] == &keyboard; });
        keyboard.gone = true;
        keyboard.flag.raise();
        change_.raise();
    }

    static void say(Keyboard& keyboard, KernelKey key) {
        keyboard.waiting.push_back(key);
        keyboard.flag.raise();
    }

    bool watching() const { return watching_; }
    /// How often the list was asked for.
    int listed() const { return listed_; }

    void watch() override { watching_ = true; }
    void unwatch() override { watching_ = false; }
    int fileDescriptor() const override { return watching_ ? change_.descriptor() : -1; }
    bool changed() override { return change_.lower(); }

    std::vector<KeyboardDescription> keyboards() override {
        ++listed_;
        std::vector<KeyboardDescription> found;
        for (const int number : present_) {
            found.push_back(all_[number].description);
        }
        return found;
    }

    bool mayRead(const std::string& path) const override {
        return std::ranges::any_of(present_, [&](int number) {
            return all_.at(number).description.path == path && all_.at(number).readable;
        });
    }

    std::unique_ptr<InputDevice> open(const std::string& path) override {
        for (const int number : present_) {
            if (all_[number].description.path == path && all_[number].readable) {
                return std::make_unique<Open>(all_[number]);
            }
        }
        return nullptr;
    }

  private:
    class Open final : public InputDevice {
      public:
        explicit Open(Keyboard& keyboard) : keyboard_(keyboard) { ++keyboard_.open; }
        ~Open() override { --keyboard_.open; }
        int fileDescriptor() const override { return keyboard_.flag.descriptor(); }
        std::vector<std::uint32_t> keysDown() const override { return keyboard_.down; }
        bool read(std::vector<KernelKey>& keys) override {
            keyboard_.flag.lower();
            keys.insert(keys.end(), keyboard_.waiting.begin(), keyboard_.waiting.end());
            keyboard_.waiting.clear();
            return !keyboard_.gone;
        }

      private:
        Keyboard& keyboard_;
    };

    std::map<int, Keyboard> all_;
    std::set<int> present_;
    int plugged_ = 0;
    int listed_ = 0;
    bool watching_ = false;
    ReadableFlag change_;
};

} // namespace vornic

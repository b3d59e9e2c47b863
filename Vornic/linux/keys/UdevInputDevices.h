#pragma once

#include "Vornic/linux/keys/InputDevices.h"

#include <memory>
#include <string>
#include <vector>

struct udev;
struct udev_monitor;

namespace vornic {

/// The keyboards that the device manager knows: what has the keys of a whole keyboard, as the rule
/// that grants access has it too. Thread: key.
class UdevInputDevices final : public InputDevices {
  public:
    UdevInputDevices();
    ~UdevInputDevices() override;
    UdevInputDevices(const UdevInputDevices&) = delete;
    UdevInputDevices& operator=(const UdevInputDevices&) = delete;

    void watch() override;
    void unwatch() override;
    int fileDescriptor() const override;
    bool changed() override;
    std::vector<KeyboardDescription> keyboards() override;
    bool mayRead(const std::string& path) const override;
    std::unique_ptr<InputDevice> open(const std::string& path) override;

  private:
    udev* udev_;
    udev_monitor* monitor_ = nullptr;
};

} // namespace vornic

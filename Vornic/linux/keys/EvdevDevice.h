#pragma once

#include "Vornic/linux/keys/InputDevices.h"

#include <memory>
#include <string>

struct libevdev;

namespace vornic {

/// A node of the kernel's input layer, opened for reading only and shared with everybody else. The
/// kernel stamps its events by the monotonic clock. When events were lost because nobody read them
/// in time, what they changed is told instead.
class EvdevDevice final : public InputDevice {
  public:
    /// Empty where the node cannot be opened or is none of the input layer's.
    static std::unique_ptr<EvdevDevice> open(const std::string& path);

    ~EvdevDevice() override;
    EvdevDevice(const EvdevDevice&) = delete;
    EvdevDevice& operator=(const EvdevDevice&) = delete;

    int fileDescriptor() const override { return descriptor_; }
    std::vector<std::uint32_t> keysDown() const override;
    bool read(std::vector<KernelKey>& keys) override;

  private:
    explicit EvdevDevice(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
    libevdev* device_ = nullptr;
};

} // namespace vornic

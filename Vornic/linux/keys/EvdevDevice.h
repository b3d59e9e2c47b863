#pragma once

#include "Vornic/linux/keys/InputDevices.h"

#include <linux/input-event-codes.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct input_event;

namespace vornic {

/// A node of the kernel's input layer, opened for reading only and shared with everybody else. The
/// kernel stamps its events by the monotonic clock. When events were lost because nobody read them
/// in time, what they changed is told instead. Keeps no event that it has told. Thread: key.
class EvdevDevice final : public InputDevice {
  public:
    /// Empty where the node cannot be opened or is none of the input layer's.
    static std::unique_ptr<EvdevDevice> open(const std::string& path);

    ~EvdevDevice() override;
    EvdevDevice(const EvdevDevice&) = delete;
    EvdevDevice& operator=(const EvdevDevice&) = delete;

    int fileDescriptor() const override { return descriptor_; }
    std::vector<std::uint32_t> keysDown() const override;
    /// A bit for each key code that it can say, the lowest first.
    std::array<std::uint8_t, KEY_CNT / 8> keysItHas() const;
    bool read(std::vector<KernelKey>& keys) override;

  private:
    using Keys = std::bitset<KEY_CNT>;

    explicit EvdevDevice(int descriptor) : descriptor_(descriptor) {}
    bool askKeys(Keys& down) const;
    void take(const input_event& event, std::vector<KernelKey>& keys);

    int descriptor_;
    Keys down_;
    bool hasLost_ = false; // events, until the report that they belong to ends
};

} // namespace vornic

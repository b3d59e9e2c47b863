#pragma once

#include <functional>

namespace vornic {

/// Something outside the program that makes key sounds wrong while it lasts. Thread: main.
class QuietWatch {
  public:
    QuietWatch() = default;
    QuietWatch(const QuietWatch&) = delete;
    QuietWatch& operator=(const QuietWatch&) = delete;
    virtual ~QuietWatch() = default;

    /// Starts watching; once. Returns without waiting for the system's answer.
    virtual void start() = 0;

    /// Whether it lasts now. False as long as nothing is known. Cheap: the fact as the system last
    /// told it, or a look of a few microseconds; asked every second.
    virtual bool active() const = 0;

    /// Called whenever `active` may answer differently, where the system pushes it: the model then
    /// need not wait for its next look. Set before `start`.
    std::function<void()> onChange = [] {};
};

} // namespace vornic

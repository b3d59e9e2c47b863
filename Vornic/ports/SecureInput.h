#pragma once

#include <functional>

namespace vornic {

/// Whether what is typed now is meant for nobody's ears: a password field has the focus, or the
/// screen is locked. Main thread.
class SecureInput {
  public:
    SecureInput() = default;
    SecureInput(const SecureInput&) = delete;
    SecureInput& operator=(const SecureInput&) = delete;
    virtual ~SecureInput() = default;

    /// Starts watching; once. Returns without waiting for the system's answer.
    virtual void start() = 0;

    /// Whether a password is being typed now. False as long as nothing is known. Cheap: the fact as
    /// the system last told it; asked every second.
    virtual bool active() const = 0;

    /// Called whenever `active` may answer differently, where the system pushes it: the model then
    /// need not wait for its next look. Set before `start`.
    std::function<void()> onChange = [] {};
};

} // namespace vornic

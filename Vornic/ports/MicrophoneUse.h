#pragma once

#include <functional>

namespace vornic {

/// Whether some program listens to a microphone, which the sounds of keys would get into. Main
/// thread.
class MicrophoneUse {
  public:
    MicrophoneUse() = default;
    MicrophoneUse(const MicrophoneUse&) = delete;
    MicrophoneUse& operator=(const MicrophoneUse&) = delete;
    virtual ~MicrophoneUse() = default;

    /// Starts watching; once. Returns without waiting for the system's answer.
    virtual void start() = 0;

    /// Whether a program other than this one records from a microphone now. What listens to an
    /// output, or only shows a level, does not count. False as long as nothing is known. Cheap: the
    /// fact as the system last told it, or a look of a few microseconds; asked every second.
    virtual bool inUse() const = 0;

    /// Whether there is a microphone whose use can be told.
    virtual bool canCheck() const = 0;

    /// Called whenever `inUse` may answer differently, where the system pushes it: the model then
    /// need not wait for its next look. Set before `start`.
    std::function<void()> onChange = [] {};
};

} // namespace vornic

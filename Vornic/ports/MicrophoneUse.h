#pragma once

#include "Vornic/ports/QuietWatch.h"

namespace vornic {

/// Whether some program listens to a microphone, which the sounds of keys would get into.
/// Thread: main.
class MicrophoneUse : public QuietWatch {
  public:
    bool active() const final { return inUse(); }

    /// Whether a program other than this one records from a microphone now. What listens to an
    /// output, or only shows a level, does not count.
    virtual bool inUse() const = 0;

    /// The same, counting this program too: its self-test listens by itself to see whether use is
    /// noticed.
    virtual bool inUseByAnybody() const = 0;

    /// Whether there is a microphone whose use can be told.
    virtual bool canCheck() const = 0;
};

} // namespace vornic

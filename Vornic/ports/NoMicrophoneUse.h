#pragma once

#include "Vornic/ports/MicrophoneUse.h"

namespace vornic {

/// For where nothing tells who listens to microphones: none ever seems in use.
class NoMicrophoneUse final : public MicrophoneUse {
  public:
    void start() override {}
    bool inUse() const override { return false; }
    bool canCheck() const override { return false; }
};

} // namespace vornic

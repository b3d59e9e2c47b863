#pragma once

#include "tests/live/ChildProcess.h"
#include "tests/support/ScratchFolder.h"

#include <memory>
#include <string>

namespace vornic {

/// An X server of a test's own, which the test may kill or remap without disturbing anybody.
class PrivateXServer {
  public:
    /// Starts it and waits until it listens.
    PrivateXServer();

    /// Its name, to be used like $DISPLAY.
    const std::string& display() const { return display_; }

    /// Ends it at once, as in a crash.
    void kill();

  private:
    ScratchFolder folder_;
    std::unique_ptr<ChildProcess> server_;
    std::string display_;
};

} // namespace vornic

#pragma once

#include <thread>

namespace vornic {

/// A user at work in the Studio of the running program: opens it by clicks and drags a slider that
/// has the board rendered anew, up and down, sixty moves a second, until destroyed. Needs a Qt
/// application, and the program's panel to be open.
class StudioDrag {
  public:
    /// Throws std::runtime_error when the Studio does not open.
    StudioDrag();

  private:
    std::jthread hand_;
};

} // namespace vornic

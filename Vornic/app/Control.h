#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/ports/RunningCopy.h"

#include <functional>
#include <string>

namespace vornic {

/// Does what others ask of the running copy: "on", "off", "toggle", "board" [next|previous|ID],
/// "volume" [0 to 1], "status" [--json], and what a second start of the program says: "activate",
/// and "open" with the path of a board file. `activate` is called for these two. Main thread.
ControlAnswer control(AppModel& model, const RunningCopy::Words& words,
                      const std::function<void()>& activate);

/// The state of the program as a JSON object.
std::string statusAsJson(const AppModel& model);

} // namespace vornic

#pragma once

#include "Vornic/commands/CommandLine.h"
#include "Vornic/ports/Log.h"

#include <string>

namespace vornic {

/// Where the program is started but cannot be heard or cannot hear, it shows at least what it
/// sounds like: `problem` says why, and the phrase goes through the same path into a file. The
/// status to end with. Thread: main.
int playDemo(const RunRequest& request, const std::string& problem, Log& log);

} // namespace vornic

#pragma once

#include "Vornic/commands/CommandLine.h"

namespace vornic {

/// Does what the command line asks for besides running the program: plays and cuts files, keeps
/// boards, asks the running copy, prints. The status to end with. Thread: main.
int runCommand(const CommandRequest& request);

} // namespace vornic

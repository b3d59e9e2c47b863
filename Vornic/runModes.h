#pragma once

#include "Vornic/commands/CommandLine.h"
#include "Vornic/ports/Log.h"

#include <string>

// The ways to run that end by themselves. Thread: main, as everything here.
namespace vornic {

/// Does what the command line asks for besides running the program: plays and cuts files, keeps
/// boards, asks the running copy, prints. The status to end with.
int runCommand(const CommandRequest& request);

/// `vornic doctor`: looks at the computer and the session, prints what works and what does not.
/// Changes nothing. The status to end with: 0 when keys can be heard and played, else 1.
int runDoctor(const DoctorRequest& request);

/// Where the program is started but cannot be heard or cannot hear, it shows at least what it
/// sounds like: `problem` says why, and the phrase goes through the same path into a file. The
/// status to end with.
int playDemo(const RunRequest& request, const std::string& problem, Log& log);

} // namespace vornic

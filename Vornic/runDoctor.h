#pragma once

#include "Vornic/commands/CommandLine.h"

namespace vornic {

/// `vornic doctor`: looks at the computer and the session, prints what works and what does not.
/// Changes nothing. The status to end with: 0 when keys can be heard and played, else 1.
/// Thread: main.
int runDoctor(const DoctorRequest& request);

} // namespace vornic

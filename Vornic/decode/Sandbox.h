#pragma once

namespace vornic {

/// Takes everything from this process, for good, that turning a file into samples does not need:
/// from here on it may read and seek its standard input, write to its standard output, and get
/// memory in which nothing can be executed. No file can be opened, and whatever else it asks of the
/// system, a connection or a program above all, ends it at once by SIGSYS. What it keeps open
/// besides the three standard descriptors is closed. False where the system cannot do that: then
/// decode nothing. Thread: main, before there are others.
bool enterSandbox();

} // namespace vornic

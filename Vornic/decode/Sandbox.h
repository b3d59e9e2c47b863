#pragma once

namespace vornic {

/// The number that every file gets which comes over the standard input: the lowest free one.
inline constexpr int receivedFile = 3;

/// Takes everything from this process, for good, that reading what others made does not need: from
/// here on it may receive descriptors over its standard input, read and seek the one it received,
/// write to its standard output, and get memory in which nothing can be executed. No file can be
/// opened, and whatever else it asks of the system, a connection or a program above all, ends it at
/// once by SIGSYS. What it keeps open besides the three standard descriptors is closed. False where
/// the system cannot do that: then read nothing. Thread: main, before there are others.
bool enterSandbox();

} // namespace vornic

#pragma once

#include <sys/types.h>

#include <cstddef>

namespace vornic {

/// What the kernel says that a process has. Thread: any.
struct ProcessFacts {
    double memoryMB = 0;  // MiB, its share of what it maps (PSS)
    double ownMB = 0;     // MiB of that which no file could give back
    double processor = 0; // seconds that its threads have run for
    std::size_t descriptors = 0;
    std::size_t threads = 0;
};

/// Throws std::runtime_error where there is no such process.
ProcessFacts factsOf(pid_t process);

} // namespace vornic

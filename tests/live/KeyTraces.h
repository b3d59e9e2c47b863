#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>

namespace vornic {

/// The keys that were pressed, by their evdev codes, and when, in nanoseconds of the monotonic
/// clock.
struct PressedKeys {
    std::set<int> keys;
    std::uint64_t from = 0;
    std::uint64_t until = 0;
};

/// Where in a memory it can be read which keys were pressed: the keys by the kind of trace that
/// names them.
using KeyTraces = std::map<std::string, std::set<int>>;

/// Searches the whole memory of `process` for everything on a key's way that names it: the window
/// system's events and the kernel's, the program's own events, play requests and voices (whose pan
/// and pitch are the key's on the standard board, undisturbed by a board of the user's). Thread:
/// any.
KeyTraces keyTracesIn(pid_t process, const PressedKeys& pressed);

} // namespace vornic

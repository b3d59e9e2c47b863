#pragma once

namespace vornic {

/// Writes "Vornic stopped: " and `check` to standard error and ends the program. For programming
/// errors only, never for bad input. Safe on any thread: it neither allocates nor locks.
/// Thread: any, as everything here.
[[noreturn]] void fatal(const char* check) noexcept;

/// Stops the program with `check` as its message unless `condition` holds.
inline void require(bool condition, const char* check) noexcept {
    if (!condition) [[unlikely]] {
        fatal(check);
    }
}

} // namespace vornic

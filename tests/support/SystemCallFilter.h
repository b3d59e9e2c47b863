#pragma once

#include <functional>
#include <string>

namespace vornic {

/// Runs `work` in a forked copy of this process in which every system call is forbidden, and says
/// what happened: empty if it ran to its end, else for instance "system call 39 (getpid)" or
/// "ended by signal 11". What `work` changes is lost with the copy.
///
/// It cannot say more than that: a clock read through the kernel's shared page, for instance, is no
/// system call and passes. In sanitized builds the sanitizer's own calls would be reported, so use
/// it through `expectRealTimeSafe`.
std::string forbiddenSystemCall(const std::function<void()>& work);

} // namespace vornic

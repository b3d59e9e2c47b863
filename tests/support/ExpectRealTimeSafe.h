#pragma once

#include <functional>
#include <source_location>

namespace vornic {

/// A test's claim that `work` may run on the audio thread: that it allocates and frees nothing,
/// takes no lock and makes no system call. `work` runs twice: in a copy of the process in which
/// system calls are forbidden, and then here, counted by a RealTimeGuard. In builds where the guard
/// is inactive it only runs here. Put no gtest assertion into `work`: those allocate.
///
///     expectRealTimeSafe([&] { core.render(128, left, right, 0); });
void expectRealTimeSafe(const std::function<void()>& work,
                        std::source_location where = std::source_location::current());

} // namespace vornic

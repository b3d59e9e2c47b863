#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <vector>

namespace vornic {

/// The running processes that were started from the file `program`, as whoever may trace them sees
/// them. Thread: any.
std::vector<pid_t> processesOf(const std::filesystem::path& program);

/// Calls `look` with every stretch of memory that `process` can write, and where it begins: heap,
/// stacks, variables and what it shares. Throws where this process may not read it; root may.
/// Thread: any.
void readMemory(
    pid_t process,
    const std::function<void(std::uint64_t address, std::span<const std::byte> bytes)>& look);

} // namespace vornic

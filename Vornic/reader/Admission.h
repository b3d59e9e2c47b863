#pragma once

#include "Vornic/reader/ReaderMessages.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace vornic {

/// Why a process is not the program at `installed`, a path without links, with nothing but the
/// system's code in it, in a few words; empty where it is. `about` is what the system tells of the
/// process, /proc/ID, and `owner` who programs belong to, root but in tests. Thread: any.
std::string whyRefused(const std::filesystem::path& about, const std::filesystem::path& installed,
                       std::uint32_t owner);

/// What decides whether an admitted client hears keys.
struct ReaderClient {
    /// The seat where its user's session is the active one and not locked; empty where none is.
    std::string seat;
    /// What polkit says of it; not asked where it has no seat.
    bool allowed = false;
};

/// How each of these clients stands, in the order in which they came: one at most hears.
/// Thread: any.
std::vector<ReaderStanding> standingsOf(std::span<const ReaderClient> clients);

} // namespace vornic

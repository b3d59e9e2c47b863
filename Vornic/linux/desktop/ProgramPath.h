#pragma once

#include <filesystem>

namespace vornic {

/// The file of the running program; empty when the system does not say. Thread: any.
std::filesystem::path programPath();

} // namespace vornic

#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vornic {

/// The command that starts `program` again with its `arguments`. With a `group`, through sg, which
/// gives the new process a group that the user was put into after logging in.
/// Thread: main, as everything here.
std::vector<std::string> relaunchCommand(const std::filesystem::path& program,
                                         const std::vector<std::string>& arguments,
                                         const std::string& group = {});

/// Lets a command take the place of this process, which keeps its number. Returns only when that
/// failed. To be called when every object that has anything to finish is gone.
void replaceProcess(const std::vector<std::string>& command);

} // namespace vornic

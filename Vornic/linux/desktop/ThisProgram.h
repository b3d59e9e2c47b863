#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vornic {

/// The file of the running program; empty when the system does not say. Thread: any.
std::filesystem::path programPath();

/// Where `program` is installed for the whole system, has the toolkit load no plug-in and no view
/// from folders that the environment names: whoever sets it is not always the user. To be called
/// first in `main`. Thread: main.
void keepOutForeignPlugins(const std::filesystem::path& program);

/// The command that starts `program` again with its `arguments`. With a `group`, through sg, which
/// gives the new process a group that the user was put into after logging in.
/// Thread: main.
std::vector<std::string> relaunchCommand(const std::filesystem::path& program,
                                         const std::vector<std::string>& arguments,
                                         const std::string& group = {});

/// The arguments without the last one that names `file`, an absolute path: a file that was opened
/// has been looked at when the program starts again. Thread: any.
std::vector<std::string> without(std::vector<std::string> arguments,
                                 const std::filesystem::path& file);

/// Lets a command take the place of this process, which keeps its number. Returns only when that
/// failed. To be called when every object that has anything to finish is gone.
/// Thread: main.
void replaceProcess(const std::vector<std::string>& command);

/// No file with the program's memory, in which the last keys may be, when it crashes. The program
/// stays one that may be looked at: the desktop's portals refuse to serve any other.
/// Thread: main.
void writeNoCore();

} // namespace vornic

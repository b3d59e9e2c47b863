#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// Starts a program and returns at once; `ended` is called on the main thread with its exit status
/// (-1 where it could not be started or was killed) and what it wrote to its standard error. When
/// this program ends first, that one is ended too and `ended` is not called. Thread: main.
void startProgram(const std::vector<std::string>& command,
                  std::function<void(int status, const std::string& complaint)> ended);

} // namespace vornic

#pragma once

#include "Vornic/commands/AutostartRequest.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace vornic {

/// The command that starts the program with the session. The application has to outlive it.
/// Thread: main.
class AutostartCommandLine {
  public:
    explicit AutostartCommandLine(CLI::App& app);

    /// What was asked for; absent if another command was.
    std::optional<AutostartRequest> request() const;

  private:
    CLI::App* command_;
    std::string change_;
};

} // namespace vornic

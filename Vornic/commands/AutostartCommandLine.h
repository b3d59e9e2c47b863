#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
} // namespace CLI

namespace vornic {

/// `vornic autostart`: start with the session, or no longer; absent: only say whether it does.
/// Thread: any.
struct AutostartRequest {
    std::optional<bool> on;
};

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

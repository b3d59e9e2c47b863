#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace vornic {

/// Ask the running copy. Thread: any.
struct ControlRequest {
    /// The command as it was typed.
    std::vector<std::string> words;
};

/// The commands that are for the running copy. The application has to outlive it. Thread: main.
class ControlCommandLine {
  public:
    explicit ControlCommandLine(CLI::App& app);

    /// What was asked for; absent if another command was.
    std::optional<ControlRequest> request() const;

  private:
    CLI::App* add(CLI::App& app, const std::string& name, const std::string& help);

    std::vector<CLI::App*> commands_;
    std::string board_;
    std::string volume_;
    bool json_ = false;
};

} // namespace vornic

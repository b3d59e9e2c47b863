#pragma once

#include "Vornic/commands/BoardRequest.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace CLI {
class App;
}

namespace vornic {

/// The part of the command line that is about boards. Thread: main.
class BoardCommandLine {
  public:
    /// Adds its commands to `app`, which it must outlive until the arguments have been read.
    BoardCommandLine(CLI::App& app, const std::filesystem::path& defaultPacks);
    ~BoardCommandLine();
    BoardCommandLine(const BoardCommandLine&) = delete;
    BoardCommandLine& operator=(const BoardCommandLine&) = delete;

    /// What was asked for, once the arguments have been read; none if it was another command.
    std::optional<BoardRequest> request() const;

  private:
    struct Options;
    std::unique_ptr<Options> options_;
};

} // namespace vornic

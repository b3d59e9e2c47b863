#pragma once

#include "tests/live/ChildProcess.h"
#include "tests/live/ProcessFacts.h"
#include "tests/support/ScratchFolder.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// What the program says became of the keys.
struct KeyCounts {
    std::int64_t pressed = 0;
    std::int64_t released = 0;  // those with a sound of their own
    std::int64_t auditions = 0; // played from the windows
    std::int64_t started = 0;
    std::int64_t stolen = 0;
    std::map<std::string, std::int64_t> dropped; // by reason

    /// Of all these, those that neither sounded nor have a reason for it.
    std::int64_t withoutReason() const;
};

/// The whole program with a home of its own, on a sound server of the caller's.
class SoakedProgram {
  public:
    /// Starts it with the packs that were built.
    explicit SoakedProgram(ChildProcess::Environment environment);

    /// Has the running copy do `words`; what it answers. Throws std::runtime_error when it refuses.
    std::string say(const std::vector<std::string>& words) const;
    nlohmann::json status() const;
    KeyCounts counts() const;
    ProcessFacts facts() const;
    /// Writes a board that this program has into a board file of the caller's.
    std::filesystem::path exported(const std::string& board) const;
    /// Whether it still runs.
    bool lives() const;
    std::string log() const;
    /// Asks it to end; its exit status.
    int end();

  private:
    ChildProcess::Environment environment_;
    ScratchFolder folder_;
    std::unique_ptr<ChildProcess> process_;
};

} // namespace vornic

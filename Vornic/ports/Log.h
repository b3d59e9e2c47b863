#pragma once

#include <string>

namespace vornic {

/// Where the program says what happens. One line a call. Thread: any but the audio thread.
class Log {
  public:
    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log() = default;

    /// Something worth knowing.
    virtual void info(const std::string& line) = 0;

    /// Something that does not work; says what to do where that is known.
    virtual void warning(const std::string& line) = 0;
};

} // namespace vornic

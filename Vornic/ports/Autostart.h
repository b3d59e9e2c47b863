#pragma once

#include <system_error>

namespace vornic {

/// Whether the program starts with the session. Thread: main.
class Autostart {
  public:
    Autostart() = default;
    Autostart(const Autostart&) = delete;
    Autostart& operator=(const Autostart&) = delete;
    virtual ~Autostart() = default;

    virtual bool enabled() const = 0;

    /// On an error everything is as it was.
    virtual std::error_code setEnabled(bool on) = 0;
};

} // namespace vornic

#pragma once

#include "Vornic/ports/Autostart.h"

#include <filesystem>

namespace vornic {

/// Starts the program by a desktop entry in the user's autostart folder, which there is none of at
/// first. Thread: main.
class AutostartEntry final : public Autostart {
  public:
    /// `entry` is the file, `program` what it starts.
    AutostartEntry(std::filesystem::path entry, std::filesystem::path program);

    /// False also for an entry that the desktop's own settings have switched off.
    bool enabled() const override;
    std::error_code setEnabled(bool on) override;

  private:
    std::filesystem::path entry_;
    std::filesystem::path program_;
};

} // namespace vornic

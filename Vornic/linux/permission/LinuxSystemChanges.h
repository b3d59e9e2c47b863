#pragma once

#include "Vornic/linux/permission/InputMonitoringSwitch.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vornic {

/// The computer itself. Only root gets far with it. Thread: main.
class LinuxSystemChanges final : public SystemChanges {
  public:
    bool exists(const std::filesystem::path& path) const override;
    bool write(const std::filesystem::path& path, const std::string& text) override;
    bool remove(const std::filesystem::path& path) override;
    bool run(const std::vector<std::string>& command) override;
    std::vector<std::string> keyboards() const override;
    void dropUsers(const std::string& node) override;
};

} // namespace vornic

#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vornic {

/// What the switch does to the system; injected, so that tests see it without any right.
class SystemChanges {
  public:
    SystemChanges() = default;
    SystemChanges(const SystemChanges&) = delete;
    SystemChanges& operator=(const SystemChanges&) = delete;
    virtual ~SystemChanges() = default;

    virtual bool exists(const std::filesystem::path& path) const = 0;
    /// Writes a file that everybody may read, with the folder above it; false when that fails.
    virtual bool write(const std::filesystem::path& path, const std::string& text) = 0;
    /// Removes a file; true when it is not there afterwards.
    virtual bool remove(const std::filesystem::path& path) = 0;
    /// Runs a program to its end; whether it succeeded.
    virtual bool run(const std::vector<std::string>& command) = 0;
    /// The nodes of all keyboards.
    virtual std::vector<std::string> keyboards() const = 0;
    /// Takes every single user's access to a node away and leaves its group's.
    virtual void dropUsers(const std::string& node) = 0;
};

/// The privileged step of "Turn on Input Monitoring…": tells polkit that Vornic may hear keys
/// through the key reader, or, where there is none, makes the file that the device manager's rule
/// looks for, and has the rule looked at again. Does nothing else with its rights.
/// Thread: main, as everything here.
class InputMonitoringSwitch {
  public:
    explicit InputMonitoringSwitch(SystemChanges& changes) : changes_(changes) {}

    /// Turns it on. Empty on success, else what is wrong, in one sentence.
    std::string enable();

    /// Turns it off in whatever way it was on, also for keyboards that are open to the user
    /// already. Empty on success.
    std::string disable();

  private:
    std::string enableReader();
    std::string enableRule();
    std::string disableRule();
    bool applyRule();

    SystemChanges& changes_;
};

} // namespace vornic

#pragma once

#include "Vornic/app/Settings.h"
#include "Vornic/library/FileWriter.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace vornic {

/// The settings as a file of keys and values, a JSON object. A setting that was never changed has
/// no entry, and an entry that is no setting of this version is kept. The file is written whole or
/// not at all. Thread: main.
class SettingsFile {
  public:
    /// Reads `path`; without such a file everything has its default. A file that is no such object
    /// is put aside under another name. A value of the wrong kind counts as its default, one
    /// outside its range as the nearest end; both stay in the file until the user changes that
    /// setting.
    explicit SettingsFile(std::filesystem::path path);

    const Settings& settings() const { return settings_; }

    /// There was no file.
    bool fresh() const { return fresh_; }

    /// Makes `settings` the current ones; `write` puts those that have changed into the file.
    void set(const Settings& settings);

    /// Whether the file lacks something that was set.
    bool unwritten() const { return unwritten_; }

    /// What was set since it was last asked for, as a change of the file; absent when there is
    /// nothing. From then on it counts as written.
    std::optional<FileChange> takeChange();

    /// Writes what was set, and waits until the disk has it. On an error the settings count for as
    /// long as the program runs, what was in the file is still there, and they remain unwritten.
    /// Harmless and free when there is nothing to write.
    std::error_code write();

    /// A sentence for each thing that could not be read as it stands.
    const std::vector<std::string>& problems() const { return problems_; }

  private:
    void read();
    void limitUnknown();
    void putAside(const std::string& why);
    void leave(const std::string& why);

    std::filesystem::path path_;
    nlohmann::json document_ = nlohmann::json::object();
    Settings settings_;
    std::vector<std::string> problems_;
    bool fresh_ = true;
    bool unwritten_ = false;
    bool writable_ = true; // a damaged file that could not be put aside is never overwritten
};

} // namespace vornic

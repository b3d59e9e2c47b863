#pragma once

#include "VornicCore/foreign/PackFiles.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// One folder among the files, with what is below it, and the mending of names: where a pack names
/// "A.WAV" and there is "sounds/a.wav", that is what was meant. Refers to the files. Thread: any.
class PackFolder {
  public:
    /// `place` is the folder's name; empty: the top.
    PackFolder(const PackFiles& files, std::string place);

    const PackFiles& files() const { return *files_; }
    const std::string& place() const { return place_; }
    /// What the folder is called; at the top, what was opened.
    std::string title() const;

    /// The files in the folder itself, as they stand in `files()`.
    const std::vector<std::string>& own() const { return own_; }

    /// The file that the pack calls `wanted`, as it stands in `files()`; none where there is none.
    /// A name that had to be mended is noted as repaired, one without a file as missing.
    std::optional<std::string> find(const std::string& wanted, PackNotes& notes) const;

    /// The text of the licence in the folder, up to some pages; mostly empty.
    std::string licenceText() const;

  private:
    std::optional<std::string> lookUp(const std::string& name) const;

    const PackFiles* files_;
    std::string place_;
    std::vector<std::string> own_;
    /// By name in lower case: relative to the folder, and alone.
    std::map<std::string, std::string> byName_;
    std::map<std::string, std::string> byBaseName_;
};

/// In lower case, for ASCII.
std::string lowerCase(std::string_view text);

/// What is behind the last "/"; and that without its ending.
std::string_view baseName(std::string_view name);
std::string_view stem(std::string_view name);

/// What is before the last "/"; empty where there is none.
std::string_view folderOf(std::string_view name);

/// Whether the name ends like an audio file's.
bool isAudioName(std::string_view name);

} // namespace vornic

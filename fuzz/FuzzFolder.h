#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vornic {

/// A folder that every input finds as the first one did; it goes with the program. A parser of
/// files reads the input from there.
class FuzzFolder {
  public:
    FuzzFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "vornic-fuzz-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder for what is fuzzed");
        }
        path_ = name;
    }
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    FuzzFolder(const FuzzFolder&) = delete;
    FuzzFolder& operator=(const FuzzFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    /// Removes what the last input has left, and writes this one into the file `name`.
    std::filesystem::path put(std::string_view name, const std::uint8_t* data,
                              std::size_t size) const {
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            std::filesystem::remove_all(entry.path());
        }
        const std::filesystem::path file = path_ / name;
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return file;
    }

  private:
    std::filesystem::path path_;
};

} // namespace vornic

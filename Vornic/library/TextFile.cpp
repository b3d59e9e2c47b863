#include "Vornic/library/TextFile.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace vornic {

namespace {

[[noreturn]] void complain(const std::filesystem::path& path, const std::string& why) {
    throw std::runtime_error("Couldn't read " + path.string() + ": " + why);
}

} // namespace

std::string readTextFile(const std::filesystem::path& path, std::uintmax_t largest) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        complain(path, "it is a folder");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        complain(path, std::generic_category().message(errno));
    }
    // Piece by piece, since a pipe or a device has no size to ask for.
    std::string text;
    std::array<char, 65536> piece{};
    while (file.read(piece.data(), piece.size()), file.gcount() > 0) {
        text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
        if (text.size() > largest) {
            complain(path, "it is larger than " + std::to_string(largest) + " bytes");
        }
    }
    if (file.bad()) {
        complain(path, "the medium failed");
    }
    return text;
}

} // namespace vornic

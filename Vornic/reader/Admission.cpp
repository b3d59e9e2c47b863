#include "Vornic/reader/Admission.h"

#include <sys/stat.h>

#include <fstream>
#include <sstream>

namespace vornic {

namespace {

/// What a file's record says; all zero, and its file nobody's, where there is none.
struct stat recordOf(const std::filesystem::path& path) {
    struct stat record{};
    if (::stat(path.c_str(), &record) != 0) {
        record.st_mode = S_IWOTH;
    }
    return record;
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_ino != 0 && one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Whether nobody but root and `owner` could have put something else into the file.
bool isOnlyOf(std::uint32_t owner, const struct stat& file) {
    return (file.st_uid == 0 || file.st_uid == owner) && (file.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// What the kernel itself maps, and memory without a file, such as that of the toolkit's script
/// engine. Code that ran before could hide there: what is refused is what is loaded openly.
bool isNoFile(const std::string& path) {
    return path.empty() || path == "[vdso]" || path == "[vsyscall]" || path == "[uprobes]" ||
           path.starts_with("[anon:") || path.starts_with("/memfd:JITCode:QtQml");
}

} // namespace

std::string whyRefused(const std::filesystem::path& about, const std::filesystem::path& installed,
                       std::uint32_t owner) {
    const struct stat program = recordOf(about / "exe");
    if (!isSameFile(program, recordOf(installed))) {
        return "another program than the installed one";
    }
    if (!isOnlyOf(owner, program)) {
        return "a program that not only root can change";
    }
    // In a namespace of its own it could put other files in the place of the system's.
    if (!isSameFile(recordOf(about / "ns/user"), recordOf("/proc/self/ns/user"))) {
        return "a program in a namespace of its own";
    }
    bool hasCode = false;
    std::ifstream memory(about / "maps");
    for (std::string line; std::getline(memory, line);) {
        std::istringstream words(line);
        std::string range, rights, offset, device, number, path;
        words >> range >> rights >> offset >> device >> number >> std::ws;
        std::getline(words, path);
        if (rights.find('x') == std::string::npos || isNoFile(path)) {
            continue;
        }
        // Elsewhere somebody could exchange the file, or a folder above it, while it is looked at.
        const bool isSystems = path == installed || path.starts_with("/usr/");
        if (!isSystems || !isOnlyOf(owner, recordOf(path))) {
            return "foreign code in it, " + path;
        }
        hasCode = true;
    }
    return hasCode ? std::string() : "a program that cannot be looked at";
}

std::vector<ReaderStanding> standingsOf(std::span<const ReaderClient> clients) {
    std::vector<ReaderStanding> standings;
    bool heard = false;
    for (const ReaderClient& client : clients) {
        if (client.seat.empty()) {
            standings.push_back(ReaderStanding::paused);
        } else if (!client.allowed) {
            standings.push_back(ReaderStanding::notAllowed);
        } else {
            standings.push_back(heard ? ReaderStanding::taken : ReaderStanding::hearing);
            heard = true;
        }
    }
    return standings;
}

} // namespace vornic

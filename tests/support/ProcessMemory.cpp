#include "tests/support/ProcessMemory.h"

#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace vornic {

namespace {

namespace fs = std::filesystem;

std::uint64_t hexadecimal(const std::string& text) {
    std::uint64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number, 16);
    return number;
}

} // namespace

std::vector<pid_t> processesOf(const fs::path& program) {
    std::vector<pid_t> found;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        std::error_code gone;
        const std::string name = entry.path().filename();
        pid_t process = 0;
        const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
        if (error == std::errc() && end == name.data() + name.size() &&
            fs::read_symlink(entry.path() / "exe", gone) == program) {
            found.push_back(process);
        }
    }
    return found;
}

void readMemory(pid_t process,
                const std::function<void(std::uint64_t, std::span<const std::byte>)>& look) {
    const std::string folder = "/proc/" + std::to_string(process);
    const int memory = ::open((folder + "/mem").c_str(), O_RDONLY | O_CLOEXEC);
    if (memory < 0) {
        throw std::runtime_error("the memory of a process may not be read: be root");
    }
    std::ifstream maps(folder + "/maps");
    std::vector<std::byte> bytes;
    for (std::string line; std::getline(maps, line);) {
        std::istringstream words(line);
        std::string range;
        std::string rights;
        words >> range >> rights;
        if (rights.substr(0, 2) != "rw") {
            continue;
        }
        const std::uint64_t begin = hexadecimal(range);
        const std::uint64_t end = hexadecimal(range.substr(range.find('-') + 1));
        bytes.resize(end - begin);
        // What belongs to a device cannot be read so, and holds nothing of the program's.
        const ssize_t got = ::pread(memory, bytes.data(), bytes.size(), static_cast<off_t>(begin));
        if (got > 0) {
            look(begin, std::span(bytes).first(static_cast<std::size_t>(got)));
        }
    }
    ::close(memory);
}

} // namespace vornic

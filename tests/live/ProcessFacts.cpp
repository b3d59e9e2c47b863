#include "tests/live/ProcessFacts.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>

namespace vornic {

namespace {

namespace fs = std::filesystem;

std::size_t entries(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

void addMemory(const fs::path& process, ProcessFacts& facts) {
    std::ifstream file(process / "smaps_rollup");
    file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    double kilobytes = 0;
    std::string unit;
    for (std::string field; file >> field >> kilobytes >> unit;) {
        if (field == "Pss:") {
            facts.memoryMB = kilobytes / 1024;
        } else if (field == "Private_Dirty:") {
            facts.ownMB = kilobytes / 1024;
        }
    }
    if (facts.memoryMB == 0) {
        throw std::runtime_error("the kernel does not say what memory a process has");
    }
}

double processorSeconds(const fs::path& process) {
    std::ifstream file(process / "stat");
    std::string line;
    std::getline(file, line);
    // The name may hold anything, and ends with the last bracket.
    std::istringstream fields(line.substr(line.rfind(')') + 1));
    constexpr int fieldsBefore = 11; // from the state to the faults of its children
    std::string ignored;
    for (int field = 0; field < fieldsBefore; ++field) {
        fields >> ignored;
    }
    double user = 0;
    double system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace

ProcessFacts factsOf(pid_t process) {
    const fs::path folder = fs::path("/proc") / std::to_string(process);
    ProcessFacts facts{.processor = processorSeconds(folder),
                       .descriptors = entries(folder / "fd"),
                       .threads = entries(folder / "task")};
    addMemory(folder, facts);
    return facts;
}

} // namespace vornic

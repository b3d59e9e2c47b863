#include "Vornic/linux/desktop/ThisProgram.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <system_error>

namespace vornic {

namespace {

/// A word as a shell takes it literally.
std::string quoted(const std::string& word) {
    std::string text = "'";
    for (const char character : word) {
        if (character == '\'') {
            text += "'\\''";
        } else {
            text += character;
        }
    }
    return text + "'";
}

} // namespace

std::filesystem::path programPath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

void keepOutForeignPlugins(const std::filesystem::path& program) {
    if (!program.string().starts_with("/usr/")) {
        return;
    }
    for (const char* const variable :
         {"QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH", "QML_IMPORT_PATH", "QML2_IMPORT_PATH",
          // For the processes that are started: here their time is over.
          "LD_PRELOAD", "LD_AUDIT", "LD_LIBRARY_PATH"}) {
        ::unsetenv(variable);
    }
}

std::vector<std::string> relaunchCommand(const std::filesystem::path& program,
                                         const std::vector<std::string>& arguments,
                                         const std::string& group) {
    std::vector<std::string> command{program.string()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    if (group.empty()) {
        return command;
    }
    std::string line = "exec";
    for (const std::string& word : command) {
        line += " " + quoted(word);
    }
    return {"/usr/bin/sg", group, "-c", line};
}

std::vector<std::string> without(std::vector<std::string> arguments,
                                 const std::filesystem::path& file) {
    const auto found =
        std::find_if(arguments.rbegin(), arguments.rend(), [&](const std::string& argument) {
            return !argument.empty() && std::filesystem::absolute(argument) == file;
        });
    if (found != arguments.rend()) {
        arguments.erase(std::next(found).base());
    }
    return arguments;
}

void replaceProcess(const std::vector<std::string>& command) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    // The signals that this process kept for itself are the next one's to keep.
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execv(arguments.front(), arguments.data());
}

void writeNoCore() {
    // Not 0, which the kernel passes over where it hands a core to another program instead.
    constexpr rlim_t none = 1;
    const rlimit limits{none, none};
    setrlimit(RLIMIT_CORE, &limits);
}

} // namespace vornic

#include "Vornic/linux/permission/LinuxSystemChanges.h"

#include "Vornic/linux/keys/UdevInputDevices.h"
#include "VornicCore/base/ReplaceFile.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <span>
#include <system_error>

namespace vornic {

namespace fs = std::filesystem;

bool LinuxSystemChanges::exists(const fs::path& path) const {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

bool LinuxSystemChanges::write(const fs::path& path, const std::string& text) {
    std::error_code ignored;
    const bool madeFolder = fs::create_directory(path.parent_path(), ignored);
    // Whole or not at all, since half a file would count as one; and a link in its place is none of
    // ours to follow.
    if (tryReplaceFile(path, std::as_bytes(std::span(text)))) {
        if (madeFolder) {
            fs::remove(path.parent_path(), ignored);
        }
        return false;
    }
    return true;
}

bool LinuxSystemChanges::remove(const fs::path& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
    return !fs::exists(path, ignored);
}

bool LinuxSystemChanges::run(const std::vector<std::string>& command) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    // With the rights that this has, nothing may come from the environment.
    char path[] = "PATH=/usr/sbin:/usr/bin:/sbin:/bin";
    char* environment[] = {path, nullptr};
    for (const char* const folder : {"/usr/bin/", "/bin/", "/usr/sbin/", "/sbin/"}) {
        const std::string program = folder + command.front();
        pid_t process = 0;
        if (::access(program.c_str(), X_OK) != 0 ||
            ::posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(),
                          environment) != 0) {
            continue;
        }
        int status = 0;
        while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    return false;
}

std::vector<std::string> LinuxSystemChanges::keyboards() const {
    std::vector<std::string> nodes;
    for (const KeyboardDescription& keyboard : UdevInputDevices().keyboards()) {
        nodes.push_back(keyboard.path);
    }
    return nodes;
}

void LinuxSystemChanges::dropUsers(const std::string& node) {
    // The access list of single users is kept in this attribute; while there was one, the mode's
    // group bits showed the most that it allowed, so they are set anew.
    if (::removexattr(node.c_str(), "system.posix_acl_access") == 0) {
        ::chmod(node.c_str(), S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP);
    }
}

} // namespace vornic

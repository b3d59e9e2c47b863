#include "Vornic/linux/permission/KeyGrant.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace vornic {

namespace {

std::optional<gid_t> groupNumber(const std::string& name) {
    std::vector<char> buffer(1024);
    for (;;) {
        group entry{};
        group* found = nullptr;
        const int error = getgrnam_r(name.c_str(), &entry, buffer.data(), buffer.size(), &found);
        if (error != ERANGE) {
            return found == nullptr ? std::nullopt : std::optional(found->gr_gid);
        }
        buffer.resize(buffer.size() * 2);
    }
}

} // namespace

bool KeyGrant::given() const {
    std::error_code ignored;
    return geteuid() == 0 || std::filesystem::exists(InputMonitoringFiles::agreement, ignored) ||
           isMember(getuid(), group);
}

bool KeyGrant::lacksGroup() {
    const auto wanted = groupNumber(group);
    if (geteuid() == 0 || !wanted || getegid() == *wanted || !isMember(getuid(), group)) {
        return false;
    }
    std::vector<gid_t> own(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
    own.resize(
        static_cast<std::size_t>(std::max(getgroups(static_cast<int>(own.size()), own.data()), 0)));
    return std::ranges::find(own, *wanted) == own.end();
}

bool KeyGrant::isMember(unsigned user, const std::string& group) {
    const auto wanted = groupNumber(group);
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    int error = ERANGE;
    while (wanted &&
           (error = getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found)) == ERANGE) {
        buffer.resize(buffer.size() * 2);
    }
    if (found == nullptr) {
        return false;
    }
    int count = 32;
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    while (getgrouplist(found->pw_name, found->pw_gid, groups.data(), &count) < 0) {
        groups.resize(static_cast<std::size_t>(count));
    }
    groups.resize(static_cast<std::size_t>(count));
    return std::ranges::find(groups, *wanted) != groups.end();
}

} // namespace vornic

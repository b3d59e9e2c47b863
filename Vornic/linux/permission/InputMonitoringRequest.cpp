#include "Vornic/linux/permission/InputMonitoringRequest.h"

#include <sys/stat.h>

#include <system_error>

namespace vornic {

namespace {

// What pkexec ends with where the program was not run.
constexpr int dismissed = 126;
constexpr int notAuthorised = 127;

/// Whether nobody but `owner` can write to what lies at `path`.
bool isOnlyOf(unsigned owner, const std::filesystem::path& path) {
    struct stat facts{};
    return ::lstat(path.c_str(), &facts) == 0 && !S_ISLNK(facts.st_mode) && facts.st_uid == owner &&
           (facts.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

InputMonitoringRequest::InputMonitoringRequest(std::filesystem::path helper, Runner run,
                                               std::filesystem::path agreement, unsigned owner)
    : helper_(std::move(helper)), run_(std::move(run)), agreement_(std::move(agreement)),
      owner_(owner) {}

std::filesystem::path InputMonitoringRequest::helperOf(const std::filesystem::path& executable) {
    return executable.parent_path().parent_path() / "lib/vornic/vornic-input-monitoring";
}

std::vector<PermissionRequest::Point> InputMonitoringRequest::explanation() const {
    return {
        {"", "Vornic plays a sound for every key, so it has to know when a key goes down or up, in "
             "whatever window."},
        {"What it reads", "Which key it is, and when, from the keyboards of this computer."},
        {"What never happens",
         "No key is stored and none is sent anywhere; Vornic has no network code."},
        {"Who else gains access",
         "Every program that the user at this computer runs can then read every key, including "
         "passwords typed into other programs. This holds for every user who sits at this "
         "computer, while they do."},
        {"What is changed", "One file, " + agreement_.string() +
                                ". It switches on a rule of the device manager, 70-vornic.rules. "
                                "An administrator's password is needed for that."},
        {"How to take it back",
         "Turn it off here again, or run \"pkexec " + helper_.string() +
             " disable\". Without Vornic, remove that file and restart the computer. Until then it "
             "holds. A program that has a keyboard open already keeps it until that program ends "
             "or the keyboard is unplugged."},
    };
}

bool InputMonitoringRequest::possible() const {
    return isOnlyOf(owner_, helper_) && isOnlyOf(owner_, helper_.parent_path());
}

bool InputMonitoringRequest::granted() const {
    std::error_code ignored;
    return std::filesystem::exists(agreement_, ignored);
}

void InputMonitoringRequest::ask(const std::string& word, Done done) {
    if (!possible()) {
        done(PermissionAnswer::failed,
             "Install Vornic's package first: it brings what this needs.");
        return;
    }
    if (!open_.empty() && open_ != word) {
        done(PermissionAnswer::failed, "Another question is still open: answer it first.");
        return;
    }
    waiting_.push_back(std::move(done));
    if (open_.empty()) {
        open_ = word;
        run_({"pkexec", helper_.string(), word},
             [this](int status, const std::string& complaint) { answer(status, complaint); });
    }
}

void InputMonitoringRequest::answer(int status, const std::string& complaint) {
    PermissionAnswer answer = PermissionAnswer::granted;
    std::string message;
    if (status == dismissed) {
        answer = PermissionAnswer::declined;
        message = "Nothing was changed. You can try again at any time.";
    } else if (status == notAuthorised &&
               complaint.find("No authentication agent") != std::string::npos) {
        answer = PermissionAnswer::failed;
        message = "Nothing in this session asks for an administrator's password. Run \"sudo " +
                  helper_.string() + " " + open_ + "\" in a terminal.";
    } else if (status == notAuthorised) {
        answer = PermissionAnswer::declined;
        message = "An administrator of this computer has to agree. You can try again at any time.";
    } else if (status < 0) {
        answer = PermissionAnswer::failed;
        message = "The program pkexec is missing: install it, or run \"" + helper_.string() + " " +
                  open_ + "\" as root.";
    } else if (status != 0) {
        answer = PermissionAnswer::failed;
        message = complaint.empty() ? "It could not be done." : complaint;
    }
    open_.clear();
    // Whoever is told may ask again at once.
    for (const Done& done : std::exchange(waiting_, {})) {
        done(answer, message);
    }
}

} // namespace vornic

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
                                               Places places, unsigned owner)
    : helper_(std::move(helper)), run_(std::move(run)), places_(std::move(places)), owner_(owner) {}

std::filesystem::path InputMonitoringRequest::helperOf(const std::filesystem::path& executable) {
    return executable.parent_path().parent_path() / "lib/vornic/vornic-input-monitoring";
}

bool InputMonitoringRequest::hasReader() const {
    std::error_code ignored;
    return std::filesystem::exists(places_.readerSocket, ignored);
}

std::vector<PermissionRequest::Point> InputMonitoringRequest::explanation() const {
    std::vector<Point> points{
        {"", "Vornic plays a sound for every key, so it has to know when a key goes down or up, in "
             "whatever window."},
        {"What it reads", "Which key it is, and when, from the keyboards of this computer."},
        {"What never happens",
         "No key is stored and none is sent anywhere; Vornic has no network code."}};
    for (Point& point : hasReader() ? explanationOfReader() : explanationOfRule()) {
        points.push_back(std::move(point));
    }
    return points;
}

std::vector<PermissionRequest::Point> InputMonitoringRequest::explanationOfReader() const {
    std::string changed = "Two files: ";
    changed.append(InputMonitoringFiles::readerRule)
        .append(" lets Vornic hear keys, and ")
        .append(places_.readerAgreement.string())
        .append(" notes that. An administrator's password is needed for that.");
    std::string back = "Turn it off here again, or run \"pkexec ";
    back.append(helper_.string())
        .append(" disable\". Without Vornic, remove those files. It holds at once.");
    return {
        {"Who else gains access",
         "No other program. A service of the system, vornic-keys, reads the keyboards and hands "
         "the keys to Vornic alone, to whoever sits at this computer, while the screen is not "
         "locked. It cannot protect Vornic itself: a program that you run and that goes to the "
         "trouble of breaking into Vornic hears what Vornic hears."},
        {"What is changed", changed},
        {"How to take it back", back},
    };
}

std::vector<PermissionRequest::Point> InputMonitoringRequest::explanationOfRule() const {
    return {
        {"Who else gains access",
         "Every program that the user at this computer runs can then read every key, including "
         "passwords typed into other programs, and can type keys of its own into them. This holds "
         "for every user who sits at this computer, while they do."},
        {"What is changed", "One file, " + places_.agreement.string() +
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
    return std::filesystem::exists(hasReader() ? places_.readerAgreement : places_.agreement,
                                   ignored);
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
               (complaint.find("No authentication agent") != std::string::npos ||
                hasPasswordAgent() == false)) {
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

#include "Vornic/linux/desktop/JournalLog.h"

#include <sys/stat.h>
#include <syslog.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace vornic {

namespace {

/// The service manager names the stream it gave a program as "device:inode"; anything else on
/// standard error, for one a file that a shell opened, is somebody else's.
bool isJournalStream(int descriptor) {
    // Read once at start, before other threads exist.
    const char* const stream = std::getenv("JOURNAL_STREAM");
    struct stat status{};
    if (stream == nullptr || ::fstat(descriptor, &status) != 0) {
        return false;
    }
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino) == stream;
}

} // namespace

JournalLog::JournalLog() : standardErrorIsJournal_(isJournalStream(STDERR_FILENO)) {}

void JournalLog::info(const std::string& line) {
    write(LOG_INFO, line);
}

void JournalLog::warning(const std::string& line) {
    write(LOG_WARNING, line);
}

void JournalLog::write(int priority, const std::string& line) const {
    if (!standardErrorIsJournal_) {
        const std::string text = line + "\n";
        // One call, so that lines of several threads do not mix. Nobody is left to tell when it
        // fails.
        [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
    }
    sd_journal_send("MESSAGE=%s", line.c_str(), "PRIORITY=%i", priority, "SYSLOG_IDENTIFIER=vornic",
                    nullptr);
}

} // namespace vornic

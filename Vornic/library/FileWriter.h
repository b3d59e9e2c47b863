#pragma once

#include "Vornic/ports/Scheduler.h"
#include "VornicCore/base/Lifetime.h"

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace vornic {

/// What is to become of one of the user's files. Thread: any.
struct FileChange {
    std::filesystem::path file;
    /// Makes its content, on the thread that writes it; may throw EncodeError or
    /// std::system_error. Empty: the file is to go.
    std::function<std::string()> content;
    /// Begins the sentence for the user when it fails: "Couldn't save the board".
    std::string failure;
};

/// Makes the change, with a folder for the file if there is none, and waits until the disk has it.
/// On an error what was there is still there. Thread: any.
std::error_code apply(const FileChange& change);

/// Where a store sends the changes of its files: `apply`, or something that makes them later and
/// knows no error yet. Thread: main.
using FileChanges = std::function<std::error_code(FileChange)>;

/// Lets the user's files follow what the stores hold: the one thread that waits for the disk for
/// them, one file after the other in the order in which they are handed over. What fails is told,
/// and tried again with whatever is written next. Thread: main.
class FileWriter {
  public:
    /// `scheduler` outlives the writer. `failed` is called through it, with a sentence for the
    /// user.
    FileWriter(Scheduler& scheduler, std::function<void(const std::string&)> failed);
    /// Writes what was handed over before it ends.
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    void write(std::vector<FileChange> changes);

    /// Calls `done` through the scheduler once the disk has everything that was handed over before,
    /// with an empty text, or else with a sentence about what it would not take.
    void whenWritten(std::function<void(const std::string& problem)> done);

    /// Waits for that; for the end of the program.
    std::string finish();

  private:
    void run();
    void enqueue(std::function<void()> task);
    void writeNow(std::vector<FileChange> changes);

    Scheduler& scheduler_;
    std::function<void(const std::string&)> failed_;
    Lifetime lifetime_;

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> tasks_; // guarded by mutex_
    bool ending_ = false;                     // guarded by mutex_

    // Of the writing thread.
    std::vector<FileChange> unwritten_;
    std::string problem_; // of the last of them

    std::thread thread_;
};

} // namespace vornic

#pragma once

#include "Vornic/ports/Scheduler.h"
#include "Vornic/recording/ImportSession.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace vornic {

/// Reads and cuts a file of typing on a thread of its own. Main thread; one file at a time.
class FileImport {
  public:
    struct Outcome {
        /// What the user chooses from; absent when there is nothing.
        std::optional<ImportSession> session;
        /// With a session.
        std::optional<StrokeCuts> cuts;
        /// Then, what to tell the user.
        std::string error;
        /// More about it: why a file could not be read, or that only a part of it was used. Mostly
        /// empty.
        std::string remark;
    };

    /// `decoder` as in ReadOptions. `scheduler` outlives the import.
    FileImport(Scheduler& scheduler, std::filesystem::path decoder)
        : scheduler_(scheduler), decoder_(std::move(decoder)) {}
    ~FileImport() { cancel(); }
    FileImport(const FileImport&) = delete;
    FileImport& operator=(const FileImport&) = delete;

    /// Reads `file` and calls `done` on the main thread; the session is named after the file. Until
    /// then `progress` is told, there too, how much has been read, 0 to 1, once a hundredth at
    /// most. An import that is running is cancelled.
    void start(const std::filesystem::path& file, std::function<void(double)> progress,
               std::function<void(Outcome)> done);

    /// Ends the import; neither function is called any more. Waits for the file's current block,
    /// or for the slicer.
    void cancel();

    /// From `start` until `done` is called or the import is cancelled.
    [[nodiscard]] bool isRunning() const { return running_ != nullptr; }

  private:
    struct Calls;

    Scheduler& scheduler_;
    std::filesystem::path decoder_;
    std::shared_ptr<Calls> running_;
    std::jthread thread_;
};

} // namespace vornic

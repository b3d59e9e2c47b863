#pragma once

#include "Vornic/library/BackgroundWork.h"
#include "Vornic/recording/ImportSession.h"
#include "VornicCore/base/Lifetime.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// The one road from a recording, fresh from the microphone or in a file, to the strokes that the
/// user chooses from: on a thread of its own, one recording at a time. Thread: main.
class RecordingImport {
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
    RecordingImport(Scheduler& scheduler, std::filesystem::path decoder)
        : scheduler_(scheduler), decoder_(std::move(decoder)), work_(scheduler) {}

    /// Reads and cuts `file` and calls `done` on the main thread; the session is named after the
    /// file. Until then `progress` is told, there too, how much has been read, 0 to 1, once a
    /// hundredth at most. An import that is running is cancelled.
    void start(const std::filesystem::path& file, std::function<void(double)> progress,
               std::function<void(Outcome)> done);

    /// The same of `samples` (48 kHz mono); the session is called `name`. Strokes that one of the
    /// `gaps` has torn are left out, and the remark says so.
    void start(std::vector<float> samples, std::string name, std::vector<Gap> gaps,
               std::function<void(Outcome)> done);

    /// Ends the import; neither function is called any more. Waits for nothing.
    void cancel();

    /// From `start` until `done` is called or the import is cancelled.
    [[nodiscard]] bool isRunning() const { return work_.running(); }

  private:
    Scheduler& scheduler_;
    std::filesystem::path decoder_;
    Lifetime round_; // of one import
    BackgroundWork work_;
};

} // namespace vornic

#pragma once

#include "Vornic/library/ImportSession.h"
#include "Vornic/library/SampleLibrary.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// The samples of a finished session, of which a new sound is to be made.
struct FinishedImport {
    /// The name for the sound.
    std::string name;
    /// In the order of the strokes; empty when all were unticked.
    std::vector<SampleInfo> samples;
    /// What the user should know although the sound is there; usually empty.
    std::string warning;

    bool operator==(const FinishedImport&) const = default;
};

/// From a recording of typing to samples in the library, by way of the one session in which the
/// user chooses. Main thread.
class StrokeImport {
  public:
    /// `library` outlives the import.
    explicit StrokeImport(SampleLibrary& library) : library_(library) {}

    /// Cuts `samples` (48 kHz mono) and opens a session, in place of an older one. The message to
    /// show when there is nothing to choose from, which leaves things as they are; else empty.
    [[nodiscard]] std::string startSession(std::span<const float> samples, std::string name);

    /// Opens a session that was made on another thread.
    void startSession(ImportSession session) { session_ = std::move(session); }

    /// What the user chooses from; absent when there is no session.
    [[nodiscard]] const std::optional<ImportSession>& session() const { return session_; }

    /// Ticks or unticks a stroke of the session; others are passed over.
    void select(std::size_t stroke, bool selected);

    /// Finishes the ticked strokes, adds them to the library and ends the session. When they cannot
    /// be saved they are there for this run. None without a session.
    std::optional<FinishedImport> finishImport();

    /// Ends the session and keeps nothing.
    void cancelImport() { session_.reset(); }

  private:
    SampleLibrary& library_;
    std::optional<ImportSession> session_;
};

} // namespace vornic

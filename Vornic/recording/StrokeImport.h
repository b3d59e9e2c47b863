#pragma once

#include "Vornic/library/SampleLibrary.h"
#include "Vornic/recording/ImportSession.h"
#include "VornicCore/board/SoundSpec.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
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
    /// The releases of those strokes, if they were to be kept and as far as they were found.
    std::vector<SampleInfo> releases;
    /// What the user should know although the sound is there; usually empty.
    std::string warning;

    bool operator==(const FinishedImport&) const = default;
};

/// The sound that a finished session makes, to be added to a board: one layer that lists its
/// strokes, and a release of its own where releases were kept; nothing shapes them. Under a fresh
/// id. Thread: any.
SoundSpec soundOf(const FinishedImport& finished);

/// From a recording of typing to samples in the library, by way of the one session in which the
/// user chooses. Thread: main.
class StrokeImport {
  public:
    /// `library` outlives the import.
    explicit StrokeImport(SampleLibrary& library) : library_(library) {}

    /// Opens a session, which was made on another thread, in place of an older one.
    void startSession(ImportSession session, StrokeCuts cuts);

    /// What the user chooses from; absent when there is no session.
    [[nodiscard]] const std::optional<ImportSession>& session() const { return session_; }

    /// Names the sound that is to be made; nothing without a session.
    void rename(const std::string& name);

    /// Ticks or unticks a stroke of the session; others are passed over.
    void select(std::size_t stroke, bool selected);

    /// Where the strokes of the session are cut; absent when there is no session.
    [[nodiscard]] const std::optional<StrokeCuts>& cuts() const { return cuts_; }

    /// Moves the beginning or the end of a stroke, as StrokeCuts does; others are passed over.
    void moveBegin(std::size_t stroke, std::int64_t place);
    void moveEnd(std::size_t stroke, std::int64_t place);
    void resetCut(std::size_t stroke);

    /// Whether the releases that were found with ticked strokes are kept too; not at first.
    [[nodiscard]] bool keepsReleases() const { return keepsReleases_; }
    void setKeepsReleases(bool on) { keepsReleases_ = on; }

    /// A stroke as it will sound once it is kept, with the pause that the recording has before its
    /// release if that is kept too; empty without such a stroke.
    [[nodiscard]] std::vector<float> audition(std::size_t stroke) const;

    /// Finishes the ticked strokes, adds them to the library and ends the session. When they cannot
    /// be saved they are there for this run. None without a session.
    std::optional<FinishedImport> finishImport();

    /// Ends the session and keeps nothing.
    void cancelImport();

  private:
    /// A stroke made ready for the library.
    struct Finished {
        std::vector<float> press;
        /// As much louder as its press has become, so that it stays the quieter of the two. Empty
        /// where there is none, or it is not to be kept.
        std::vector<float> release;
        /// Samples from the beginning of the press to that of the release.
        std::size_t pause = 0;
    };
    [[nodiscard]] Finished finished(std::size_t stroke) const;
    void changeCut(std::size_t stroke, const std::function<void(StrokeCuts&)>& change);
    [[nodiscard]] std::vector<SampleInfo> keep(std::vector<SampleLibrary::NewSample> samples,
                                               FinishedImport& finished);

    SampleLibrary& library_;
    std::optional<ImportSession> session_;
    std::optional<StrokeCuts> cuts_;
    bool keepsReleases_ = false;
};

} // namespace vornic

#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/MicrophoneInput.h"
#include "Vornic/ports/Scheduler.h"
#include "Vornic/recording/LiveStrokes.h"
#include "Vornic/recording/Recorder.h"
#include "Vornic/recording/RecordingImport.h"
#include "Vornic/recording/StrokeImport.h"
#include "VornicCore/base/Lifetime.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Makes samples of the user's own keyboard: records it or reads a file, offers the strokes, and
/// keeps the chosen ones. The model owns one. Thread: main.
class SoundMaker {
  public:
    /// What it works with; all of it outlives the maker.
    struct Services {
        MicrophoneInput& microphone;
        Scheduler& scheduler;
        Clock& clock;
        SampleLibrary& library;
        /// As in ReadOptions.
        std::filesystem::path decoder;
    };
    /// Whom it tells. Called from inside the functions below as well.
    struct Events {
        /// Something that a view shows has changed.
        std::function<void()> changed;
        /// A recording has begun or ended: keys are silent in between.
        std::function<void(bool)> recording;
        /// What to tell the user.
        std::function<void(const std::string&)> failed;
        /// A detail for the log.
        std::function<void(const std::string&)> noted;
    };

    /// How long a recording lasts at most.
    static constexpr std::int64_t longestSeconds = 20;

    SoundMaker(const Services& services, Events events);
    SoundMaker(const SoundMaker&) = delete;
    SoundMaker& operator=(const SoundMaker&) = delete;

    /// Asks for the microphone, then records; stops by itself, keeping what it has, after 20
    /// seconds or when the microphone goes.
    void startRecording();
    /// Ends the recording. With `keep`, cuts it and opens a session named "My keyboard".
    void stopRecording(bool keep);
    [[nodiscard]] bool isRecording() const { return recorder_.isRecording(); }
    /// Asked for the microphone and not answered yet.
    [[nodiscard]] bool isStarting() const { return isStarting_; }
    /// The last recording went on until its time was up.
    [[nodiscard]] bool timeWasUp() const { return timeWasUp_; }
    /// Why the last recording did not start and what to do about it; empty when it did.
    [[nodiscard]] std::string problem() const { return recorder_.problem(); }
    /// For the meter, 0 to 1 and above; brought up to date ten times a second.
    [[nodiscard]] float level() const { return level_; }
    /// What is left of the 20 seconds, rounded up.
    [[nodiscard]] std::int64_t secondsLeft() const { return secondsLeft_; }
    /// What the recording has brought so far, twice a second.
    [[nodiscard]] const LiveStrokes& live() const { return live_; }

    /// Reads and cuts a file, then opens a session named after it. Ends a recording and drops it.
    void importRecording(const std::filesystem::path& file);
    /// How much of the recording has been read, 0 to 1, until it is cut; absent when none is.
    [[nodiscard]] std::optional<double> importProgress() const { return importProgress_; }
    void cancelReading();
    /// Which parts of the recording could not be captured: of the one that goes on, else of the
    /// last one.
    [[nodiscard]] std::vector<Gap> gaps() const { return recorder_.gaps(); }
    /// What the user should know about what was read last; mostly nothing.
    [[nodiscard]] const std::string& remark() const { return remark_; }

    /// Cuts `samples` (48 kHz mono) with their `gaps` and opens a session; until then it counts as
    /// being read. The message to show when there is nothing to choose from goes to `failed`.
    void startSession(std::vector<float> samples, const std::string& name,
                      std::vector<Gap> gaps = {});
    [[nodiscard]] const std::optional<ImportSession>& session() const { return import_.session(); }
    /// Names the sound to be made; nothing without a session.
    void rename(const std::string& name);
    void select(std::size_t stroke, bool selected);
    /// Where the session's strokes are cut, to be drawn; absent without a session.
    [[nodiscard]] const std::optional<StrokeCuts>& cuts() const { return import_.cuts(); }
    void moveBegin(std::size_t stroke, std::int64_t place);
    void moveEnd(std::size_t stroke, std::int64_t place);
    void resetCut(std::size_t stroke);
    /// Whether releases that were found are kept with their strokes.
    [[nodiscard]] bool keepsReleases() const { return import_.keepsReleases(); }
    void setKeepsReleases(bool on);
    /// A stroke as it will sound once it is kept; empty without a session that has it.
    [[nodiscard]] std::vector<float> audition(std::size_t stroke) const {
        return import_.audition(stroke);
    }
    /// Keeps what is ticked; the new sound is to be made of it. None without a session.
    std::optional<FinishedImport> finishImport();
    void cancelImport();

  private:
    void begin();
    void open(RecordingImport::Outcome outcome);
    void tick();
    void changed() const { events_.changed(); }

    Scheduler& scheduler_;
    Clock& clock_;
    Events events_;
    Recorder recorder_;
    RecordingImport imports_;
    StrokeImport import_;

    std::unique_ptr<Scheduler::Timer> timer_;
    bool isStarting_ = false;
    bool timeWasUp_ = false;
    std::uint64_t startNanos_ = 0;
    std::uint64_t lookedNanos_ = 0; // when the strokes were last counted
    float level_ = 0.0F;
    std::int64_t secondsLeft_ = longestSeconds;
    std::vector<float> heard_;
    LiveStrokes live_;
    std::optional<double> importProgress_;
    std::string remark_;
    std::string lost_; // what to say of the microphone that went, once its recording is cut
    Lifetime round_;   // until a recording begins or ends
};

} // namespace vornic

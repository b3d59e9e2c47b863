#pragma once

#include "Vornic/app/BoardEditor.h"
#include "Vornic/app/BoardFiles.h"
#include "Vornic/app/Diagnostics.h"
#include "Vornic/app/ModelOptions.h"
#include "Vornic/app/Platform.h"
#include "Vornic/app/SettingsFile.h"
#include "Vornic/app/StudioState.h"
#include "Vornic/library/BoardStore.h"
#include "Vornic/library/FileWriter.h"
#include "Vornic/library/SampleLibrary.h"
#include "Vornic/quiet/QuietRules.h"
#include "Vornic/recording/SoundMaker.h"
#include "Vornic/sound/BoardPlayer.h"
#include "Vornic/sound/SoundEngine.h"
#include "Vornic/typing/LiveKeys.h"
#include "Vornic/typing/TypingActivity.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace vornic {

/// The state of the running program and the owner of everything that turns keys into sound. The
/// views read and edit it. Thread: main; the way of the keys has a thread of its own (LiveKeys).
class AppModel {
  public:
    using Options = ModelOptions;

    AppModel(Platform platform, Options options);
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;
    ~AppModel();

    /// Called whenever something that a view shows may have changed. Set before `start`.
    std::function<void()> onChange = [] {};
    /// Called, instead of that, when only what shows typing may have changed: it comes with every
    /// key, and nothing else has to be read anew for one.
    std::function<void()> onActivity = [] {};

    /// Reads what the user has, opens the output, listens, and renders the first board behind.
    void start();

    // Boards.

    /// Every board offered.
    const std::vector<Board>& boards() const { return boards_; }
    /// The current one; null when there is none at all.
    const Board* board() const { return editor_->board(); }
    /// Another number after each change of the boards offered or of the current one.
    std::uint64_t boardRevision() const { return boardRevision_; }
    /// Another number after each render that landed.
    std::uint64_t renderRevision() const { return renderRevision_; }
    /// Makes the board with this id current; false when there is none. The one before plays on
    /// until the new one is rendered.
    bool selectBoard(const std::string& id);
    /// The board so many places further in the list, which goes round; false without boards.
    bool selectNeighbour(int places);

    bool edit(const std::function<void(Board&)>& change) { return editor_->edit(change); }
    bool undo() { return editor_->undo(); }
    bool redo() { return editor_->redo(); }
    bool canUndo() const { return editor_->canUndo(); }
    bool canRedo() const { return editor_->canRedo(); }
    void newBoard() { editor_->newBoard(); }
    void renameBoard(const std::string& name) { editor_->renameBoard(name); }
    void deleteBoard() { editor_->deleteBoard(); }

    // Board files; see BoardFiles.

    /// Board files and packs that are opened and taken in.
    BoardFiles& files() { return *boardFiles_; }
    const BoardFiles& files() const { return *boardFiles_; }
    /// Writes the current board and the user's samples in it into a board file.
    void exportBoard(const std::filesystem::path& to, BoardFiles::Done done = {});
    /// Makes the board of a board file one of the user's, and current.
    void importBoard(const std::filesystem::path& from, BoardFiles::Done done = {}) {
        boardFiles_->import(from, std::move(done));
    }

    /// The board that keys play; null before the first render.
    const std::shared_ptr<const Board>& playing() const { return played_.board; }

    const SimpleTweaks& tweaks() const { return editor_->tweaks(); }
    void setTweaks(const SimpleTweaks& tweaks) { editor_->setTweaks(tweaks); }

    /// Whether keys play the version of the board that the user started from.
    bool comparing() const { return player_->comparing(); }
    void setComparing(bool on);

    const StudioState& studio() const { return studio_; }
    void setStudio(const StudioState& studio);
    /// One stroke of the sound that is edited, as last rendered; a release is the same at every
    /// velocity. Empty where there is none. Valid until the next render lands.
    std::span<const float> editorWave(Velocity velocity = Velocity::medium) const;

    // Sounds of the user's own keyboard. A recording silences the keys; what goes wrong shows in
    // `lastError`.

    /// Records, reads files, and holds the strokes that the user chooses from.
    SoundMaker& recorder() { return *recorder_; }
    const SoundMaker& recorder() const { return *recorder_; }
    /// What the user chooses strokes from; absent most of the time.
    const std::optional<ImportSession>& importSession() const { return recorder_->session(); }
    /// Cuts `samples` (48 kHz mono) and, some milliseconds later, opens a session or says why there
    /// is nothing to choose.
    void startSession(std::vector<float> samples, const std::string& name);
    /// Keeps the ticked strokes and adds a sound made of them to the current board, as one edit;
    /// its id. None, and no edit, when nothing was ticked or there is no session. Without a board
    /// the session stays.
    std::optional<std::string> finishImport();
    /// Ends the session and keeps nothing.
    void cancelImport();
    /// Makes every key of the current board play one of its sounds, as one edit.
    void useForAllKeys(const std::string& sound);

    /// Hands over at once what the files lack, and calls `done` when the disk has it: with an empty
    /// text, or else with a sentence about what it would not take.
    void whenWritten(std::function<void(const std::string& problem)> done);

    // Settings. Each counts at once; the file has it within some tenths of a second.

    /// What the user has chosen, and for this run what the command line says.
    const Settings& settings() const { return settings_; }
    /// Changes one or several: both what counts and what is kept. What follows from them follows
    /// at once.
    void change(const std::function<void(Settings&)>& what);
    bool soundsOn() const { return settings_.hearMyself; }
    void setSoundsOn(bool on);
    bool quietDuringCalls() const { return settings_.quietDuringCalls; }
    void setQuietDuringCalls(bool on);
    /// Whether every program is asked to tell of its password fields.
    bool noticePasswordsEverywhere() const { return settings_.noticePasswordsEverywhere; }
    void setNoticePasswordsEverywhere(bool on);
    bool advanced() const { return settings_.advanced; }
    void setAdvanced(bool on);
    double volume() const { return settings_.volume; }
    /// Limited to 0 to 1; a value that is no number changes nothing.
    void setVolume(double volume);
    OutputKind outputKind() const { return settings_.outputKind; }
    void setOutputKind(OutputKind kind);
    const StageSpec& stage() const { return settings_.stage; }
    void setStage(const StageSpec& stage);

    // Facts.

    /// Why keys are silent; null when they sound.
    const QuietRule* quietRule() const;
    /// Its reason; absent when keys sound.
    std::optional<Silence> silence() const;
    /// The line below the program's name.
    std::string statusLine() const;
    /// Which programs tell of their password fields, as far as known.
    PasswordFields passwordFields() const { return platform_.secureInput.told(); }
    bool secureInput() const { return watched_.contains(Silence::password); }
    bool micInUse() const { return watched_.contains(Silence::microphone); }
    /// The program itself records the keyboard.
    bool recording() const { return recording_; }
    void setRecording(bool on);
    TapState tapState() const { return tapState_; }
    bool onBluetooth() const { return device_.isBluetooth; }
    bool headphones() const { return device_.isHeadphones; }
    /// What the output device calls itself; empty when there is none.
    const std::string& outputName() const { return device_.name; }
    const TypingActivity& activity() const { return activity_; }
    const Diagnostics& diagnostics() const { return diagnostics_; }
    /// Whether the current board is yet to be rendered as it stands.
    bool rendering() const { return player_->rendering(); }
    /// How long the board that plays took to render, in seconds; absent before the first one has.
    std::optional<double> lastRenderSeconds() const { return player_->lastRenderSeconds(); }
    /// Renders the current board here and now and makes it play; absent without a board.
    std::optional<BoardPlayer::FullRender> renderNow();
    /// Brings the facts that the system does not announce up to date; runs every second.
    void refreshState();

    /// What went wrong last, for the user; until it is dismissed.
    const std::optional<std::string>& lastError() const { return lastError_; }
    void dismissError();
    /// Tells the user what went wrong elsewhere.
    void tell(const std::string& problem) { fail(problem); }
    /// Nobody has chosen anything yet: the program runs for the first time.
    bool firstStart() const { return firstStart_; }
    /// The user was welcomed, which is enough to do once.
    void setWelcomed();

    // Services.

    SampleLibrary& library() { return *library_; }
    SoundEngine& sound() { return *sound_; }
    LiveKeys& keys() { return *keys_; }
    std::size_t packs() const { return packs_.size(); }
    const std::vector<SoundPack>& soundPacks() const { return packs_; }
    /// What has become of the keys so far.
    KeyCounts keyCounts() const;
    /// How keys became voices so far, for the log: "Voices started: 12, stolen: 0, dropped: 0".
    std::string voiceReport() const;

  private:
    void loadFiles();
    void chooseFirstBoard();
    void connect();
    void applySettings(const Settings* before);
    std::error_code follow(FileChange change);
    void followSoon();
    void writeFiles();
    void boardChanged(BoardEditor::Change change);
    void makeBoardFiles();
    void rememberBoard();
    void refreshQuiet();
    void refreshDevice();
    void refreshDiagnostics();
    void makeRecorder();
    void setTapState(TapState state, const std::string& source);
    void applyStage();
    void announce();
    void publish();
    void fail(const std::string& message);
    void showError(const std::string& message);

    Platform platform_;
    Options options_;
    std::unique_ptr<FileWriter> files_;
    /// Changes of boards that wait to be handed to `files_`, at most one for each file.
    std::vector<FileChange> waiting_;
    std::unique_ptr<SettingsFile> settingsFile_;
    /// What counts: the settings, and for this run what the command line says.
    Settings settings_;
    std::vector<SoundPack> packs_;
    std::shared_ptr<SampleLibrary> library_;
    std::unique_ptr<BoardStore> store_;
    std::unique_ptr<BoardFiles> boardFiles_;
    std::unique_ptr<BoardEditor> editor_;
    std::vector<Board> boards_;
    StudioState studio_;
    std::uint64_t boardRevision_ = 0;
    std::uint64_t renderRevision_ = 0;
    bool chosenByUser_ = false;
    bool firstStart_ = false;

    PlayedBoard played_;
    const QuietRule* lastRule_ = nullptr;
    std::vector<WatchedReason> watches_;
    std::set<Silence> watched_; // the reasons among them that hold
    bool recording_ = false;
    TapState tapState_ = TapState::needsPermission;
    OutputDeviceFacts device_;
    TypingActivity activity_;
    Diagnostics diagnostics_;
    std::optional<std::string> lastError_;
    std::string keySource_;
    std::string announced_;

    // Destroyed from the last to the first: the timers stop, then rendering, then the keys, and
    // only then goes what they used.
    std::unique_ptr<SoundEngine> sound_;
    std::unique_ptr<LiveKeys> keys_;
    std::unique_ptr<BoardPlayer> player_;
    std::unique_ptr<SoundMaker> recorder_;
    std::vector<std::unique_ptr<Scheduler::Timer>> timers_;
    std::unique_ptr<Scheduler::Timer> writing_; // runs while changes wait to be handed over
};

} // namespace vornic

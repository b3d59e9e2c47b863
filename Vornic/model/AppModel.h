#pragma once

#include "Vornic/audio/SoundEngine.h"
#include "Vornic/keystroke/KeyThread.h"
#include "Vornic/keystroke/KeystrokeDriver.h"
#include "Vornic/keystroke/PlaySettings.h"
#include "Vornic/keystroke/TypingActivity.h"
#include "Vornic/library/SampleLibrary.h"
#include "Vornic/platform/AudioOutput.h"
#include "Vornic/platform/Clock.h"
#include "Vornic/platform/HotKey.h"
#include "Vornic/platform/KeyTap.h"
#include "Vornic/platform/Log.h"
#include "Vornic/platform/Scheduler.h"
#include "Vornic/rendering/RenderService.h"
#include "VornicCore/board/Board.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// The services of one platform that the model runs on. All outlive it.
struct Platform {
    AudioOutput& output;
    KeyTap& tap;
    HotKey& hotKey;
    Clock& clock;
    Scheduler& scheduler;
    Log& log;
};

/// The state of the running program and the owner of everything that turns keys into sound. Main
/// thread; the driver, the tap and the hot key live on the key thread that the model owns.
class AppModel {
  public:
    struct Options {
        /// Folder of the sound packs.
        std::filesystem::path packs;
        /// Board to start with: an id or a file, as `chooseBoard` takes it.
        std::optional<std::string> board;
        /// 0 to 1.
        double volume = 0.7;
        OutputKind outputKind = OutputKind::automatic;
        StageSpec stage;
    };

    AppModel(Platform platform, Options options);
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;
    ~AppModel();

    /// Loads packs and boards, opens the output, starts listening.
    void start();

    /// Every board offered.
    const std::vector<Board>& boards() const { return boards_; }

    /// The current board; none when no pack was found.
    const Board* board() const { return board_.get(); }

    /// Makes the board with this id current; false when there is none. The old board plays on until
    /// the new one is rendered.
    bool selectBoard(const std::string& id);

    /// The user's switch.
    bool soundsOn() const { return soundsOn_; }
    void setSoundsOn(bool on);

    void setStage(const StageSpec& stage);
    void setVolume(double volume);

    TapState tapState() const { return tapState_; }
    bool onBluetooth() const { return onBluetooth_; }
    bool headphones() const { return headphones_; }
    const TypingActivity& activity() const { return activity_; }
    /// How long the board that plays took to render, in seconds; none before the first one has.
    std::optional<double> lastRenderSeconds() const { return lastRenderSeconds_; }

    /// How keys became voices so far, for the log: "Voices started: 12, stolen: 0, dropped: 0".
    std::string voiceReport() const;

    /// Brings the facts that the system does not announce up to date; runs every second.
    void refreshState();

  private:
    void loadBoards();
    void startKeys();
    void makeCurrent(const Board& board);
    void render(std::chrono::milliseconds delay);
    void play(std::shared_ptr<const Board> board, const RenderedBoard& rendered, double seconds);
    void stopKeys();
    void refreshTap();
    void postToMain(std::function<void()> work);
    void setTapState(TapState state, const std::string& source);
    void announce();
    void publish();

    Platform platform_;
    Options options_;
    std::shared_ptr<const SampleLibrary> library_;
    std::vector<Board> boards_;
    std::shared_ptr<const Board> board_;
    /// What keys play: the current board as it was last rendered.
    std::shared_ptr<const Board> playing_;
    std::optional<double> lastRenderSeconds_;
    StageSpec stage_;
    bool soundsOn_ = true;
    TapState tapState_ = TapState::needsPermission;
    bool onBluetooth_ = false;
    bool headphones_ = false;
    TypingActivity activity_;
    std::string keySource_;
    std::string announced_;
    /// Work that the key thread posted may arrive after the model has gone: it looks here first.
    std::shared_ptr<int> alive_ = std::make_shared<int>();

    // Destroyed from the last to the first: the timers stop, then the key thread ends, and only
    // then goes what it used.
    std::unique_ptr<SoundEngine> sound_;
    std::unique_ptr<KeystrokeDriver> driver_; // key thread
    std::unique_ptr<KeyThread> keyThread_;
    std::unique_ptr<RenderService> renderer_;
    std::vector<std::unique_ptr<Scheduler::Timer>> timers_;
};

} // namespace vornic

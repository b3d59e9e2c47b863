#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/HotKey.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/ports/Scheduler.h"
#include "Vornic/sound/SoundEngine.h"
#include "Vornic/typing/KeyEvent.h"
#include "Vornic/typing/KeyThread.h"
#include "Vornic/typing/KeystrokeDriver.h"
#include "Vornic/typing/PlaySettings.h"
#include "VornicCore/base/Lifetime.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// The way of a key from the tap to the sampler, on a thread of its own: nothing that the main
/// thread does delays a key. Thread: main; the functions given are called there too.
class LiveKeys {
  public:
    /// All outlive it. `start` has to follow before anything but `post`.
    LiveKeys(KeyTap& tap, HotKey& hotKey, const Clock& clock, Scheduler& scheduler);
    LiveKeys(const LiveKeys&) = delete;
    LiveKeys& operator=(const LiveKeys&) = delete;
    ~LiveKeys();

    /// A key went down.
    std::function<void(std::int64_t keyCode)> onKeyDown = [](std::int64_t) {};
    /// A key was let go.
    std::function<void(std::int64_t keyCode)> onKeyUp = [](std::int64_t) {};
    /// A key was played, heard or typed by `type`: for what draws it. After the two above.
    std::function<void(std::int64_t keyCode, bool down, Strike strike)> onShown =
        [](std::int64_t, bool, Strike) {};
    /// The hot key was pressed.
    std::function<void()> onHotKey = [] {};
    /// The answer to `refresh`.
    std::function<void(TapState state, const std::string& source)> onTapState =
        [](TapState, const std::string&) {};
    /// Something does not work.
    std::function<void(const std::string& problem)> onProblem = [](const std::string&) {};

    /// Starts to listen and to play through `sound`, which outlives this object.
    void start(SoundEngine& sound);

    /// What keys play from now on.
    void apply(std::shared_ptr<const PlaySettings> settings);

    /// Looks whether keys can be heard; the answer comes through `onTapState`.
    void refresh();

    /// Plays a sequence of keys as if it were typed now, unless the program is quiet.
    void type(const std::vector<KeyEvent>& phrase);

    /// Runs work on the key thread.
    void post(std::function<void()> work) { thread_->post(std::move(work)); }

    /// Whether the system granted the hot key, as of the start.
    bool hotKeyRegistered() const { return hotKeyRegistered_; }

    /// What has become of the keys as far as the driver knows; after `start`. Thread: any.
    KeyCounts counts() const { return driver_->counts(); }

    /// Keys that the tap has heard so far, up and down.
    std::int64_t keysHeard() const { return keysHeard_; }

  private:
    void listen(KeyThread& keys);
    void postToMain(std::function<void()> work);

    KeyTap& tap_;
    HotKey& hotKey_;
    const Clock& clock_;
    Scheduler& scheduler_;
    std::atomic<bool> hotKeyRegistered_ = false;
    std::atomic<std::int64_t> keysHeard_ = 0;
    /// What was posted to the main thread may arrive after this object has gone: it looks here.
    Lifetime lifetime_;
    std::vector<std::unique_ptr<Scheduler::Timer>> typing_;
    std::unique_ptr<KeystrokeDriver> driver_; // key thread
    std::unique_ptr<KeyThread> thread_ = std::make_unique<KeyThread>();
};

} // namespace vornic

#pragma once

#include "Vornic/linux/soundserver/SoundServer.h"
#include "Vornic/ports/MicrophoneInput.h"
#include "Vornic/ports/Scheduler.h"
#include "VornicCore/base/Lifetime.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vornic {

/// The default microphone of the sound server, captured from between `requestAccess` or `open` and
/// `stop`. Thread: main. After `requestAccess`, `open` does not wait: the answer comes when the
/// microphone is open, or cannot be.
class PipeWireMicrophone final : public MicrophoneInput {
  public:
    /// `scheduler` runs what is told later; it and `server` outlive the microphone.
    PipeWireMicrophone(Scheduler& scheduler, SoundServer& server);
    ~PipeWireMicrophone() override;

    void requestAccess(std::function<void(bool granted)> completion) override;
    std::optional<Format> open() override;
    bool start(Taker& taker) override;
    void stop() override;
    std::string problem() const override { return problem_; }

  private:
    class Capture;

    /// How far the server's thread has come.
    struct Progress {
        std::optional<Format> format;
        std::string problem;
    };

    void connect();
    void settled();
    void answer();
    void fail(const char* problem);
    bool hasFailed();

    Scheduler& scheduler_;
    SoundServer& server_;
    std::string problem_;
    std::atomic<Taker*> taker_{nullptr};
    std::mutex mutex_; // guards progress_
    std::condition_variable changed_;
    Progress progress_;
    Lifetime round_; // of one capture
    // Of `requestAccess`, until it is answered.
    std::function<void(bool)> completion_;
    std::unique_ptr<Scheduler::Timer> deadline_;
    bool isPrepared_ = false; // the capture was made for `requestAccess`, and is not used yet
    std::unique_ptr<Capture> capture_;
};

} // namespace vornic

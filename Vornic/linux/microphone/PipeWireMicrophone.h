#pragma once

#include "Vornic/ports/MicrophoneInput.h"
#include "Vornic/ports/Scheduler.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vornic {

class ServerConnection;

/// The default microphone of the PipeWire server, over a connection that lasts from `requestAccess`
/// or `open` to `stop`. After `requestAccess`, `open` does not wait: the answer comes when the
/// microphone is open, or cannot be.
class PipeWireMicrophone final : public MicrophoneInput {
  public:
    /// `scheduler` runs what is told later; `remote` is the server's name or the path of its
    /// socket, empty for the user's own.
    explicit PipeWireMicrophone(Scheduler& scheduler, std::string remote = {});
    ~PipeWireMicrophone() override;

    void requestAccess(std::function<void(bool granted)> completion) override;
    std::optional<Format> open() override;
    bool start(Taker& taker) override;
    void stop() override;
    std::string problem() const override { return problem_; }

  private:
    class Capture;

    /// How far the connection's thread has come.
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
    const std::string remote_;
    std::string problem_;
    std::atomic<Taker*> taker_{nullptr};
    std::mutex mutex_; // guards progress_
    std::condition_variable changed_;
    Progress progress_;
    // Lives as long as the connection; work that waits in the scheduler holds it weakly.
    std::shared_ptr<int> session_;
    // Of `requestAccess`, until it is answered.
    std::function<void(bool)> completion_;
    std::unique_ptr<Scheduler::Timer> deadline_;
    bool isPrepared_ = false; // the connection was made for `requestAccess`, and is not used yet
    std::unique_ptr<Capture> capture_; // the connection's thread
    std::unique_ptr<ServerConnection> connection_;
};

} // namespace vornic

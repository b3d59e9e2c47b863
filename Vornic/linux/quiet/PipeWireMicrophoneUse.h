#pragma once

#include "Vornic/linux/quiet/CaptureGraph.h"
#include "Vornic/linux/soundserver/ServerConnection.h"
#include "Vornic/ports/MicrophoneUse.h"
#include "Vornic/ports/Scheduler.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace vornic {

/// Who listens to a microphone, from what the sound server tells everybody about its connections.
/// Nothing is captured for that.
class PipeWireMicrophoneUse final : public MicrophoneUse {
  public:
    /// `remote` is the server's name or the path of its socket; empty for the user's own.
    explicit PipeWireMicrophoneUse(Scheduler& scheduler, std::string remote = {});
    ~PipeWireMicrophoneUse() override;
    PipeWireMicrophoneUse(const PipeWireMicrophoneUse&) = delete;
    PipeWireMicrophoneUse& operator=(const PipeWireMicrophoneUse&) = delete;

    void start() override;
    bool inUse() const override { return inUse_; }
    bool canCheck() const override { return canCheck_; }

  private:
    class Watch;

    void tell(bool inUse, bool canCheck);

    Scheduler& scheduler_;
    std::string remote_;
    std::atomic<bool> inUse_{false};
    std::atomic<bool> canCheck_{false};
    std::shared_ptr<int> alive_ = std::make_shared<int>();
    std::unique_ptr<Watch> watch_; // the connection's thread
    std::unique_ptr<ServerConnection> connection_;
};

} // namespace vornic

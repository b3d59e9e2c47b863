#pragma once

#include "Vornic/linux/soundserver/SoundServer.h"
#include "Vornic/ports/MicrophoneUse.h"
#include "Vornic/ports/Scheduler.h"
#include "VornicCore/base/Lifetime.h"

#include <atomic>
#include <memory>

namespace vornic {

/// Who listens to a microphone, from what the sound server tells everybody about its connections.
/// Nothing is captured for that. Thread: main.
class PipeWireMicrophoneUse final : public MicrophoneUse, private SoundServer::User {
  public:
    /// `scheduler` runs `onChange`; it and `server` outlive this.
    PipeWireMicrophoneUse(Scheduler& scheduler, SoundServer& server);
    ~PipeWireMicrophoneUse() override;
    PipeWireMicrophoneUse(const PipeWireMicrophoneUse&) = delete;
    PipeWireMicrophoneUse& operator=(const PipeWireMicrophoneUse&) = delete;

    void start() override;
    bool inUse() const override { return inUse_; }
    bool inUseByAnybody() const override { return inUseByAnybody_; }
    bool canCheck() const override { return canCheck_; }

  private:
    class Watch;

    struct Use {
        bool byOthers = false;
        bool byAnybody = false;
        bool canCheck = false;
    };

    void connected(pw_core* core) override;
    void disconnected() override;
    void tell(const Use& use);

    Scheduler& scheduler_;
    SoundServer& server_;
    std::atomic<bool> inUse_{false};
    std::atomic<bool> inUseByAnybody_{false};
    std::atomic<bool> canCheck_{false};
    Lifetime lifetime_;
    std::unique_ptr<Watch> watch_; // the server's thread
};

} // namespace vornic

#pragma once

#include "Vornic/linux/sound/OutputStream.h"
#include "Vornic/linux/sound/PipeWireServer.h"
#include "Vornic/ports/AudioOutput.h"
#include "Vornic/ports/Scheduler.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

namespace vornic {

/// Plays to the default device of the PipeWire server, over a stream of its own. Connects again by
/// itself when the server has ended and is back.
class PipeWireOutput final : public AudioOutput {
  public:
    struct Options {
        /// Name of the server, or path of its socket; empty for the user's own.
        std::string remote;
        /// The program's name, as mixers show it.
        std::string name = "Vornic";
    };

    /// `scheduler` runs `onConfigurationChange`; it must outlive the output.
    PipeWireOutput(Scheduler& scheduler, Options options);
    explicit PipeWireOutput(Scheduler& scheduler);
    ~PipeWireOutput() override;

    void open(Source& source) override;
    void close() override;
    bool requestStart() override;
    void pause() override;
    bool isRunning() const override;
    OutputDeviceFacts device() const override;
    std::string problem() const override;

    /// Render calls since `open`. Any thread.
    std::uint64_t renderCalls() const;

  private:
    void take(const ServerState& state);

    Scheduler& scheduler_;
    const Options options_;
    StreamTiming timing_;
    std::atomic<bool> available_{false}; // there is a device to play to
    std::atomic<bool> wanted_{false};    // render calls are asked for
    mutable std::mutex mutex_;           // guards state_ for the time of a copy
    std::condition_variable settled_;
    ServerState state_;
    std::shared_ptr<PipeWireOutput*> alive_; // work that waits in the scheduler may outlive this
    std::unique_ptr<PipeWireServer> server_;
};

} // namespace vornic

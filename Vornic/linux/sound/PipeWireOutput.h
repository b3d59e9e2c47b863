#pragma once

#include "Vornic/linux/sound/DefaultSink.h"
#include "Vornic/linux/sound/OutputStream.h"
#include "Vornic/linux/soundserver/SoundServer.h"
#include "Vornic/ports/AudioOutput.h"
#include "Vornic/ports/Scheduler.h"
#include "Vornic/sound/OutputDevice.h"
#include "VornicCore/base/Lifetime.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vornic {

/// Plays to the default device of the sound server, over a stream of its own. Thread: main, except
/// where the port says otherwise.
class PipeWireOutput final : public AudioOutput, private SoundServer::User {
  public:
    /// `scheduler` runs `onConfigurationChange`; it and `server` outlive the output. Mixers show
    /// the stream as `name`.
    PipeWireOutput(Scheduler& scheduler, SoundServer& server, std::string name = "Vornic");
    ~PipeWireOutput() override;

    void open(Source& source) override;
    void close() override;
    bool requestStart() override;
    void pause() override;
    bool isRunning() const override;
    OutputDeviceFacts device() const override;
    std::string problem() const override;
    bool hasLostRealTime() const override;

    /// Render calls since `open`. Thread: any.
    std::uint64_t renderCalls() const;

  private:
    /// What is known of the sound server.
    struct State {
        /// Whether there is a device to play to has been found out.
        bool settled = false;
        /// The device to play to; absent when there is none.
        std::optional<OutputProperties> sink;
        /// Why there is none and what to do about it, in one sentence; empty when there is one.
        std::string problem;

        bool operator==(const State&) const = default;
    };
    /// The server's objects of one connection.
    struct Connection;

    void connected(pw_core* core) override;
    void unreachable() override;
    void disconnected() override;
    void work(bool retry) override;
    void follow();
    bool isSettled() const;
    void endStream();
    State look() const;
    void take(const State& state);

    Scheduler& scheduler_;
    SoundServer& server_;
    const std::string name_;
    StreamTiming timing_;
    Source* source_ = nullptr;
    std::atomic<bool> isOpen_{false};
    std::atomic<bool> available_{false}; // there is a device to play to
    std::atomic<bool> wanted_{false};    // render calls are asked for
    mutable std::mutex mutex_;           // guards state_ for the time of a copy
    std::condition_variable settled_;
    State state_;
    std::unique_ptr<Connection> connection_;
    Lifetime lifetime_;
};

} // namespace vornic

#pragma once

#include "Vornic/linux/sound/DefaultSink.h"
#include "Vornic/linux/sound/OutputStream.h"
#include "Vornic/linux/soundserver/PipeWireHandles.h"
#include "Vornic/linux/soundserver/ServerSocket.h"
#include "Vornic/sound/OutputDevice.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vornic {

/// What is known of the sound server.
struct ServerState {
    /// Whether there is a device to play to has been found out.
    bool settled = false;
    /// The device to play to; absent when there is none.
    std::optional<OutputProperties> sink;
    /// Why there is none and what to do about it, in one sentence; empty when there is one.
    std::string problem;

    bool operator==(const ServerState&) const = default;
};

/// A thread of its own that keeps a connection to the PipeWire server and a stream on it, and
/// connects again by itself when the server has ended and is back.
class PipeWireServer {
  public:
    struct Setup {
        std::string remote; // name or socket of the server; empty for the user's own
        std::string name;   // of the stream
        AudioOutput::Source& source;
        StreamTiming& timing;
        /// Whether render calls are wanted; asked after each `wake` on the server's thread.
        std::function<bool()> wanted;
        /// Told every new state on the server's thread, before the stream follows it.
        std::function<void(const ServerState&)> report;
    };

    explicit PipeWireServer(Setup setup);

    /// Ends the thread and the stream; nothing is called any more when this returns.
    ~PipeWireServer();

    PipeWireServer(const PipeWireServer&) = delete;
    PipeWireServer& operator=(const PipeWireServer&) = delete;

    /// Makes the server's thread look again whether render calls are wanted. Any thread, no lock.
    void wake();

    /// The same, and tries at once to connect if there is no connection. Any thread, no lock.
    void wakeAndConnect();

  private:
    struct Connection {
        CoreHandle core;
        Listener coreListener;
        std::unique_ptr<DefaultSink> sink;
        std::unique_ptr<OutputStream> stream;
        int roundTrip = 0;      // number of the answer awaited
        int roundTripsLeft = 3; // for the objects, for what they say, for what was asked on that
        bool lost = false;
    };

    void work();
    void connect();
    void disconnect();
    void endStream();
    void followSink();
    void noteAnswer(int number);
    void noteError(std::uint32_t object, int result);
    ServerState state() const;
    void retryLater();

    Setup setup_;
    std::atomic<bool> connectNow_{true};
    std::chrono::milliseconds retryDelay_;
    bool retryPending_ = false;
    LoopHandle loop_;
    ContextHandle context_;
    spa_source* wake_ = nullptr;
    spa_source* retryTimer_ = nullptr;
    std::unique_ptr<ServerSocket> socket_;
    std::unique_ptr<Connection> connection_;
};

} // namespace vornic

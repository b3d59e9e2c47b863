#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"
#include "Vornic/linux/soundserver/ServerSocket.h"

#include <functional>
#include <memory>
#include <string>

namespace vornic {

/// A thread of its own with a connection to the PipeWire server, made again by itself whenever the
/// server has ended and is back.
class ServerConnection {
  public:
    struct Setup {
        std::string remote; // name or socket of the server; empty for the user's own
        std::string name;   // of the thread
        /// The connection is made. On its thread, as is `lost`.
        std::function<void(pw_core*)> connected;
        /// The connection is gone: whatever was made from it must go now.
        std::function<void()> lost;
    };

    /// Returns at once.
    explicit ServerConnection(Setup setup);

    /// Calls `lost` if connected; nothing is called any more when this returns.
    ~ServerConnection();

    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

  private:
    void follow();
    void connect();
    void disconnect();
    void retryLater();

    Setup setup_;
    LoopHandle loop_;
    ContextHandle context_;
    spa_source* wake_ = nullptr;
    spa_source* retryTimer_ = nullptr;
    std::unique_ptr<ServerSocket> socket_;
    CoreHandle core_;
    std::unique_ptr<Listener> coreListener_;
    bool isLost_ = false;
};

} // namespace vornic

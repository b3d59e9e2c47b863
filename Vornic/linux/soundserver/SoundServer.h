#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"
#include "Vornic/linux/soundserver/ServerSocket.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

class DefaultNames;

/// The program's one connection to the PipeWire server, on a thread of its own, made again by
/// itself whenever the server has ended and is back. What is heard is made and what is captured is
/// taken on one more thread of the library's, in real time where the system grants it.
class SoundServer {
  public:
    /// Something that lives on the connection. Called on the server's thread, or with that thread
    /// held: never by two at a time.
    class User {
      public:
        User() = default;
        User(const User&) = delete;
        User& operator=(const User&) = delete;
        virtual ~User() = default;

        /// The connection is made: what is needed can be made from it.
        virtual void connected(pw_core* core) = 0;

        /// No server can be reached, or not any more. Called before `disconnected`, and again at
        /// each attempt that fails.
        virtual void unreachable() {}

        /// The connection goes, or its user: what was made from it must go now.
        virtual void disconnected() = 0;

        /// Somebody woke the thread, while connected. `retry` says that what has failed before is
        /// worth another attempt.
        virtual void work(bool /*retry*/) {}
    };

    /// Returns at once. `remote` is the server's name or the path of its socket; empty for the
    /// user's own. Thread: main.
    explicit SoundServer(std::string remote = {});
    /// Its users have been removed. Thread: main.
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    /// `user` lives on the connection from soon on; where there is none, one is tried at once.
    /// Never waits for the server. Thread: main.
    void add(User& user);

    /// Calls `disconnected`; when this returns nothing is called any more. Harmless for one that is
    /// not there. Never waits for the server. Thread: main.
    void remove(User& user);

    /// Makes the thread call `work`. No lock. Thread: any.
    void wake();

    /// The same, and what has failed is tried again at once: the connection too. No lock.
    /// Thread: any.
    void wakeAndRetry();

    /// The same later: after 20 ms at first, and longer each time until a connection is made.
    /// Called by users, from inside the functions above.
    void retryLater();

    /// What the session manager has chosen. For users, while connected.
    DefaultNames& defaults() { return *defaults_; }

  private:
    void follow();
    void connect();
    void disconnect();

    const std::string remote_;
    LoopHandle loop_;
    ContextHandle context_;
    spa_source* wake_ = nullptr;
    spa_source* retryTimer_ = nullptr;
    std::unique_ptr<ServerSocket> socket_;
    std::atomic<bool> retryNow_{true};
    // What follows is the thread's, or belongs to who holds it.
    std::vector<User*> users_;
    std::vector<User*> newUsers_; // not told of the connection yet
    CoreHandle core_;
    std::unique_ptr<Listener> coreListener_;
    std::unique_ptr<DefaultNames> defaults_;
    std::chrono::milliseconds retryDelay_;
    bool retryPending_ = false;
    bool isLost_ = false;
};

} // namespace vornic

#pragma once

#include <filesystem>
#include <functional>
#include <string>

struct pw_loop;
struct spa_source;

namespace vornic {

/// Tells when the sound server's socket appears, so that nobody needs to ask again and again.
/// Thread: any that holds the server's loop.
class ServerSocket {
  public:
    /// `remote` is the server's name or the path of its socket; empty for the user's own server.
    ServerSocket(pw_loop* loop, const std::string& remote, std::function<void()> appeared);
    ~ServerSocket();
    ServerSocket(const ServerSocket&) = delete;
    ServerSocket& operator=(const ServerSocket&) = delete;

    /// Where the socket of `remote` lies, by the rules that the client library follows.
    static std::filesystem::path path(const std::string& remote);

  private:
    void readEvents() const;

    pw_loop* loop_;
    std::string name_;
    std::function<void()> appeared_;
    spa_source* source_ = nullptr;
};

} // namespace vornic

#include "Vornic/linux/soundserver/SoundServer.h"

#include "Vornic/linux/soundserver/RealTimeLimit.h"
#include "Vornic/linux/soundserver/Registry.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

// The first wait is just long enough for a server that has made its socket to listen on it; the
// longest costs nothing worth mentioning on a system that has no PipeWire at all.
constexpr auto shortestRetryDelay = 20ms;
constexpr std::chrono::milliseconds longestRetryDelay = 1000ms;

/// Keeps the server's thread from running, for a time that does not depend on the server.
class Hold {
  public:
    explicit Hold(pw_thread_loop* loop) : loop_(loop) { pw_thread_loop_lock(loop_); }
    ~Hold() { pw_thread_loop_unlock(loop_); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

  private:
    pw_thread_loop* loop_;
};

} // namespace

SoundServer::SoundServer(std::string remote)
    : remote_(std::move(remote)), retryDelay_(shortestRetryDelay) {
    pw_init(nullptr, nullptr);
    loop_.reset(pw_thread_loop_new("vornic.sound", nullptr));
    if (loop_ == nullptr) {
        return;
    }
    pw_loop* const loop = pw_thread_loop_get_loop(loop_.get());
    // This configuration asks for a real-time audio thread; the ordinary one for clients does not.
    context_.reset(
        pw_context_new(loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0));
    wake_ = pw_loop_add_event(
        loop, [](void* self, std::uint64_t) { static_cast<SoundServer*>(self)->follow(); }, this);
    retryTimer_ = pw_loop_add_timer(
        loop,
        [](void* self, std::uint64_t) {
            auto* server = static_cast<SoundServer*>(self);
            server->retryPending_ = false;
            server->retryNow_ = true;
            server->follow();
        },
        this);
    socket_ = std::make_unique<ServerSocket>(loop, remote_, [this] {
        retryDelay_ = shortestRetryDelay;
        retryPending_ = false;
        wakeAndRetry();
    });
    wake();
    pw_thread_loop_start(loop_.get());
}

SoundServer::~SoundServer() {
    if (loop_ != nullptr) {
        pw_thread_loop_stop(loop_.get());
        disconnect();
        socket_.reset();
        pw_loop* const loop = pw_thread_loop_get_loop(loop_.get());
        pw_loop_destroy_source(loop, retryTimer_);
        pw_loop_destroy_source(loop, wake_);
        context_.reset();
        loop_.reset();
    }
    pw_deinit();
}

void SoundServer::add(User& user) {
    if (loop_ == nullptr) {
        user.unreachable();
        return;
    }
    {
        const Hold hold(loop_.get());
        newUsers_.push_back(&user);
    }
    wakeAndRetry();
}

void SoundServer::remove(User& user) {
    if (loop_ == nullptr) {
        return;
    }
    const Hold hold(loop_.get());
    std::erase(newUsers_, &user);
    if (std::erase(users_, &user) > 0) {
        user.disconnected();
    }
}

void SoundServer::wake() {
    if (wake_ != nullptr) {
        pw_loop_signal_event(pw_thread_loop_get_loop(loop_.get()), wake_);
    }
}

void SoundServer::wakeAndRetry() {
    retryNow_ = true;
    wake();
}

void SoundServer::follow() {
    RealTimeLimit::soften();
    if (isLost_) {
        disconnect();
        retryDelay_ = shortestRetryDelay;
        retryPending_ = false;
        retryLater();
    }
    const bool retry = retryNow_.exchange(false);
    const std::vector<User*> newUsers = std::exchange(newUsers_, {});
    users_.insert(users_.end(), newUsers.begin(), newUsers.end());
    if (core_ == nullptr && retry) {
        connect();
    } else if (core_ != nullptr) {
        for (User* const user : newUsers) {
            user->connected(core_.get());
        }
    }
    if (core_ != nullptr) {
        for (User* const user : users_) {
            user->work(retry);
        }
    }
}

void SoundServer::connect() {
    pw_properties* const properties =
        remote_.empty() ? nullptr : pw_properties_new(PW_KEY_REMOTE_NAME, remote_.c_str(), nullptr);
    core_.reset(context_ == nullptr ? nullptr : pw_context_connect(context_.get(), properties, 0));
    if (core_ == nullptr) {
        for (User* const user : users_) {
            user->unreachable();
        }
        retryLater();
        return;
    }
    retryDelay_ = shortestRetryDelay;
    static const pw_core_events events = [] {
        pw_core_events server{};
        server.version = PW_VERSION_CORE_EVENTS;
        server.error = [](void* self, std::uint32_t id, int, int result, const char*) {
            // Errors of single objects concern things that have just gone.
            if (id == PW_ID_CORE && result == -EPIPE) {
                auto* connection = static_cast<SoundServer*>(self);
                connection->isLost_ = true;
                // Not from inside an event of what is to go.
                connection->wake();
            }
        };
        return server;
    }();
    coreListener_ = std::make_unique<Listener>();
    pw_core_add_listener(core_.get(), &coreListener_->hook, &events, this);
    defaults_ = std::make_unique<DefaultNames>(core_.get(), [this] { wake(); });
    for (User* const user : users_) {
        user->connected(core_.get());
    }
}

void SoundServer::disconnect() {
    isLost_ = false;
    if (core_ == nullptr) {
        return;
    }
    for (User* const user : users_) {
        user->unreachable();
        user->disconnected();
    }
    defaults_.reset();
    coreListener_.reset();
    core_.reset();
}

void SoundServer::retryLater() {
    if (retryPending_) {
        return;
    }
    retryPending_ = true;
    timespec delay{.tv_sec = retryDelay_.count() / 1000,
                   .tv_nsec = retryDelay_.count() % 1000 * 1'000'000};
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), retryTimer_, &delay, nullptr, false);
    retryDelay_ = std::min<std::chrono::milliseconds>(retryDelay_ * 2, longestRetryDelay);
}

} // namespace vornic

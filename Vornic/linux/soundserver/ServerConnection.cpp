#include "Vornic/linux/soundserver/ServerConnection.h"

#include <cerrno>
#include <ctime>
#include <utility>

namespace vornic {

ServerConnection::ServerConnection(Setup setup) : setup_(std::move(setup)) {
    pw_init(nullptr, nullptr);
    loop_.reset(pw_thread_loop_new(setup_.name.c_str(), nullptr));
    if (loop_ == nullptr) {
        return;
    }
    pw_loop* const loop = pw_thread_loop_get_loop(loop_.get());
    context_.reset(pw_context_new(loop, nullptr, 0));
    const auto work = [](void* self, std::uint64_t) {
        static_cast<ServerConnection*>(self)->follow();
    };
    wake_ = pw_loop_add_event(loop, work, this);
    retryTimer_ = pw_loop_add_timer(loop, work, this);
    socket_ = std::make_unique<ServerSocket>(loop, setup_.remote, [this] { follow(); });
    pw_loop_signal_event(loop, wake_);
    pw_thread_loop_start(loop_.get());
}

ServerConnection::~ServerConnection() {
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

void ServerConnection::follow() {
    if (isLost_) {
        disconnect();
    }
    if (core_ == nullptr) {
        connect();
    }
}

void ServerConnection::connect() {
    pw_properties* const properties =
        setup_.remote.empty()
            ? nullptr
            : pw_properties_new(PW_KEY_REMOTE_NAME, setup_.remote.c_str(), nullptr);
    core_.reset(context_ == nullptr ? nullptr : pw_context_connect(context_.get(), properties, 0));
    if (core_ == nullptr) {
        retryLater();
        return;
    }
    static const pw_core_events events = [] {
        pw_core_events server{};
        server.version = PW_VERSION_CORE_EVENTS;
        server.error = [](void* self, std::uint32_t id, int, int result, const char*) {
            // Errors of single objects concern things that have just gone.
            if (id == PW_ID_CORE && result == -EPIPE) {
                auto* connection = static_cast<ServerConnection*>(self);
                connection->isLost_ = true;
                // Not from inside an event of what is to go.
                pw_loop_signal_event(pw_thread_loop_get_loop(connection->loop_.get()),
                                     connection->wake_);
            }
        };
        return server;
    }();
    coreListener_ = std::make_unique<Listener>();
    pw_core_add_listener(core_.get(), &coreListener_->hook, &events, this);
    setup_.connected(core_.get());
}

void ServerConnection::disconnect() {
    isLost_ = false;
    if (core_ == nullptr) {
        return;
    }
    setup_.lost();
    coreListener_.reset();
    core_.reset();
}

void ServerConnection::retryLater() {
    // The socket's return is told; this is for a server that has made it and does not listen yet.
    timespec delay{.tv_sec = 1, .tv_nsec = 0};
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), retryTimer_, &delay, nullptr, false);
}

} // namespace vornic

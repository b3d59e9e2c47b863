#include "Vornic/linux/sound/PipeWireServer.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

// The first wait is just long enough for a server that has made its socket to listen on it; the
// longest costs nothing worth mentioning on a system that has no PipeWire at all.
constexpr auto shortestRetryDelay = 20ms;
constexpr auto longestRetryDelay = 1000ms;

constexpr const char* noServer =
    "No sound server is running: start PipeWire with \"systemctl --user start pipewire "
    "wireplumber\", or install the package pipewire-audio.";
constexpr const char* noSessionManager =
    "PipeWire runs without a session manager: start one with \"systemctl --user start "
    "wireplumber\".";
constexpr const char* noDevice =
    "PipeWire has no output device: connect one, or enable one in the sound settings.";
constexpr const char* streamRefused =
    "PipeWire refuses to play: restart it with \"systemctl --user restart pipewire wireplumber\".";

} // namespace

PipeWireServer::PipeWireServer(Setup setup)
    : setup_(std::move(setup)), retryDelay_(shortestRetryDelay) {
    pw_init(nullptr, nullptr);
    loop_.reset(pw_thread_loop_new("vornic-sound", nullptr));
    if (loop_ == nullptr) {
        return;
    }
    pw_loop* loop = pw_thread_loop_get_loop(loop_.get());
    // This configuration asks for a real-time audio thread; the ordinary one for clients does not.
    context_.reset(
        pw_context_new(loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0));
    wake_ = pw_loop_add_event(
        loop, [](void* self, std::uint64_t) { static_cast<PipeWireServer*>(self)->work(); }, this);
    retryTimer_ = pw_loop_add_timer(
        loop,
        [](void* self, std::uint64_t) {
            auto* server = static_cast<PipeWireServer*>(self);
            server->retryPending_ = false;
            server->connectNow_ = true;
            server->work();
        },
        this);
    socket_ = std::make_unique<ServerSocket>(loop, setup_.remote, [this] {
        retryDelay_ = shortestRetryDelay;
        retryPending_ = false;
        wakeAndConnect();
    });
    wake();
    pw_thread_loop_start(loop_.get());
}

PipeWireServer::~PipeWireServer() {
    if (loop_ != nullptr) {
        pw_thread_loop_stop(loop_.get());
        disconnect();
        socket_.reset();
        pw_loop* loop = pw_thread_loop_get_loop(loop_.get());
        pw_loop_destroy_source(loop, retryTimer_);
        pw_loop_destroy_source(loop, wake_);
        context_.reset();
        loop_.reset();
    }
    pw_deinit();
}

void PipeWireServer::wake() {
    if (wake_ != nullptr) {
        pw_loop_signal_event(pw_thread_loop_get_loop(loop_.get()), wake_);
    }
}

void PipeWireServer::wakeAndConnect() {
    connectNow_ = true;
    wake();
}

void PipeWireServer::work() {
    if (connection_ != nullptr && connection_->lost) {
        connection_->sink.reset();
        setup_.report(state());
        disconnect();
        retryDelay_ = shortestRetryDelay;
        retryPending_ = false;
        retryLater();
    }
    const bool connectNow = connectNow_.exchange(false);
    if (connection_ == nullptr && connectNow) {
        connect();
    }
    if (connection_ != nullptr && connection_->roundTripsLeft == 0) {
        if (connectNow && connection_->stream != nullptr && connection_->stream->hasFailed()) {
            endStream();
        }
        if (connectNow && connection_->sink->lacksDefault()) {
            connection_->sink->askAgain();
        }
        followSink();
    }
}

void PipeWireServer::connect() {
    pw_properties* properties =
        setup_.remote.empty()
            ? nullptr
            : pw_properties_new(PW_KEY_REMOTE_NAME, setup_.remote.c_str(), nullptr);
    CoreHandle core(context_ == nullptr ? nullptr
                                        : pw_context_connect(context_.get(), properties, 0));
    if (core == nullptr) {
        setup_.report(state());
        retryLater();
        return;
    }
    connection_ = std::make_unique<Connection>();
    connection_->core = std::move(core);
    static const pw_core_events events = [] {
        pw_core_events server{};
        server.version = PW_VERSION_CORE_EVENTS;
        server.done = [](void* self, std::uint32_t id, int number) {
            if (id == PW_ID_CORE) {
                static_cast<PipeWireServer*>(self)->noteAnswer(number);
            }
        };
        server.error = [](void* self, std::uint32_t id, int, int result, const char*) {
            static_cast<PipeWireServer*>(self)->noteError(id, result);
        };
        return server;
    }();
    pw_core_add_listener(connection_->core.get(), &connection_->coreListener.hook, &events, this);
    connection_->sink = std::make_unique<DefaultSink>(
        connection_->core.get(), [this] { wake(); },
        [this] {
            return connection_->stream == nullptr ? SPA_ID_INVALID : connection_->stream->node();
        });
    connection_->roundTrip = pw_core_sync(connection_->core.get(), PW_ID_CORE, 0);
}

void PipeWireServer::noteAnswer(int number) {
    if (connection_->roundTripsLeft == 0 || number != connection_->roundTrip) {
        return;
    }
    if (--connection_->roundTripsLeft > 0) {
        connection_->roundTrip = pw_core_sync(connection_->core.get(), PW_ID_CORE, 0);
    } else {
        retryDelay_ = shortestRetryDelay;
        wake();
    }
}

void PipeWireServer::noteError(std::uint32_t object, int result) {
    // Errors of single objects concern things that have just gone; only the connection matters.
    if (object == PW_ID_CORE && result == -EPIPE) {
        connection_->lost = true;
        wake();
    }
}

void PipeWireServer::followSink() {
    Connection& connection = *connection_;
    if (connection.stream == nullptr && connection.sink->properties()) {
        connection.stream = std::make_unique<OutputStream>(
            connection.core.get(), setup_.name, setup_.source, setup_.timing, [this] { wake(); });
    }
    if ((connection.stream != nullptr && connection.stream->hasFailed()) ||
        connection.sink->lacksDefault()) {
        retryLater();
    }
    setup_.report(state());
    if (connection.stream != nullptr) {
        connection.stream->setActive(setup_.wanted());
    }
}

void PipeWireServer::endStream() {
    connection_->stream.reset();
    setup_.source.streamEnded();
}

void PipeWireServer::disconnect() {
    if (connection_ == nullptr) {
        return;
    }
    if (connection_->stream != nullptr) {
        endStream();
    }
    connection_.reset();
}

ServerState PipeWireServer::state() const {
    if (connection_ == nullptr || connection_->sink == nullptr) {
        return {.settled = true, .sink = std::nullopt, .problem = noServer};
    }
    if (!connection_->sink->hasSessionManager()) {
        return {.settled = true, .sink = std::nullopt, .problem = noSessionManager};
    }
    auto sink = connection_->sink->properties();
    if (!sink) {
        return {.settled = true, .sink = std::nullopt, .problem = noDevice};
    }
    if (connection_->stream == nullptr || connection_->stream->hasFailed()) {
        return {.settled = true, .sink = std::nullopt, .problem = streamRefused};
    }
    return {.settled = true, .sink = std::move(sink), .problem = {}};
}

void PipeWireServer::retryLater() {
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

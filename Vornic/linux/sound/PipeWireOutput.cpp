#include "Vornic/linux/sound/PipeWireOutput.h"

#include "Vornic/linux/soundserver/RealTimeLimit.h"
#include "Vornic/linux/soundserver/Registry.h"

#include <chrono>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWaitForServer = 1000ms;

constexpr const char* noAnswer = "The sound server does not answer: restart it with \"systemctl "
                                 "--user restart pipewire wireplumber\".";
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

struct PipeWireOutput::Connection {
    Connection(pw_core* serverCore, SoundServer& server)
        : core(serverCore), sink(
                                core, server.defaults(), [&server] { server.wake(); },
                                [this] { return stream ? stream->node() : SPA_ID_INVALID; }),
          // For the objects, for what they say, for what was asked on that.
          answers(core, 3, [&server] { server.wake(); }) {}

    pw_core* core;
    std::unique_ptr<OutputStream> stream; // the sink asks for it
    DefaultSink sink;
    RoundTrips answers;
};

PipeWireOutput::PipeWireOutput(Scheduler& scheduler, SoundServer& server, std::string name)
    : scheduler_(scheduler), server_(server), name_(std::move(name)),
      state_{.settled = false, .sink = std::nullopt, .problem = noAnswer} {}

PipeWireOutput::~PipeWireOutput() {
    PipeWireOutput::close();
}

void PipeWireOutput::open(Source& source) {
    source_ = &source;
    isOpen_ = true;
    server_.add(*this);
    std::unique_lock lock(mutex_);
    settled_.wait_for(lock, longestWaitForServer, [this] { return state_.settled; });
}

void PipeWireOutput::close() {
    isOpen_ = false;
    available_ = false;
    wanted_ = false;
    server_.remove(*this);
}

bool PipeWireOutput::requestStart() {
    if (!available_) {
        if (isOpen_) {
            server_.wakeAndRetry();
        }
        return false;
    }
    if (!wanted_.exchange(true)) {
        server_.wake();
    }
    return true;
}

void PipeWireOutput::pause() {
    if (wanted_.exchange(false)) {
        server_.wake();
    }
}

bool PipeWireOutput::isRunning() const {
    return available_ && wanted_;
}

OutputDeviceFacts PipeWireOutput::device() const {
    OutputProperties properties;
    {
        const std::scoped_lock lock(mutex_);
        if (!state_.sink) {
            return {};
        }
        properties = *state_.sink;
    }
    if (const auto frames = timing_.buffer.load(std::memory_order_relaxed); frames > 0) {
        properties.rate = timing_.rate.load(std::memory_order_relaxed);
        properties.delayFrames = timing_.delay.load(std::memory_order_relaxed);
        properties.bufferFrames = frames;
    }
    return OutputDevice::factsOf(properties);
}

std::string PipeWireOutput::problem() const {
    const std::scoped_lock lock(mutex_);
    return state_.problem;
}

bool PipeWireOutput::hasLostRealTime() const {
    return RealTimeLimit::wasExceeded();
}

std::uint64_t PipeWireOutput::renderCalls() const {
    return timing_.calls.load(std::memory_order_relaxed);
}

void PipeWireOutput::connected(pw_core* core) {
    connection_ = std::make_unique<Connection>(core, server_);
}

void PipeWireOutput::unreachable() {
    take({.settled = true, .sink = std::nullopt, .problem = noServer});
}

void PipeWireOutput::disconnected() {
    if (connection_ != nullptr && connection_->stream != nullptr) {
        endStream();
    }
    connection_.reset();
}

void PipeWireOutput::work(bool retry) {
    if (connection_ == nullptr || !connection_->answers.areDone()) {
        return;
    }
    if (retry && connection_->stream != nullptr && connection_->stream->hasFailed()) {
        endStream();
    }
    if (retry && connection_->sink.lacksDefault()) {
        connection_->sink.askAgain();
    }
    follow();
}

void PipeWireOutput::follow() {
    Connection& connection = *connection_;
    // It leads nowhere then, and must not be there while the next one is asked for its choices.
    if (connection.stream != nullptr && !connection.sink.hasSessionManager()) {
        endStream();
    }
    if (connection.stream == nullptr && connection.sink.properties()) {
        connection.stream = std::make_unique<OutputStream>(connection.core, name_, *source_,
                                                           timing_, [this] { server_.wake(); });
    }
    if ((connection.stream != nullptr && connection.stream->hasFailed()) ||
        connection.sink.lacksDefault()) {
        server_.retryLater();
    }
    // There is a default sink, only the word of it is still to come: whoever opens waits for that.
    if (connection.sink.lacksDefault() && !isSettled()) {
        return;
    }
    take(look());
    if (connection.stream != nullptr) {
        connection.stream->setActive(wanted_);
    }
}

bool PipeWireOutput::isSettled() const {
    const std::scoped_lock lock(mutex_);
    return state_.settled;
}

void PipeWireOutput::endStream() {
    connection_->stream.reset();
    source_->streamEnded();
}

PipeWireOutput::State PipeWireOutput::look() const {
    if (!connection_->sink.hasSessionManager()) {
        return {.settled = true, .sink = std::nullopt, .problem = noSessionManager};
    }
    auto sink = connection_->sink.properties();
    if (!sink) {
        return {.settled = true, .sink = std::nullopt, .problem = noDevice};
    }
    if (connection_->stream == nullptr || connection_->stream->hasFailed()) {
        return {.settled = true, .sink = std::nullopt, .problem = streamRefused};
    }
    return {.settled = true, .sink = std::move(sink), .problem = {}};
}

void PipeWireOutput::take(const State& state) {
    available_ = state.sink.has_value() && isOpen_;
    if (!state.sink) {
        // Keys ask anew once there is a device again.
        wanted_ = false;
    }
    bool changed = false;
    {
        const std::scoped_lock lock(mutex_);
        changed = state_.settled && state_ != state;
        state_ = state;
    }
    settled_.notify_all();
    if (changed) {
        scheduler_.post(lifetime_.guard([this] {
            if (onConfigurationChange) {
                onConfigurationChange();
            }
        }));
    }
}

} // namespace vornic

#include "Vornic/linux/sound/PipeWireOutput.h"

#include <chrono>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWaitForServer = 1000ms;

constexpr const char* noAnswer = "The sound server does not answer: restart it with \"systemctl "
                                 "--user restart pipewire wireplumber\".";

} // namespace

PipeWireOutput::PipeWireOutput(Scheduler& scheduler, Options options)
    : scheduler_(scheduler), options_(std::move(options)),
      state_{.settled = false, .sink = std::nullopt, .problem = noAnswer},
      alive_(std::make_shared<PipeWireOutput*>(this)) {}

PipeWireOutput::PipeWireOutput(Scheduler& scheduler) : PipeWireOutput(scheduler, Options()) {}

PipeWireOutput::~PipeWireOutput() {
    PipeWireOutput::close();
}

void PipeWireOutput::open(Source& source) {
    server_ = std::make_unique<PipeWireServer>(
        PipeWireServer::Setup{.remote = options_.remote,
                              .name = options_.name,
                              .source = source,
                              .timing = timing_,
                              .wanted = [this] { return wanted_.load(); },
                              .report = [this](const ServerState& state) { take(state); }});
    std::unique_lock lock(mutex_);
    settled_.wait_for(lock, longestWaitForServer, [this] { return state_.settled; });
}

void PipeWireOutput::close() {
    available_ = false;
    wanted_ = false;
    server_.reset();
}

bool PipeWireOutput::requestStart() {
    if (!available_) {
        if (server_ != nullptr) {
            server_->wakeAndConnect();
        }
        return false;
    }
    if (!wanted_.exchange(true)) {
        server_->wake();
    }
    return true;
}

void PipeWireOutput::pause() {
    if (wanted_.exchange(false)) {
        server_->wake();
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

std::uint64_t PipeWireOutput::renderCalls() const {
    return timing_.calls.load(std::memory_order_relaxed);
}

void PipeWireOutput::take(const ServerState& state) {
    available_ = state.sink.has_value();
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
        scheduler_.post([alive = std::weak_ptr(alive_)] {
            if (const auto output = alive.lock(); output && (*output)->onConfigurationChange) {
                (*output)->onConfigurationChange();
            }
        });
    }
}

} // namespace vornic

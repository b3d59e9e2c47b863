#include "Vornic/linux/microphone/PipeWireMicrophone.h"

#include "Vornic/linux/microphone/CaptureStream.h"
#include "Vornic/linux/microphone/DefaultSource.h"
#include "Vornic/linux/soundserver/ServerConnection.h"

#include <chrono>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWait = 2000ms;

constexpr const char* noMicrophone =
    "No microphone is connected: connect one, or choose one in the sound settings.";
constexpr const char* refused =
    "PipeWire refuses to record: restart it with \"systemctl --user restart pipewire "
    "wireplumber\".";
constexpr const char* noAnswer =
    "The sound server does not answer: restart it with \"systemctl --user restart pipewire "
    "wireplumber\".";

constexpr const char* gone = "The microphone is gone.";

} // namespace

/// The server's objects of one connection: first finds the microphone, then captures from it.
class PipeWireMicrophone::Capture {
  public:
    Capture(pw_core* core, PipeWireMicrophone& owner)
        : core_(core), owner_(owner), source_(core, [this](std::uint32_t id) {
              if (id == microphone_) {
                  owner_.fail(gone);
              }
          }) {
        static const pw_core_events events = [] {
            pw_core_events server{};
            server.version = PW_VERSION_CORE_EVENTS;
            server.done = [](void* self, std::uint32_t id, int number) {
                if (id == PW_ID_CORE) {
                    static_cast<Capture*>(self)->noteAnswer(number);
                }
            };
            return server;
        }();
        pw_core_add_listener(core_, &listener_.hook, &events, this);
        roundTrip_ = pw_core_sync(core_, PW_ID_CORE, 0);
    }

  private:
    void noteAnswer(int number) {
        if (roundTripsLeft_ == 0 || number != roundTrip_) {
            return;
        }
        if (--roundTripsLeft_ > 0) {
            roundTrip_ = pw_core_sync(core_, PW_ID_CORE, 0);
            return;
        }
        const auto found = source_.source();
        if (!found) {
            owner_.fail(noMicrophone);
            return;
        }
        microphone_ = found->id;
        stream_ = std::make_unique<CaptureStream>(
            core_, found->name, owner_.taker_,
            CaptureStream::Events{.formatted = [this](const Format& format) { note(format); },
                                  .failed = [this] { owner_.fail(refused); }});
    }

    void note(const Format& format) {
        {
            const std::scoped_lock lock(owner_.mutex_);
            owner_.progress_.format = format;
        }
        owner_.changed_.notify_all();
        owner_.settled();
    }

    pw_core* core_;
    PipeWireMicrophone& owner_;
    std::uint32_t microphone_ = SPA_ID_INVALID;
    DefaultSource source_;
    Listener listener_;
    int roundTrip_ = 0;
    int roundTripsLeft_ = 2; // for the objects, and for which of them is the default one
    std::unique_ptr<CaptureStream> stream_;
};

PipeWireMicrophone::PipeWireMicrophone(Scheduler& scheduler, std::string remote)
    : scheduler_(scheduler), remote_(std::move(remote)) {}

PipeWireMicrophone::~PipeWireMicrophone() {
    PipeWireMicrophone::stop();
}

void PipeWireMicrophone::requestAccess(std::function<void(bool granted)> completion) {
    connect();
    isPrepared_ = true;
    completion_ = std::move(completion);
    // What is called destroys the timer: not from inside it.
    deadline_ = scheduler_.after(longestWait, [this] { settled(); });
}

void PipeWireMicrophone::settled() {
    scheduler_.post([this, session = std::weak_ptr<int>(session_)] {
        if (!session.expired()) {
            answer();
        }
    });
}

void PipeWireMicrophone::answer() {
    deadline_.reset();
    if (const auto completion = std::exchange(completion_, nullptr)) {
        // The sound server lets its user's programs record; whom it does not let, `open` tells.
        completion(true);
    }
}

void PipeWireMicrophone::connect() {
    stop();
    progress_ = {};
    session_ = std::make_shared<int>();
    connection_ = std::make_unique<ServerConnection>(
        ServerConnection::Setup{.remote = remote_,
                                .name = "vornic-record",
                                .connected =
                                    [this](pw_core* core) {
                                        if (capture_ == nullptr && !hasFailed()) {
                                            capture_ = std::make_unique<Capture>(core, *this);
                                        }
                                    },
                                .lost =
                                    [this] {
                                        capture_.reset();
                                        fail(gone);
                                    }});
}

std::optional<MicrophoneInput::Format> PipeWireMicrophone::open() {
    const bool waited = std::exchange(isPrepared_, false);
    if (!waited) {
        connect();
    }
    std::unique_lock lock(mutex_);
    const auto isSettled = [this] { return progress_.format || !progress_.problem.empty(); };
    if (!waited) {
        changed_.wait_for(lock, longestWait, isSettled);
    }
    if (progress_.format && progress_.problem.empty()) {
        problem_.clear();
        return progress_.format;
    }
    problem_ = progress_.problem.empty() ? noAnswer : progress_.problem;
    return std::nullopt;
}

bool PipeWireMicrophone::start(Taker& taker) {
    const std::scoped_lock lock(mutex_);
    if (connection_ == nullptr || !progress_.problem.empty()) {
        problem_ = progress_.problem;
        return false;
    }
    taker_.store(&taker, std::memory_order_release);
    return true;
}

void PipeWireMicrophone::stop() {
    connection_.reset();
    session_.reset();
    completion_ = nullptr;
    deadline_.reset();
    isPrepared_ = false;
    taker_.store(nullptr, std::memory_order_release);
}

bool PipeWireMicrophone::hasFailed() {
    const std::scoped_lock lock(mutex_);
    return !progress_.problem.empty();
}

void PipeWireMicrophone::fail(const char* problem) {
    {
        const std::scoped_lock lock(mutex_);
        if (!progress_.problem.empty()) {
            return;
        }
        progress_.problem = problem;
    }
    changed_.notify_all();
    settled();
    // What comes from now on is not from the microphone.
    if (taker_.exchange(nullptr) != nullptr) {
        scheduler_.post([this, session = std::weak_ptr<int>(session_)] {
            if (!session.expired() && onLost) {
                onLost();
            }
        });
    }
}

} // namespace vornic

#include "Vornic/linux/microphone/PipeWireMicrophone.h"

#include "Vornic/linux/microphone/CaptureStream.h"
#include "Vornic/linux/soundserver/Registry.h"

#include <chrono>
#include <map>
#include <string_view>
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

constexpr const char* noServer =
    "No sound server is running: start PipeWire with \"systemctl --user start pipewire "
    "wireplumber\", or install the package pipewire-audio.";
constexpr const char* gone = "The microphone is gone.";

/// Follows which microphone is the default one. The monitor of an output, which the server offers
/// for want of a microphone, is none. Everything on the loop's thread.
class DefaultSource {
  public:
    /// `removed` is told the number of every object of the server that goes.
    DefaultSource(pw_core* core, const DefaultNames& defaults,
                  std::function<void(std::uint32_t)> removed);

    struct Source {
        std::uint32_t id;
        std::string name;
    };

    /// The default microphone; where none is chosen, the first there is.
    [[nodiscard]] std::optional<Source> source() const;

  private:
    void add(std::uint32_t id, const char* type, const spa_dict* properties);
    void remove(std::uint32_t id);

    const DefaultNames& defaults_;
    std::function<void(std::uint32_t)> removed_;
    std::map<std::uint32_t, std::string> names_; // of the microphones
    RegistryWatch registry_;
};

DefaultSource::DefaultSource(pw_core* core, const DefaultNames& defaults,
                             std::function<void(std::uint32_t)> removed)
    : defaults_(defaults), removed_(std::move(removed)),
      registry_(
          core,
          [this](std::uint32_t id, const char* type, const spa_dict* properties) {
              add(id, type, properties);
          },
          [this](std::uint32_t id) { remove(id); }) {}

void DefaultSource::add(std::uint32_t id, const char* type, const spa_dict* properties) {
    if (std::string_view(type) == PW_TYPE_INTERFACE_Node) {
        const std::string_view media = lookUp(properties, PW_KEY_MEDIA_CLASS);
        if (media.starts_with("Audio/Source") || media == "Audio/Duplex") {
            names_[id] = lookUp(properties, PW_KEY_NODE_NAME);
        }
    }
}

void DefaultSource::remove(std::uint32_t id) {
    names_.erase(id);
    removed_(id);
}

std::optional<DefaultSource::Source> DefaultSource::source() const {
    for (const auto& [id, name] : names_) {
        if (defaults_.source().empty() || name == defaults_.source()) {
            return Source{id, name};
        }
    }
    return std::nullopt;
}

} // namespace

/// One capture: finds the microphone first, and ends when its connection does.
class PipeWireMicrophone::Capture final : public SoundServer::User {
  public:
    explicit Capture(PipeWireMicrophone& owner) : owner_(owner) {}

  private:
    /// The server's objects.
    struct Objects {
        Objects(pw_core* core, Capture& capture)
            : source(core, capture.owner_.server_.defaults(),
                     [&capture](std::uint32_t id) { capture.noteGone(id); }),
              // For the objects, and for which of them is the default one.
              answers(core, 2, [&capture, core] { capture.begin(core); }) {}

        DefaultSource source;
        RoundTrips answers;
        std::unique_ptr<CaptureStream> stream;
    };

    void connected(pw_core* core) override {
        // A capture never goes on at another server.
        if (!owner_.hasFailed()) {
            objects_ = std::make_unique<Objects>(core, *this);
        }
    }
    void unreachable() override { owner_.fail(objects_ == nullptr ? noServer : gone); }
    void disconnected() override { objects_.reset(); }
    void work(bool /*retry*/) override {
        // Without a session manager nothing is connected to a microphone any more, and the stream
        // must not be there while the next one is asked for its choices.
        if (objects_ && objects_->stream && !owner_.server_.defaults().areChosen()) {
            objects_->stream.reset();
            owner_.fail(gone);
        }
    }

    void begin(pw_core* core) {
        const auto found = objects_->source.source();
        if (!found) {
            owner_.fail(noMicrophone);
            return;
        }
        microphone_ = found->id;
        objects_->stream = std::make_unique<CaptureStream>(
            core, found->name, owner_.taker_,
            CaptureStream::Events{.formatted = [this](const Format& format) { note(format); },
                                  .failed = [this] { owner_.fail(refused); }});
    }

    void noteGone(std::uint32_t id) {
        if (id == microphone_) {
            owner_.fail(gone);
        }
    }

    void note(const Format& format) {
        {
            const std::scoped_lock lock(owner_.mutex_);
            owner_.progress_.format = format;
        }
        owner_.changed_.notify_all();
        owner_.settled();
    }

    PipeWireMicrophone& owner_;
    std::uint32_t microphone_ = SPA_ID_INVALID;
    std::unique_ptr<Objects> objects_;
};

PipeWireMicrophone::PipeWireMicrophone(Scheduler& scheduler, SoundServer& server)
    : scheduler_(scheduler), server_(server) {}

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
    scheduler_.post(round_.guard([this] { answer(); }));
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
    capture_ = std::make_unique<Capture>(*this);
    server_.add(*capture_);
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
    if (capture_ == nullptr || !progress_.problem.empty()) {
        problem_ = progress_.problem;
        return false;
    }
    taker_.store(&taker, std::memory_order_release);
    return true;
}

void PipeWireMicrophone::stop() {
    if (capture_ != nullptr) {
        server_.remove(*capture_);
        capture_.reset();
    }
    round_.renew();
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
        scheduler_.post(round_.guard([this] {
            if (onLost) {
                onLost();
            }
        }));
    }
}

} // namespace vornic

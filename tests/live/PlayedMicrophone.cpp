#include "tests/live/PlayedMicrophone.h"

#include "tests/support/WaitFor.h"

#include <spa/node/io.h>
#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <ctime>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

constexpr std::uint32_t rate = 48000;

std::int64_t nanosOf(std::uint64_t frames) {
    return static_cast<std::int64_t>(frames * 1'000'000'000 / rate);
}

} // namespace

PlayedMicrophone::PlayedMicrophone(const std::string& remote, int cycle) {
    pw_init(nullptr, nullptr);
    loop_.reset(pw_thread_loop_new("played-mic", nullptr));
    pw_loop* const loop = pw_thread_loop_get_loop(loop_.get());
    context_.reset(
        pw_context_new(loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0));
    core_.reset(pw_context_connect(
        context_.get(), pw_properties_new(PW_KEY_REMOTE_NAME, remote.c_str(), nullptr), 0));
    if (core_ == nullptr) {
        throw std::runtime_error("no connection to the sound server");
    }
    timer_ = pw_loop_add_timer(
        loop, [](void* self, std::uint64_t) { static_cast<PlayedMicrophone*>(self)->tick(); },
        this);
    connect(cycle);
    pw_thread_loop_start(loop_.get());
}

PlayedMicrophone::~PlayedMicrophone() {
    pw_thread_loop_stop(loop_.get());
    stream_.reset();
    pw_loop_destroy_source(pw_thread_loop_get_loop(loop_.get()), timer_);
    core_.reset();
    context_.reset();
    loop_.reset();
    pw_deinit();
}

void PlayedMicrophone::connect(int cycle) {
    stream_.reset(pw_stream_new(core_.get(), "played-microphone",
                                pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CLASS,
                                                  "Audio/Source", PW_KEY_NODE_NAME,
                                                  "played-microphone", PW_KEY_NODE_LATENCY,
                                                  (std::to_string(cycle) + "/48000").c_str(),
                                                  PW_KEY_PRIORITY_DRIVER, "100000", nullptr)));
    static const pw_stream_events events = [] {
        pw_stream_events stream{};
        stream.version = PW_VERSION_STREAM_EVENTS;
        stream.state_changed = [](void* self, pw_stream_state, pw_stream_state now, const char*) {
            static_cast<PlayedMicrophone*>(self)->setTimer(now == PW_STREAM_STATE_STREAMING);
        };
        stream.io_changed = [](void* self, std::uint32_t id, void* area, std::uint32_t) {
            if (id == SPA_IO_Position) {
                static_cast<PlayedMicrophone*>(self)->position_ =
                    static_cast<spa_io_position*>(area);
            }
        };
        stream.process = [](void* self) { static_cast<PlayedMicrophone*>(self)->process(); };
        return stream;
    }();
    pw_stream_add_listener(stream_.get(), &listener_.hook, &events, this);
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32P;
    format.rate = rate;
    format.channels = 1;
    format.position[0] = SPA_AUDIO_CHANNEL_MONO;
    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    const spa_pod* formats = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format);
    constexpr auto flags = std::bit_cast<pw_stream_flags>(std::uint32_t{
        PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS});
    if (pw_stream_connect(stream_.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &formats, 1) < 0) {
        throw std::runtime_error("the sound server takes no microphone");
    }
}

void PlayedMicrophone::setTimer(bool running) {
    timespec delay{.tv_sec = 0, .tv_nsec = running ? 1 : 0};
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), timer_, &delay, nullptr, false);
}

void PlayedMicrophone::tick() {
    if (position_ == nullptr || !pw_stream_is_driving(stream_.get())) {
        return;
    }
    spa_io_clock& clock = position_->clock;
    const std::int64_t cycle = nanosOf(clock.duration);
    timespec delay{.tv_sec = 0, .tv_nsec = cycle};
    pw_loop_update_timer(pw_thread_loop_get_loop(loop_.get()), timer_, &delay, nullptr, false);
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    clock.nsec = static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000 +
                 static_cast<std::uint64_t>(now.tv_nsec);
    clock.rate = {1, rate};
    clock.position += clock.duration;
    clock.rate_diff = 1.0;
    clock.next_nsec = clock.nsec + static_cast<std::uint64_t>(cycle);
    pw_stream_trigger_process(stream_.get());
}

void PlayedMicrophone::process() {
    pw_buffer* const buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) {
        return;
    }
    spa_data& data = buffer->buffer->datas[0];
    const std::size_t count =
        std::min<std::size_t>(position_->clock.duration, data.maxsize / sizeof(float));
    auto* const out = static_cast<float*>(data.data);
    {
        const std::scoped_lock lock(mutex_);
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = place_ < samples_.size() ? samples_[place_++] : 0.0F;
        }
    }
    data.chunk->offset = 0;
    data.chunk->stride = sizeof(float);
    data.chunk->size = static_cast<std::uint32_t>(count * sizeof(float));
    pw_stream_queue_buffer(stream_.get(), buffer);
}

void PlayedMicrophone::play(std::vector<float> samples) {
    const std::scoped_lock lock(mutex_);
    samples_ = std::move(samples);
    place_ = 0;
}

bool PlayedMicrophone::waitUntilPlayed() const {
    std::size_t all = 0;
    {
        const std::scoped_lock lock(mutex_);
        all = samples_.size();
    }
    return waitUntilPast(all);
}

bool PlayedMicrophone::waitUntilPast(std::size_t count) const {
    return waitFor([&] {
        const std::scoped_lock lock(mutex_);
        return place_ >= count;
    });
}

} // namespace vornic

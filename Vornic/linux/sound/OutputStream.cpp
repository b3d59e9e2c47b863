#include "Vornic/linux/sound/OutputStream.h"

#include "VornicCore/base/SampleRate.h"

#include <spa/param/audio/format-utils.h>
#include <spa/param/param.h>

#include <algorithm>
#include <array>
#include <bit>
#include <ctime>
#include <utility>

namespace vornic {

namespace {

constexpr auto sampleRate = static_cast<std::uint32_t>(DSP::sampleRate);

/// The time of a render call, in monotonic nanoseconds: that of the graph's cycle. A driver that
/// catches up after a stall goes through the cycles it has missed as if they were on time; a cycle
/// that long ago is counted from the clock itself (which the C library reads without a system
/// call), so that the source can tell.
std::uint64_t callNanos(std::int64_t cycleNanos) VORNIC_REALTIME {
    constexpr std::int64_t longestDelay = 100'000'000;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const std::int64_t clockNanos = std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
    const bool onTime = cycleNanos > 0 && clockNanos - cycleNanos < longestDelay;
    return static_cast<std::uint64_t>(onTime ? cycleNanos : clockNanos);
}

/// No media role: the session manager would give the stream the volume and the device that the user
/// chose for all programs of that role, and desktops quieten some roles when others sound. With the
/// identifier the stream is remembered by itself.
pw_properties* streamProperties(const std::string& name) {
    return pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio",                //
                             PW_KEY_MEDIA_CATEGORY, "Playback",         //
                             PW_KEY_MEDIA_NAME, "Keyboard sounds",      //
                             PW_KEY_APP_NAME, name.c_str(),             //
                             PW_KEY_APP_ID, "org.vornic.Vornic",        //
                             PW_KEY_APP_ICON_NAME, "org.vornic.Vornic", //
                             PW_KEY_NODE_NAME, name.c_str(),            //
                             PW_KEY_NODE_LATENCY, "128/48000",          //
                             PW_KEY_NODE_DONT_RECONNECT, "false",       //
                             nullptr);
}

} // namespace

OutputStream::OutputStream(pw_core* core, const std::string& name, AudioOutput::Source& source,
                           StreamTiming& timing, std::function<void()> failed)
    : source_(source), timing_(timing), onFailure_(std::move(failed)),
      stream_(pw_stream_new(core, "Keyboard sounds", streamProperties(name))) {
    if (stream_ == nullptr) {
        failed_ = true;
        return;
    }
    static const pw_stream_events events = [] {
        pw_stream_events stream{};
        stream.version = PW_VERSION_STREAM_EVENTS;
        stream.state_changed = [](void* self, pw_stream_state, pw_stream_state now, const char*) {
            auto* output = static_cast<OutputStream*>(self);
            if (now == PW_STREAM_STATE_ERROR) {
                output->failed_ = true;
                output->onFailure_();
            }
        };
        stream.process = [](void* self) { static_cast<OutputStream*>(self)->process(); };
        return stream;
    }();
    pw_stream_add_listener(stream_.get(), &listener_.hook, &events, this);
    failed_ = !connect();
}

OutputStream::~OutputStream() {
    if (stream_ != nullptr) {
        pw_stream_disconnect(stream_.get());
    }
}

bool OutputStream::connect() {
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32P;
    format.rate = sampleRate;
    format.channels = 2;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;

    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    const spa_pod* formats = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format);
    constexpr auto flags = std::bit_cast<pw_stream_flags>(
        std::uint32_t{PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS |
                      PW_STREAM_FLAG_RT_PROCESS | PW_STREAM_FLAG_INACTIVE});
    return pw_stream_connect(stream_.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &formats, 1) >=
           0;
}

void OutputStream::setActive(bool active) {
    if (stream_ == nullptr || failed_ || active == active_) {
        return;
    }
    active_ = active;
    pw_stream_set_active(stream_.get(), active);
}

std::uint32_t OutputStream::node() const {
    return stream_ == nullptr ? SPA_ID_INVALID : pw_stream_get_node_id(stream_.get());
}

void OutputStream::process() VORNIC_REALTIME {
    pw_buffer* buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) {
        return;
    }
    spa_buffer& memory = *buffer->buffer;
    if (memory.n_datas >= 2 && memory.datas[0].data != nullptr && memory.datas[1].data != nullptr) {
        // The buffer holds far more than one cycle; filling it all would delay every later key.
        const std::uint64_t space =
            std::min(memory.datas[0].maxsize, memory.datas[1].maxsize) / sizeof(float);
        const auto frames = static_cast<std::uint32_t>(
            buffer->requested == 0 ? space : std::min<std::uint64_t>(space, buffer->requested));

        pw_time time{};
        pw_stream_get_time_n(stream_.get(), &time, sizeof time);
        timing_.rate.store(time.rate.denom, std::memory_order_relaxed);
        timing_.delay.store(time.delay, std::memory_order_relaxed);
        timing_.buffer.store(frames, std::memory_order_relaxed);
        timing_.calls.fetch_add(1, std::memory_order_relaxed);

        source_.render(frames, static_cast<float*>(memory.datas[0].data),
                       static_cast<float*>(memory.datas[1].data), callNanos(time.now));
        for (std::uint32_t channel = 0; channel < 2; ++channel) {
            spa_chunk& chunk = *memory.datas[channel].chunk;
            chunk.offset = 0;
            chunk.stride = sizeof(float);
            chunk.size = frames * static_cast<std::uint32_t>(sizeof(float));
        }
    }
    pw_stream_queue_buffer(stream_.get(), buffer);
}

} // namespace vornic

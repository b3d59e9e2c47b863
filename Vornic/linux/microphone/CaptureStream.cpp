#include "Vornic/linux/microphone/CaptureStream.h"

#include <spa/param/audio/format-utils.h>
#include <spa/param/param.h>

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace vornic {

namespace {

/// More frames than a cycle of the graph ever has.
constexpr std::size_t longestCycle = 65536;

/// Unlike what plays, a recording must not move to another device by itself: what went on there
/// would end up in the user's sound.
pw_properties* streamProperties(const std::string& source) {
    return pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio",                //
                             PW_KEY_MEDIA_CATEGORY, "Capture",          //
                             PW_KEY_MEDIA_NAME, "Keyboard recording",   //
                             PW_KEY_APP_NAME, "Vornic",                 //
                             PW_KEY_APP_ID, "org.vornic.Vornic",        //
                             PW_KEY_APP_ICON_NAME, "org.vornic.Vornic", //
                             PW_KEY_NODE_NAME, "Vornic recording",      //
                             PW_KEY_NODE_LATENCY, "2048/48000",         //
                             PW_KEY_TARGET_OBJECT, source.c_str(),      //
                             PW_KEY_NODE_DONT_RECONNECT, "true",        //
                             nullptr);
}

} // namespace

CaptureStream::CaptureStream(pw_core* core, const std::string& source,
                             const std::atomic<MicrophoneInput::Taker*>& taker, Events events)
    : taker_(taker), events_(std::move(events)), held_(longestCycle),
      stream_(pw_stream_new(core, "Keyboard recording", streamProperties(source))) {
    if (stream_ == nullptr) {
        events_.failed();
        return;
    }
    static const pw_stream_events listener = [] {
        pw_stream_events stream{};
        stream.version = PW_VERSION_STREAM_EVENTS;
        stream.state_changed = [](void* self, pw_stream_state, pw_stream_state now, const char*) {
            if (now == PW_STREAM_STATE_ERROR) {
                static_cast<CaptureStream*>(self)->events_.failed();
            }
        };
        stream.param_changed = [](void* self, std::uint32_t id, const spa_pod* parameter) {
            if (id == SPA_PARAM_Format && parameter != nullptr) {
                static_cast<CaptureStream*>(self)->noteFormat(parameter);
            }
        };
        stream.process = [](void* self) { static_cast<CaptureStream*>(self)->process(); };
        return stream;
    }();
    pw_stream_add_listener(stream_.get(), &listener_.hook, &listener, this);
    if (!connect()) {
        events_.failed();
    }
}

CaptureStream::~CaptureStream() {
    if (stream_ != nullptr) {
        pw_stream_disconnect(stream_.get());
    }
}

bool CaptureStream::connect() {
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32P;
    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    const spa_pod* formats = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format);
    constexpr auto flags = std::bit_cast<pw_stream_flags>(std::uint32_t{
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS});
    return pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, PW_ID_ANY, flags, &formats, 1) >= 0;
}

void CaptureStream::noteFormat(const spa_pod* parameter) {
    spa_audio_info_raw format{};
    if (spa_format_audio_raw_parse(parameter, &format) >= 0) {
        rate_.store(format.rate, std::memory_order_relaxed);
        events_.formatted({static_cast<double>(format.rate), format.channels});
    }
}

void CaptureStream::process() VORNIC_REALTIME {
    pw_buffer* const buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) {
        return;
    }
    const spa_buffer& memory = *buffer->buffer;
    if (memory.n_datas >= 1 && memory.datas[0].data != nullptr) {
        const spa_data& first = memory.datas[0];
        const std::uint32_t offset = std::min(first.chunk->offset, first.maxsize);
        const std::uint32_t size = std::min(first.chunk->size, first.maxsize - offset);
        const auto* const bytes = static_cast<const std::byte*>(first.data) + offset;
        hear(std::bit_cast<const float*>(bytes), static_cast<std::int64_t>(size / sizeof(float)));
    }
    pw_stream_queue_buffer(stream_.get(), buffer);
}

void CaptureStream::hear(const float* samples, std::int64_t count) VORNIC_REALTIME {
    const std::int64_t lost = clock_.lostBeforeLast(ticks(), count);
    MicrophoneInput::Taker* const taker = taker_.load(std::memory_order_acquire);
    if (taker != nullptr && taker == heldFor_) {
        if (lost > 0) {
            taker->miss(lost);
        }
        taker->take(held_.data(), heldCount_);
    }
    heldFor_ = taker;
    heldCount_ = std::min(count, static_cast<std::int64_t>(held_.size()));
    std::copy_n(samples, heldCount_, held_.begin());
}

std::int64_t CaptureStream::ticks() const VORNIC_REALTIME {
    pw_time time{};
    pw_stream_get_time_n(stream_.get(), &time, sizeof time);
    const std::int64_t rate = rate_.load(std::memory_order_relaxed);
    const std::int64_t clockRate = time.rate.num == 0 ? 0 : time.rate.denom / time.rate.num;
    if (rate == 0 || clockRate == 0 || rate == clockRate) {
        return static_cast<std::int64_t>(time.ticks);
    }
    return static_cast<std::int64_t>(time.ticks) * rate / clockRate;
}

} // namespace vornic

#include "tests/live/SinkCapture.h"

#include "tests/support/WaitFor.h"

#include <spa/param/audio/format-utils.h>
#include <spa/param/param.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

constexpr std::size_t smallestBlock = 16;

std::uint64_t monotonicNanos() {
    return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch() /
                                      std::chrono::nanoseconds(1));
}

} // namespace

SinkCapture::SinkCapture(Options options)
    : options_(std::move(options)), left_(static_cast<std::size_t>(options_.seconds * 48000.0)),
      right_(left_.size()), blocks_(left_.size() / smallestBlock) {
    pw_init(nullptr, nullptr);
    loop_.reset(pw_thread_loop_new("vornic-capture", nullptr));
    pw_properties* properties = pw_properties_new(
        PW_KEY_CONFIG_NAME, "client-rt.conf", PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY,
        "Capture", PW_KEY_APP_NAME, "Vornic test", PW_KEY_NODE_NAME, "vornic-test-capture",
        PW_KEY_STREAM_CAPTURE_SINK, options_.isSink ? "true" : "false", PW_KEY_TARGET_OBJECT,
        options_.sink.c_str(), PW_KEY_NODE_DONT_RECONNECT, "true", nullptr);
    if (!options_.remote.empty()) {
        pw_properties_set(properties, PW_KEY_REMOTE_NAME, options_.remote.c_str());
    }
    if (options_.quantum > 0) {
        pw_properties_setf(properties, PW_KEY_NODE_LATENCY, "%u/48000", options_.quantum);
    }
    static const pw_stream_events events = [] {
        pw_stream_events stream{};
        stream.version = PW_VERSION_STREAM_EVENTS;
        stream.process = [](void* self) { static_cast<SinkCapture*>(self)->process(); };
        return stream;
    }();
    stream_.reset(pw_stream_new_simple(pw_thread_loop_get_loop(loop_.get()), "capture", properties,
                                       &events, this));
    if (stream_ == nullptr) {
        throw std::runtime_error("no connection to the sound server");
    }
    connect();
    pw_thread_loop_start(loop_.get());
}

SinkCapture::~SinkCapture() {
    pw_thread_loop_stop(loop_.get());
    pw_stream_disconnect(stream_.get()); // no block arrives any more
    stream_.reset();
    loop_.reset();
    pw_deinit();
}

void SinkCapture::connect() {
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32P;
    format.rate = 48000;
    format.channels = 2;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    const spa_pod* formats = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format);
    constexpr auto flags = std::bit_cast<pw_stream_flags>(std::uint32_t{
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS});
    if (pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, PW_ID_ANY, flags, &formats, 1) < 0) {
        throw std::runtime_error("the sound server refuses to record");
    }
}

void SinkCapture::process() {
    pw_buffer* buffer = pw_stream_dequeue_buffer(stream_.get());
    if (buffer == nullptr) {
        return;
    }
    const spa_buffer& memory = *buffer->buffer;
    if (memory.n_datas >= 2 && memory.datas[0].data != nullptr) {
        pw_time time{};
        pw_stream_get_time_n(stream_.get(), &time, sizeof time);
        const std::size_t at = frames_.load(std::memory_order_relaxed);
        const std::size_t count = blockCount_.load(std::memory_order_relaxed);
        const std::size_t frames =
            std::min<std::size_t>(memory.datas[0].chunk->size / sizeof(float), left_.size() - at);
        const auto copy = [&](const spa_data& from, std::vector<float>& to) {
            const auto* samples = static_cast<const float*>(from.data);
            std::copy_n(samples + from.chunk->offset / sizeof(float), frames,
                        to.begin() + static_cast<std::ptrdiff_t>(at));
        };
        if (frames > 0 && count < blocks_.size()) {
            copy(memory.datas[0], left_);
            copy(memory.datas[1], right_);
            blocks_[count] = {.firstFrame = at,
                              .frames = static_cast<std::uint32_t>(frames),
                              .cycleNanos = static_cast<std::uint64_t>(time.now),
                              .receivedNanos = monotonicNanos()};
            frames_.store(at + frames, std::memory_order_release);
            blockCount_.store(count + 1, std::memory_order_release);
        }
    }
    pw_stream_queue_buffer(stream_.get(), buffer);
}

bool SinkCapture::waitUntilRunning(std::chrono::milliseconds limit) const {
    return vornic::waitFor([this] { return blockCount() > 0; }, limit);
}

std::size_t SinkCapture::frames() const {
    return frames_.load(std::memory_order_acquire);
}

std::size_t SinkCapture::blockCount() const {
    return blockCount_.load(std::memory_order_acquire);
}

SinkCapture::Block SinkCapture::blockOf(std::size_t frame) const {
    const auto end = blocks_.begin() + static_cast<std::ptrdiff_t>(blockCount());
    const auto after =
        std::upper_bound(blocks_.begin(), end, frame, [](std::size_t wanted, const Block& block) {
            return wanted < block.firstFrame;
        });
    return *std::prev(after);
}

std::optional<std::size_t> SinkCapture::find(std::size_t from, float threshold) const {
    const std::size_t end = frames();
    for (std::size_t frame = from; frame < end; ++frame) {
        if (std::abs(left_[frame]) > threshold || std::abs(right_[frame]) > threshold) {
            return frame;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> SinkCapture::waitFor(std::size_t from, float threshold,
                                                std::chrono::milliseconds limit) const {
    std::optional<std::size_t> found;
    vornic::waitFor(
        [&] {
            // Only what is new since the last look, so that a long wait stays cheap.
            const std::size_t end = frames();
            found = find(from, threshold);
            from = end;
            return found.has_value();
        },
        limit);
    return found;
}

} // namespace vornic

// The least that a program can do between a key and its sound: one PipeWire stream of 128 frames
// that clicks on an X11 raw key press. What Vornic needs beyond it is Vornic's own; bench_latency
// measures the two in turn.
//
// It prints "ready" once the stream runs, and runs until it is ended.

#include <pipewire/pipewire.h>
#include <poll.h>
#include <spa/param/audio/format-utils.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::uint32_t clickFrames = 48;

struct Floor {
    pw_thread_loop* loop = nullptr;
    pw_stream* stream = nullptr;
    std::atomic<bool> pressed{false};
    std::atomic<bool> running{false};
};

void process(void* data) {
    auto& floor = *static_cast<Floor*>(data);
    pw_buffer* const buffer = pw_stream_dequeue_buffer(floor.stream);
    if (buffer == nullptr) {
        return;
    }
    const bool click = floor.pressed.exchange(false, std::memory_order_acquire);
    const auto frames = static_cast<std::uint32_t>(buffer->requested);
    for (std::uint32_t channel = 0; channel < buffer->buffer->n_datas; ++channel) {
        spa_data& plane = buffer->buffer->datas[channel];
        auto* const out = static_cast<float*>(plane.data);
        for (std::uint32_t frame = 0; frame < frames; ++frame) {
            out[frame] = click && frame < clickFrames ? 0.5f : 0.0f;
        }
        plane.chunk->offset = 0;
        plane.chunk->stride = sizeof(float);
        plane.chunk->size = frames * static_cast<std::uint32_t>(sizeof(float));
    }
    pw_stream_queue_buffer(floor.stream, buffer);
    floor.running.store(true, std::memory_order_release);
}

bool startStream(Floor& floor) {
    static const pw_stream_events events = [] {
        pw_stream_events table{};
        table.version = PW_VERSION_STREAM_EVENTS;
        table.process = process;
        return table;
    }();
    pw_init(nullptr, nullptr);
    floor.loop = pw_thread_loop_new("floor", nullptr);
    pw_thread_loop_start(floor.loop);
    pw_thread_loop_lock(floor.loop);
    floor.stream =
        pw_stream_new_simple(pw_thread_loop_get_loop(floor.loop), "latency-floor",
                             pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY,
                                               "Playback", PW_KEY_NODE_LATENCY, "128/48000",
                                               PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr),
                             &events, &floor);
    std::uint8_t storage[1024];
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, storage, sizeof storage);
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32P;
    format.rate = 48000;
    format.channels = 2;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    const spa_pod* parameters[] = {
        spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    const int result = pw_stream_connect(floor.stream, PW_DIRECTION_OUTPUT, PW_ID_ANY,
                                         static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT |
                                                                      PW_STREAM_FLAG_MAP_BUFFERS |
                                                                      PW_STREAM_FLAG_RT_PROCESS),
                                         parameters, 1);
    pw_thread_loop_unlock(floor.loop);
    return result >= 0;
}

xcb_connection_t* listenToRawKeys() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        return nullptr;
    }
    const auto version = xcb_input_xi_query_version(connection, 2, 1);
    std::free(xcb_input_xi_query_version_reply(connection, version, nullptr));
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};
    xcb_input_xi_select_events(connection, screen->root, 1, &mask.head);
    xcb_flush(connection);
    return connection;
}

} // namespace

int main() {
    Floor floor;
    xcb_connection_t* const keys = listenToRawKeys();
    if (keys == nullptr || !startStream(floor)) {
        std::fputs("latency floor: needs an X display and PipeWire\n", stderr);
        return 1;
    }
    bool announced = false;
    while (true) {
        pollfd wait{xcb_get_file_descriptor(keys), POLLIN, 0};
        poll(&wait, 1, announced ? -1 : 5);
        if (xcb_connection_has_error(keys) != 0) {
            return 1;
        }
        while (xcb_generic_event_t* const event = xcb_poll_for_event(keys)) {
            if ((event->response_type & 0x7F) == XCB_GE_GENERIC) {
                floor.pressed.store(true, std::memory_order_release);
            }
            std::free(event);
        }
        if (!announced && floor.running.load(std::memory_order_acquire)) {
            announced = true;
            std::puts("ready");
            std::fflush(stdout);
        }
    }
}

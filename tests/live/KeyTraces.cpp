#include "tests/live/KeyTraces.h"

#include "VornicCore/keys/KeyLayout.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/keys/KnownKeys.h"
#include "VornicCore/realtime/EventRing.h"
#include "VornicCore/sampler/SamplerCore.h"
#include "tests/support/ProcessMemory.h"

#include <linux/input.h>
#include <xcb/xinput.h>
#include <xcb/xproto.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <optional>
#include <vector>

namespace vornic {

namespace {

constexpr int keycodeOffset = 8;

/// What a voice of a key is recognised by.
struct SoundOfKey {
    int key;
    double share; // right gain over left gain
    double rate;  // without the strokes' variety
};

class Search {
  public:
    explicit Search(const PressedKeys& pressed) : pressed_(pressed) {
        for (const int key : pressed.keys) {
            const std::int64_t code = keyCodeOfEvdev(static_cast<std::uint32_t>(key));
            codes_[code] = key;
            const auto ears =
                SamplerCore::ears(1.0F, KeyLayout::pan(code, 1.0, layout(LayoutID::macANSI)));
            // Equal numbers, as in the middle of the board, are everywhere.
            if (ears.left != ears.right) {
                sounds_.push_back({.key = key,
                                   .share = static_cast<double>(ears.right / ears.left),
                                   .rate = static_cast<double>(KeyLayout::rate(code))});
            }
        }
    }

    void look(std::span<const std::byte> bytes) {
        for (std::size_t at = alignment * 2; at + longest <= bytes.size(); at += alignment) {
            const std::byte* const here = bytes.data() + at;
            windowSystemEvent(here);
            gainsAndRate(here);
            if (at % sizeof(std::uint64_t) == 0) {
                kernelEvent(here);
                playRequest(here);
                voice(here);
                postedKey(here);
            }
        }
    }

    /// A pointer before a small number proves nothing, and tables list all keys after it. Several
    /// of the pressed keys, and hardly any other, do.
    KeyTraces found() {
        constexpr std::size_t proof = 3;
        for (const auto& [owner, numbers] : numbersAfter_) {
            if (numbers.pressed.size() >= proof && numbers.others.size() < proof) {
                traces_["a key in a message to another thread"].insert(numbers.pressed.begin(),
                                                                       numbers.pressed.end());
            }
        }
        return traces_;
    }

  private:
    static constexpr std::size_t alignment = 4;
    static constexpr std::size_t longest = 64; // bytes of the longest thing looked for

    template <typename Value>
    static Value at(const std::byte* place) {
        Value value;
        std::memcpy(&value, place, sizeof value);
        return value;
    }

    void note(const char* kind, int key) { traces_[kind].insert(key); }

    [[nodiscard]] bool wasThen(std::uint64_t nanos) const {
        return nanos >= pressed_.from && nanos <= pressed_.until;
    }

    /// The window system's clock counts milliseconds of the monotonic clock, in 32 bits.
    [[nodiscard]] bool wasThenInMillis(std::uint32_t millis) const {
        constexpr std::uint64_t nanosPerMilli = 1'000'000;
        const auto since = static_cast<std::uint32_t>(
            millis - static_cast<std::uint32_t>(pressed_.from / nanosPerMilli));
        return since <= (pressed_.until - pressed_.from) / nanosPerMilli;
    }

    void windowSystemEvent(const std::byte* here) {
        // From its time on, since the first bytes of what is freed are overwritten.
        constexpr std::size_t time = offsetof(xcb_input_raw_key_press_event_t, time);
        constexpr std::size_t detail = offsetof(xcb_input_raw_key_press_event_t, detail);
        constexpr std::size_t source = offsetof(xcb_input_raw_key_press_event_t, sourceid);
        constexpr std::size_t flags = offsetof(xcb_input_raw_key_press_event_t, flags);
        constexpr std::uint16_t mostDevices = 64;
        const int rawKey = at<int>(here + detail - time) - keycodeOffset;
        if (pressed_.keys.contains(rawKey) && wasThenInMillis(at<std::uint32_t>(here)) &&
            at<std::uint16_t>(here + source - time) < mostDevices &&
            (at<std::uint32_t>(here + flags - time) &
             ~std::uint32_t{XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT}) == 0) {
            note("a raw event of the window system", rawKey);
        }
        const auto event = at<xcb_key_press_event_t>(here);
        const int key = event.detail - keycodeOffset;
        const int type = event.response_type & 0x7f;
        constexpr xcb_window_t mostRoots = 0x10000;
        const bool isWhole =
            event.root != 0 && event.root < mostRoots && event.same_screen <= 1 && event.pad0 == 0;
        if (isWhole && (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) &&
            pressed_.keys.contains(key) && wasThenInMillis(event.time)) {
            note("a key event of the window system", key);
        }
    }

    void kernelEvent(const std::byte* here) {
        const auto event = at<input_event>(here);
        const std::uint64_t nanos =
            static_cast<std::uint64_t>(event.input_event_sec) * 1'000'000'000U +
            static_cast<std::uint64_t>(event.input_event_usec) * 1'000U;
        if (event.type == EV_KEY && pressed_.keys.contains(event.code) && wasThen(nanos)) {
            note("an event of the kernel", event.code);
        }
    }

    void playRequest(const std::byte* here) {
        const auto event = at<vornic_event>(here);
        if (event.samples != nullptr && wasThen(event.nanos)) {
            if (const auto key = keyOf(event.gain_left, event.gain_right, event.rate)) {
                note("a play request", *key);
            }
        }
    }

    void voice(const std::byte* here) {
        const auto rate = at<double>(here);
        if (const auto key = keyOf(at<float>(here + sizeof rate),
                                   at<float>(here + sizeof rate + sizeof(float)), rate)) {
            note("a voice", *key);
        }
    }

    void gainsAndRate(const std::byte* here) {
        if (const auto key = keyOf(at<float>(here), at<float>(here + sizeof(float)),
                                   static_cast<double>(at<float>(here + 2 * sizeof(float))))) {
            note("gains and rate of a voice", *key);
        }
    }

    [[nodiscard]] std::optional<int> keyOf(float left, float right, double rate) const {
        constexpr double variety = 0.04;
        if (!(rate > 1 - variety && rate < 1 + variety && left > 0.1F && left < 2.0F &&
              right > 0.1F && right < 2.0F)) {
            return std::nullopt;
        }
        const double share = static_cast<double>(right / left);
        for (const SoundOfKey& sound : sounds_) {
            if (std::fabs(share / sound.share - 1) < 1e-6 &&
                std::fabs(rate / sound.rate - 1) < variety) {
                return sound.key;
            }
        }
        return std::nullopt;
    }

    void postedKey(const std::byte* here) {
        constexpr std::uint64_t lowestPointer = 0x10000;
        constexpr std::uint64_t mostKeys = 128;
        // A block of the heap that is just large enough begins here: its size stands before it.
        constexpr std::uint64_t sizeAndFlags = 0x20;
        constexpr std::uint64_t flags = 7;
        if ((at<std::uint64_t>(here - sizeof(std::uint64_t)) & ~flags) != sizeAndFlags) {
            return;
        }
        const auto owner = at<std::uint64_t>(here);
        const auto number = at<std::uint64_t>(here + sizeof owner);
        const auto down = at<std::uint8_t>(here + 2 * sizeof owner);
        if (owner < lowestPointer || number >= mostKeys || down > 1) {
            return;
        }
        const auto found = codes_.find(static_cast<std::int64_t>(number));
        if (found != codes_.end()) {
            numbersAfter_[owner].pressed.insert(found->second);
        } else {
            numbersAfter_[owner].others.insert(number);
        }
    }

    struct Numbers {
        std::set<int> pressed;
        std::set<std::uint64_t> others;
    };

    PressedKeys pressed_;
    std::map<std::int64_t, int> codes_;
    std::vector<SoundOfKey> sounds_;
    std::map<std::uint64_t, Numbers> numbersAfter_;
    KeyTraces traces_;
};

} // namespace

KeyTraces keyTracesIn(pid_t process, const PressedKeys& pressed) {
    Search search(pressed);
    readMemory(process,
               [&](std::uint64_t, std::span<const std::byte> bytes) { search.look(bytes); });
    return search.found();
}

} // namespace vornic

#include "Vornic/typing/LiveKeys.h"

#include <chrono>
#include <cmath>
#include <random>
#include <utility>

namespace vornic {

namespace {

std::uint64_t systemSeed() {
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << 32) | device();
}

} // namespace

LiveKeys::LiveKeys(KeyTap& tap, HotKey& hotKey, const Clock& clock, Scheduler& scheduler)
    : tap_(tap), hotKey_(hotKey), clock_(clock), scheduler_(scheduler) {}

LiveKeys::~LiveKeys() {
    typing_.clear();
    // By reference: the pointer is empty already while the thread runs its last work.
    thread_->post([this, &keys = *thread_] {
        keys.unwatch(tap_);
        keys.unwatch(hotKey_);
        tap_.stop();
        tap_.onKey = [](std::int64_t, bool, std::uint64_t) {};
        hotKey_.onPress = [] {};
    });
    thread_.reset();
}

void LiveKeys::start(SoundEngine& sound) {
    driver_ = std::make_unique<KeystrokeDriver>(
        sound, clock_, systemSeed(), [this](const std::string& problem) {
            postToMain([this, problem] { onProblem(problem); });
        });
    thread_->post([this, &keys = *thread_] { listen(keys); });
}

void LiveKeys::listen(KeyThread& keys) {
    tap_.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
        const Strike strike = driver_->key(keyCode, down, nanos);
        keysHeard_.fetch_add(1, std::memory_order_relaxed);
        postToMain([this, keyCode, down, strike] {
            down ? onKeyDown(keyCode) : onKeyUp(keyCode);
            onShown(keyCode, down, strike);
        });
    };
    hotKey_.onPress = [this] { postToMain([this] { onHotKey(); }); };
    keys.watch(tap_);
    keys.watch(hotKey_);
    hotKeyRegistered_ = hotKey_.registered();
    if (!hotKeyRegistered_) {
        postToMain([this] {
            onProblem("Another program holds Alt+Super+K, so that shortcut does not switch the "
                      "sounds.");
        });
    }
}

void LiveKeys::apply(std::shared_ptr<const PlaySettings> settings) {
    thread_->post([this, settings = std::move(settings)] { driver_->apply(settings); });
}

void LiveKeys::refresh() {
    thread_->post([this] {
        const TapState state = tap_.refresh();
        postToMain([this, state, source = tap_.description()] { onTapState(state, source); });
    });
}

void LiveKeys::type(const std::vector<KeyEvent>& phrase) {
    typing_.clear();
    for (const KeyEvent& event : phrase) {
        typing_.push_back(
            scheduler_.after(std::chrono::milliseconds(std::llround(event.millis)), [this, event] {
                thread_->post([this, event] {
                    const Strike strike = driver_->key(event.keyCode, event.down, clock_.nanos());
                    postToMain(
                        [this, event, strike] { onShown(event.keyCode, event.down, strike); });
                });
            }));
    }
}

void LiveKeys::postToMain(std::function<void()> work) {
    scheduler_.post(lifetime_.guard(std::move(work)));
}

} // namespace vornic

#include "Vornic/typing/KeyFilter.h"

namespace vornic {

namespace {

constexpr std::int64_t capsLock = 57;

} // namespace

bool KeyFilter::accepts(NativeKey key, std::int64_t keyCode, bool down) {
    return down ? acceptsPress(key) : acceptsRelease(key) && keyCode != capsLock;
}

bool KeyFilter::acceptsPress(NativeKey key) {
    const bool repeat = heldBefore_.contains(key.code) || down_.contains(key);
    if (!repeat) {
        down_.insert(key);
    }
    return !repeat;
}

bool KeyFilter::acceptsRelease(NativeKey key) {
    return down_.erase(key) > 0 || heldBefore_.erase(key.code) > 0;
}

void KeyFilter::forgetKeyboard(std::uint32_t keyboard) {
    std::erase_if(down_, [keyboard](const NativeKey& key) { return key.keyboard == keyboard; });
}

void KeyFilter::reset() {
    down_.clear();
    heldBefore_.clear();
}

} // namespace vornic

#include "Vornic/typing/TypingActivity.h"

#include "VornicCore/realtime/Forget.h"

#include <cstddef>

namespace vornic {

namespace {

constexpr double typingSeconds = 0.25;
constexpr double longestPress = 5.0;

} // namespace

void TypingActivity::keyDown(std::int64_t keyCode, double seconds) {
    lastCode_ = keyCode;
    lastKey_ = seconds;
    pressed_.insert_or_assign(keyCode, seconds);
}

bool TypingActivity::refresh(double seconds) {
    const bool before = typing_;
    typing_ = lastKey_ && seconds - *lastKey_ < typingSeconds;
    const std::size_t letGo = std::erase_if(
        pressed_, [&](const auto& key) { return seconds - key.second >= longestPress; });
    if (lastCode_ && !typing_ && !pressed_.contains(*lastCode_)) {
        forget(lastCode_);
    }
    return typing_ != before || letGo > 0;
}

} // namespace vornic

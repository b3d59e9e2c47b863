#include "Vornic/keystroke/TypingActivity.h"

namespace vornic {

namespace {

constexpr double typingSeconds = 0.25;

} // namespace

void TypingActivity::keyDown(std::int64_t keyCode, double seconds) {
    lastCode_ = keyCode;
    lastKey_ = seconds;
}

bool TypingActivity::refresh(double seconds) {
    const bool before = typing_;
    typing_ = lastKey_ && seconds - *lastKey_ < typingSeconds;
    return typing_ != before;
}

} // namespace vornic

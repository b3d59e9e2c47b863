#include "Vornic/typing/PreviewPhrase.h"

#include <algorithm>
#include <array>

namespace vornic {

namespace {

struct Stroke {
    std::int64_t keyCode;
    double millis;
};

// "this is vornic" and return, in the rhythm of a practised typist: rolls within a word, a breath
// at each space and before the last key.
constexpr std::array<Stroke, 15> strokes{{
    {17, 0},    // t
    {4, 112},   // h
    {34, 251},  // i
    {1, 378},   // s
    {49, 521},  // space
    {34, 702},  // i
    {1, 818},   // s
    {49, 960},  // space
    {9, 1163},  // v
    {31, 1301}, // o
    {15, 1416}, // r
    {45, 1572}, // n
    {34, 1688}, // i
    {8, 1829},  // c
    {36, 2110}, // return
}};

constexpr double holdMillis = 86.0;

} // namespace

std::vector<KeyEvent> previewPhrase() {
    std::vector<KeyEvent> events;
    for (const Stroke& stroke : strokes) {
        events.push_back({stroke.millis, stroke.keyCode, true});
        events.push_back({stroke.millis + holdMillis, stroke.keyCode, false});
    }
    std::ranges::stable_sort(events, {}, &KeyEvent::millis);
    return events;
}

} // namespace vornic

#include "tests/live/soak/SteadyHands.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>

namespace vornic {

namespace {

/// More than ten fingers hold.
constexpr std::size_t mostHeld = 3;
constexpr std::array keysPerSecond{120, 8, 60, 120, 25};
constexpr std::uint32_t keysPerPace = 150;

} // namespace

SteadyHands::SteadyHands(std::uint32_t seed)
    : random_(seed), thread_([this](const std::stop_token& stop) { type(stop); }) {}

SteadyHands::~SteadyHands() {
    rest();
}

void SteadyHands::rest() {
    if (thread_.joinable()) {
        thread_.request_stop();
        thread_.join();
    }
}

void SteadyHands::type(const std::stop_token& stop) {
    std::deque<int> held;
    const auto letGo = [&] {
        typer_.release(held.front());
        held.pop_front();
    };
    auto due = std::chrono::steady_clock::now();
    for (std::uint32_t keys = 0; !stop.stop_requested(); ++keys) {
        int key = KeyTyper::letter(static_cast<int>(random_() % 26));
        while (std::ranges::find(held, key) != held.end()) {
            key = KeyTyper::letter(static_cast<int>(random_() % 26));
        }
        typer_.press(key);
        ++pressed_;
        held.push_back(key);
        if (held.size() > mostHeld) {
            letGo();
        }
        // A machine that was late types no faster afterwards.
        const int pace = keysPerSecond.at(keys / keysPerPace % keysPerSecond.size());
        due = std::max(due, std::chrono::steady_clock::now() - std::chrono::milliseconds(100));
        due += std::chrono::microseconds(1'000'000 / pace);
        std::this_thread::sleep_until(due);
    }
    while (!held.empty()) {
        letGo();
    }
    typer_.settle();
}

} // namespace vornic

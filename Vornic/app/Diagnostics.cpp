#include "Vornic/app/Diagnostics.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace vornic::DiagnosticsText {

std::string millis(std::optional<double> value) {
    if (!value || !std::isfinite(*value)) {
        return "unknown";
    }
    std::array<char, 340> text{}; // the largest double has 309 digits
    std::snprintf(text.data(), text.size(), "%.1f ms", *value);
    return text.data();
}

std::string frames(std::optional<std::int64_t> value) {
    return value ? std::to_string(*value) + " frames" : "unknown";
}

std::string engine(bool running) {
    return running ? "running" : "paused (starts on the next key)";
}

} // namespace vornic::DiagnosticsText
